// What every subcommand of gen_query has in common, and the ones that have no test of their own.

#include "gen_query.h"

#include "effort.h"
#include "environment.h"
#include "gen_exe.h"
#include "gen_string_lex.h"
#include "temp_directory.h"
#include "test_directories.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST(GenQuery, WrongUsageIsStatusTwoAndSaysWhereHelpIs) {
    std::vector<std::string> const cases[] = {
        {}, {"nonsense"}, {"text"}, {"where", "--nonsense"}, {"text", "compare", "one"}};
    for (auto const& arguments : cases) {
        ProgramResult const result = query(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.errors, HasSubstr("--help"));
        EXPECT_THAT(result.output, IsEmpty());
    }
}

TEST(GenQuery, HelpTeachesWithAnExample) {
    for (std::vector<std::string> const& arguments : {std::vector<std::string>{"where", "--help"},
                                                      {"text", "-h"},
                                                      {"text", "sort", "--help"}}) {
        ProgramResult const result = query(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.output, HasSubstr("Example:\n  $ "));
        EXPECT_THAT(result.errors, IsEmpty());
    }
    EXPECT_THAT(query({"--help"}).output, HasSubstr("Exit status: 0"));
}

TEST(GenQuery, OutputThatCannotBeWrittenIsSaid) {
    ProgramResult const result = query_by_shell("\"$query\" where >/dev/full");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, "gen_query: cannot write to standard output\n");
}

TEST(GenQueryWhere, PrintsTheExecutableAndWhatTheMemoryLibraryHears) {
    TempDirectory const root;
    root.make_directory("linux");
    std::string const tool = root / "linux/gen_query";
    std::filesystem::create_symlink(TEST_BINARY_DIR "/gen_query", tool);
    ProgramStart start;
    start.arguments = {tool, "where"};
    start.directory = root.path();
    ProgramResult const text = run_program(start);
    EXPECT_EQ(text.status, 0);
    EXPECT_THAT(text.output,
                StartsWith("executable                  " + tool + "\n" +
                           "module path                 " + root / "linux/" + "\n" +
                           "file name                   gen_query\n" +
                           "installation root           " + root / "" + "\n" +
                           "graphical shell             no\n" + "seen by the memory library\n" +
                           "  installation root         " + root / "" + "\n"));
    start.arguments.push_back("--json");
    ProgramResult const json = run_program(start);
    EXPECT_EQ(json.status, 0);
    EXPECT_THAT(json.output, HasSubstr("\"executable\": \"" + tool + "\""));
    EXPECT_THAT(json.output, HasSubstr("\"graphical_shell\": false"));
}

TEST(GenQueryTextCompare, PrintsTheOrderAndGivesItsStatus) {
    struct {
        std::vector<std::string> arguments;
        std::string order;
        int status;
    } const cases[] = {
        {{"file10", "file9"}, "after\n", 1},
        {{"file9", "file10"}, "before\n", 1},
        {{"--bytes", "file10", "file9"}, "before\n", 1},
        {{"a01", "a1"}, "after\n", 1},
        {{"abc", "abc"}, "equal\n", 0},
        {{"ABC", "abc"}, "before\n", 1},
        {{"-i", "ABC", "abc"}, "equal\n", 0},
        {{"-i", "-b", "ABC", "abc"}, "equal\n", 0},
        {{"", ""}, "equal\n", 0},
    };
    for (auto const& [arguments, order, status] : cases) {
        std::vector<std::string> all = {"text", "compare"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        ProgramResult const result = query(all);
        EXPECT_EQ(result.output, order) << arguments.front() << " " << arguments.back();
        EXPECT_EQ(result.status, status) << arguments.front() << " " << arguments.back();
    }
}

TEST(GenQueryTextSort, SortsNumbersByValueAndKeepsEqualLinesInOrder) {
    struct {
        std::vector<std::string> arguments;
        std::string input;
        std::string output;
    } const cases[] = {
        {{}, "", ""},
        {{}, "\n", "\n"},
        {{}, "file10\nfile9\nfile1\n", "file1\nfile9\nfile10\n"},
        {{}, "b\n\na", "\na\nb\n"},
        {{"-i"}, "B\nb\nA\na\n", "A\na\nB\nb\n"},
        {{"-i", "-r"}, "B\nb\nA\na\n", "B\nb\nA\na\n"},
        {{"-r"}, "file9\nfile10\n", "file10\nfile9\n"},
        {{}, std::string("a\0c\na\0b\n", 8), std::string("a\0b\na\0c\n", 8)},
    };
    for (auto const& [arguments, input, output] : cases) {
        std::vector<std::string> all = {"text", "sort"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        ProgramResult const result = query(all, input);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, output) << input;
    }
}

TEST(GenQueryTextSort, AMillionLines) {
    std::mt19937 random(20);
    std::vector<std::string> lines;
    std::string input;
    for (std::size_t count = effort(1'000'000); count > 0; --count) {
        lines.push_back("net_" + std::to_string(random() % 1000) + "/u" +
                        std::to_string(random() % 50));
        input += lines.back() + "\n";
    }
    std::stable_sort(lines.begin(), lines.end(), [](std::string const& a, std::string const& b) {
        return gen_lexcmp(a.c_str(), b.c_str()) < 0;
    });
    std::string expected;
    for (std::string const& line : lines)
        expected += line + "\n";
    ProgramResult const result = query({"text", "sort"}, input);
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.output == expected);
}

TEST(GenQueryTextSort, InputThatCannotBeReadIsSaid) {
    ProgramResult const result = query_by_shell("\"$query\" text sort </");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, "gen_query: cannot read standard input: Is a directory\n");
}

TEST(GenQuery, UsageErrorsSayWhichWordIsWrongAndWhatWasMeant) {
    struct {
        std::vector<std::string> arguments;
        std::string errors;
    } const cases[] = {
        {{}, "gen_query: a subcommand is missing\nSee gen_query --help\n"},
        {{"fnd"},
         "gen_query: unknown subcommand 'fnd'; did you mean 'find'?\nSee gen_query --help\n"},
        {{"text", "srot"},
         "gen_query: text: unknown subcommand 'srot'; did you mean 'sort'?\n"
         "See gen_query text --help\n"},
        {{"xyzzy"}, "gen_query: unknown subcommand 'xyzzy'\nSee gen_query --help\n"},
        {{"find", "--trce", "a"},
         "gen_query: find: unknown option '--trce'; did you mean '--trace'?\n"
         "See gen_query find --help\n"},
        {{"find", "a", "-x"}, "gen_query: find: unknown option '-x'\nSee gen_query find --help\n"},
        {{"find", "a", "--db"},
         "gen_query: find: --db: its value is missing\nSee gen_query find --help\n"},
        {{"find", "a", "--db=x", "--db", "y"},
         "gen_query: find: --db: it is given more than once\nSee gen_query find --help\n"},
        {{"find", "a", "--eda=no"},
         "gen_query: find: --eda: it takes no value\nSee gen_query find --help\n"},
        {{"find", "a", "--cached", "--all"},
         "gen_query: find: '--cached' and '--all' exclude each other\n"
         "See gen_query find --help\n"},
        {{"text", "compare", "one"},
         "gen_query: text compare: 'second' is missing\nSee gen_query text compare --help\n"},
        {{"text", "compare", "a", "b", "c"},
         "gen_query: text compare: 'c' is one argument too many\n"
         "See gen_query text compare --help\n"},
        {{"text", "number", "1", "-r", "37"},
         "gen_query: text number: --radix: 37 is not between 2 and 36\n"
         "See gen_query text number --help\n"},
        {{"text", "hash-size", "-1"},
         "gen_query: text hash-size: numbers: -1 is not between 0 and 4294967295\n"
         "See gen_query text hash-size --help\n"},
        {{"text", "hash-size", "99999999999999999999"},
         "gen_query: text hash-size: numbers: 99999999999999999999 is not between 0 and "
         "4294967295\nSee gen_query text hash-size --help\n"},
        {{"histogram", "--low", "much"},
         "gen_query: histogram: --low: 'much' is not a number\nSee gen_query histogram --help\n"},
    };
    for (auto const& [arguments, errors] : cases) {
        ProgramResult const result = query(arguments);
        EXPECT_EQ(result.status, 2) << errors;
        EXPECT_EQ(result.output, "") << errors;
        EXPECT_EQ(result.errors, errors);
    }
}

TEST(GenQuery, JsonMayStandAnywhereAndCarriesTheError) {
    for (std::vector<std::string> const& arguments :
         {std::vector<std::string>{"--json", "text", "sort", "--nonsense"},
          {"text", "--json", "sort", "--nonsense"},
          {"text", "sort", "--nonsense", "--json"}}) {
        ProgramResult const result = query(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.output, "{\n  \"error\": \"text sort: unknown option '--nonsense'\"\n}\n");
        EXPECT_THAT(result.errors, HasSubstr("gen_query: text sort: unknown option"));
    }
    EXPECT_EQ(query({"fnd", "--json"}).output,
              "{\n  \"error\": \"unknown subcommand 'fnd'; did you mean 'find'?\"\n}\n");
    EXPECT_EQ(query({"--json", "text", "fold", "A"}).output,
              "{\n  \"texts\": [\n    \"a\"\n  ]\n}\n");
}

TEST(GenQuery, EmptyNameOfAFileIsNotStandardInput) {
    for (std::vector<std::string> const& arguments :
         {std::vector<std::string>{"filelist", ""},
          {"histogram", ""},
          {"undo", ""},
          {"text", "checksum", "--file", ""},
          {"text", "checksum", "--sanitise", "--file", ""}}) {
        ProgramResult const result = query(arguments, "1 2 3\n");
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.errors, "gen_query: cannot read '': No such file or directory\n");
    }
}

TEST(GenQuery, HelpIsASubcommandToo) {
    EXPECT_EQ(query({"help"}).output, query({"--help"}).output);
    EXPECT_EQ(query({"help", "text"}).output, query({"text", "--help"}).output);
    EXPECT_EQ(query({"help", "text", "sort"}).output, query({"text", "sort", "--help"}).output);
    EXPECT_EQ(query({"help", "nonsense"}).status, 2);
    EXPECT_EQ(query({"help", "--json", "text"}).output, query({"text", "--help"}).output);
    EXPECT_EQ(query({"help", "help"}).output, query({"--help"}).output);
}

TEST(GenQuery, HelpOfASubcommandRunsNoCommandThatFollows) {
    EXPECT_EQ(query({"help", "time", "stopwatch", "true"}).output,
              query({"time", "stopwatch", "--help"}).output);
}

TEST(GenQuery, EmptyValuesArePartedBeforeTheRestAlone) {
    EXPECT_THAT(query({"time", "stopwatch", "printf", "[%s]", "--root=", "--color="}).errors,
                StartsWith("[--root=][--color=]"));
    EXPECT_EQ(query({"--root=", "time", "stopwatch", "true"}).status, 0);
    EXPECT_EQ(query({"--root", "--color=", "text", "fold", "A"}).output, "a\n");
}

TEST(GenQuery, HelpOfAllListsEveryOptionInLinesThatFit) {
    ProgramResult const all = query({"--help-all"});
    EXPECT_EQ(all.status, 0);
    EXPECT_THAT(all.output, HasSubstr("Usage: gen_query text compare [option ...] first second"));
    EXPECT_THAT(all.output, HasSubstr("  -b, --bytes"));
    std::size_t longest = 0;
    for (std::size_t at = 0, end = 0; (end = all.output.find('\n', at)) != std::string::npos;
         at = end + 1)
        longest = std::max(longest, end - at);
    EXPECT_LE(longest, 80U);
}

TEST(GenQuery, NamesInBracketsAreNames) {
    EXPECT_EQ(query({"text", "fold", "[A,B]", "[]", "[", "[C]"}).output, "[a,b]\n[]\n[\n[c]\n");
}

TEST(GenQuery, OptionsTakeEmptyAndDashedValues) {
    EXPECT_EQ(query({"do-not-edit", "--prefix="}).status, 0);
    EXPECT_EQ(query({"find", "--db=", "/"}).output, "/\n");
    EXPECT_EQ(query({"text", "fold", "--", "--X", "-Y"}).output, "--x\n-y\n");
    EXPECT_EQ(query({"histogram", "--low", "-5", "--high=-1"}, "-3\n").status, 0);
}

TEST(GenQuery, EveryErrorIsInTheJsonAndOnStandardError) {
    struct {
        char const* command;
        char const* error;
    } const cases[] = {
        {"\"$query\" text checksum --file /nonexistent --json",
         "cannot read '/nonexistent': No such file or directory"},
        {"\"$query\" message %1 --json", "message: argument 1 is missing"},
        {"\"$query\" undo /nonexistent --json",
         "cannot read '/nonexistent': No such file or directory"},
        {"\"$query\" --json time stopwatch /nonexistent",
         "cannot start '/nonexistent': No such file or directory"},
        {"\"$query\" text sort --json <&-", "cannot read standard input: Bad file descriptor"},
        {"\"$query\" condition --stdin --json </", "cannot read standard input: Is a directory"},
        {"\"$query\" histogram / --json", "cannot read '/': Is a directory"},
        {"\"$query\" flags --json </", "cannot read standard input: Is a directory"},
    };
    for (auto const& [command, error] : cases) {
        ProgramResult const result = query_by_shell(command);
        EXPECT_EQ(result.status, 2) << command;
        EXPECT_EQ(result.errors, std::string("gen_query: ") + error + "\n");
        EXPECT_THAT(result.output, HasSubstr(std::string("\"error\": \"") + error + '"'));
    }
}

TEST(GenQuery, InputPastMemoryIsSaid) {
    if (read_file("/proc/self/maps").find("asan") != std::string::npos)
        GTEST_SKIP() << "the address sanitizer needs its memory";
    for (char const* const command : {"text sort", "text checksum -s", "condition --stdin", "undo",
                                      "histogram", "flags", "serve", "find -"}) {
        ProgramResult const result = query_by_shell(
            std::string("ulimit -v 200000; head -c 300000000 /dev/zero | tr '\\0' 7 | "
                        "\"$query\" ") +
            command);
        EXPECT_EQ(result.status, 2) << command;
        EXPECT_THAT(result.errors, StartsWith("gen_query: ")) << command;
    }
}

TEST(GenQuery, InputOfAChecksumIsNotKept) {
    if (read_file("/proc/self/maps").find("asan") != std::string::npos)
        GTEST_SKIP() << "the address sanitizer needs its memory";
    ProgramResult const result = query_by_shell(
        "ulimit -v 200000; head -c 300000000 /dev/zero | tr '\\0' 7 | \"$query\" text checksum");
    EXPECT_EQ(result.status, 0) << result.errors;
}

TEST(GenQuery, NumbersOfAHistogramWithBoundsAreNotKept) {
    if (read_file("/proc/self/maps").find("asan") != std::string::npos)
        GTEST_SKIP() << "the address sanitizer needs its memory";
    std::string const command =
        "ulimit -v 100000; yes 1 | head -c 24000000 | \"$query\" histogram ";
    EXPECT_EQ(query_by_shell(command + "--low 0 --high 2").status, 0);
    EXPECT_EQ(query_by_shell(command).status, 2) << "more than there is memory for";
}

TEST(GenQuery, HelpIntoAFullDeviceFails) {
    for (char const* const arguments : {"--help", "--version", "--help-all", "text sort --help"}) {
        ProgramResult const result =
            query_by_shell(std::string("\"$query\" ") + arguments + " >/dev/full");
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_EQ(result.errors, "gen_query: cannot write to standard output\n");
    }
}

TEST(GenQuery, VersionNamesLibraryAndWidth) {
    EXPECT_THAT(query({"--version"}).output,
                testing::MatchesRegex("gen_query [0-9.]+ \\(korvane_gen, (32|64) bits\\)\n"));
    EXPECT_THAT(
        query({"--version", "--json"}).output,
        testing::MatchesRegex("\\{\n  \"version\": \"[0-9.]+\",\n  \"bits\": (32|64)\n\\}\n"));
}

TEST(GenQuery, ControlCharactersInMessagesAreShownEscaped) {
    EXPECT_EQ(query({"find", "/a\nb\x1b[2J\x7f"}).errors,
              "gen_query: '/a\\nb\\x1b[2J\\x7f' is not found\n");
    // U+009B does what ESC [ does; what follows it in the table is a letter.
    EXPECT_EQ(query({"find", "/\u009b31m\u00a0\u00e9"}).errors,
              "gen_query: '/\\xc2\\x9b31m\u00a0\u00e9' is not found\n");
}

TEST(GenQuery, RootAsksAsAToolOfThatInstallation) {
    TempDirectory const other;
    std::filesystem::create_directories(other / "libraries/parablocks");
    std::string const file = other.write("libraries/parablocks/only_here.v", "");
    EXPECT_EQ(query({"find", "only_here.v"}).status, 1);
    EXPECT_EQ(query({"--root", other.path(), "find", "only_here.v"}).output, file + "\n");
    EXPECT_EQ(query({"find", "only_here.v", "--root", other.path()}).output, file + "\n");
    ProgramResult const by_variable =
        run_program({.arguments = {TEST_BINARY_DIR "/gen_query", "where"},
                     .set = {{"GEN_QUERY_ROOT", other.path()}}});
    EXPECT_THAT(by_variable.output, HasSubstr("installation root           " + other / "" + "\n"));
    TempDirectory const empty;
    EXPECT_EQ(query({"--root", empty.path(), "where"}).errors,
              "gen_query: the installation root '" + empty.path() +
                  "' has no directory 'libraries'\n");
}

TEST(GenQuery, ColourIsAsWanted) {
    ProgramResult const always = query({"find", "/", "--all", "--color=always"});
    EXPECT_THAT(always.output, HasSubstr("\033[1;32mwins"));
    EXPECT_EQ(query({"find", "/", "--all", "--color", "never"}).output,
              query({"find", "/", "--all"}).output);
    EXPECT_EQ(query({"find", "/", "--color=some"}).status, 2);
}
