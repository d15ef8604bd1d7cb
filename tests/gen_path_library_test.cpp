#include "gen_path_library.h"

#include "gen_path_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class GenLibraries : public GenPathTest {
  protected:
    std::vector<std::string> library_paths(std::vector<int> const& types) {
        std::vector<std::string> result;
        for (int const type : types)
            result.emplace_back(gen_get_library_path(static_cast<GEN_LIBRARY_TYPE>(type)));
        return result;
    }
};

class GenFileTypeOrder : public GenPathTest {
  protected:
    static std::vector<std::string> remaining(std::vector<char const*> const& entries,
                                              char const* removed) {
        MEM_VECTOR<STR> order(entries.begin(), entries.end());
        gen_remove_file_type_order_helper(&order, removed);
        return {order.begin(), order.end()};
    }
};

} // namespace

TEST_F(GenLibraries, GroupsKeepTheirTags) {
    EXPECT_EQ(GEN_LIBRARY_PATHS_PROJECT_DIR, 1);
    EXPECT_EQ(GEN_LIBRARY_PATHS_DB_DIR, 2);
    EXPECT_EQ(GEN_LIBRARY_PATHS_PROJECT_LIBRARIES, 3);
    EXPECT_EQ(GEN_LIBRARY_PATHS_KORVANE_LIBRARIES, 4);
    EXPECT_EQ(GEN_LIBRARY_PATHS_USER_LIBRARIES, 5);
}

TEST_F(GenLibraries, HelperCreatesAndThenReinitialises) {
    FIO_FIND* slot = nullptr;
    gen_set_fio_find_library_paths_helper("/a;/b", &slot);
    ASSERT_NE(slot, nullptr);
    EXPECT_THAT(texts(slot->directories()), ElementsAre("/a", "/b"));
    FIO_FIND* const created = slot;
    gen_set_fio_find_library_paths_helper("/c", &slot);
    EXPECT_EQ(slot, created);
    EXPECT_THAT(texts(slot->directories()), ElementsAre("/c"));
    delete slot;
    gen_set_fio_find_library_paths_helper("/d", nullptr);
}

TEST_F(GenLibraries, ProjectAndUserPathsAreKeptAndSearched) {
    EXPECT_EQ(gen_project_lib_fio_paths(), nullptr);
    gen_set_project_library_paths("/a;lib");
    gen_set_user_library_paths("/u");
    EXPECT_EQ(gen_get_project_library_paths(), "/a;lib");
    EXPECT_EQ(gen_get_user_library_paths(), "/u");
    EXPECT_THAT(texts(*gen_project_lib_fio_paths()), ElementsAre("/a", "lib"));
    EXPECT_THAT(texts(gen_ini_user_libraries->directories()), ElementsAre("/u"));
    EXPECT_EQ(gen_korvane_library_paths, "");

    FIO_FIND* const project = gen_project_libraries;
    FIO_FIND* const user = gen_ini_user_libraries;
    gen_set_project_library_paths("");
    gen_set_user_library_paths("/v;/w");
    EXPECT_EQ(gen_project_libraries, project);
    EXPECT_EQ(gen_ini_user_libraries, user);
    EXPECT_THAT(texts(*gen_project_lib_fio_paths()), IsEmpty());
    EXPECT_THAT(texts(user->directories()), ElementsAre("/v", "/w"));
}

TEST_F(GenLibraries, ShippedOnesAreAllTypesButTheRootInAscendingOrder) {
    EXPECT_EQ(
        texts(*gen_get_default_lib_fio_paths()),
        library_paths({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 26, 27, 28}));
    EXPECT_EQ(texts(gen_get_korvane_eda_lib_paths()->directories()),
              library_paths({19, 20, 21, 22, 23, 24, 25}));
}

TEST_F(GenLibraries, ShippedOnesAreBuiltOnce) {
    FIO_FIND* const libraries = gen_get_korvane_lib_paths();
    FIO_FIND* const eda = gen_get_korvane_eda_lib_paths();
    ASSERT_NE(libraries, nullptr);
    ASSERT_NE(eda, nullptr);
    std::string elsewhere = "/opt/k/linux/tool";
    char* const previous = std::exchange(gen_module_fullpath, elsewhere.data());
    EXPECT_EQ(gen_get_korvane_lib_paths(), libraries);
    EXPECT_EQ(gen_get_korvane_eda_lib_paths(), eda);
    EXPECT_EQ(texts(*gen_get_default_lib_fio_paths())[0], at("korvane/libraries/"));
    gen_clear_all_library_paths();
    EXPECT_EQ(texts(*gen_get_default_lib_fio_paths())[0], "/opt/k/libraries/");
    gen_module_fullpath = previous;
}

TEST_F(GenLibraries, ShippedOnesAreNotBuiltWhileOneGroupIsThere) {
    gen_init_korvane_lib_paths();
    delete std::exchange(gen_korvane_libraries, nullptr);
    gen_init_korvane_lib_paths();
    EXPECT_EQ(gen_korvane_libraries, nullptr);
    EXPECT_EQ(gen_get_default_lib_fio_paths(), nullptr);

    gen_clear_all_library_paths();
    gen_init_korvane_lib_paths();
    delete std::exchange(gen_korvane_eda_libraries, nullptr);
    EXPECT_NE(gen_get_korvane_lib_paths(), nullptr);
    EXPECT_EQ(gen_get_korvane_eda_lib_paths(), nullptr);
}

TEST_F(GenFileTypeOrder, StandsMostPreferredFirst) {
    EXPECT_EQ(gen_file_type_order, nullptr);
    MEM_VECTOR<STR>* const order = gen_get_file_type_order_helper();
    EXPECT_THAT(*order, ElementsAre(".kbd", ".ksd", ".khd", ".vhd", ".v", ".sv", ".edf"));
    EXPECT_EQ(gen_file_type_order, order);
    EXPECT_EQ(gen_get_file_type_order_helper(), order);
}

TEST_F(GenFileTypeOrder, RemovalIgnoresCaseAndTheDotOfTheEntry) {
    EXPECT_THAT(remaining({".v", ".sv", "v", ".V", "..v", ".vhd"}, "V"),
                ElementsAre(".sv", "..v", ".vhd"));
    EXPECT_THAT(remaining({".v", "v"}, ".v"), ElementsAre(".v", "v"));
    EXPECT_THAT(remaining({"..v"}, ".V"), IsEmpty());
    EXPECT_THAT(remaining({".v", "", "."}, ""), ElementsAre(".v"));
    EXPECT_THAT(remaining({}, "v"), IsEmpty());
}

TEST_F(GenFileTypeOrder, RemovedExtensionMayBeAnEntryItself) {
    MEM_VECTOR<STR> order{"v", "a quite long extension, for a file name", ".v", "sv"};
    gen_remove_file_type_order_helper(&order, order[0]);
    EXPECT_THAT(order, ElementsAre("a quite long extension, for a file name", "sv"));
    gen_remove_file_type_order_helper(&order, order[0]);
    EXPECT_THAT(order, ElementsAre("sv"));
    gen_remove_file_type_order_helper(nullptr, "v");
}

TEST_F(GenLibraries, ClearingFreesEverythingButTheTextsAndTheCache) {
    std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
    gen_set_project_dir_path("/p");
    gen_set_project_output_directory("/o");
    gen_set_db_dir_path("/p/db");
    gen_set_db_dir_full_name(FIO_PATH("/p/db/x"));
    gen_set_project_library_paths("/l");
    gen_set_user_library_paths("/u");
    gen_init_korvane_lib_paths();
    gen_get_file_type_order_helper();
    gen_create_find_file_cache();
    GEN_FIND_FILE_CACHE* const cache = gen_find_file_cache;

    gen_clear_all_library_paths();
    for (FIO_FIND const* find :
         {gen_korvane_libraries, gen_project_parablocks_fio_find, gen_korvane_eda_libraries,
          gen_ini_user_libraries, gen_project_libraries, gen_project_directory_fio_find,
          gen_project_db_directory_fio_find})
        EXPECT_EQ(find, nullptr);
    for (FIO_PATH const* path : {gen_project_parablocks_dir_path, db_dir_path, db_dir_full_name})
        EXPECT_EQ(path, nullptr);
    EXPECT_EQ(gen_file_type_order, nullptr);
    EXPECT_EQ(gen_find_file_cache, cache);
    EXPECT_EQ(gen_get_project_dir_path(), "/p/");
    EXPECT_EQ(gen_get_project_library_paths(), "/l");
    EXPECT_EQ(gen_get_user_library_paths(), "/u");
    EXPECT_EQ(gen_project_output_directory, "/o/");

    gen_clear_all_library_paths();
    gen_destroy_find_file_cache();
    EXPECT_EQ(MEM_MANAGER::s_system_memory_counter.current(), before);
}

TEST_F(GenLibraries, LookupAfterClearingStartsFromTheCurrentDirectory) {
    write("u/a.v");
    gen_set_project_dir_path(text_at("p"));
    gen_set_user_library_paths(text_at("u"));
    EXPECT_EQ(found_file("a.v"), at("u/a.v"));
    gen_clear_all_library_paths();
    EXPECT_EQ(found_file("a.v"), "");
    EXPECT_EQ(gen_get_project_dir_path(), text_at("here/"));
    EXPECT_EQ(gen_ini_user_libraries, nullptr);
    EXPECT_NE(gen_korvane_libraries, nullptr);
}

TEST_F(GenLibraries, InitializerClearsWhenItGoes) {
    gen_set_project_dir_path("/p");
    { GEN_PATH_INITIALIZER const initializer; }
    EXPECT_EQ(gen_project_directory_fio_find, nullptr);
}
