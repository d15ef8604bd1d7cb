#include "command.h"
#include "gen_exe.h"
#include "mem.h"

namespace {

class Where : public Command {
  public:
    Status run(Answer& answer) override {
        answer.field("executable", gen_get_module_fullpath());
        answer.field("module_path", gen_get_module_path());
        answer.field("file_name", gen_get_module_filename());
        answer.field("installation_root", gen_get_korvane_path());
        answer.field("graphical_shell", gen_is_in_ui_process());
        // Asked of that library, through the callbacks that gen_exe_init leaves there.
        answer.field("seen_by_the_memory_library",
                     Value::Record{
                         {"installation_root", mem_gen_get_korvane_path()},
                         {"file_name", mem_gen_get_module_filename()},
                         {"database_directory", mem_gen_get_db_dir_path_string()},
                         {"output_directory", mem_gen_get_project_output_directory()},
                         {"graphical_shell", mem_gen_is_in_ui_process()},
                     });
        return STATUS_YES;
    }
};

constexpr Help help = {
    .name = "where",
    .summary = "Shows where the executable and its installation lie",
    .example = "  $ gen_query where\n"
               "  executable                  /opt/korvane/linux/gen_query\n"
               "  module path                 /opt/korvane/linux/\n"
               "  ...",
};

} // namespace

void add_where(Commands& commands) {
    commands.add<Where>(help);
}
