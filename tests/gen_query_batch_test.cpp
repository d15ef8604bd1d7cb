// Many requests of one process: batches of names, and `gen_query serve`.

#include "effort.h"
#include "gen_query.h"
#include "temp_directory.h"
#include "test_directories.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <random>

namespace {

/// What gen_query answers to each of three lines before it gets the next one.
std::string conversation(std::string const& arguments, std::string const& line) {
    return run_program({.arguments = {"/bin/bash", "-c",
                                      "coproc server { \"$query\" " + arguments +
                                          " 2>/dev/null; }\n"
                                          "for i in 1 2 3; do\n"
                                          "  echo \"$line\" >&${server[1]}\n"
                                          "  read -r -t 20 -u ${server[0]} answer\n"
                                          "  echo \"$answer\"\n"
                                          "done"},
                        .set = {{"query", TEST_BINARY_DIR "/gen_query"}, {"line", line}}})
        .output;
}

} // namespace

TEST(GenQueryServe, AnswersAtOnce) {
    std::string const answer = R"({"id": 1, "status": 0, "answer": {"texts": ["a"]}})"
                               "\n";
    EXPECT_EQ(conversation("serve", R"({"id": 1, "args": ["text", "fold", "A"]})"),
              answer + answer + answer);
}

TEST(GenQueryBatch, AnswersAtOnce) {
    struct {
        char const* arguments;
        std::string line;
        std::string answer;
    } const cases[] = {
        {"find -", "/", "/\n"},
        {"find - --json", "/",
         "{\"name\": \"/\", \"path\": \"/\", \"group\": \"as named\", \"in_project\": null}\n"},
        {"include -", "/", "/\n"},
        {"sources - --json --project /nowhere", "no_such_unit",
         "{\"unit\": \"no_such_unit\", \"file_type_order\": [\".kbd\", \".ksd\", \".khd\", "
         "\".vhd\", "
         "\".v\", \".sv\", \".edf\"], \"files\": [], "
         "\"error\": \"'no_such_unit' has no source file\"}\n"},
        {"text fold -", "A", "a\n"},
        {"text fold -u - --json", "b", "{\"given\": \"b\", \"text\": \"B\"}\n"},
        {"text trim - --json", " b ", "{\"given\": \" b \", \"text\": \"b\"}\n"},
        {"text sanitise -", "a.b", "aLb\n"},
        {"text sanitise - --json", "a.b", "{\"given\": \"a.b\", \"name\": \"aLb\"}\n"},
        {"text wildcard 'a*' -", "ab", "ab\n"},
        {"text wildcard 'a*' -", "b", "\n"},
        {"text wildcard 'a*' - --json", "b", "{\"name\": \"b\", \"matches\": false}\n"},
    };
    for (auto const& [arguments, line, answer] : cases)
        EXPECT_EQ(conversation(arguments, line), answer + answer + answer) << arguments;
}

TEST(GenQueryBatch, NamesEndWithTheirLineOrANul) {
    EXPECT_EQ(query({"text", "fold", "-"}, "A\n\nB").output, "a\n\nb\n");
    EXPECT_EQ(query({"text", "fold", "-", "-0"}, std::string("A\nC\0\0B", 6)).output,
              "a\nc\n\nb\n");
    EXPECT_EQ(query({"text", "fold", "X", "-", "Y", "-"}, "A\n").output, "x\na\ny\n");
    EXPECT_EQ(query({"text", "fold", "-"}, "").output, "");
    ProgramResult const bad = query({"text", "fold", "-"}, std::string("A\0B\nC\n", 6));
    EXPECT_EQ(bad.status, 2);
    EXPECT_EQ(bad.output, "\nc\n");
    EXPECT_EQ(bad.errors, "gen_query: a name contains a NUL byte; with -0 names end with one\n");
}

TEST(GenQueryBatch, StatusIsThatOfTheWorst) {
    EXPECT_EQ(query({"find", "-"}, "/\n/tmp\n").status, 0);
    EXPECT_EQ(query({"find", "-"}, "/\n/no/such/file\n/\n").status, 1);
    EXPECT_EQ(query({"text", "wildcard", "a*", "-"}, "b\na\n").status, 0);
    EXPECT_EQ(query({"text", "wildcard", "a*", "-"}, "b\n").status, 1);
}

TEST(GenQueryBatch, FaultsAreAnsweredInALineOfTheirOwn) {
    EXPECT_EQ(query({"find", "-", "--json"}, "/no/such/file\n").output,
              "{\"name\": \"/no/such/file\", \"path\": null, \"group\": null, "
              "\"in_project\": null, \"error\": \"'/no/such/file' is not found\"}\n");
    ProgramResult const unread = query_by_shell("\"$query\" find / - --json </");
    EXPECT_EQ(unread.status, 2);
    EXPECT_THAT(
        unread.output,
        testing::EndsWith("}\n{\"error\": \"cannot read standard input: Is a directory\"}\n"));
    ProgramResult const full = query_by_shell("yes / | \"$query\" find - >/dev/full");
    EXPECT_EQ(full.status, 2);
    EXPECT_EQ(full.errors, "gen_query: cannot write to standard output\n");
}

TEST(GenQueryBatch, RemarkOfTheWholeRunIsNoLastLine) {
    ProgramResult const result =
        query({"find", "-", "--json", "--project", "/nowhere"}, std::string("a\0b\n", 4));
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output,
              "{\"error\": \"a name contains a NUL byte; with -0 names end with one\"}\n");
    EXPECT_THAT(result.errors, testing::HasSubstr("'/nowhere' does not exist"));
}

TEST(GenQueryBatch, ServeAnswersAllInOneLine) {
    EXPECT_EQ(
        query({"serve"}, R"({"args": ["text", "trim", "-", "c "], "input": " a\n b\n"})").output,
        R"({"id": null, "status": 0, "answer": {"answers": [{"given": " a", "text": "a"}, )"
        R"({"given": " b", "text": "b"}, {"given": "c ", "text": "c"}]}})"
        "\n");
}

TEST(GenQueryServe, RemarksStandBesideTheAnswer) {
    EXPECT_EQ(query({"serve"}, R"({"args": ["find", "/", "--project", "/nowhere"]})").output,
              R"({"id": null, "status": 0, "answer": {"files": [{"name": "/", "path": "/", )"
              R"("group": "as named", "in_project": null}], "paths": ["/"]}, )"
              R"("remarks": ["project directory '/nowhere' does not exist"]})"
              "\n");
}

TEST(GenQueryServe, ProgramsThatItStartsDoNotReadTheRequests) {
    std::string const request = R"({"args": ["time", "stopwatch", "cat"]})";
    ProgramResult const result = query({"serve"}, request + "\n" + request + "\n");
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 2) << result.output;
    EXPECT_THAT(query({"serve"}, R"({"args": ["time", "stopwatch", "grep", "-q", "handed on"], )"
                                 R"("input": "handed on\n"})")
                    .output,
                testing::HasSubstr(R"("exit_status": 0)"));
}

TEST(GenQueryServe, InputThatCannotBeKeptIsSaid) {
    std::string const request = R"({"args": ["text", "sort"], "input": "b\\na\\n"})";
    EXPECT_EQ(query_by_shell("printf '%s\\n' '" + request +
                             "' | (trap '' XFSZ; ulimit -f 0; \"$query\" serve) | cat")
                  .output,
              R"({"id": null, "status": 2, "answer": {"error": )"
              R"("cannot keep the input: File too large"}})"
              "\n");
}

TEST(GenQueryServe, InputIsRefusedWhereTheOldOneCannotBeKept) {
    if (read_file("/proc/self/maps").find("asan") != std::string::npos)
        GTEST_SKIP() << "the address sanitizer needs descriptors";
    // Three standard streams, the requests and the file of the input: no descriptor is left.
    std::string const request = R"({"args": ["text", "sort"], "input": "b\\na\\n"})";
    EXPECT_EQ(
        query_by_shell("printf '%s\\n' '" + request + "' | (ulimit -n 5; \"$query\" serve) | cat")
            .output,
        R"({"id": null, "status": 2, "answer": {"error": )"
        R"("cannot keep the input: Too many open files"}})"
        "\n");
}

TEST(GenQueryServe, RepliesThatNobodyCanReadAreAFault) {
    std::string const request = R"({"args": ["text", "sort"], "input": "b\\na\\n"})";
    EXPECT_EQ(query_by_shell("printf '%s\\n' '" + request + "' | \"$query\" serve >&-").status, 2);
}

TEST(GenQueryServe, ArgumentsAreThoseThatACommandLineMayHave) {
    EXPECT_EQ(query({"serve"}, R"({"args": ["text", "compare", "a\u0000b", "a"]})").output,
              R"({"id": null, "status": 2, "answer": )"
              R"({"error": "line 1: an argument contains a NUL byte"}})"
              "\n");
}

TEST(GenQueryServe, KeepsTheProjectUntilItIsReset) {
    TempDirectory const project;
    std::string const file = project.write("only_here.v", "");
    std::string const find = R"({"args": ["find", "only_here.v"]})";
    ProgramResult const result = query(
        {"serve"}, R"({"args": ["find", "only_here.v", "--project", ")" + project.path() +
                       "\"]}\n" + find + "\n" + R"({"args": ["reset"]})" + "\n" + find + "\n");
    std::size_t found = 0;
    for (std::size_t at = 0; (at = result.output.find("[\"" + file, at)) != std::string::npos; ++at)
        ++found;
    EXPECT_EQ(found, 2U) << result.output;
    EXPECT_EQ(result.status, 0);
}

TEST(GenQueryServe, AnInstallationForgetsWhatWasFoundBeforeIt) {
    TempDirectory const installation;
    std::string const file = installation.write("libraries/only_there.v");
    std::string const find = R"("find", "only_there.v"]})";
    std::string const output =
        query({"serve"}, R"({"args": [)" + find + "\n" + R"({"args": ["--root", ")" +
                             installation.path() + "\", " + find + "\n" + R"({"args": [)" + find +
                             "\n" + R"({"args": ["--root", "/elsewhere", )" + find + "\n")
            .output;
    std::istringstream lines(output);
    for (bool const found : {false, true, true, true}) {
        std::string line;
        std::getline(lines, line);
        EXPECT_EQ(line.find("[\"" + file + "\"]") != std::string::npos, found) << line;
        EXPECT_EQ(line.find("chosen already") != std::string::npos, lines.peek() == EOF) << line;
    }
}

TEST(GenQueryServe, SettingsOfAnEarlierRequestAreInForce) {
    std::string const output = query({"serve"}, "{\"args\": [\"project\", \"--project\", \"/\", "
                                                "\"--db\", \"/db\"]}\n"
                                                "{\"args\": [\"settings\"]}\n")
                                   .output;
    auto const second = nlohmann::json::parse(output.substr(output.find('\n')));
    auto const rows = second["answer"]["settings"];
    EXPECT_EQ(rows[0]["value"], "/");
    EXPECT_EQ(rows[0]["from"], "an earlier request");
    EXPECT_EQ(rows[1]["value"], "/db");
    EXPECT_EQ(rows[1]["from"], "an earlier request");
    EXPECT_EQ(rows[2]["from"], "project");
}

TEST(GenQueryServe, BadLinesAreAnsweredAndNeverFatal) {
    std::mt19937 random(14);
    std::string const request = R"({"id": 1, "args": ["text", "sort"], "input": "a"})";
    std::string lines;
    std::size_t const rounds = effort(2000);
    for (std::size_t round = 0; round < rounds; ++round) {
        std::string line = request;
        line[random() % line.size()] = "\"{}[],:\\a1\x80\0"[random() % 12];
        lines += line + "\n";
    }
    ProgramResult const result = query({"serve"}, lines + std::string(100000, '[') + "\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(
        static_cast<std::size_t>(std::count(result.output.begin(), result.output.end(), '\n')),
        rounds + 1);
}
