// Arguments that are gen's own strings, or those of another argument: the answer is the one that a
// copy of the string gets, whatever happens to the string on the way.

#include "err_report.h"
#include "gen_path.h"
#include "gen_path_fixture.h"
#include "mem.h"

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <utility>

using testing::ElementsAre;

namespace {

constexpr char long_name[] = "a directory whose name is too long to be kept without the heap/";

STR* const globals[] = {&gen_project_dir_path, &gen_korvane_library_paths,
                        &gen_project_library_paths, &gen_user_library_paths,
                        &gen_project_output_directory};

std::string answer_of(FIO_PATH const& path) {
    return std::string(path.fullpath());
}

std::string answer_of(bool found, STR const& first, STR const& second) {
    return std::to_string(found) + "|" + std::string(first) + "|" + std::string(second);
}

std::string answer_of(MEM_VECTOR<GEN_SOURCE_CANDIDATE> const& candidates) {
    std::string text = std::to_string(candidates.size());
    for (auto const& [group, path] : candidates)
        text += "|" + std::string(path.fullpath());
    return text;
}

std::string entries_of(FIO_FIND const* find) {
    std::string text = "|";
    if (find != nullptr)
        for (FIO_PATH const& directory : find->directories())
            text += std::string(directory.fullpath()) + ";";
    return text;
}

std::string found_sources(bool (*search)(STR const&, MEM_VECTOR<GEN_SOURCE_CANDIDATE>*),
                          STR const& base_name) {
    MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
    search(base_name, &candidates);
    return answer_of(candidates);
}

std::string included(char const* name, char const* file, char const* alias) {
    STR path;
    STR beside_alias;
    bool const found = gen_find_include_file(name, file, alias, &path, &beside_alias);
    return answer_of(found, path, beside_alias);
}

/// A call that is handed a string of gen's.
struct Row {
    char const* name;
    std::string (*call)(STR const& own);
};

Row const rows[] = {
    {"find_file", [](STR const& own) { return answer_of(gen_find_file(own)); }},
    {"find_eda_file", [](STR const& own) { return answer_of(gen_find_eda_file(own)); }},
    {"find_file_cache_assisted",
     [](STR const& own) {
         std::string text = answer_of(gen_find_file_cache_assisted(own));
         if (gen_find_file_cache != nullptr)
             for (auto const& [key, path] : *gen_find_file_cache)
                 text += "|" + std::string(key) + "=" + answer_of(path);
         return text;
     }},
    {"get_source_files",
     [](STR const& own) { return found_sources(gen_get_source_files, own + "top"); }},
    {"get_source_files, itself",
     [](STR const& own) { return found_sources(gen_get_source_files, own); }},
    {"get_source_files_from_korvane_lib",
     [](STR const& own) { return found_sources(gen_get_source_files_from_korvane_lib, own); }},
    {"find_include_file, name",
     [](STR const& own) { return included(own.c_str(), nullptr, nullptr); }},
    {"find_include_file, including file",
     [](STR const& own) { return included("x.h", own.c_str(), nullptr); }},
    {"find_include_file, alias",
     [](STR const& own) {
         STR const file = own;
         return included("x.h", file.c_str(), own.c_str());
     }},
    {"get_relative_path_if_starts_with_project_dir",
     [](STR const& own) {
         return std::string(gen_get_relative_path_if_starts_with_project_dir(own.c_str()));
     }},
    {"sync_path_separators",
     [](STR const& own) { return std::string(gen_sync_path_separators(own)); }},
    {"set_project_dir_path",
     [](STR const& own) {
         gen_set_project_dir_path(own);
         return entries_of(gen_project_directory_fio_find);
     }},
    {"set_db_dir_path",
     [](STR const& own) {
         gen_set_db_dir_path(own);
         return answer_of(gen_get_db_dir_path());
     }},
    {"set_db_dir_full_name",
     [](STR const& own) {
         gen_set_db_dir_full_name(FIO_PATH(own));
         return answer_of(gen_get_db_dir_full_name());
     }},
    {"set_project_output_directory",
     [](STR const& own) {
         gen_set_project_output_directory(own.c_str());
         return std::string(gen_get_project_output_directory());
     }},
    {"set_project_output_directory, a part",
     [](STR const& own) {
         gen_set_project_output_directory(own.c_str() + 1);
         return std::string(gen_project_output_directory);
     }},
    {"set_project_library_paths",
     [](STR const& own) {
         gen_set_project_library_paths(own);
         return entries_of(gen_project_libraries);
     }},
    {"set_user_library_paths",
     [](STR const& own) {
         gen_set_user_library_paths(own);
         return entries_of(gen_ini_user_libraries);
     }},
    {"set_fio_find_library_paths_helper",
     [](STR const& own) {
         gen_set_fio_find_library_paths_helper(own, &gen_project_libraries);
         gen_set_fio_find_library_paths_helper(own, &gen_project_libraries);
         return entries_of(gen_project_libraries);
     }},
    {"remove_file_type_order_helper",
     [](STR const& own) {
         MEM_VECTOR<STR> order{"v", own, "w"};
         gen_remove_file_type_order_helper(&order, own);
         return std::to_string(order.size());
     }},
    {"get_temp_filename",
     [](STR const& own) {
         STR const path = gen_get_temp_filename(own, own, 42);
         std::filesystem::remove(std::string(path));
         return std::string(path);
     }},
    {"generate_pdb_filename",
     [](STR const& own) {
         std::string const text(gen_generate_pdb_filename(own, own, &own));
         STR const none;
         gen_generate_pdb_filename("", "", &none);
         return text;
     }},
    {"get_krpt_name",
     [](STR const& own) { return answer_of(gen_get_krpt_name(own, own, own, true, own)); }},
    {"get_fled_filename",
     [](STR const& own) { return answer_of(gen_get_fled_filename(own, true)); }},
};

class GenPathAlias : public GenPathTest {
  public:
    GenPathAlias() : m_previous_sink(mem_msg_set_sink([](auto, auto) { return 0; })) {}
    ~GenPathAlias() override { mem_msg_set_sink(m_previous_sink); }

  protected:
    /// All strings of gen name a directory below the current one, and there is no project: the next
    /// lookup makes the current directory the project, and so changes one of them.
    void prepare() const {
        forget_path_state();
        std::filesystem::create_directories(long_name + std::string("/a d"));
        write(std::string("here/") + long_name + "x.h");
        write(std::string("here/") + long_name + "top.v");
        for (STR* const global : globals)
            *global = long_name;
    }

    /// What a row answers, and leaves behind, when it gets a string of gen's or a copy.
    std::string outcome(Row const& row, STR const* own, bool copied) const {
        std::unique_ptr<STR const> const copy = copied ? std::make_unique<STR>(*own) : nullptr;
        std::string text = row.call(copied ? *copy : *own);
        for (STR const* const global : globals)
            text += "|" + std::string(*global);
        return text;
    }

  private:
    MEM_MSG_SINK m_previous_sink;
};

/// What a host may do when it receives a report: it changes gen's strings, and makes good what was
/// missing.
void change_everything(char const*, char const*, char const*, int) {
    for (STR* const global : globals)
        STR(200, 'x').swap(*global);
    delete std::exchange(gen_korvane_eda_libraries, nullptr);
    delete std::exchange(gen_korvane_libraries, nullptr);
    gen_init_korvane_lib_paths();
}

} // namespace

TEST_F(GenPathAlias, OwnStringsAreAsGoodAsCopies) {
    for (Row const& row : rows)
        for (STR const* const own : globals) {
            prepare();
            std::string const expected = outcome(row, own, true);
            prepare();
            EXPECT_EQ(outcome(row, own, false), expected) << row.name << " of " << *own;
        }
}

TEST_F(GenPathAlias, OwnStringsMayBeChangedByWhoReceivesAReport) {
    auto const previous = err_set_internal_error_handler(change_everything);
    for (Row const& row : rows)
        for (STR const* const own : globals) {
            std::string outcomes[2];
            for (bool const copied : {true, false}) {
                prepare();
                gen_init_korvane_lib_paths();
                // Whichever of the two a lookup misses, it reports.
                bool const eda = row.call == rows[1].call;
                delete std::exchange(eda ? gen_korvane_eda_libraries : gen_korvane_libraries,
                                     nullptr);
                outcomes[copied ? 0 : 1] = outcome(row, own, copied);
            }
            EXPECT_EQ(outcomes[1], outcomes[0]) << row.name;
        }
    err_set_internal_error_handler(previous);
}

TEST_F(GenPathAlias, BaseNameMayBeAStringThatChanges) {
    std::string const name = "a base name that is too long to be kept without the heap";
    std::string const here = write("here/" + name + ".v");
    std::string const shipped = write("korvane/libraries/" + name + ".v");
    gen_project_dir_path = library_string(name);
    EXPECT_EQ(found_sources(gen_get_source_files, gen_project_dir_path), "1|" + here);

    auto const previous = err_set_internal_error_handler(change_everything);
    gen_user_library_paths = library_string(name);
    delete std::exchange(gen_korvane_libraries, nullptr);
    EXPECT_EQ(found_sources(gen_get_source_files, gen_user_library_paths), "1|" + here);
    gen_user_library_paths = library_string(name);
    delete std::exchange(gen_korvane_libraries, nullptr);
    EXPECT_EQ(found_sources(gen_get_source_files_from_korvane_lib, gen_user_library_paths),
              "1|" + shipped);
    std::string const eda = write("korvane/eda/ibis/" + name);
    gen_user_library_paths = library_string(name);
    delete std::exchange(gen_korvane_eda_libraries, nullptr);
    EXPECT_EQ(found(gen_find_eda_file(gen_user_library_paths)), eda);
    err_set_internal_error_handler(previous);
}

TEST_F(GenPathAlias, CachedNameIsKeptAsGiven) {
    prepare();
    gen_find_file_cache_assisted(gen_project_dir_path);
    ASSERT_EQ(gen_find_file_cache->size(), 1U);
    EXPECT_EQ(gen_find_file_cache->begin()->first, long_name);
    EXPECT_NE(gen_project_dir_path, long_name);
}

TEST_F(GenPathAlias, OutputDirectorysStringMayBeAskedFor) {
    gen_set_project_dir_path(long_name);
    char const* const own = gen_get_project_output_directory();
    gen_clear_all_library_paths();
    EXPECT_EQ(gen_get_relative_path_if_starts_with_project_dir(own), long_name);
    gen_set_project_dir_path(long_name);
    gen_set_project_output_directory(gen_get_project_output_directory());
    EXPECT_EQ(gen_project_output_directory, text_at("here/") + long_name);
    gen_set_project_output_directory(gen_get_project_output_directory());
    EXPECT_EQ(gen_project_output_directory, text_at("here/") + long_name);
}

TEST_F(GenPathAlias, OwnObjectsMayBeSetAgain) {
    gen_set_project_dir_path("/p");
    gen_init_project_parablocks_path(*gen_project_parablocks_dir_path);
    EXPECT_EQ(found(gen_get_project_parablocks_dir_path()), "/p/parablocks/parablocks/");
    gen_set_db_dir_path(long_name);
    gen_set_db_dir_path(*db_dir_path);
    EXPECT_EQ(found(gen_get_db_dir_path()), long_name);
    gen_set_db_dir_full_name(*db_dir_path);
    gen_set_db_dir_full_name(*db_dir_full_name);
    EXPECT_EQ(found(gen_get_db_dir_full_name()), long_name);
    MEM_VECTOR<STR>* const order = gen_get_file_type_order_helper();
    gen_remove_file_type_order_helper(order, order->back());
    EXPECT_EQ(order->size(), 7U) << "an entry has its dot";
    order->front().erase(0, 1);
    gen_remove_file_type_order_helper(order, order->front());
    EXPECT_EQ(order->size(), 6U);
    MEM_VECTOR<STR> repeated{"v", "w", "W"};
    gen_remove_file_type_order_helper(&repeated, repeated.front());
    EXPECT_THAT(repeated, ElementsAre("w", "W"));
}

TEST_F(GenPathAlias, SharedOrderMayBeConsumed) {
    MEM_LIST<FIO_PATH> const found_files{FIO_PATH("/p/a.v"), FIO_PATH("/p/b.v")};
    MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
    gen_append_candidates_helper(GEN_LIBRARY_PATHS_PROJECT_DIR, found_files, &candidates,
                                 gen_get_file_type_order_helper());
    EXPECT_EQ(answer_of(candidates), "1|/p/a.v");
    EXPECT_EQ(gen_file_type_order->size(), 6U);
}

TEST_F(GenPathAlias, OutputsOfTheIncludeSearchMayBeItsInputs) {
    gen_set_project_dir_path(text_at("project"));
    std::string const header = write("a/x.h");
    STR name = "x.h";
    STR file = text_at("a/top.v");
    EXPECT_TRUE(gen_find_include_file(name.c_str(), file.c_str(), file.c_str(), &name, &file));
    EXPECT_EQ(std::string(name), header);
    EXPECT_EQ(std::string(file), header);
}

TEST_F(GenPathAlias, OneStringForBothOutputsHasWhatIsWrittenLast) {
    gen_set_project_dir_path(text_at("project"));
    std::string const general = write("project/general.h");
    std::string const beside = write("a/beside.h");
    std::string const file = at("a/top.v");
    STR both = "left over";
    EXPECT_TRUE(gen_find_include_file("general.h", file.c_str(), "/alias/top.v", &both, &both));
    EXPECT_EQ(std::string(both), general);
    EXPECT_TRUE(gen_find_include_file("beside.h", file.c_str(), "/alias/top.v", &both, &both));
    EXPECT_EQ(both, "/alias/beside.h");
    EXPECT_TRUE(gen_find_include_file("beside.h", file.c_str(), nullptr, &both, &both));
    EXPECT_EQ(std::string(both), beside);
    EXPECT_FALSE(gen_find_include_file("missing.h", file.c_str(), "/alias/top.v", &both, &both));
    EXPECT_EQ(both, "");
}
