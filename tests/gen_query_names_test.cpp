#include "gen_query.h"
#include "temp_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// gen_query in an installation of its own, run in its project.
class GenQueryNames : public testing::Test {
  protected:
    void SetUp() override {
        m_root.make_directory("project");
        m_root.make_directory("linux");
        std::filesystem::create_symlink(TEST_BINARY_DIR "/gen_query", m_root / "linux/gen_query");
    }

    ProgramResult run(std::vector<std::string> const& arguments) {
        ProgramStart start;
        start.arguments = {m_root / "linux/gen_query"};
        start.directory = m_root / "project";
        return run_gen_query(arguments, start);
    }

    nlohmann::json names(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"names", "--json"});
        return nlohmann::json::parse(run(arguments).output)["names"];
    }

    TempDirectory m_root;
};

} // namespace

TEST_F(GenQueryNames, EveryNameIsListedForThisInstallationAndProject) {
    nlohmann::json const rows = names({});
    ASSERT_EQ(rows.size(), 31U);
    EXPECT_EQ(rows.front()["path"], m_root / "linux/Report_Window_01.krw");
    EXPECT_EQ(rows.back()["path"], m_root / "project/db/top.pdb");
    EXPECT_FALSE(rows.front().contains("exists"));
}

TEST_F(GenQueryNames, DatabaseFileIsTheOneAskedFor) {
    EXPECT_EQ(names({"--db", "/p/db", "--database-file", "chip"}).back()["path"], "/p/db/chip.pdb");
}

TEST_F(GenQueryNames, ExistsMarksWhatIsOnTheDisk) {
    EXPECT_EQ(run({"names", "--exists"}).status, 1);
    m_root.write("common/advisors/oa_ssn_table.xml");
    EXPECT_EQ(run({"names", "--exists"}).status, 0);
    for (nlohmann::json const& row : names({"--exists"}))
        EXPECT_EQ(row["exists"], row["function"] == "gen_get_oaw_ssn_filename") << row;
}

TEST_F(GenQueryNames, TempCreatesTheFileThatItPrints) {
    ProgramResult const result = run({"temp", "--directory", ".", "--prefix", "report"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, StartsWith("./rep0000"));
    EXPECT_THAT(result.output, EndsWith(".tmp\n"));
    std::string const name = result.output.substr(2, result.output.size() - 3);
    EXPECT_TRUE(std::filesystem::is_regular_file(m_root / ("project/" + name)));
}

TEST_F(GenQueryNames, TempSaysWhereNoFileCanBeCreated) {
    ProgramResult const result = run({"temp", "--directory", "/nowhere"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("no file can be created in /nowhere"));
}
