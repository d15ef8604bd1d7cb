#include "contest.h"
#include "gen_exe.h"
#include "gen_path.h"

#ifdef BENCH_LIBRARY_PEERS
#include <absl/container/flat_hash_map.h>
#endif
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sys/stat.h>
#include <unordered_map>

namespace {

namespace fs = std::filesystem;

using Texts = std::vector<std::string>;

constexpr std::size_t directory_count = 30;
/// How many names take turns in a lookup: their missing paths all fit into the kernel's memory.
constexpr std::size_t name_count = 16;

char const* const extensions[] = {".kbd", ".ksd", ".khd", ".vhd", ".v", ".sv", ".edf"};

bool is_there(std::string const& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0;
}

/// Thirty directories of forty files each, that a lookup goes through one after the other: a
/// project with its database, three library directories, three of the user's, the parablocks, and
/// the twenty-one shipped ones.
class Ground {
  public:
    Ground() : m_root(fs::temp_directory_path() / ("gen_bench_" + std::to_string(getpid()))) {
        fs::create_directories(m_root);
        m_module = (m_root / "korvane/linux/gen_bench").string();
        gen_module_fullpath = m_module.data();
        set_project();
        for (std::string const& directory : directories) {
            fs::create_directories(directory);
            for (int i = 0; i < 40; ++i)
                write(directory + "other_" + std::to_string(i) + ".v");
        }
        for (std::size_t i = 0; i < name_count; ++i) {
            std::string const tail = std::to_string(i);
            write(directories.front() + "first_" + tail + ".v");
            write(directories.back() + "last_" + tail + ".v");
            write(directories[2] + "unit_" + tail + ".sv");
            write(directories[20] + "unit_" + tail + ".vhd");
        }
    }
    ~Ground() {
        std::error_code ignored;
        fs::remove_all(m_root, ignored);
    }

    Texts directories;

  private:
    void set_project() {
        std::string const root = m_root.string();
        gen_set_project_dir_path((root + "/project").c_str());
        gen_set_db_dir_path((root + "/project/db").c_str());
        gen_set_project_library_paths("lib;ip;../shared");
        gen_set_user_library_paths((root + "/a;" + root + "/b;" + root + "/c").c_str());
        for (char const* directory : {"/project/", "/project/db/", "/project/lib/", "/project/ip/",
                                      "/shared/", "/a/", "/b/", "/c/", "/project/parablocks/"})
            directories.push_back(root + directory);
        for (FIO_PATH const& directory : *gen_get_default_lib_fio_paths())
            directories.emplace_back(directory.fullpath());
        if (directories.size() != directory_count)
            std::abort();
    }
    static void write(std::string const& path) { std::ofstream(path).flush(); }

    fs::path m_root;
    std::string m_module;
};

/// Made when the first contestant runs.
Ground const& ground() {
    static Ground const shared;
    return shared;
}

std::string name_of(char const* stem, std::size_t turn) {
    return stem + std::to_string(turn % name_count) + ".v";
}

/// All paths that each name could have, ready-made.
struct ReadyPaths {
    explicit ReadyPaths(char const* stem) {
        for (std::size_t i = 0; i < name_count; ++i)
            for (std::string const& directory : ground().directories)
                paths[i].push_back(directory + name_of(stem, i));
    }
    Texts paths[name_count];
};

void enter_lookups(std::string const& work, char const* stem) {
    enter(work, "gen", [stem, names = std::make_shared<std::vector<STR>>()](std::size_t turn) {
        if (names->empty()) {
            ground();
            for (std::size_t i = 0; i < name_count; ++i)
                names->emplace_back(name_of(stem, i).c_str());
        }
        return gen_find_file((*names)[turn % name_count]);
    });
    enter(work, "std::filesystem::exists", [stem](std::size_t turn) {
        std::string const name = name_of(stem, turn);
        for (std::string const& directory : ground().directories) {
            fs::path path = fs::path(directory) / name;
            std::error_code ignored;
            if (fs::exists(path, ignored))
                return path;
        }
        return fs::path();
    });
    enter(work, "limit", [stem, ready = std::shared_ptr<ReadyPaths>()](std::size_t turn) mutable {
        if (!ready)
            ready = std::make_shared<ReadyPaths>(stem);
        for (std::string const& path : ready->paths[turn % name_count])
            if (is_there(path))
                return path.c_str();
        return "";
    });
}

/// The existence checks that a source search must make, ready-made: a type that was found in one
/// group is not asked for in the next.
struct ReadySources {
    ReadySources(char const* stem, bool found) {
        for (std::size_t i = 0; i < name_count; ++i) {
            std::string const unit = stem + std::to_string(i);
            Texts wanted(std::begin(extensions), std::end(extensions));
            for (std::size_t d = 0; d < directory_count; ++d) {
                for (std::string const& extension : wanted)
                    paths[i].push_back(ground().directories[d] + unit + extension);
                // unit_*.sv lies in the first of the three project libraries.
                if (found && d == 4)
                    std::erase(wanted, ".sv");
            }
        }
    }
    Texts paths[name_count];
};

void enter_sources(std::string const& work, char const* stem, bool found) {
    auto const unit_of = [stem](std::size_t turn) {
        return stem + std::to_string(turn % name_count);
    };
    enter(work, "gen", [unit_of](std::size_t turn) {
        ground();
        MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
        gen_get_source_files(unit_of(turn).c_str(), &candidates);
        return candidates.size();
    });
    enter(work, "std::filesystem::exists", [unit_of](std::size_t turn) {
        std::string const unit = unit_of(turn);
        std::vector<fs::path> candidates;
        Texts wanted(std::begin(extensions), std::end(extensions));
        for (std::string const& directory : ground().directories)
            for (std::size_t i = 0; i < wanted.size();) {
                fs::path path = fs::path(directory) / (unit + wanted[i]);
                std::error_code ignored;
                if (fs::exists(path, ignored)) {
                    candidates.push_back(std::move(path));
                    wanted.erase(wanted.begin() + static_cast<std::ptrdiff_t>(i));
                } else {
                    ++i;
                }
            }
        return candidates.size();
    });
    enter(work, "limit",
          [stem, found, ready = std::shared_ptr<ReadySources>()](std::size_t turn) mutable {
              if (!ready)
                  ready = std::make_shared<ReadySources>(stem, found);
              std::size_t hits = 0;
              for (std::string const& path : ready->paths[turn % name_count])
                  hits += static_cast<std::size_t>(is_there(path));
              return hits;
          });
}

/// The @p i-th of many directories that are not there.
std::string missing_directory(std::size_t i) {
    return ground().directories[i % directory_count] + "none_" + std::to_string(i) + "/";
}

STR missing_directories(std::size_t count) {
    STR list;
    for (std::size_t i = 0; i < count; ++i)
        list += (missing_directory(i) + ";").c_str();
    return list;
}

/// A list of so many directories, of which none has the name: the time of one directory.
void enter_directories(std::size_t count) {
    std::string const work = "FIO_FIND, miss over " + std::to_string(count) + " directories";
    auto const items = static_cast<double>(count);
    enter(
        work, "gen",
        [count, find = std::shared_ptr<FIO_FIND>()](std::size_t) mutable {
            if (!find)
                find = std::make_shared<FIO_FIND>(missing_directories(count));
            return find->find_first_relative_path(FIO_PATH("missing.v"));
        },
        items);
    enter(
        work, "limit",
        [count, paths = std::make_shared<Texts>()](std::size_t) {
            if (paths->empty())
                for (std::size_t i = 0; i < count; ++i)
                    paths->push_back(missing_directory(i) + "missing.v");
            std::size_t hits = 0;
            for (std::string const& path : *paths)
                hits += static_cast<std::size_t>(is_there(path));
            return hits;
        },
        items);
}

/// A library path list that is set: the time of one entry.
void enter_path_list(std::size_t count) {
    enter(
        "library path list of " + std::to_string(count) + " directories", "gen",
        [count, list = STR(), find = std::make_shared<FIO_FIND>(STR())](std::size_t) mutable {
            if (list.empty())
                list = missing_directories(count);
            FIO_FIND* slot = find.get();
            gen_set_fio_find_library_paths_helper(list, &slot);
            return slot;
        },
        static_cast<double>(count));
}

/// Names and where they were found, as in the cache of a large project.
struct KnownNames {
    explicit KnownNames(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            names.push_back("src/" + random_letters(4 + random_below(16)) + "/" +
                            random_letters(4 + random_below(12)) + std::to_string(i) + ".v");
            gen_names.emplace_back(names.back().c_str());
            paths.push_back("/home/somebody/project/" + names.back());
        }
    }
    /// A name that the processor cannot predict: at equal distances it would fetch ahead.
    std::size_t pick(std::size_t turn) const {
        auto mixed = static_cast<std::uint32_t>(turn);
        mixed = (mixed ^ mixed >> 16) * 0x85EBCA6BU;
        mixed = (mixed ^ mixed >> 13) * 0xC2B2AE35U;
        return (mixed ^ mixed >> 16) % names.size();
    }

    Texts names;
    std::vector<STR> gen_names;
    Texts paths;
};

using Known = std::shared_ptr<KnownNames const>;

template <typename Map>
void enter_map(std::string const& work, std::string const& contestant, Known const& known) {
    auto const map = std::make_shared<Map>();
    for (std::size_t i = 0; i < known->names.size(); ++i)
        map->emplace(known->names[i], known->paths[i]);
    enter(work, contestant, [known, map](std::size_t turn) {
        auto const hit = map->find(known->names[known->pick(turn)]);
        return hit != map->end() ? std::string(hit->second) : std::string();
    });
}

void enter_cache(std::string const& work, std::size_t count) {
    Known const known = std::make_shared<KnownNames const>(count);
    auto const cache = std::make_shared<GEN_FIND_FILE_CACHE>();
    for (std::size_t i = 0; i < count; ++i)
        cache->emplace(known->gen_names[i], FIO_PATH(known->paths[i].c_str()));
    enter(work, "gen", [known, cache](std::size_t turn) {
        gen_find_file_cache = cache.get();
        FIO_PATH path = gen_find_file_cache_assisted(known->gen_names[known->pick(turn)]);
        gen_find_file_cache = nullptr; // not the library's to free
        return path;
    });
    enter_map<std::unordered_map<std::string, std::string>>(work, "std::unordered_map", known);
#ifdef BENCH_LIBRARY_PEERS
    enter_map<absl::flat_hash_map<std::string, std::string>>(work, "absl::flat_hash_map", known);
#endif
}

Family const lookups{[] {
    enter_lookups("gen_find_file, hit in project", "first_");
    enter_lookups("gen_find_file, miss over 30 directories", "missing_");
    enter_lookups("gen_find_file, hit in the last of 30", "last_");
    enter_sources("gen_get_source_files, 2 found, 30 x 7", "unit_", true);
    enter_sources("gen_get_source_files, none found, 30 x 7", "nothing_", false);
    for (std::size_t const count : {100U, 10'000U}) {
        enter_directories(count);
        enter_path_list(count);
    }
    enter_cache("gen_find_file_cache_assisted, 10k names", 10'000);
    enter_cache("gen_find_file_cache_assisted, 100k names", 100'000);
}};

} // namespace
