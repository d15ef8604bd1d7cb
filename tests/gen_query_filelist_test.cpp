// Lists of files for simulators, in the example installation. tests/filelist has simulators read
// them, where there are any.

#include "example_suite.h"

#include <filesystem>
#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

class GenQueryFilelist : public ExampleSuite {};

} // namespace

TEST_F(GenQueryFilelist, RelativeLibrariesStartAtTheProject) {
    std::filesystem::create_directory(m_root / "project/lib");
    Arguments const project = {"--project", "project", "--project-libs", "lib"};
    Arguments arguments = {"sources", "adder", "--filelist"};
    arguments.insert(arguments.end(), project.begin(), project.end());
    EXPECT_THAT(ask(arguments, ".").output, HasSubstr("\n-y /k/project/lib\n"));
}

TEST_F(GenQueryFilelist, RelativeDatabaseStartsAtTheCurrentDirectory) {
    m_root.make_directory("here/db");
    EXPECT_THAT(
        ask({"sources", "adder", "--filelist", "--project", "../project", "--db", "db"}, "here")
            .output,
        HasSubstr("\n-y /k/here/db\n"));
}

TEST_F(GenQueryFilelist, NamesOfAListWithoutADirectoryLieBesideIt) {
    m_root.write("here/list.f", "-F own.f");
    m_root.write("here/own.f", "adder.v");
    m_root.write("here/adder.v");
    EXPECT_EQ(ask({"filelist", "list.f", "--project", "../project"}, "here").output,
              "/k/here/adder.v\n");
}

TEST_F(GenQueryFilelist, LinesWithinQuotesCount) {
    m_root.write("project/lines.f", "\"a\nb.v\"\nno_such.v\n");
    EXPECT_THAT(ask({"filelist", "lines.f"}).errors, HasSubstr("lines.f:3: 'no_such.v'"));
}

TEST_F(GenQueryFilelist, QuoteThatNobodyClosesEndsWithItsLine) {
    m_root.write("project/late.vh");
    m_root.write("project/late.v", "`ifdef NEVER\n don\"t\n`endif\n"
                                   "`define LINES \"one \\\n two \"\n"
                                   "`include \"late.vh\"\nwire \"x\";\n");
    m_root.write("project/late.f", "late.v");
    EXPECT_EQ(ask({"filelist", "late.f", "--includes"}).output,
              "/k/project/late.v\n+incdir+/k/project\n");
}
