#include "installation_root.h"

#include "gen_exe.h"
#include "lookup.h"

#include <cstdlib>
#include <filesystem>
#include <utility>

namespace fs = std::filesystem;

namespace {

/// The installation that was chosen, and what gen had kept for the process's whole life until then:
/// nobody owns that, and a leak checker wants it reachable.
struct Chosen {
    std::string root;
    std::string executable; ///< gen keeps its address
    char const* left_executable = nullptr;
    char const* left_variable = nullptr;
};

} // namespace

std::string enter_installation(std::string const& root) {
    static Chosen& chosen = *new Chosen;
    if (!chosen.root.empty())
        return root == chosen.root
                   ? ""
                   : "the installation root is chosen already: '" + chosen.root + "'";
    std::error_code fault;
    fs::path const directory = fs::absolute(root, fault).lexically_normal();
    std::string const left_root = host_text(gen_get_korvane_path());
    chosen.root = root;
    // It need not exist: gen looks at nothing but the path.
    chosen.executable = directory / "linux" / "gen_query";
    chosen.left_executable = std::exchange(gen_module_fullpath, chosen.executable.data());
    char const* const variable = std::getenv("KORVANE_ROOTDIR");
    if (variable != nullptr && variable == left_root) {
        chosen.left_variable = variable;
        unsetenv("KORVANE_ROOTDIR"); // the start set it to the root that is left now
    }
    forget_project(); // what an earlier request has found lies in the installation that is left
    // A second start keeps the location and does all the rest for it.
    gen_exe_fini();
    gen_exe_init(0, nullptr);
    return fs::is_directory(directory / "libraries", fault)
               ? ""
               : "the installation root '" + root + "' has no directory 'libraries'";
}
