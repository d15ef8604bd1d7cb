// Lookups on bad ground: what cannot be read, leads nowhere, is too long, or is gone by now. Found
// or not found, and nothing else.

#include "gen_path_cache.h"
#include "gen_path_find.h"
#include "gen_path_fixture.h"
#include "gen_path_source.h"
#include "in_child.h"
#include "lookup_order.h"

#include <algorithm>
#include <climits>
#include <gtest/gtest.h>
#include <random>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class GenFindFault : public GenPathTest {
  protected:
    void SetUp() override {
        gen_set_project_dir_path(text_at("project"));
        gen_set_db_dir_path(text_at("project/db"));
        gen_set_project_library_paths("lib");
        gen_set_user_library_paths(text_at("user"));
    }

    /// What every way of asking for this name finds, each on a line of its own.
    std::string found_anyhow(std::string const& name) const {
        STR const text = library_string(name);
        std::string all = found_file(name) + "\n";
        all += found(gen_find_file_cache_assisted(text)) + "\n";
        all += found(gen_find_eda_file(text)) + "\n";
        STR include;
        gen_find_include_file(name.c_str(), at("elsewhere/top.v").c_str(), nullptr, &include,
                              nullptr);
        all += std::string(include) + "\n";
        for (auto* const search : {gen_get_source_files, gen_get_source_files_from_korvane_lib}) {
            MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
            search(text, &candidates);
            for (auto const& [group, path] : candidates)
                all += found(path) + "\n";
        }
        return all;
    }
    /// What found_anyhow gives when there is no such file.
    static constexpr char const* nothing = "\n\n\n\n";
};

/// What a user without rights finds. Whoever runs the tests as root is no such user.
std::string found_without_rights(std::string const& name) {
    return in_child([&name]() -> std::string {
        if (geteuid() == 0 && seteuid(65534) != 0)
            return "<no other user>";
        return found_file(name);
    });
}

} // namespace

TEST_F(GenFindFault, DirectoriesThatMayNotBeEnteredHaveNothing) {
    fs::permissions(m_directory.path(), fs::perms(0755));
    std::string const closed = write("project/top.v");
    std::string const open = write("user/top.v");
    struct {
        unsigned mode;
        std::string const& path;
    } const rows[] = {{0755, closed}, {0111, closed}, {0444, open}, {0, open}};
    for (auto const& row : rows) {
        fs::permissions(at("project"), fs::perms(row.mode));
        EXPECT_EQ(found_without_rights("top.v"), row.path) << std::oct << row.mode;
    }
    EXPECT_EQ(found_without_rights(closed), "");
    fs::permissions(at("project"), fs::perms(0755));
    fs::permissions(closed, fs::perms(0));
    EXPECT_EQ(found_without_rights("top.v"), closed) << "there, though nobody may read it";
}

TEST_F(GenFindFault, LinksThatLeadNowhereAreNotThere) {
    m_directory.make_directory("project/db");
    fs::create_symlink(at("nowhere"), at("project/top.v"));
    fs::create_symlink("top.v", at("project/db/top.v"));
    EXPECT_EQ(found_file("top.v"), "");
    EXPECT_EQ(found_file(at("project/top.v")), "");
    EXPECT_EQ(found_file(at("project/db/top.v")), "");
    std::string const path = write("user/top.v");
    EXPECT_EQ(found_file("top.v"), path);
    write("nowhere");
    EXPECT_EQ(found_file("top.v"), at("project/top.v"));
}

TEST_F(GenFindFault, LibrariesThatAreNoDirectoriesAreWalkedPast) {
    std::string const path = write("good/top.v");
    write("a file");
    fs::create_symlink(at("nowhere"), at("dangling"));
    fs::create_symlink("loop", at("loop"));
    fs::create_symlink("pong", at("ping"));
    fs::create_symlink("ping", at("pong"));
    gen_set_project_library_paths(text_at("a file") + ";" + text_at("dangling") + ";" +
                                  text_at("loop") + ";" + text_at("ping") + ";" + text_at("good"));
    EXPECT_EQ(found_file("top.v"), path);
    EXPECT_EQ(found_file("top.v/"), "") << "a file is no directory";
    EXPECT_EQ(found_file("top.v/below"), "");
}

TEST_F(GenFindFault, FileInThePlaceOfEachDirectoryFindsNothing) {
    for (char const* file : {"project", "user", "korvane/libraries", "korvane/eda", "elsewhere"})
        write(file);
    EXPECT_EQ(found_anyhow("top"), nothing);
    EXPECT_EQ(found_anyhow("sub/top.v"), nothing);
}

TEST_F(GenFindFault, NamesThatAreTooLongAreNotFound) {
    m_directory.make_directory("project");
    std::string deep;
    while (deep.size() < 3 * PATH_MAX)
        deep += "part/";
    for (std::string const& name :
         {std::string(NAME_MAX + 1, 'a'), std::string(PATH_MAX, 'a'), std::string(1 << 20, 'a'),
          deep + "top.v", "/" + deep + "top.v"}) {
        EXPECT_EQ(found_anyhow(name), nothing) << name.size();
        gen_destroy_find_file_cache();
        EXPECT_EQ(gen_get_relative_path_if_starts_with_project_dir(name.c_str()),
                  library_string(name));
    }
    std::string const longest = write("user/" + std::string(NAME_MAX - 2, 'b') + ".v");
    EXPECT_EQ(found_file(fs::path(longest).filename().string()), longest);
}

TEST_F(GenFindFault, DirectoryThatIsTooLongIsWalkedPast) {
    std::string deep = "/";
    while (deep.size() < 2 * PATH_MAX)
        deep += "part/";
    std::string const path = write("user/top.v");
    gen_set_project_dir_path(library_string(deep));
    gen_set_db_dir_path(library_string(deep + "db"));
    EXPECT_EQ(found_file("top.v"), path);
    gen_set_project_output_directory((deep + "out").c_str());
    EXPECT_EQ(gen_get_project_output_directory(), deep);
}

TEST_F(GenFindFault, DirectoriesMayComeGoAndChangePlacesBetweenCalls) {
    std::string const top = write("project/top.v");
    std::string const other = write("spare/other.v");
    EXPECT_EQ(found_file("top.v"), top);
    fs::rename(at("project"), at("gone"));
    EXPECT_EQ(found_file("top.v"), "");
    EXPECT_EQ(found_file("other.v"), "");
    fs::rename(at("spare"), at("project"));
    EXPECT_EQ(found_file("other.v"), at("project/other.v"));
    fs::remove_all(at("project"));
    write("project");
    EXPECT_EQ(found_file("other.v"), "");
    fs::remove_all(at("korvane"));
    EXPECT_EQ(found_anyhow("other"), nothing);
}

TEST_F(GenFindFault, CurrentDirectoryThatIsGoneIsAProjectWithoutFiles) {
    forget_path_state();
    std::string const shipped = write("korvane/libraries/top.v");
    ASSERT_EQ(rmdir(at("here").c_str()), 0);
    EXPECT_EQ(found_file("top.v"), shipped);
    EXPECT_NE(gen_project_directory_fio_find, nullptr);
    EXPECT_EQ(gen_get_project_dir_path(), "");
    EXPECT_STREQ(gen_get_project_output_directory(), "");
    gen_set_project_output_directory("out");
    EXPECT_STREQ(gen_get_project_output_directory(), "");
    EXPECT_FALSE(fs::exists("out"));
}

TEST_F(GenFindFault, SettersTakeAnyText) {
    std::mt19937 random(19);
    std::string const path = write("korvane/libraries/top.v");
    auto const any_text = [&random] {
        static char const often[] = {';', '"', '/', ' ', '.', '\t', '\\', '\0'};
        STR text(random() % 40, '\0');
        for (char& c : text)
            c = random() % 2 == 0 ? often[random() % sizeof often] : static_cast<char>(random());
        return text;
    };
    for (int round = 0; round < 500; ++round) {
        STR const project = any_text();
        STR const libraries = any_text();
        gen_set_project_dir_path(project);
        gen_set_db_dir_path(any_text());
        gen_set_project_library_paths(libraries);
        gen_set_user_library_paths(any_text());
        ASSERT_EQ(found_file("top.v"), path);
        EXPECT_EQ(gen_get_project_library_paths(), libraries);
    }
}
