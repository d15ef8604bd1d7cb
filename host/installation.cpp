#include "command.h"
#include "gen_exe.h"
#include "gen_iterator_sys.h"
#include "gen_path.h"

namespace {

Value::List libraries() {
    Value::List rows;
    GEN_ENUM_ITERATOR<GEN_LIBRARY_TYPE> type(GEN_LIB_ROOT,
                                             static_cast<GEN_LIBRARY_TYPE>(GEN_LIB_SIZE - 1));
    for (; !type.at_end(); ++type) {
        STR const directory = gen_get_library_path(*type);
        rows.emplace_back(Value::Record{{"library", static_cast<int>(*type)},
                                        {"eda_only", gen_lib_is_for_eda_use_only(*type)},
                                        {"there", FIO_FILE_SYSTEM::exists(directory.c_str())},
                                        {"directory", directory}});
    }
    return rows;
}

Value::List device_files() {
    Value::List names;
    for (STR const& name : gen_get_all_device_files())
        names.emplace_back(name);
    return names;
}

class Installation : public Command {
  public:
    Status run(Answer& answer) override {
        answer.field("root", gen_get_korvane_path());
        answer.field("common_data", gen_get_common_data_fullpath());
        answer.field("miscellaneous", gen_get_common_misc_fullpath());
        answer.field("unshipped_data", gen_get_unshipped_data_fullpath());
        answer.field("tcl_applications", gen_get_tcl_apps_fullpath());
        answer.field("tcl_internal", gen_get_tcl_internal_fullpath());
        answer.field("unshipped_tcl", gen_get_unshipped_tcl_fullpath());
        answer.field("device_database", gen_get_device_db_fullpath());
        answer.field("device_files", device_files());
        answer.table("libraries", libraries());
        return STATUS_YES;
    }
};

constexpr Help help = {
    .name = "installation",
    .summary = "Shows the shipped data and library directories",
    .example = "  $ gen_query installation\n"
               "  root              /opt/korvane/\n"
               "  common data       /opt/korvane/common\n"
               "  ...",
};

} // namespace

void add_installation(Commands& commands) {
    commands.add<Installation>(help);
}
