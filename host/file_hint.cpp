#include "file_hint.h"

#include "gen_path.h"
#include "gen_string_compare.h"
#include "lookup.h"
#include "suggestion.h"

#include <algorithm>
#include <climits>
#include <filesystem>
#include <string>
#include <tuple>

namespace fs = std::filesystem;

namespace {

/// How many entries of directories are looked at: a hint is not worth more than a moment.
constexpr std::size_t most_entries = 20000;

/// Finds the file that is most like a name, in the directories that it is led to.
class Search {
  public:
    /// @param types the extensions of a name without one; none for the name of a file
    Search(std::string const& name, MEM_VECTOR<STR> const* types)
        : m_name(fs::path(name).filename()), m_stem(fs::path(name).stem()),
          m_extension(fs::path(name).extension()), m_types(types) {}

    /// Looks at the files of a directory, and of those below it if wanted.
    void look(fs::path const& directory, bool below) {
        ++m_looks;
        std::error_code fault;
        fs::recursive_directory_iterator entry(
            directory, fs::directory_options::skip_permission_denied, fault);
        for (; !fault && entry != fs::recursive_directory_iterator(); entry.increment(fault)) {
            if (++m_looked_at > most_entries)
                return;
            std::error_code unknown;
            if (!entry->is_directory(unknown))
                judge(entry->path());
            else if (!below)
                entry.disable_recursion_pending();
        }
    }

    std::string const& best() const { return m_best.path; }

  private:
    /// The same name elsewhere is nearest, then one in another case, then with the extension that
    /// is most like the one asked for: ".v" rather than ".vhd" for ".sv".
    void judge(fs::path const& path) {
        std::string const name = m_types == nullptr ? path.filename() : path.stem();
        if (m_types != nullptr && std::find(m_types->begin(), m_types->end(),
                                            gen_text(path.extension())) == m_types->end())
            return;
        std::size_t distance = 0;
        if (name == m_name)
            distance = 0;
        else if (gen_stricmp(name.c_str(), m_name.c_str()) == 0)
            distance = 1;
        else if (!m_stem.empty() && path.stem() == m_stem)
            distance = 2 + edit_distance(path.extension().string(), m_extension);
        else
            return;
        // Of equals that of the earlier look, and of one look the first by name.
        if (Found const found{distance, m_looks, path}; m_best.path.empty() || found < m_best)
            m_best = found;
    }

    struct Found {
        std::size_t distance;
        int look;
        std::string path;

        bool operator<(Found const& other) const {
            return std::tie(distance, look, path) <
                   std::tie(other.distance, other.look, other.path);
        }
    };

    std::string m_name;
    std::string m_stem;
    std::string m_extension;
    MEM_VECTOR<STR> const* m_types;
    int m_looks = 0;
    Found m_best{0, 0, ""};
    std::size_t m_looked_at = 0;
};

std::string hint(std::string const& name, MEM_VECTOR<STR> const* types) {
    Search search(name, types);
    if (fs::path(name).filename().native().size() > NAME_MAX)
        return ""; // no file has it
    // Of equals the one of the earlier directory is meant. All of the project comes last, since it
    // may have more entries than are looked at.
    for (std::string const& directory : lookup_directories())
        search.look(directory, false);
    for (std::string const& directory : directories_of({gen_get_korvane_eda_lib_paths()}))
        search.look(directory, false);
    search.look(host_text(gen_get_project_dir_path()), true);
    return search.best().empty() ? "" : "; there is '" + search.best() + "'";
}

} // namespace

std::string file_hint(std::string const& name) {
    return hint(name, nullptr);
}

std::string unit_hint(std::string const& unit) {
    return hint(unit, gen_get_file_type_order_helper());
}
