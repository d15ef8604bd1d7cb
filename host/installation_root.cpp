#include "installation_root.h"

#include <cstdlib>
#include <filesystem>

#include "gen_exe.h"
#include "lookup.h"

namespace fs = std::filesystem;

std::string enter_installation(std::string const& root) {
    static std::string& executable = *new std::string; // gen keeps its address
    static std::string entered;
    if (!executable.empty())
        return root == entered ? "" : "the installation root is chosen already: '" + entered + "'";
    std::error_code fault;
    fs::path const directory = fs::absolute(root, fault).lexically_normal();
    entered = root;
    executable = directory / "linux" / "gen_query";
    char const* const variable = std::getenv("KORVANE_ROOTDIR");
    if (variable != nullptr && variable == host_text(gen_get_korvane_path()))
        unsetenv("KORVANE_ROOTDIR"); // the start set it to the root that is left now
    gen_exe_fini();
    gen_module_fullpath = executable.data();
    gen_exe_init(0, nullptr);
    return fs::is_directory(directory / "libraries", fault)
               ? ""
               : "the installation root '" + root + "' has no directory 'libraries'";
}
