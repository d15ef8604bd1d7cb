// gen_query's lookups in the example installation.

#include "environment.h"
#include "example_suite.h"
#include "system_trouble.h"
#include "terminal.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

namespace fs = std::filesystem;

class GenQueryFind : public ExampleSuite {};

} // namespace

// find

TEST_F(GenQueryFind, PrintsOnePathALine) {
    ProgramResult const result = ask({"find", "counter.v", "inc/display.vh", "serializer.v"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "/k/project/counter.v\n"
                             "/k/project/inc/display.vh\n"
                             "/k/libraries/parablocks/io/serializer.v\n");
    EXPECT_EQ(result.errors, "");
}

TEST_F(GenQueryFind, NameThatIsNotFoundIsSaidAndStatusOne) {
    ProgramResult const result = ask({"find", "nothing.v", "counter.v"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "/k/project/counter.v\n");
    EXPECT_EQ(result.errors, "gen_query: 'nothing.v' is not found\n");
}

TEST_F(GenQueryFind, TraceShowsEveryExistenceCheckAndWhoAnswered) {
    ProgramResult const result = ask(everywhere({"find", "debounce.vhd", "--trace"}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "group              there  path\n"
                             "project            no     /k/project/debounce.vhd\n"
                             "database           no     /k/project/db/debounce.vhd\n"
                             "project libraries  no     /k/project/lib/debounce.vhd\n"
                             "user libraries     yes    "
                             "/k/home/ada/lib/debounce.vhd\n"
                             "/k/home/ada/lib/debounce.vhd\n");
}

TEST_F(GenQueryFind, TraceOfAMissGoesThroughAllGroups) {
    ProgramResult const missed = ask(everywhere({"find", "nothing.v", "--trace", "--json"}));
    EXPECT_EQ(missed.status, 1);
    auto const files = nlohmann::json::parse(missed.output)["files"];
    EXPECT_EQ(files[0]["checks"].size(), 5U + 21U);
    EXPECT_TRUE(files[0]["path"].is_null());
    EXPECT_EQ(files[0]["checks"][4]["group"], "parablocks");
    EXPECT_EQ(files[0]["checks"][25]["path"], "/k/eda/hspice/nothing.v");
}

TEST_F(GenQueryFind, AllShowsTheWinnerBeforeWhatItShadows) {
    ProgramResult const result = ask(everywhere({"find", "adder.v", "--all"}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "standing  group              path\n"
                             "wins      project            /k/project/adder.v\n"
                             "shadowed  database           /k/project/db/adder.v\n"
                             "shadowed  project libraries  /k/project/lib/adder.v\n"
                             "shadowed  user libraries     /k/home/ada/lib/adder.v\n"
                             "shadowed  parablocks         /k/project/parablocks/adder.v\n"
                             "shadowed  shipped libraries  "
                             "/k/libraries/parablocks/arithmetic/adder.v\n");
    auto const file = json(everywhere({"find", "adder.v", "--all"}))["files"][0];
    EXPECT_EQ(file["path"], "/k/project/adder.v");
    EXPECT_EQ(file["group"], "project");
    EXPECT_EQ(file["candidates"].size(), 6U);
    EXPECT_EQ(ask({"find", "nothing.v", "--all"}).status, 1);
}

TEST_F(GenQueryFind, SeveralNamesHaveAHeadingEach) {
    ProgramResult const result = ask({"find", "settings.vh", "blink.khd", "--all"});
    EXPECT_EQ(result.output, "settings.vh:\n"
                             "standing  group    path\n"
                             "wins      project  /k/project/settings.vh\n"
                             "blink.khd:\n"
                             "standing  group    path\n"
                             "wins      project  /k/project/blink.khd\n");
}

TEST_F(GenQueryFind, EdaLooksInItsLibrariesAlone) {
    EXPECT_EQ(ask({"find", "adder.v", "--eda"}).output, "/k/eda/sim_lib/adder.v\n");
    EXPECT_EQ(ask({"find", "counter.v", "--eda"}).status, 1);
    EXPECT_EQ(ask({"find", "adder.v", "--eda", "--cached"}).status, 2);
}

TEST_F(GenQueryFind, CachedNameIsAskedForOnce) {
    auto const files = json({"find", "adder.v", "adder.v", "--cached", "--trace"})["files"];
    EXPECT_EQ(files[0]["checks"].size(), 1U);
    EXPECT_EQ(files[0]["group"], "project");
    EXPECT_EQ(files[1]["checks"].size(), 0U);
    EXPECT_EQ(files[1]["group"], "cache");
    EXPECT_EQ(files[1]["path"], "/k/project/adder.v");
    EXPECT_EQ(ask({"find", "adder.v", "--cached", "--all"}).status, 2);
}

TEST_F(GenQueryFind, AbsoluteNameIsOnlyTested) {
    std::string const path = m_root / "project/counter.v";
    auto const file = json({"find", path, "--trace"})["files"][0];
    EXPECT_EQ(file["group"], "as named");
    EXPECT_EQ(file["in_project"], "counter.v");
    EXPECT_EQ(ask({"find", path + "x"}).status, 1);
}

TEST_F(GenQueryFind, PathBelowTheProjectIsGivenRelativeToItToo) {
    auto const files = json({"find", "inc/display.vh", "serializer.v"})["files"];
    EXPECT_EQ(files[0]["in_project"], "inc/display.vh");
    EXPECT_TRUE(files[1]["in_project"].is_null());
}

TEST_F(GenQueryFind, ProjectMayLieElsewhere) {
    EXPECT_EQ(ask({"find", "counter.v"}, "home").status, 1);
    EXPECT_EQ(ask({"find", "counter.v", "--project", m_root / "project"}, "home").output,
              "/k/project/counter.v\n");
    EXPECT_EQ(ask({"find", "counter.v", "--project", "../project"}, "home").output,
              "../project/counter.v\n");
}

// Colour

TEST_F(GenQueryFind, ColourMarksTheAnswerOnATerminalAlone) {
    if (!terminal_trouble().empty())
        GTEST_SKIP() << terminal_trouble();
    ScopedCurrentDirectory const here(m_root / "project");
    ScopedVariable const terminal("TERM", "xterm");
    ScopedVariable const colour("NO_COLOR", nullptr);
    auto const seen = [this] {
        return run_at_terminal({executable(), "find", "adder.v", "--all"}, "").seen;
    };
    std::string const coloured = seen();
    EXPECT_THAT(coloured, HasSubstr("\033[1;32mwins      project "));
    EXPECT_THAT(coloured, HasSubstr("\033[2mshadowed  "));
    EXPECT_THAT(coloured, StartsWith("standing"));
    for (auto const& [name, value] : {std::pair("NO_COLOR", "1"), std::pair("TERM", "dumb")}) {
        ScopedVariable const refusal(name, value);
        std::string const plain = seen();
        EXPECT_THAT(plain, HasSubstr("wins"));
        EXPECT_EQ(plain.find('\033'), std::string::npos) << name;
    }
    EXPECT_EQ(ask({"find", "adder.v", "--all"}).output.find('\033'), std::string::npos);
}

// include

TEST_F(GenQueryFind, NestedIncludesAreResolvedFromTheFileThatContainsThem) {
    EXPECT_EQ(ask({"include", "settings.vh", "inc/display.vh", "--from", "counter.v"}).output,
              "/k/project/settings.vh\n/k/project/inc/display.vh\n");
    EXPECT_EQ(ask({"include", "segments.vh", "parablocks.vh", "--from", "inc/display.vh"}).output,
              "inc/segments.vh\n/k/libraries/parablocks/parablocks.vh\n");
}

TEST_F(GenQueryFind, IncludeBesideTheFileIsGivenBesideItsAliasToo) {
    auto const file = json({"include", "segments.vh", "--from", "inc/display.vh", "--alias",
                            "/copy/inc/display.vh"})["files"][0];
    EXPECT_EQ(file["path"], "inc/segments.vh");
    EXPECT_EQ(file["beside_alias"], "/copy/inc/segments.vh");
    EXPECT_EQ(file["group"], "beside the including file");
    auto const all = json({"include", "segments.vh", "--from", "inc/display.vh", "--alias",
                           "/copy/inc/display.vh", "--all"})["files"][0];
    EXPECT_EQ(all["path"], "inc/segments.vh");
    EXPECT_EQ(all["beside_alias"], "/copy/inc/segments.vh");
}

TEST_F(GenQueryFind, IncludeThatIsNotThereIsStatusOne) {
    ProgramResult const result = ask({"include", "segments.vh"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "gen_query: 'segments.vh' is not found; there is "
                             "'/k/project/inc/segments.vh'\n");
    ProgramResult const traced = ask({"include", "segments.vh", "--from", "counter.v", "--trace"});
    EXPECT_THAT(traced.output, EndsWith("beside the including file  no     segments.vh\n"));
}

TEST_F(GenQueryFind, NamesInBracketsAndOfAnyBytesAreNames) {
    for (char const* const name : {"[x]", "[]", "[a,b]"}) {
        std::ofstream(m_root / ("project/" + std::string(name))).put('\n');
        EXPECT_EQ(ask({"find", name}).output, std::string("/k/project/") + name + "\n");
        EXPECT_EQ(ask({"include", name}).output, std::string("/k/project/") + name + "\n");
    }
    std::ofstream(m_root / "project/\xff.v").put('\n');
    EXPECT_EQ(ask({"find", "\xff.v"}).output, "/k/project/\xff.v\n");
    EXPECT_EQ(json({"find", "\xff.v"})["paths"][0], "/k/project/\uefff.v");
}

TEST_F(GenQueryFind, AbsoluteIncludeIsTakenAsNamed) {
    std::string const name = m_root / "project/adder.v";
    EXPECT_EQ(ask({"include", name, "--trace"}).output, "group     there  path\n"
                                                        "as named  yes    /k/project/adder.v\n"
                                                        "/k/project/adder.v\n");
}

TEST_F(GenQueryFind, HintsAtTheFileWithTheMostLikeName) {
    struct {
        char const* name;
        char const* hint;
    } const cases[] = {
        {"ADDER.V", "/k/project/adder.v"},             // another case
        {"counter.vs", "/k/project/counter.v"},        // rather than .kbd, .vhd, .edf
        {"counter.vhdl", "/k/project/counter.vhd"},    //
        {"segments.vh", "/k/project/inc/segments.vh"}, // in no directory of the lookup
        {"Counter.VHD", "/k/project/counter.vhd"},
        {"prismo2.ibs", "/k/eda/ibis/prismo2.ibs"}, // --eda finds it
    };
    for (auto const& [name, hint] : cases)
        EXPECT_EQ(ask({"find", name}).errors,
                  std::string("gen_query: '") + name + "' is not found; there is '" + hint + "'\n");
    EXPECT_EQ(ask({"sources", "Display"}).errors, "gen_query: 'Display' has no source file; there "
                                                  "is '/k/project/src/display/display.sv'\n");
    EXPECT_EQ(ask({"find", std::string(300, 'a')}).errors,
              "gen_query: '" + std::string(300, 'a') + "' is not found\n");
}

// sources

TEST_F(GenQueryFind, SourcesComeInGroupOrderOneOfEachType) {
    ProgramResult const result = ask(everywhere({"sources", "counter"}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "group  from               type  path\n"
                             "1      project            kbd   /k/project/counter.kbd\n"
                             "1      project            vhd   /k/project/counter.vhd\n"
                             "1      project            v     /k/project/counter.v\n"
                             "2      database           edf   /k/project/db/counter.edf\n"
                             "3      project libraries  sv    /k/project/lib/counter.sv\n");
    auto const answer = json({"sources", "counter"});
    EXPECT_THAT(answer["file_type_order"],
                ElementsAre(".kbd", ".ksd", ".khd", ".vhd", ".v", ".sv", ".edf"));
}

TEST_F(GenQueryFind, AllSourcesCompeteWithinTheirType) {
    ProgramResult const result = ask(everywhere({"sources", "adder", "--all"}));
    EXPECT_THAT(result.output, StartsWith("standing  group              path\n"
                                          "wins      project            /k/project/adder.v\n"
                                          "shadowed  database "));
    EXPECT_EQ(json(everywhere({"sources", "counter", "--all"}))["candidates"].size(), 5U);
}

TEST_F(GenQueryFind, ShippedSourcesAloneAndNone) {
    EXPECT_THAT(ask({"sources", "adder", "--shipped"}).output,
                HasSubstr("4      shipped libraries  v     "
                          "/k/libraries/parablocks/arithmetic/adder.v\n"));
    // The project's parablocks have the same tag.
    fs::create_directories(m_root / "project/parablocks");
    std::ofstream(m_root / "project/parablocks/own.v").put('\n');
    EXPECT_EQ(json({"sources", "own"})["files"][0]["from"], "parablocks");
    ProgramResult const none = ask({"sources", "nothing"});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.output, "");
    EXPECT_EQ(none.errors, "gen_query: 'nothing' has no source file\n");
}
