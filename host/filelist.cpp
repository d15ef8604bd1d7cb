#include "command.h"
#include "file_hint.h"
#include "file_list_reader.h"
#include "gen_path.h"
#include "lookup.h"
#include "project_options.h"
#include "simulator_list.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace fs = std::filesystem;

namespace {

std::string absolute_path(fs::path const& path) {
    std::error_code fault;
    return fs::absolute(path, fault).lexically_normal();
}

/// Takes a list entry by entry. What cannot be found is left out of the list that is written, and
/// the status is then 1.
class FileList : public Command {
  public:
    void declare(Options& options) override {
        options.argument("list", &m_list, "The list, as simulators read it").required().file();
        options.flag("--includes", m_includes, "Add the directories that the sources include from");
        m_project.declare(options);
    }

    Status run(Answer& answer) override {
        m_project.apply(answer);
        for (ListEntry const& entry : read_file_list(m_list))
            take(entry, answer);
        if (m_includes)
            add_includes();
        for (std::string const& fault : m_written.faults())
            complain(fault, answer);
        answer.detail("files", std::move(m_records));
        answer.plain("lines", Value::List(m_written.lines().begin(), m_written.lines().end()));
        return status_of(m_whole);
    }

  private:
    using Kind = ListEntry::Kind;

    void take(ListEntry const& entry, Answer& answer) {
        switch (entry.kind) {
        case Kind::option:
            take_option(entry, answer);
            break;
        case Kind::file:
            take_file(entry, "", answer);
            break;
        case Kind::library_file:
            take_file(entry, "-v ", answer);
            break;
        case Kind::library_directory:
            take_directory(entry, "-y ", answer);
            break;
        case Kind::include_directory:
            take_directory(entry, "+incdir+", answer);
            break;
        }
    }

    void take_option(ListEntry const& entry, Answer& answer) {
        if (entry.text.starts_with("-"))
            answer.remark(entry.place + ": '" + entry.text +
                          "' stays as it is; Icarus Verilog reads it in no list");
        m_written.add_option(entry.text);
    }

    void take_file(ListEntry const& entry, std::string const& option, Answer& answer) {
        std::string const path = find(entry, answer);
        m_records.push_back(Value::Record{{"name", entry.text},
                                          {"place", entry.place},
                                          {"path", path.empty() ? Value() : Value(path)}});
        if (path.empty())
            return complain(entry.place + ": '" + entry.text + "' is not found" +
                                file_hint(entry.text),
                            answer);
        if (!m_listed.insert(path).second)
            return answer.remark(entry.place + ": '" + path + "' is listed already");
        if (std::error_code fault; fs::is_directory(path, fault))
            return complain(entry.place + ": '" + path + "' is a directory", answer);
        if (is_other_source(path))
            answer.remark(entry.place + ": '" + path + "' is no Verilog");
        m_written.add(option, path);
    }

    /// Of the types that sources of a design have. What others are is not known.
    static bool is_other_source(fs::path const& path) {
        STR const type = gen_text(path.extension());
        MEM_VECTOR<STR> const& types = *gen_get_file_type_order_helper();
        return type != ".v" && type != ".sv" &&
               std::find(types.begin(), types.end(), type) != types.end();
    }

    /// Beside the list where it says so, else as every tool finds it; "" for none.
    static std::string find(ListEntry const& entry, Answer& answer) {
        std::error_code fault;
        if (fs::path const beside = fs::path(entry.base) / entry.text;
            !entry.base.empty() && fs::exists(beside, fault))
            return absolute_path(beside);
        STR const name = gen_text(entry.text);
        LookupWatch watch(LookupWatch::Manner::walk_on, "as named");
        gen_find_file(name); // finds nothing, but is checked for wherever it could be
        MEM_VECTOR<ExistenceCheck> const hits = LookupView::hits(watch.take());
        std::string hidden;
        for (std::size_t i = 1; i < hits.size(); ++i)
            hidden += (hidden.empty() ? "'" : ", '") + host_text(hits[i].path) + "'";
        if (!hidden.empty())
            answer.remark(entry.place + ": '" + host_text(hits.front().path) + "' shadows " +
                          hidden);
        return hits.empty() ? "" : absolute_path(host_text(hits.front().path));
    }

    /// From where a list of -F lies, else from the current directory as simulators do, or else from
    /// the project's.
    void take_directory(ListEntry const& entry, std::string const& option, Answer& answer) {
        std::error_code fault;
        for (fs::path const& base :
             {fs::path(entry.base), fs::path(host_text(gen_get_project_dir_path()))}) {
            if (!fs::is_directory(base / entry.text, fault))
                continue;
            std::string const path = absolute_path(base / entry.text);
            m_written.add(option, path);
            if (entry.kind == Kind::library_directory)
                m_unit_directories.push_back(path);
            return;
        }
        complain(entry.place + ": there is no directory '" + entry.text + "'", answer);
    }

    /// Which of its units a simulator takes from a directory is not known: they may include from
    /// beside themselves, and from wherever a lookup looks.
    void add_includes() {
        std::vector<std::string> directories = m_unit_directories;
        if (!directories.empty())
            for (std::string& directory : lookup_directories())
                directories.push_back(std::move(directory));
        m_written.add_includes(directories);
    }

    void complain(std::string remark, Answer& answer) {
        answer.remark(std::move(remark));
        m_whole = false;
    }

    std::string m_list;
    bool m_includes = false;
    ProjectOptions m_project;
    bool m_whole = true; ///< nothing is missing so far
    SimulatorList m_written;
    std::vector<std::string> m_unit_directories; ///< those of -y
    std::set<std::string> m_listed; ///< paths of files, so that simulators read none twice
    Value::List m_records;
};

constexpr Help help = {
    .name = "filelist",
    .summary = "Resolves a simulator's list of files as every tool would find them",
    .example = "  $ printf 'adder.v // the project has it\\ncarry.v\\n' >own.f\n"
               "  $ gen_query filelist own.f\n"
               "  /opt/korvane/project/adder.v\n"
               "  /opt/korvane/libraries/primitives/other/carry.v\n"
               "  ...\n"
               "A list has names, -f and -F with other lists, +incdir+, -I, -D, -y, -v, and\n"
               "others that stay as they are, like --top-module NAME; comments with //, # or\n"
               "/* */; variables as $NAME. Out come absolute names, which Verilator takes after\n"
               "-f, Icarus Verilog after -c. Remarked are files that hide others. --includes\n"
               "follows sources into what they include, whatever `ifdef says around it.\n"
               "Status 1 says that something is missing.",
};

} // namespace

void add_filelist(Commands& commands) {
    commands.add<FileList>(help);
}
