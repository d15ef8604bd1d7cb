#include "file_hint.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "gen_path.h"
#include "gen_string_compare.h"
#include "lookup.h"

namespace fs = std::filesystem;

namespace {

/// How many entries of directories are looked at: a hint is not worth more than a moment.
constexpr std::size_t most_entries = 20000;

class Search {
  public:
    explicit Search(std::string const& name)
        : m_name(fs::path(name).filename()), m_stem(fs::path(name).stem()) {}

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

    std::string const& best() const { return m_best; }

  private:
    /// The same name elsewhere is nearest, then one in another case, then with another extension.
    void judge(fs::path const& path) {
        std::string const name = path.filename();
        int const rank = name == m_name                                   ? 3
                         : gen_stricmp(name.c_str(), m_name.c_str()) == 0 ? 2
                         : !m_stem.empty() && gen_stricmp(path.stem().c_str(), m_stem.c_str()) == 0
                             ? 1
                             : 0;
        // Of equals that of the earlier look, and of one look the first by name.
        bool const is_first =
            rank > 0 && rank == m_rank && m_looks == m_best_look && path.string() < m_best;
        if (rank > m_rank || is_first) {
            m_rank = rank;
            m_best_look = m_looks;
            m_best = path;
        }
    }

    std::string m_name;
    std::string m_stem;
    int m_rank = 0;
    int m_looks = 0;
    int m_best_look = 0;
    std::string m_best;
    std::size_t m_looked_at = 0;
};

} // namespace

std::string file_hint(std::string const& name) {
    Search search(name);
    for (FIO_FIND const* const group :
         {gen_project_directory_fio_find, gen_project_db_directory_fio_find, gen_project_libraries,
          gen_ini_user_libraries, gen_project_parablocks_fio_find, gen_korvane_libraries})
        if (group != nullptr)
            for (FIO_PATH const& directory : group->directories())
                search.look(host_text(directory.fullpath()), false);
    search.look(host_text(gen_get_project_dir_path()), true);
    return search.best().empty() ? "" : "; there is '" + search.best() + "'";
}
