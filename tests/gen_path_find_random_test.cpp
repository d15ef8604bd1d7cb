// Whatever a tree looks like, gen finds what a plain lookup finds: one that writes the order of
// directories down as a list and asks std::filesystem.

#include "effort.h"
#include "gen_path_find.h"
#include "gen_path_fixture.h"
#include "gen_path_source.h"
#include "lookup_order.h"

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

namespace {

namespace fs = std::filesystem;

using Random = std::mt19937;

std::size_t below(Random& random, std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
}

bool chance(Random& random, unsigned percent) {
    return below(random, 100) < percent;
}

/// A directory that is searched, with the tag of its group. The string ends in "/".
struct Place {
    int tag;
    std::string directory;
};

/// The plain lookup.
class Reference {
  public:
    std::vector<Place> places;
    std::vector<Place> eda_places;

    static bool exists(std::string const& path) {
        std::error_code ignored;
        return fs::exists(path, ignored);
    }
    static std::string find(std::vector<Place> const& places, std::string const& name) {
        if (name.empty())
            return "";
        if (name[0] == '/')
            return exists(name) ? name : "";
        for (Place const& place : places)
            if (exists(place.directory + name))
                return place.directory + name;
        return "";
    }
    std::vector<std::pair<int, std::string>> sources(std::string const& base_name) const {
        std::vector<std::pair<int, std::string>> found;
        std::vector<std::string> taken;
        for (Place const& place : places)
            for (char const* extension : source_extensions) {
                std::string const path = place.directory + base_name + extension;
                if (std::count(taken.begin(), taken.end(), extension) == 0 && exists(path) &&
                    !fs::is_directory(path)) {
                    found.emplace_back(place.tag, path);
                    taken.emplace_back(extension);
                }
            }
        return found;
    }
    std::string include(std::string const& name, std::string const& including_file) const {
        std::string const general = find(places, name);
        if (!general.empty() || name.starts_with('/'))
            return general;
        std::string const beside = fs::path(including_file).parent_path().string() + "/" + name;
        FIO_PATH simplified(beside.c_str());
        simplified.become_simplified();
        return exists(found(simplified)) ? found(simplified) : "";
    }
};

/// A tree made by chance, gen set up over it, and the plain lookup beside it.
class RandomTree {
  public:
    RandomTree(Random& random, std::string root, std::string const& korvane)
        : m_random(random), m_root(std::move(root)) {
        set_project();
        set_libraries();
        for (std::string const& directory : shipped_directories(korvane))
            m_reference.places.push_back({4, directory});
        for (std::string const& directory : eda_directories(korvane))
            m_reference.eda_places.push_back({4, directory});
        for (Place const& place : m_reference.places)
            fill(place.directory);
        for (Place const& place : m_reference.eda_places)
            fill(place.directory);
    }

    Reference const& reference() const { return m_reference; }
    std::string name() {
        static char const* const odd[] = {"",  ".",      "..",      "./a.v", "../p/a.v", "sub//a.v",
                                          "/", "sub/..", "a.v/b.v", "sub/",  "/nowhere"};
        if (chance(m_random, 15))
            return odd[below(m_random, std::size(odd))];
        std::string const base = random_base();
        return chance(m_random, 10) ? m_root + "/p/" + base : base + random_extension();
    }
    std::string random_base() {
        static char const* const bases[] = {"a", "b", "sub/a", "sub dir/c", "A", "a.b"};
        return bases[below(m_random, std::size(bases))];
    }

  private:
    void set_project() {
        std::string const project = m_root + "/p";
        gen_set_project_dir_path(library_string(project));
        m_reference.places.push_back({1, project + "/"});
        if (chance(m_random, 70)) {
            std::string const db = chance(m_random, 50) ? project + "/db" : m_root + "/data base/";
            gen_set_db_dir_path(library_string(db));
            m_reference.places.push_back({2, db.back() == '/' ? db : db + "/"});
        }
    }

    void set_libraries() {
        if (chance(m_random, 80))
            gen_set_project_library_paths(random_path_list(3));
        if (chance(m_random, 80))
            gen_set_user_library_paths(random_path_list(5));
        m_reference.places.push_back({4, m_root + "/p/parablocks/"});
    }

    /// A path list of up to four entries, which are noted as places of that tag.
    STR random_path_list(int tag) {
        static char const* const entries[] = {"lib",        "../shared", "ip/x",  "two words",
                                              "semi;colon", "missing",   "./lib", "lib/"};
        std::string list;
        for (std::size_t count = below(m_random, 5); count > 0; --count) {
            std::string const entry = entries[below(m_random, std::size(entries))];
            bool const absolute = chance(m_random, 40);
            std::string const text = absolute ? m_root + "/" + entry : entry;
            bool const quoted = text.find(';') != std::string::npos || chance(m_random, 20);
            list += chance(m_random, 30) ? " " : "";
            list += quoted ? "\"" + text + "\"" : text;
            list += chance(m_random, 20) ? ";;" : ";";
            std::string const directory = absolute ? text : m_root + "/p/" + text;
            m_reference.places.push_back(
                {tag, directory.back() == '/' ? directory : directory + "/"});
        }
        return library_string(list);
    }

    std::string random_extension() {
        return chance(m_random, 10)
                   ? ""
                   : source_extensions[below(m_random, std::size(source_extensions))];
    }

    /// Puts files, links and directories of the usual names into one directory, or leaves it out.
    void fill(std::string const& directory) {
        if (directory.find("missing") != std::string::npos || chance(m_random, 70))
            return;
        std::error_code ignored;
        for (std::size_t count = below(m_random, 4); count > 0; --count) {
            std::string const path = directory + random_base() + random_extension();
            fs::create_directories(fs::path(path).parent_path(), ignored);
            switch (below(m_random, 10)) {
            case 0:
                fs::create_directory(path, ignored);
                break;
            case 1:
                fs::create_symlink(m_root + "/nowhere", path, ignored);
                break;
            case 2:
                fs::create_symlink(fs::path(path).filename(), path, ignored);
                break;
            case 3:
                fs::create_symlink(m_root + "/p", path, ignored);
                break;
            default:
                std::ofstream(path, std::ios::app).flush();
            }
        }
    }

    Random& m_random;
    std::string m_root;
    Reference m_reference;
};

class GenFindRandom : public GenPathTest {};

std::vector<std::pair<int, std::string>> sources(std::string const& base_name) {
    MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
    gen_get_source_files(library_string(base_name), &candidates);
    std::vector<std::pair<int, std::string>> list;
    for (auto const& [group, path] : candidates)
        list.emplace_back(group, found(path));
    return list;
}

std::string included(std::string const& name, std::string const& including_file) {
    STR path;
    gen_find_include_file(name.c_str(), including_file.c_str(), nullptr, &path, nullptr);
    return std::string(path);
}

} // namespace

TEST_F(GenFindRandom, AgreesWithAPlainLookupInRandomTrees) {
    std::size_t const trees = effort(200);
    for (std::size_t seed = 1; seed <= trees; ++seed) {
        SCOPED_TRACE(seed);
        Random random(static_cast<Random::result_type>(seed));
        forget_path_state();
        RandomTree tree(random, at("tree"), at("korvane/"));
        Reference const& reference = tree.reference();
        for (int lookup = 0; lookup < 16; ++lookup) {
            std::string const name = tree.name();
            STR const text = library_string(name);
            std::string const expected = Reference::find(reference.places, name);
            ASSERT_EQ(found_file(name), expected) << name;
            ASSERT_EQ(found(gen_find_file_cache_assisted(text)), expected) << name;
            ASSERT_EQ(found(gen_find_file_cache_assisted(text)), expected) << name;
            ASSERT_EQ(found(gen_find_eda_file(text)), Reference::find(reference.eda_places, name))
                << name;
            std::string const including = at("tree/shared/top.v");
            ASSERT_EQ(included(name, including), reference.include(name, including)) << name;
        }
        for (int lookup = 0; lookup < 4; ++lookup) {
            std::string const base = tree.random_base();
            ASSERT_EQ(sources(base), reference.sources(base)) << base;
        }
        fs::remove_all(at("tree"));
        fs::remove_all(at("korvane"));
    }
}
