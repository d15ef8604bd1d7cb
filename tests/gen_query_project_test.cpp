// gen_query's project, settings and installation in the example installation.

#include "example_suite.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

namespace fs = std::filesystem;

class GenQueryProject : public ExampleSuite {};

} // namespace

TEST_F(GenQueryProject, ProjectPrintsItsDirectories) {
    ProgramResult const result = ask(everywhere({"project", "--output", "out/./x"}));
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, StartsWith("project            /k/project/\n"
                                          "database           /k/project/db\n"
                                          "output             /k/project/out/x/\n"
                                          "parablocks         /k/project/parablocks/\n"
                                          "project libraries  lib\n"
                                          "user libraries     /k/home/ada/lib\n"
                                          "shipped libraries  /k/libraries/\n"
                                          "                   /k/libraries/vhdl/\n"));
    EXPECT_EQ(result.errors, "gen_query: output directory '/k/project/out/x/' does not exist\n");
    EXPECT_FALSE(fs::exists(m_root / "project/out"));
    EXPECT_EQ(ask(everywhere({"project", "--output", "out/./x", "--create"})).errors, "");
    EXPECT_TRUE(fs::is_directory(m_root / "project/out/x"));
}

TEST_F(GenQueryProject, OutputDirectoryThatCannotBeCreatedIsRemarked) {
    std::ofstream(m_root / "project/a_file").put('\n');
    ProgramResult const result = ask({"project", "--output", "a_file/out", "--create"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, HasSubstr("\noutput             /k/project/\n"));
    EXPECT_EQ(result.errors,
              "gen_query: output directory '/k/project/a_file/out/' cannot be created\n");
}

TEST_F(GenQueryProject, DirectoriesThatAreNoneAreRemarked) {
    EXPECT_EQ(ask({"find", "counter.v", "--db", "nodir", "--project-libs", "lib;no_lib",
                   "--user-libs", "no_user_lib"})
                  .errors,
              "gen_query: database directory 'nodir' does not exist\n"
              "gen_query: library directory 'no_lib' does not exist\n"
              "gen_query: library directory 'no_user_lib' does not exist\n");
    EXPECT_EQ(ask({"find", "/", "--project", "adder.v"}).errors,
              "gen_query: project directory 'adder.v' is no directory\n");
    EXPECT_EQ(ask({"include", "settings.vh", "--from", "nowhere/a.v"}).errors,
              "gen_query: including file 'nowhere/a.v' does not exist\n");
}

TEST_F(GenQueryProject, SettingsOfTheProjectApplyBelowIt) {
    fs::create_directories(m_root / "project/below");
    std::ofstream(m_root / "project/gen_query.toml")
        << "# of the team\ndb = \"db\"\nproject-libs = [\"lib\", \"more lib\"]\n";
    for (char const* const directory : {"project", "project/below"}) {
        auto const rows = json({"settings", "--project", m_root / directory})["settings"];
        EXPECT_EQ(rows[0]["value"], std::string("/k/") + directory);
        EXPECT_EQ(rows[0]["from"], "--project");
        EXPECT_EQ(rows[1]["value"], "/k/project/db/");
        EXPECT_EQ(rows[1]["from"], "/k/project/gen_query.toml");
        EXPECT_EQ(rows[2]["from"], "project");
        EXPECT_EQ(rows[3]["value"], "/k/project/lib;/k/project/more lib");
    }
    EXPECT_EQ(json({"settings"})["settings"][0]["value"], "/k/project");
    EXPECT_EQ(json({"settings", "--db", "other"})["settings"][1]["value"], "other");
    EXPECT_EQ(json({"project"})["database"], "/k/project/db/");
    EXPECT_EQ(json({"names"})["names"].back()["path"], "/k/project/db/top.pdb");
    fs::remove(m_root / "project/adder.v");
    EXPECT_EQ(ask({"find", "adder.v"}).output, "/k/project/db/adder.v\n");
}

TEST_F(GenQueryProject, SettingsMayHaveAListOverSeveralLines) {
    std::ofstream(m_root / "project/gen_query.toml") << "user-libs = [ # in this order\n"
                                                        "    \"lib\", # ours\n"
                                                        "\n"
                                                        "    \"a=b\",\n"
                                                        "]\r\n"
                                                        "project-libs = []\n"
                                                        "db = \"db\"";
    auto const rows = json({"settings"})["settings"];
    EXPECT_EQ(rows[1]["value"], "/k/project/db/");
    EXPECT_EQ(rows[3]["value"], "");
    EXPECT_EQ(rows[4]["value"], "/k/project/lib;/k/project/a=b");
}

TEST_F(GenQueryProject, DirectoriesOfAListMayHaveASemicolon) {
    m_root.write("project/a;b/parted.v");
    std::ofstream(m_root / "project/gen_query.toml") << "project-libs = [\"a;b\", \"lib\"]\n";
    EXPECT_EQ(ask({"find", "parted.v"}).output, "/k/project/a;b/parted.v\n");
}

TEST_F(GenQueryProject, SettingsThatCannotBeUsedAreSaid) {
    struct {
        char const* text;
        char const* fault;
    } const cases[] = {
        {"database = \"db\"\n", "unknown setting 'database'"},
        {"db = [\"a\", \"b\"]\n", "'db' takes one directory"},
        {"db = \"a\"\ndb = \"b\"\n", "'db' takes one directory"},
        {"db =\n", "'db' has an empty name"},
        {"x.db = \"a\"\n", "unknown setting 'x.db'"},
        {"db = 5\n", "line 1: a directory stands in quotes"},
        {"\nuser-libs = [\"a\", b]\n", "line 2: a directory stands in quotes"},
        {"user-libs = [\n\"a\",\ntrue\n]\n", "line 3: a directory stands in quotes"},
        {"user-libs = [\"a\", \"\"]\n", "'user-libs' has an empty name"},
        {"\ndb\n", "gen_query.toml', line 2: a setting has the form: db = \"directory\""},
        {"[paths]\ndb = \"a\"\n", "line 1: a setting has the form"},
        {"db = \"a\nb\"\n", "line 1: a name in quotes does not end"},
        {"user-libs = [\"a#b\"]\n", "line 1: a name in quotes does not end, or has a \"#\""},
        {"user-libs = [\n\"a\",\n", "line 2: a list does not end"},
    };
    for (auto const& [text, fault] : cases) {
        std::ofstream(m_root / "project/gen_query.toml") << text;
        ProgramResult const result = ask({"find", "adder.v"});
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.errors, HasSubstr(fault));
    }
    fs::remove(m_root / "project/gen_query.toml");
    fs::create_directories(m_root / "project/gen_query.toml");
    EXPECT_THAT(ask({"find", "adder.v"}).errors,
                HasSubstr("cannot read '/k/project/gen_query.toml': Is a directory"));
    fs::remove(m_root / "project/gen_query.toml");
    fs::create_symlink("nowhere", m_root / "project/gen_query.toml");
    EXPECT_THAT(ask({"find", "adder.v"}).errors,
                HasSubstr("cannot read '/k/project/gen_query.toml': No such file"));
}

TEST_F(GenQueryProject, SettingsInForceAreThoseOfTheCurrentDirectoryOtherwise) {
    auto const rows = json({"settings"})["settings"];
    EXPECT_EQ(rows[0]["value"], "/k/project");
    EXPECT_EQ(rows[0]["from"], "current directory");
    EXPECT_TRUE(rows[1]["value"].is_null());
    EXPECT_EQ(rows[2]["value"], "/k/project");
    EXPECT_EQ(rows[2]["from"], "project");
    EXPECT_EQ(json({"settings", "--project", "src"})["settings"][2]["value"], "src");
}

TEST_F(GenQueryProject, ExampleInstallationIsComplete) {
    auto const answer = json({"installation"});
    EXPECT_EQ(answer["libraries"].size(), 29U);
    for (auto const& library : answer["libraries"])
        EXPECT_TRUE(library["there"].get<bool>()) << library;
    EXPECT_THAT(answer["device_files"], ElementsAre("allycore.ddb", "prismo2.ddb"));
    for (char const* data : {"common_data", "miscellaneous", "unshipped_data", "tcl_applications",
                             "tcl_internal", "unshipped_tcl", "device_database"}) {
        std::string path = answer[data];
        EXPECT_TRUE(fs::exists(m_root / path.substr(2))) << path;
    }
}
