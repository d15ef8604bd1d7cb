#include "command.h"
#include "lookup.h"

#include "gen_path.h"

namespace {

Value known(STR const& text) {
    return text.empty() ? Value() : Value(text);
}

Value::List directories_of(FIO_FIND const* find) {
    Value::List list;
    if (find != nullptr)
        for (FIO_PATH const& directory : find->directories())
            list.emplace_back(directory.fullpath());
    return list;
}

class Project : public Command {
  public:
    void declare(Options& options) override { m_project.declare(options); }

    Status run(Answer& answer) override {
        m_project.apply();
        // As the first lookup would.
        if (gen_project_directory_fio_find == nullptr)
            gen_set_project_dir_path(FIO_FILE_SYSTEM::get_current_directory());
        answer.field("project", gen_get_project_dir_path());
        answer.field("database", known(gen_get_db_dir_path_string()));
        answer.field("output", gen_get_project_output_directory());
        answer.field("parablocks", gen_get_project_parablocks_dir_path().fullpath());
        answer.field("project_libraries", directories_of(gen_project_libraries));
        answer.field("user_libraries", directories_of(gen_ini_user_libraries));
        answer.field("shipped_libraries", directories_of(gen_get_korvane_lib_paths()));
        answer.field("eda_libraries", directories_of(gen_get_korvane_eda_lib_paths()));
        return STATUS_YES;
    }

  private:
    ProjectOptions m_project;
};

constexpr Help help = {
    .name = "project",
    .summary = "Tells the directories of a project, and those that are looked in for its files",
    .example = "  $ gen_query project --db db\n"
               "  project            /opt/korvane/project/\n"
               "  database           db\n"
               "  output             /opt/korvane/project/\n"
               "  ...\n"
               "An output directory that does not exist is created.",
};

} // namespace

void add_project(Commands& commands) {
    commands.add<Project>(help);
}
