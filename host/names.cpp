#include "command.h"

#include "fio.h"
#include "gen_path_project.h"
#include "gen_path_temp.h"
#include "gen_path_tools.h"

#include <CLI/CLI.hpp>

#include <unistd.h>

namespace {

struct Name {
    char const* family;
    char const* getter;
    FIO_PATH path;
};

#define NAME(family, getter)                                                                       \
    { family, #getter, getter() }

/// Every name, in the order in which people look for them.
std::vector<Name> all_names() {
    return {
        {"report", "gen_get_krpt_name(first)", gen_get_krpt_name("", "", "", true, "")},
        {"report", "gen_get_krpt_name(second)", gen_get_krpt_name("", "", "", false, "")},
        {"report", "gen_get_rpw_filename(3)", gen_get_rpw_filename(3)},
        {"window", "gen_get_fled_filename", gen_get_fled_filename("", false)},
        NAME("window", gen_get_ase_filename),
        NAME("window", gen_get_acv_filename),
        NAME("window", gen_get_ape_filename),
        NAME("window", gen_get_cfw_filename),
        NAME("window", gen_get_sfw_filename),
        NAME("window", gen_get_tfw_filename),
        NAME("window", gen_get_advanced_tan_tool_filename),
        NAME("window", gen_get_pgmw_cof_filename),
        NAME("window", gen_get_rui_filename),
        NAME("window", gen_get_tech_viewer_filename),
        NAME("window", gen_get_rui_sim_viewer_fun_filename),
        NAME("window", gen_get_rui_sim_viewer_tim_filename),
        NAME("window", gen_get_rui_sim_viewer_ftm_filename),
        NAME("window", gen_get_rsm_filename),
        NAME("window", gen_get_ppl_filename),
        NAME("window", gen_get_ecui_filename),
        NAME("window", gen_get_reqc_filename),
        NAME("window", gen_get_ptw_filename),
        NAME("window", gen_get_kis_filename),
        NAME("window", gen_get_ram_editor_filename),
        NAME("advisor", gen_get_oaw_resource_filename),
        NAME("advisor", gen_get_oaw_timing_filename),
        NAME("advisor", gen_get_oaw_asx2_filename),
        NAME("advisor", gen_get_oaw_power_filename),
        NAME("advisor", gen_get_oaw_ssn_filename),
        NAME("advisor", gen_get_oaw_productivity_filename),
    };
}

#undef NAME

class Names : public Command {
  public:
    void declare(CLI::App& app) override {
        app.add_flag("--exists", m_exists,
                     "Mark the files that are on the disk; exit status 1 when none is");
        app.add_option("--db", m_database_directory,
                       "The project's database directory, the project's \"db/\" where not given");
        app.add_option("--database-file", m_database_file,
                       "Name of the database file to show, \"top\" where not given");
    }

    Status run(Answer& answer) override {
        std::vector<Name> names = all_names();
        names.push_back({"database", "gen_generate_pdb_filename", database_file()});
        Value::List rows;
        bool any = false;
        for (auto const& [family, getter, path] : names) {
            Value::Record row{{"family", family}, {"function", getter}, {"path", path.fullpath()}};
            if (m_exists) {
                bool const there = FIO_FILE_SYSTEM::exists(path);
                any = any || there;
                row.emplace_back("exists", there);
            }
            rows.emplace_back(std::move(row));
        }
        answer.table("names", std::move(rows));
        return status_of(any || !m_exists);
    }

  private:
    FIO_PATH database_file() const {
        STR directory(m_database_directory);
        if (directory.empty())
            directory = FIO_FILE_SYSTEM::get_current_directory() + "/" + GEN_DB_DIR_NAME;
        if (!directory.ends_with('/'))
            directory += '/';
        gen_set_db_dir_path(directory);
        return gen_generate_pdb_filename(STR(m_database_file), "pdb", nullptr);
    }

    bool m_exists = false;
    std::string m_database_directory;
    std::string m_database_file = "top";
};

class Temp : public Command {
  public:
    void declare(CLI::App& app) override {
        app.add_option("--directory", m_directory, "Where to create it");
        app.add_option("--prefix", m_prefix, "Its first three characters begin the name");
        app.add_option("--number", m_number, "The first number to try; 0 takes one from the clock");
    }

    Status run(Answer& answer) override {
        STR const directory = m_directory.empty() ? gen_get_temp_path() : STR(m_directory);
        // gen itself waits until a file can be created.
        if (access(directory.c_str(), W_OK | X_OK) != 0) {
            answer.field("path", Value());
            answer.remark("no file can be created in " + std::string(directory));
            return STATUS_NO;
        }
        answer.plain("path", gen_get_temp_filename(directory, STR(m_prefix), m_number));
        return STATUS_YES;
    }

  private:
    std::string m_directory;
    std::string m_prefix = "gen";
    unsigned short m_number = 0;
};

} // namespace

void add_names(Commands& commands) {
    commands.add<Names>({
        .name = "names",
        .summary = "Lists the files that tool windows, reports and advisors keep their data in",
        .example = "  $ gen_query names --exists\n"
                   "  family    function              path                                exists\n"
                   "  window    gen_get_cfw_filename  /opt/k/linux/Compiler Flow Window.cfw  no\n"
                   "  ...",
    });
    commands.add<Temp>({
        .name = "temp",
        .summary = "Creates an empty temporary file and prints its path",
        .example = "  $ gen_query temp --prefix report --number 42\n"
                   "  /var/tmp/rep0000002a.tmp",
    });
}
