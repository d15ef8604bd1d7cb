#include "command.h"
#include "fio.h"
#include "gen_path_project.h"
#include "gen_path_temp.h"
#include "gen_path_tools.h"
#include "lookup.h"
#include "project_options.h"
#include "temporary_file.h"

namespace {

class Names : public Command {
  public:
    void declare(Options& options) override {
        options.flag("--exists", m_exists,
                     "Mark the files that are on the disk; exit status 1 when none is");
        m_project.declare(options);
        options.value("--database-file", &m_database_file, "Name of the database file to show");
    }

    Status run(Answer& answer) override {
        m_project.apply(answer);
        MEM_VECTOR<GEN_TOOL_FILE> names = gen_get_tool_files();
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
    /// In the project's "db/" as long as nobody has said where the database is.
    FIO_PATH database_file() const {
        STR name = gen_text(m_database_file);
        if (gen_project_db_directory_fio_find == nullptr) {
            // As the first lookup would.
            if (gen_project_directory_fio_find == nullptr)
                gen_set_project_dir_path(FIO_FILE_SYSTEM::get_current_directory());
            name.insert(0, gen_get_project_dir_path() + GEN_DB_DIR_NAME + "/");
        }
        return gen_generate_pdb_filename(name, "pdb", nullptr);
    }

    bool m_exists = false;
    ProjectOptions m_project;
    std::string m_database_file = "top";
};

class Temp : public Command {
  public:
    void declare(Options& options) override {
        options
            .value("--directory", &m_directory,
                   "Where to create it; /var/tmp or else /tmp if not given")
            .directory();
        options.value("--prefix", &m_prefix, "Its first three characters begin the name");
        options.value("--number", &m_number, "The first number to try; 0 takes one from the clock");
    }

    Status run(Answer& answer) override {
        STR const directory = m_directory.empty() ? gen_get_temp_path() : gen_text(m_directory);
        STR const prefix = gen_text(m_prefix);
        if (m_prefix.find('/') != m_prefix.npos) {
            answer.remark("temp: --prefix: no name contains a \"/\"");
            return STATUS_USAGE;
        }
        // gen_get_temp_filename would not return before it has created one.
        if (STR const trouble = trouble_of_temporary_file(directory, prefix); !trouble.empty()) {
            answer.field("path", Value());
            answer.remark("no file can be created in " + host_text(directory + ": " + trouble));
            return STATUS_NO;
        }
        answer.plain("path", gen_get_temp_filename(directory, prefix, m_number));
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
        .example = "  $ gen_query names\n"
                   "  family    function                             path\n"
                   "  ...\n"
                   "  database  gen_generate_pdb_filename            "
                   "/opt/korvane/project/db/top.pdb\n"
                   "  $ gen_query names --exists | grep -c 'yes$'\n"
                   "  6\n"
                   "  $ gen_query names --db db | tail -n 1\n"
                   "  database  gen_generate_pdb_filename            dbtop.pdb\n"
                   "No \"/\" is put between the directory of --db and a name.",
    });
    commands.add<Temp>({
        .name = "temp",
        .summary = "Creates an empty temporary file and prints its path",
        .example = "  $ gen_query temp --directory db --prefix report --number 42\n"
                   "  db/rep0000002a.tmp\n"
                   "A name that is taken is stepped over: the next number is tried.\n"
                   "The exit status is 1 where no file can be created.",
    });
}
