#include "project_options.h"

#include "gen_path.h"
#include "lookup.h"

#include <filesystem>

namespace {

bool is_directory(std::string const& path) {
    std::error_code fault;
    return std::filesystem::is_directory(path, fault);
}

void remark_missing(Answer& answer, char const* what, std::string const& path) {
    std::error_code fault;
    if (!is_directory(path))
        answer.remark(
            std::string(what) + " '" + path + "' " +
            (std::filesystem::exists(path, fault) ? "is no directory" : "does not exist"));
}

void remark_missing(Answer& answer, FIO_FIND const* libraries) {
    if (libraries == nullptr)
        return;
    std::filesystem::path const project = host_text(gen_get_project_dir_path());
    for (FIO_PATH const& directory : libraries->directories())
        remark_missing(answer, "library directory", project / host_text(directory.fullpath()));
}

std::string joined(std::vector<std::string> const& paths) {
    std::string all;
    for (std::string const& path : paths)
        all += (all.empty() ? "" : ";") + path;
    return all;
}

} // namespace

void ProjectOptions::declare(Options& options) {
    options.value("--project", &m_project, "Project directory; the current one if not given")
        .directory();
    options.value("--db", &m_db, "Database directory; none if not given").directory();
    options.value("--output", &m_output, "Output directory; the project's if not given")
        .directory();
    options
        .value("--project-libs", &m_project_libraries,
               "Library directories of the project, separated by \";\" or given one by one")
        .directory();
    options.value("--user-libs", &m_user_libraries, "Library directories of the user").directory();
}

Settings ProjectOptions::in_force() const {
    Settings settings;
    // A project that an earlier request has set stays.
    if (m_project || gen_project_directory_fio_find == nullptr)
        settings = read_settings(m_project.value_or("."));
    if (m_project)
        settings["project"] = {*m_project, "--project"};
    if (m_db)
        settings["db"] = {*m_db, "--db"};
    if (m_output)
        settings["output"] = {*m_output, "--output"};
    if (!m_project_libraries.empty())
        settings["project-libs"] = {joined(m_project_libraries), "--project-libs"};
    if (!m_user_libraries.empty())
        settings["user-libs"] = {joined(m_user_libraries), "--user-libs"};
    return settings;
}

void ProjectOptions::apply(Answer& answer) const {
    Settings const settings = in_force();
    auto const with = [&settings](char const* name, auto const& use) {
        if (auto const found = settings.find(name); found != settings.end())
            use(found->second.value);
    };
    // First: missing libraries are looked for below it.
    with("project", [&](std::string const& directory) {
        remark_missing(answer, "project directory", directory);
        gen_set_project_dir_path(gen_text(directory));
    });
    with("db", [&](std::string const& directory) {
        remark_missing(answer, "database directory", directory);
        gen_set_db_dir_path(gen_text(directory));
    });
    // One that is missing is not remarked: tools create it.
    with("output",
         [](std::string const& directory) { gen_set_project_output_directory(directory.c_str()); });
    with("project-libs", [&](std::string const& directories) {
        gen_set_project_library_paths(gen_text(directories));
        remark_missing(answer, gen_project_libraries);
    });
    with("user-libs", [&](std::string const& directories) {
        gen_set_user_library_paths(gen_text(directories));
        remark_missing(answer, gen_ini_user_libraries);
    });
}
