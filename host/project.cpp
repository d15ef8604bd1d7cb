#include "command.h"
#include "gen_path.h"
#include "lookup.h"
#include "project_options.h"

namespace {

Value known(STR const& text) {
    return text.empty() ? Value() : Value(text);
}

/// As they were given: gen takes relative ones from the project directory.
Value::List directories_of(FIO_FIND const* find) {
    Value::List list;
    if (find != nullptr)
        for (FIO_PATH const& directory : find->directories())
            list.emplace_back(directory.fullpath());
    return list;
}

class Project : public Command {
  public:
    void declare(Options& options) override {
        m_project.declare(options);
        options.flag("--create", m_create, "Create the output directory if it does not exist");
    }

    Status run(Answer& answer) override {
        m_project.apply(answer);
        // As the first lookup would.
        if (gen_project_directory_fio_find == nullptr)
            gen_set_project_dir_path(FIO_FILE_SYSTEM::get_current_directory());
        answer.field("project", gen_get_project_dir_path());
        answer.field("database", known(gen_get_db_dir_path_string()));
        STR const output = output_directory(answer);
        answer.field("output", output);
        answer.field("parablocks", gen_get_project_parablocks_dir_path().fullpath());
        answer.field("project_libraries", directories_of(gen_project_libraries));
        answer.field("user_libraries", directories_of(gen_ini_user_libraries));
        answer.field("shipped_libraries", directories_of(gen_get_korvane_lib_paths()));
        answer.field("eda_libraries", directories_of(gen_get_korvane_eda_lib_paths()));
        // Where it cannot be created gen takes the project's.
        bool const is_refused = m_create && !gen_project_output_directory.empty() &&
                                !FIO_FILE_SYSTEM::exists(gen_project_output_directory.c_str());
        if (is_refused)
            answer.remark("output directory '" + host_text(gen_project_output_directory) +
                          "' cannot be created");
        return status_of(!is_refused);
    }

  private:
    /// gen itself creates it as soon as somebody asks for it.
    STR output_directory(Answer& answer) const {
        STR const& given = gen_project_output_directory;
        if (m_create || given.empty() || FIO_FILE_SYSTEM::exists(given.c_str()))
            return gen_get_project_output_directory();
        answer.remark("output directory '" + host_text(given) + "' does not exist");
        return given;
    }

    ProjectOptions m_project;
    bool m_create = false;
};

/// What a lookup would be given. Nothing is handed to gen.
class SettingsInForce : public Command {
  public:
    void declare(Options& options) override { m_project.declare(options); }

    Status run(Answer& answer) override {
        Settings settings = m_project.in_force();
        add_defaults(settings);
        Value::List rows;
        for (char const* const name : {"project", "db", "output", "project-libs", "user-libs"}) {
            auto const found = settings.find(name);
            bool const is_set = found != settings.end();
            rows.push_back(Value::Record{{"name", name},
                                         {"value", is_set ? Value(found->second.value) : Value()},
                                         {"from", is_set ? Value(found->second.from) : Value()}});
        }
        answer.table("settings", std::move(rows));
        return STATUS_YES;
    }

  private:
    /// What a lookup takes where neither an option nor the file says anything.
    static void add_defaults(Settings& settings) {
        for (auto const& [name, kept] : std::initializer_list<std::pair<char const*, STR>>{
                 {"project", gen_project_dir_path},
                 {"db", gen_get_db_dir_path_string()},
                 {"output", gen_project_output_directory},
                 {"project-libs", gen_project_library_paths},
                 {"user-libs", gen_user_library_paths}})
            if (!kept.empty())
                settings.try_emplace(name, Setting{host_text(kept), "an earlier request"});
        STR const here = FIO_FILE_SYSTEM::get_current_directory();
        settings.try_emplace("project", Setting{host_text(here), "current directory"});
        settings.try_emplace("output", Setting{settings["project"].value, "project"});
    }

    ProjectOptions m_project;
};

constexpr Help help = {
    .name = "project",
    .summary = "Shows the directories of a project, and those that are looked in for its files",
    .example = "  $ gen_query project --db db\n"
               "  project            /opt/korvane/project/\n"
               "  database           db\n"
               "  output             /opt/korvane/project/\n"
               "  ...\n"
               "A tool that asks for its output directory creates it; here --create does.",
};

} // namespace

void add_project(Commands& commands) {
    commands.add<Project>(help);
    commands.add<SettingsInForce>({
        .name = "settings",
        .summary = "Shows the directories that a lookup is given, and where each is from",
        .example =
            "  $ gen_query settings --project . --db db\n"
            "  name          value  from\n"
            "  project       .      --project\n"
            "  db            db     --db\n"
            "  output        .      project\n"
            "  ...\n"
            "A project keeps its directories in the file gen_query.toml: project, db, output,\n"
            "project-libs and user-libs, the last two as lists. The file is looked for in the\n"
            "project directory and above. What it names is taken from where it lies, which is\n"
            "the project directory unless it names one; options go before it.",
    });
}
