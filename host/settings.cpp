#include "settings.h"

#include "settings_file.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

constexpr char const* file_name = "gen_query.toml";

/// The nearest file, or "".
fs::path nearest_file(fs::path directory) {
    std::error_code fault;
    directory = fs::absolute(directory, fault).lexically_normal();
    for (;; directory = directory.parent_path()) {
        // A link that leads nowhere is a fault of the project's, not no file.
        if (fs::exists(fs::symlink_status(directory / file_name, fault)))
            return directory / file_name;
        if (directory == directory.parent_path())
            return {};
    }
}

bool is_library_list(std::string const& name) {
    return name == "project-libs" || name == "user-libs";
}

/// The values as one, the way library options take them: quoted where a ";" would part one.
std::string joined(fs::path const& base, std::vector<std::string> const& values) {
    std::string all;
    for (std::string const& value : values) {
        std::string const path = (base / value).lexically_normal();
        bool const is_parted = values.size() > 1 && path.find(';') != std::string::npos;
        all += (all.empty() ? "" : ";") + (is_parted ? '"' + path + '"' : path);
    }
    return all;
}

/// Why a setting cannot be used, or "".
std::string fault_of(std::string const& name, std::vector<std::string> const& values) {
    bool const is_single = name == "project" || name == "db" || name == "output";
    if (!is_single && !is_library_list(name))
        return "unknown setting '" + name +
               "'; known are project, db, output, project-libs, user-libs";
    if (is_single && values.size() != 1)
        return "'" + name + "' takes one directory";
    // An empty name would mean the directory of the file itself.
    bool const has_empty = std::find(values.begin(), values.end(), "") != values.end();
    return has_empty ? "'" + name + "' has an empty name" : "";
}

} // namespace

Settings read_settings(std::string const& directory) {
    fs::path const file = nearest_file(directory);
    if (file.empty())
        return {};
    fs::path const base = file.parent_path();
    Settings settings{{"project", {base, file}}};
    for (auto const& [name, values] : read_settings_file(file)) {
        if (std::string const fault = fault_of(name, values); !fault.empty())
            throw std::runtime_error("'" + file.string() + "': " + fault);
        settings[name] = {joined(base, values), file};
    }
    // gen puts names of files behind it as it stands, without a "/" in between.
    if (auto const db = settings.find("db");
        db != settings.end() && !db->second.value.ends_with('/'))
        db->second.value += '/';
    return settings;
}
