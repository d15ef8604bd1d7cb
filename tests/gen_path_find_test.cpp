#include "gen_path_find.h"

#include "error_recorder.h"
#include "gen_path_fixture.h"
#include "lookup_order.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class GenFindFile : public GenPathTest {
  protected:
    void SetUp() override {
        gen_set_project_dir_path(text_at("project"));
        gen_set_db_dir_path(text_at("project/db"));
        gen_set_project_library_paths("lib;" + text_at("team"));
        gen_set_user_library_paths("mine;" + text_at("user"));
    }

    static std::string found_eda(std::string const& name) {
        return found(gen_find_eda_file(library_string(name)));
    }
    static std::string found_cached(std::string const& name) {
        return found(gen_find_file_cache_assisted(library_string(name)));
    }
};

/// Every directory that a lookup asks, in its order.
std::vector<std::string> lookup_order() {
    std::vector<std::string> directories{
        "project/",      "project/db/", "project/lib/",       "team/",
        "project/mine/", "user/",       "project/parablocks/"};
    for (std::string const& directory : shipped_directories("korvane/"))
        directories.push_back(directory);
    return directories;
}

} // namespace

TEST_F(GenFindFile, EarlierDirectoriesShadowLaterOnes) {
    // From the back: each file that appears is found at once, and hides the one before.
    EXPECT_EQ(found_file("top.v"), "");
    std::vector<std::string> const directories = lookup_order();
    ASSERT_EQ(directories.size(), 28U);
    for (std::size_t i = directories.size(); i-- > 0;) {
        std::string const path = write(directories[i] + "top.v");
        EXPECT_EQ(found_file("top.v"), path);
    }
}

TEST_F(GenFindFile, GroupsThatAreNotSetAreLeftOut) {
    forget_path_state();
    for (char const* directory : {"project/db/", "project/lib/", "team/", "user/", "eda/mentor/"})
        write(std::string(directory) + "top.v");
    gen_set_project_dir_path(text_at("project"));
    EXPECT_EQ(found_file("top.v"), "");
    gen_set_user_library_paths(text_at("user"));
    EXPECT_EQ(found_file("top.v"), at("user/top.v"));
    gen_set_project_library_paths(text_at("team"));
    EXPECT_EQ(found_file("top.v"), at("team/top.v"));
    gen_set_project_library_paths("");
    EXPECT_EQ(found_file("top.v"), at("user/top.v"));
    gen_set_db_dir_path(text_at("project/db"));
    EXPECT_EQ(found_file("top.v"), at("project/db/top.v"));
}

TEST_F(GenFindFile, RelativeNamesMayGoThroughDirectories) {
    std::string const path = write("user/sub/ram.mif");
    EXPECT_EQ(found_file("sub/ram.mif"), path);
    EXPECT_EQ(found_file("sub"), at("user/sub")) << "a directory is found as well";
    EXPECT_EQ(found_file("./sub/ram.mif"), at("user/./sub/ram.mif"));
    write("team/x.v");
    m_directory.make_directory("project");
    EXPECT_EQ(found_file("../team/x.v"), at("project/../team/x.v"));
}

TEST_F(GenFindFile, AbsoluteNameIsOnlyTestedForExistence) {
    std::string const elsewhere = write("elsewhere/top.v");
    EXPECT_EQ(found_file(elsewhere), elsewhere);
    EXPECT_EQ(found_file("/" + elsewhere), "/" + elsewhere) << "a network path";
    write("project/missing.v");
    EXPECT_EQ(found_file(at("elsewhere/missing.v")), "");
    EXPECT_EQ(found_file("/"), "/");
}

TEST_F(GenFindFile, NothingIsFoundForNothing) {
    EXPECT_EQ(found_file(""), "");
    write("project/a");
    EXPECT_EQ(found(gen_find_file(STR("a\0b", 3))), "");
    EXPECT_EQ(found(gen_find_file(STR("/\0b", 3))), "");
}

TEST_F(GenFindFile, CurrentDirectoryBecomesTheProjectWhenNoneIsSet) {
    forget_path_state();
    std::string const path = write("here/top.v");
    EXPECT_EQ(found_file("top.v"), path);
    EXPECT_EQ(gen_get_project_dir_path(), text_at("here/"));
    EXPECT_EQ(found(gen_get_project_parablocks_dir_path()), at("here/parablocks/"));
}

TEST_F(GenFindFile, AbsoluteNameDefaultsTheProjectToo) {
    forget_path_state();
    EXPECT_EQ(found_file("/"), "/");
    EXPECT_EQ(gen_get_project_dir_path(), text_at("here/"));
    EXPECT_NE(gen_korvane_libraries, nullptr);
    EXPECT_NE(gen_korvane_eda_libraries, nullptr);
}

TEST_F(GenFindFile, RelativeLibrariesFollowTheProject) {
    std::string const first = write("project/lib/top.v");
    std::string const second = write("other/lib/top.v");
    EXPECT_EQ(found_file("top.v"), first);
    gen_set_project_dir_path(text_at("other"));
    EXPECT_EQ(found_file("top.v"), second);
    std::filesystem::remove(second);
    std::string const mine = write("other/mine/top.v");
    EXPECT_EQ(found_file("top.v"), mine);
}

TEST_F(GenFindFile, RelativeLibrariesOfARelativeProjectAreMadeAbsolute) {
    std::string const path = write("here/p/lib/top.v");
    gen_set_project_dir_path("p");
    EXPECT_EQ(found_file("top.v"), path);
    ScopedCurrentDirectory const elsewhere(m_directory.path());
    EXPECT_EQ(found_file("top.v"), "");
}

TEST_F(GenFindFile, MissingLibrariesAreReportedAndPassedOver) {
    gen_init_korvane_lib_paths();
    delete std::exchange(gen_korvane_libraries, nullptr);
    std::string const path = write("user/top.v");
    ErrorRecorder recorder;
    EXPECT_EQ(found_file("top.v"), path);
    EXPECT_EQ(found_file("missing.v"), "");
    EXPECT_EQ(found_file(path), path); // reported before the name is looked at
    ReportedError const expected{"korvane_libs != 0", "GEN", "gen_path", 2601};
    EXPECT_THAT(recorder.errors(), ElementsAre(expected, expected, expected));
}

// Libraries for outside tools

TEST_F(GenFindFile, EdaFilesComeFromTheirLibrariesAlone) {
    write("project/cell.v");
    write("korvane/libraries/cell.v");
    write("korvane/eda/hspice/cell.v");
    EXPECT_EQ(found_eda("cell.v"), "");
    std::vector<std::string> const directories = eda_directories("korvane/");
    ASSERT_EQ(directories.size(), 7U);
    for (std::size_t i = directories.size(); i-- > 0;) {
        std::string const path = write(directories[i] + "cell.v");
        EXPECT_EQ(found_eda("cell.v"), path);
    }
}

TEST_F(GenFindFile, EdaLookupSetsNoProject) {
    forget_path_state();
    EXPECT_EQ(found_eda("cell.v"), "");
    EXPECT_EQ(gen_project_directory_fio_find, nullptr);
    EXPECT_EQ(gen_get_project_dir_path(), "");
}

TEST_F(GenFindFile, EdaLookupOfAnAbsoluteNameTestsItsExistence) {
    std::string const path = write("elsewhere/cell.v");
    EXPECT_EQ(found_eda(path), path);
    EXPECT_EQ(found_eda(at("elsewhere/missing.v")), "");
    EXPECT_EQ(found_eda(""), "");
}

TEST_F(GenFindFile, MissingEdaLibrariesAreReported) {
    gen_init_korvane_lib_paths();
    delete std::exchange(gen_korvane_eda_libraries, nullptr);
    std::string const path = write("elsewhere/cell.v");
    ErrorRecorder recorder;
    EXPECT_EQ(found_eda("cell.v"), "");
    EXPECT_EQ(found_eda(path), path);
    ReportedError const expected{"korvane_eda_libs != 0", "GEN", "gen_path", 2749};
    EXPECT_THAT(recorder.errors(), ElementsAre(expected, expected));
}
