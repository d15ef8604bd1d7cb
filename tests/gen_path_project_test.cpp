#include "gen_path_project.h"

#include "gen_path_fixture.h"
#include "mem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class GenProject : public GenPathTest {
  protected:
    static std::vector<std::string> directories(FIO_FIND const* find) {
        return find != nullptr ? texts(find->directories()) : std::vector<std::string>();
    }
};

class GenOutputDirectory : public GenPathTest {
  protected:
    void SetUp() override { gen_set_project_dir_path(text_at("project")); }
    std::string output() const { return gen_get_project_output_directory(); }
};

} // namespace

// Constants and the unset state

TEST_F(GenProject, NamesOfDirectoriesAreExported) {
    EXPECT_STREQ(GEN_DB_DIR_NAME, "db");
    EXPECT_EQ(sizeof GEN_DB_DIR_NAME, 3U);
    EXPECT_STREQ(GEN_PROJECT_PARABLOCKS_DIR_NAME, "parablocks");
}

TEST_F(GenProject, EverythingStartsUnset) {
    EXPECT_EQ(gen_get_project_dir_path(), "");
    EXPECT_EQ(found(gen_get_project_parablocks_dir_path()), "");
    EXPECT_EQ(gen_get_project_parablocks_fio_find(), nullptr);
    EXPECT_EQ(found(gen_get_db_dir_path()), "");
    EXPECT_EQ(gen_get_db_dir_path_string(), "");
    EXPECT_FALSE(gen_check_db_dir_path());
    EXPECT_EQ(found(gen_get_db_dir_full_name()), "");
    EXPECT_EQ(gen_project_directory_fio_find, nullptr);
    EXPECT_EQ(gen_project_output_directory, "");
}

// The project and its parablocks

TEST_F(GenProject, DirectoryEndsInASlashAndHasParablocksBelowIt) {
    for (char const* dir : {"/x/a/b", "/x/a/b/"}) {
        gen_set_project_dir_path(dir);
        EXPECT_EQ(gen_get_project_dir_path(), "/x/a/b/");
        EXPECT_EQ(found(gen_get_project_parablocks_dir_path()), "/x/a/b/parablocks/");
        EXPECT_THAT(directories(gen_project_directory_fio_find), ElementsAre("/x/a/b/"));
        EXPECT_THAT(directories(gen_get_project_parablocks_fio_find()),
                    ElementsAre("/x/a/b/parablocks/"));
    }
}

TEST_F(GenProject, RelativeDirectoryStaysRelative) {
    gen_set_project_dir_path("sub/p");
    EXPECT_EQ(gen_get_project_dir_path(), "sub/p/");
    EXPECT_EQ(found(gen_get_project_parablocks_dir_path()), "sub/p/parablocks/");
}

TEST_F(GenProject, EmptyDirectoryIsSetAndFindsNothing) {
    write("here/top.v");
    gen_set_project_dir_path("");
    EXPECT_EQ(gen_get_project_dir_path(), "");
    EXPECT_EQ(found(gen_get_project_parablocks_dir_path()), "/parablocks/");
    EXPECT_NE(gen_project_directory_fio_find, nullptr);
    EXPECT_THAT(directories(gen_project_directory_fio_find), IsEmpty());
    EXPECT_EQ(found_file("top.v"), "") << "set, so that the current directory is not taken";
}

TEST_F(GenProject, SettersFreeWhatTheyReplace) {
    auto const set_all = [](std::string const& root) {
        STR const text = library_string(root + "/a directory with a name that is kept on the heap");
        gen_set_project_dir_path(text);
        gen_set_db_dir_path(text);
        gen_set_db_dir_full_name(FIO_PATH(text));
        gen_set_project_library_paths(text);
        gen_set_user_library_paths(text);
        gen_set_project_output_directory(text.c_str());
    };
    set_all("/first");
    set_all("/other");
    std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
    for (int round = 0; round < 100; ++round)
        set_all(round % 2 == 0 ? "/first" : "/other");
    // The heap may give a larger block than it was asked for, but not a hundred of them.
    EXPECT_LT(MEM_MANAGER::s_system_memory_counter.current(), before + 100 * 16);
}

TEST_F(GenProject, SearchObjectsStayTheSame) {
    gen_set_project_dir_path("/x");
    FIO_FIND* const project = gen_project_directory_fio_find;
    FIO_FIND* const parablocks = gen_project_parablocks_fio_find;
    gen_set_project_dir_path("/y");
    EXPECT_EQ(gen_project_directory_fio_find, project);
    EXPECT_EQ(gen_project_parablocks_fio_find, parablocks);
    EXPECT_THAT(directories(project), ElementsAre("/y/"));
    EXPECT_THAT(directories(parablocks), ElementsAre("/y/parablocks/"));
}

TEST_F(GenProject, ParablocksPathOfATextWithoutSlashGetsOne) {
    gen_init_project_parablocks_path(FIO_PATH("p"));
    EXPECT_EQ(found(gen_get_project_parablocks_dir_path()), "p/parablocks/");
    gen_init_project_parablocks_path(FIO_PATH());
    EXPECT_EQ(found(gen_get_project_parablocks_dir_path()), "/parablocks/");
    // The stored path itself may be the argument.
    gen_init_project_parablocks_path(*gen_project_parablocks_dir_path);
    EXPECT_EQ(found(gen_get_project_parablocks_dir_path()), "/parablocks/parablocks/");
}

TEST_F(GenProject, DirectoryTextsAreSplitAsPathListsAre) {
    gen_set_project_dir_path(text_at("a;/b"));
    gen_set_db_dir_path(text_at("x; /y "));
    EXPECT_EQ(gen_get_project_dir_path(), text_at("a;/b/"));
    EXPECT_EQ(gen_get_db_dir_path_string(), text_at("x; /y "));
    EXPECT_THAT(directories(gen_project_directory_fio_find), ElementsAre(at("a"), "/b/"));
    EXPECT_THAT(directories(gen_project_parablocks_fio_find),
                ElementsAre(at("a"), "/b/parablocks/"));
    EXPECT_THAT(directories(gen_project_db_directory_fio_find), ElementsAre(at("x"), "/y"));
    std::string const top = write("a/top.v");
    EXPECT_EQ(found_file("top.v"), top);
}

TEST_F(GenProject, ExistingDirectoryWhoseNameContainsTheListSeparatorIsOneDirectory) {
    std::string const top = write("a;b/top.v");
    std::string const block = write("a;b/parablocks/block.v");
    gen_set_project_dir_path(text_at("a;b"));
    gen_set_db_dir_path(text_at("a;b"));
    EXPECT_THAT(directories(gen_project_directory_fio_find), ElementsAre(at("a;b/")));
    EXPECT_THAT(directories(gen_project_parablocks_fio_find), ElementsAre(at("a;b/parablocks/")));
    EXPECT_THAT(directories(gen_project_db_directory_fio_find), ElementsAre(at("a;b")));
    EXPECT_EQ(found_file("top.v"), top);
    EXPECT_EQ(found_file("block.v"), block);
}

TEST_F(GenProject, DirectoryWithBlanksAndQuotesInItsNameIsFound) {
    for (char const* name : {" blank", "\"quoted\"", "a\"b;c", "a\";b", "a\" ; b\""}) {
        std::string const top = write(std::string(name) + "/top.v");
        gen_set_project_dir_path(text_at(name));
        EXPECT_EQ(found_file("top.v"), top);
        ScopedCurrentDirectory const here(m_directory.path());
        gen_set_project_dir_path(name);
        EXPECT_EQ(found_file("top.v"), std::string(name) + "/top.v");
    }
}

// The database

TEST_F(GenProject, DatabaseDirectoryIsTakenAsGiven) {
    for (char const* dir : {"/x/db", "/x/db/", "db"}) {
        gen_set_db_dir_path(dir);
        EXPECT_TRUE(gen_check_db_dir_path());
        EXPECT_EQ(found(gen_get_db_dir_path()), dir);
        EXPECT_EQ(gen_get_db_dir_path_string(), dir);
        EXPECT_THAT(directories(gen_project_db_directory_fio_find), ElementsAre(dir));
    }
    FIO_FIND* const find = gen_project_db_directory_fio_find;
    gen_set_db_dir_path("/y");
    EXPECT_EQ(gen_project_db_directory_fio_find, find);
    EXPECT_EQ(gen_project_directory_fio_find, nullptr);
}

TEST_F(GenProject, DatabaseFullNameIsKeptForCallersAlone) {
    gen_set_db_dir_full_name(FIO_PATH("/x/db/top"));
    EXPECT_EQ(found(gen_get_db_dir_full_name()), "/x/db/top");
    gen_set_db_dir_full_name(gen_get_db_dir_full_name());
    EXPECT_EQ(found(gen_get_db_dir_full_name()), "/x/db/top");
    gen_set_db_dir_full_name(FIO_PATH());
    EXPECT_EQ(found(gen_get_db_dir_full_name()), "");
    EXPECT_FALSE(gen_check_db_dir_path());
    EXPECT_EQ(gen_project_db_directory_fio_find, nullptr);
}

// The output directory

TEST_F(GenOutputDirectory, IsTheProjectDirectoryWhenNoneIsSet) {
    EXPECT_EQ(output(), at("project/"));
    EXPECT_EQ(gen_get_project_output_directory(), gen_project_dir_path.c_str());
}

TEST_F(GenOutputDirectory, IsCreatedWithItsParents) {
    gen_set_project_output_directory(at("out/of/tree").c_str());
    EXPECT_FALSE(std::filesystem::exists(at("out")));
    EXPECT_EQ(output(), at("out/of/tree/"));
    EXPECT_TRUE(std::filesystem::is_directory(at("out/of/tree")));
    EXPECT_EQ(gen_get_project_output_directory(), gen_project_output_directory.c_str());
}

TEST_F(GenOutputDirectory, IsSimplifiedAndMadeAbsolute) {
    gen_set_project_output_directory("/x/./a/../b");
    EXPECT_EQ(gen_project_output_directory, "/x/b/");
    gen_set_project_output_directory("out/./x");
    EXPECT_EQ(gen_project_output_directory, text_at("here/out/x/"));
    gen_set_project_output_directory("../out");
    EXPECT_EQ(gen_project_output_directory, text_at("out/"));
}

TEST_F(GenOutputDirectory, NullAndEmptySetNone) {
    for (char const* none : {"", static_cast<char const*>(nullptr)}) {
        gen_set_project_output_directory(at("out").c_str());
        EXPECT_EQ(output(), at("out/"));
        gen_set_project_output_directory(none);
        EXPECT_EQ(gen_project_output_directory, "");
        EXPECT_EQ(output(), at("project/"));
    }
}

TEST_F(GenOutputDirectory, CanBeSetToWhatWasAnswered) {
    gen_set_project_output_directory(at("out").c_str());
    gen_set_project_output_directory(gen_get_project_output_directory());
    EXPECT_EQ(output(), at("out/"));
}

TEST_F(GenOutputDirectory, ThatCannotBeHadFallsBackToTheProject) {
    write("file");
    std::filesystem::create_symlink("missing", at("dangling"));
    for (char const* name : {"file", "file/below", "dangling"}) {
        gen_set_project_output_directory(at(name).c_str());
        EXPECT_EQ(output(), at("project/")) << name;
    }
    EXPECT_EQ(read_file(at("file")), "");
    // Nothing is remembered: once it can be had, it is.
    std::filesystem::remove(at("file"));
    gen_set_project_output_directory(at("file").c_str());
    EXPECT_EQ(output(), at("file/"));
}

TEST_F(GenOutputDirectory, RootFallsBackToTheProject) {
    // Without its last character nothing is left of it.
    gen_set_project_output_directory("/");
    EXPECT_EQ(output(), at("project/"));
}

TEST_F(GenOutputDirectory, LastCharacterIsDroppedWhateverItIs) {
    write("plainx");
    m_directory.make_directory("plain");
    gen_project_output_directory = text_at("plainx");
    EXPECT_EQ(output(), at("plainx"));
    std::filesystem::remove(at("plain"));
    EXPECT_EQ(output(), at("project/"));
    write("plain"); // no directory
    EXPECT_EQ(output(), at("project/"));
}

TEST_F(GenOutputDirectory, DirectoryBitIsTestedAlone) {
    write("sockx");
    int const descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ScopedCurrentDirectory const here(m_directory.path());
    std::snprintf(address.sun_path, sizeof address.sun_path, "sock");
    ASSERT_EQ(bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    close(descriptor);
    gen_project_output_directory = text_at("sockx");
    EXPECT_EQ(output(), at("sockx"));
}

TEST_F(GenOutputDirectory, MakesTheCurrentDirectoryTheProjectWhenItNeedsOne) {
    forget_path_state();
    EXPECT_EQ(output(), at("here/"));
    EXPECT_EQ(gen_get_project_dir_path(), text_at("here/"));
    EXPECT_NE(gen_project_directory_fio_find, nullptr);
    forget_path_state();
    gen_set_project_output_directory(at("out").c_str());
    EXPECT_EQ(output(), at("out/"));
    EXPECT_EQ(gen_project_directory_fio_find, nullptr);
}

TEST_F(GenOutputDirectory, MemoryLibraryMayAskBeforeAnyProjectIsSet) {
    forget_path_state();
    mem_set_gen_get_db_dir_path_string_callback(gen_get_db_dir_path_string);
    mem_set_gen_get_project_output_directory_callback(gen_get_project_output_directory);
    EXPECT_EQ(mem_gen_get_db_dir_path_string(), "");
    EXPECT_EQ(mem_gen_get_project_output_directory(), at("here/"));
    mem_set_gen_get_db_dir_path_string_callback(nullptr);
    mem_set_gen_get_project_output_directory_callback(nullptr);
}
