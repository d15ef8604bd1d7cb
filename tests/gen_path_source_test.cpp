#include "gen_path_source.h"

#include "error_recorder.h"
#include "gen_path_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Candidate = std::pair<int, std::string>;
using Candidates = std::vector<Candidate>;

Candidates listed(MEM_VECTOR<GEN_SOURCE_CANDIDATE> const& candidates) {
    Candidates list;
    for (auto const& [group, path] : candidates)
        list.emplace_back(group, found(path));
    return list;
}

class GenSourceFiles : public GenPathTest {
  protected:
    void SetUp() override {
        gen_set_project_dir_path(text_at("project"));
        gen_set_db_dir_path(text_at("project/db"));
        gen_set_project_library_paths("lib;" + text_at("team"));
        gen_set_user_library_paths(text_at("user"));
    }
    static Candidates sources(char const* base_name) {
        MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
        bool const any = gen_get_source_files(base_name, &candidates);
        EXPECT_EQ(any, !candidates.empty());
        return listed(candidates);
    }
    static Candidates shipped_sources(char const* base_name) {
        MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
        bool const any = gen_get_source_files_from_korvane_lib(base_name, &candidates);
        EXPECT_EQ(any, !candidates.empty());
        return listed(candidates);
    }
    Candidate in(int group, std::string const& path) const { return {group, at(path)}; }
};

/// The three answers of an include search.
struct Include {
    bool found;
    std::string path;
    std::string beside_alias;

    bool operator==(Include const&) const = default;
};

std::ostream& operator<<(std::ostream& stream, Include const& include) {
    return stream << include.found << " '" << include.path << "' '" << include.beside_alias << "'";
}

class GenIncludeFile : public GenPathTest {
  protected:
    void SetUp() override { gen_set_project_dir_path(text_at("project")); }

    static Include include(char const* name, std::string const& file, char const* alias = nullptr) {
        STR path = "left over";
        STR beside_alias = "left over";
        bool const found = gen_find_include_file(name, file.c_str(), alias, &path, &beside_alias);
        return {found, std::string(path), std::string(beside_alias)};
    }
};

} // namespace

// Source files

TEST_F(GenSourceFiles, DirectoryIsNoSourceFile) {
    m_directory.make_directory("project/top.kbd");
    m_directory.make_directory("target");
    std::filesystem::create_directory_symlink(at("target"), at("project/top.ksd"));
    write("elsewhere/file");
    std::filesystem::create_symlink(at("elsewhere/file"), at("project/top.v"));
    write("team/top.kbd");
    EXPECT_THAT(sources("top"), ElementsAre(in(1, "project/top.v"), in(3, "team/top.kbd")));
    m_directory.make_directory("korvane/libraries/unit.v");
    EXPECT_THAT(shipped_sources("unit"), IsEmpty());
}

TEST_F(GenSourceFiles, GroupsAreVisitedWithTheUsersBeforeTheShippedOnes) {
    write("korvane/libraries/others/top.edf");
    write("project/parablocks/top.sv");
    write("user/top.v");
    write("team/top.vhd");
    write("project/db/top.khd");
    write("project/top.ksd");
    EXPECT_THAT(sources("top"), ElementsAre(in(1, "project/top.ksd"), in(2, "project/db/top.khd"),
                                            in(3, "team/top.vhd"), in(5, "user/top.v"),
                                            in(4, "project/parablocks/top.sv"),
                                            in(4, "korvane/libraries/others/top.edf")));
}

TEST_F(GenSourceFiles, OneOfEachTypeIsTakenFromTheEarliestGroup) {
    for (char const* directory :
         {"project/", "project/db/", "project/lib/", "user/", "korvane/libraries/"})
        write(std::string(directory) + "top.v");
    EXPECT_THAT(sources("top"), ElementsAre(in(1, "project/top.v")));
    std::filesystem::remove(at("project/top.v"));
    EXPECT_THAT(sources("top"), ElementsAre(in(2, "project/db/top.v")));
}

TEST_F(GenSourceFiles, WithinAGroupTheFirstListedOneIsTaken) {
    write("team/top.v");
    write("project/lib/top.v");
    write("team/top.vhd");
    EXPECT_THAT(sources("top"), ElementsAre(in(3, "project/lib/top.v"), in(3, "team/top.vhd")));
}

TEST_F(GenSourceFiles, GroupOrderGoesBeforeFileTypeOrder) {
    write("korvane/libraries/top.kbd");
    write("project/top.edf");
    write("project/top.v");
    EXPECT_THAT(sources("top"), ElementsAre(in(1, "project/top.v"), in(1, "project/top.edf"),
                                            in(4, "korvane/libraries/top.kbd")));
}

TEST_F(GenSourceFiles, AtMostSevenAreAddedAndTheSharedOrderStays) {
    for (char const* directory : {"project/", "user/"})
        for (char const* extension : {"kbd", "ksd", "khd", "vhd", "v", "sv", "edf", "txt"})
            write(std::string(directory) + "top." + extension);
    EXPECT_EQ(sources("top").size(), 7U);
    EXPECT_EQ(gen_get_file_type_order_helper()->size(), 7U);
    EXPECT_EQ(sources("top").size(), 7U);
}

TEST_F(GenSourceFiles, AreAppendedAndEarlierEntriesCount) {
    write("project/top.v");
    MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
    EXPECT_FALSE(gen_get_source_files("missing", &candidates));
    EXPECT_TRUE(gen_get_source_files("top", &candidates));
    EXPECT_TRUE(gen_get_source_files("top", &candidates));
    EXPECT_TRUE(gen_get_source_files("missing", &candidates));
    EXPECT_TRUE(gen_get_source_files_from_korvane_lib("missing", &candidates));
    EXPECT_THAT(listed(candidates), ElementsAre(in(1, "project/top.v"), in(1, "project/top.v")));
    EXPECT_FALSE(gen_get_source_files("top", nullptr));
    EXPECT_FALSE(gen_get_source_files_from_korvane_lib("top", nullptr));
}

TEST_F(GenSourceFiles, EditedOrderIsFollowed) {
    write("project/top.v");
    write("project/top.x");
    *gen_get_file_type_order_helper() = {"x"};
    EXPECT_THAT(sources("top"), ElementsAre(in(1, "project/top.x")));
    gen_get_file_type_order_helper()->clear();
    EXPECT_THAT(sources("top"), IsEmpty());
}

TEST_F(GenSourceFiles, ProjectIsDefaultedAndItsParablocksSeenAtOnce) {
    forget_path_state();
    write("here/top.v");
    write("here/parablocks/top.sv");
    EXPECT_THAT(sources("top"), ElementsAre(in(1, "here/top.v"), in(4, "here/parablocks/top.sv")));
}

TEST_F(GenSourceFiles, AbsentGroupsAreLeftOut) {
    forget_path_state();
    gen_set_project_dir_path(text_at("project"));
    write("project/parablocks/top.v");
    write("korvane/eda/mentor/top.sv");
    EXPECT_THAT(sources("top"), ElementsAre(in(4, "project/parablocks/top.v")));
}

TEST_F(GenSourceFiles, RelativeProjectGivesAbsoluteFiles) {
    write("here/p/top.v");
    write("here/p/lib/top.sv");
    gen_set_project_dir_path("p");
    EXPECT_THAT(sources("top"), ElementsAre(in(1, "here/p/top.v"), in(3, "here/p/lib/top.sv")));
}

TEST_F(GenSourceFiles, FromTheShippedLibrariesLookNowhereElse) {
    forget_path_state();
    write("here/top.v");
    write("korvane/libraries/vhdl/top.vhd");
    write("korvane/libraries/top.v");
    EXPECT_THAT(shipped_sources("top"), ElementsAre(in(4, "korvane/libraries/top.v"),
                                                    in(4, "korvane/libraries/vhdl/top.vhd")));
    EXPECT_EQ(gen_project_directory_fio_find, nullptr);
}

TEST_F(GenSourceFiles, MissingLibrariesAreReportedAndPassedOver) {
    gen_init_korvane_lib_paths();
    delete std::exchange(gen_korvane_libraries, nullptr);
    write("project/top.v");
    ErrorRecorder recorder;
    EXPECT_THAT(sources("top"), ElementsAre(in(1, "project/top.v")));
    EXPECT_THAT(shipped_sources("top"), IsEmpty());
    EXPECT_THAT(recorder.errors(),
                ElementsAre(ReportedError{"korvane_libs != 0", "GEN", "gen_path", 2932},
                            ReportedError{"korvane_libs != 0", "GEN", "gen_path", 3042}));
}

TEST(GenAppendCandidates, TakesWhatIsStillWantedAndRemovesItsExtension) {
    MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
    MEM_VECTOR<STR> order{".v", "vhd", ".V", ".edf"};
    MEM_LIST<FIO_PATH> const found_paths{FIO_PATH("/a/top.edf"), FIO_PATH("/a/top.V"),
                                         FIO_PATH("/b/top.v"),   FIO_PATH("/a/top.sv"),
                                         FIO_PATH("/a/top"),     FIO_PATH("/a/top.VHD")};
    gen_append_candidates_helper(GEN_LIBRARY_PATHS_USER_LIBRARIES, found_paths, &candidates,
                                 &order);
    EXPECT_THAT(listed(candidates),
                ElementsAre(Candidate{5, "/a/top.edf"}, Candidate{5, "/a/top.V"},
                            Candidate{5, "/a/top.VHD"}));
    EXPECT_THAT(order, IsEmpty());
}

TEST(GenAppendCandidates, NullsAreIgnored) {
    MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
    MEM_VECTOR<STR> order{".v"};
    MEM_LIST<FIO_PATH> const found_paths{FIO_PATH("/a/top.v")};
    gen_append_candidates_helper(GEN_LIBRARY_PATHS_DB_DIR, found_paths, nullptr, &order);
    EXPECT_EQ(order.size(), 1U);
    gen_append_candidates_helper(GEN_LIBRARY_PATHS_DB_DIR, found_paths, &candidates, nullptr);
    EXPECT_THAT(candidates, IsEmpty());
}

// Include files

TEST_F(GenIncludeFile, GeneralLookupComesFirst) {
    std::string const general = write("project/x.h");
    write("elsewhere/x.h");
    EXPECT_EQ(include("x.h", at("elsewhere/top.v"), "/alias/top.v"), (Include{true, general, ""}));
}

TEST_F(GenIncludeFile, EvenAShippedLibraryComesBeforeTheIncludingFile) {
    std::string const shipped = write("korvane/libraries/others/x.h");
    write("elsewhere/x.h");
    EXPECT_EQ(include("x.h", at("elsewhere/top.v")), (Include{true, shipped, ""}));
}

TEST_F(GenIncludeFile, IncludingFilesDirectoryComesLast) {
    std::string const beside = write("elsewhere/inc/x.h");
    EXPECT_EQ(include("inc/x.h", at("elsewhere/top.v"), "/c/top.v"),
              (Include{true, beside, "/c/inc/x.h"}));
    EXPECT_EQ(include("inc/x.h", at("elsewhere/top.v")), (Include{true, beside, ""}))
        << "no alias, no path beside it";
}

TEST_F(GenIncludeFile, PathsBesideTheIncludingFileAreSimplified) {
    std::string const beside = write("elsewhere/inc/x.h");
    EXPECT_EQ(include("../inc/./x.h", at("elsewhere/src/top.v"), "/c/d/top.v"),
              (Include{true, beside, "/c/inc/x.h"}));
}

TEST_F(GenIncludeFile, IncludingFileWithoutDirectoryMeansTheCurrentOne) {
    write("here/x.h");
    EXPECT_EQ(include("x.h", "top.v", "top.v"), (Include{true, "x.h", "x.h"}));
}

TEST_F(GenIncludeFile, AbsoluteNameIsNeverLookedForBeside) {
    std::string const path = write("elsewhere/x.h");
    EXPECT_EQ(include(path.c_str(), at("other/top.v")), (Include{true, path, ""}));
    write("other" + at("missing.h"));
    EXPECT_EQ(include(at("missing.h").c_str(), at("other/top.v")), (Include{false, "", ""}));
}

TEST_F(GenIncludeFile, NotFoundEmptiesTheOutputs) {
    EXPECT_EQ(include("x.h", at("elsewhere/top.v"), "/c/top.v"), (Include{false, "", ""}));
    EXPECT_EQ(include(nullptr, at("elsewhere/top.v"), "/c/top.v"), (Include{false, "", ""}));
}

TEST_F(GenIncludeFile, NullNameSetsNoProject) {
    forget_path_state();
    EXPECT_FALSE(gen_find_include_file(nullptr, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(gen_project_directory_fio_find, nullptr);
}

TEST_F(GenIncludeFile, EmptyNameMeansTheDirectoryBeside) {
    m_directory.make_directory("elsewhere");
    EXPECT_EQ(include("", at("elsewhere/top.v"), "/c/top.v"),
              (Include{true, at("elsewhere/"), "/c/"}));
}

TEST_F(GenIncludeFile, OutputsAndIncludingFileMayBeNull) {
    write("elsewhere/x.h");
    std::string const file = at("elsewhere/top.v");
    EXPECT_TRUE(gen_find_include_file("x.h", file.c_str(), "/c/top.v", nullptr, nullptr));
    EXPECT_FALSE(gen_find_include_file("x.h", nullptr, "/c/top.v", nullptr, nullptr));
}

TEST_F(GenIncludeFile, OutputMayContainTheIncludingFile) {
    std::string const first = write("elsewhere/a.h");
    std::string const second = write("elsewhere/sub/b.h");
    STR path = text_at("elsewhere/top.v");
    EXPECT_TRUE(gen_find_include_file("a.h", path.c_str(), nullptr, &path, nullptr));
    EXPECT_EQ(std::string(path), first);
    EXPECT_TRUE(gen_find_include_file("sub/b.h", path.c_str(), nullptr, &path, nullptr));
    EXPECT_EQ(std::string(path), second);
}
