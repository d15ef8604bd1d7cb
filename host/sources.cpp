#include "batch.h"
#include "command.h"
#include "file_hint.h"
#include "gen_path.h"
#include "lookup.h"
#include "project_options.h"
#include "simulator_list.h"

#include <algorithm>
#include <filesystem>

namespace {

class Sources : public Command {
  public:
    void declare(Options& options) override {
        options
            .argument("unit", &m_unit, "Name of a design unit, without an extension; - reads names")
            .required();
        m_batch.declare(options);
        options.flag("--shipped", m_shipped, "Look in the shipped libraries alone");
        options
            .flag("--filelist", m_file_list,
                  "Write its Verilog source for simulators, and where they find the rest")
            .excludes("--all")
            .excludes("--trace");
        m_project.declare(options);
        m_view.declare(options);
    }

    Status run(Answer& answer) override {
        m_project.apply(answer);
        if (Batch::is_asked_for({m_unit}))
            return m_batch.answer({m_unit}, answer, [this](std::string const& unit, Answer& one) {
                return answer_one(unit, true, one);
            });
        return answer_one(m_unit, false, answer);
    }

  private:
    Status answer_one(std::string const& unit, bool one_of_several, Answer& answer) const {
        LookupWatch watch(m_view.manner(), "other");
        MEM_VECTOR<GEN_SOURCE_CANDIDATE> candidates;
        auto* const search =
            m_shipped ? gen_get_source_files_from_korvane_lib : gen_get_source_files;
        search(gen_text(unit), &candidates);
        MEM_VECTOR<ExistenceCheck> const checks = watch.take();
        m_view.show(answer, unit, one_of_several, checks);
        answer.detail("unit", unit);
        describe_file_types(answer);
        Value::Record more;
        m_view.describe(more, checks);
        for (auto& [key, value] : more)
            answer.detail(key, std::move(value));
        if (m_file_list)
            return show_file_list(answer, unit, candidates);
        if (!m_view.all())
            show(answer, one_of_several, candidates, LookupView::hits(checks));
        bool const any = m_view.all() ? !LookupView::hits(checks).empty() : !candidates.empty();
        if (!any)
            answer.remark("'" + unit + "' has no source file" +
                          (one_of_several ? "" : unit_hint(unit)));
        return status_of(any);
    }

    /// Sources of different types are the same unit written twice: that which the lookup finds
    /// first is taken.
    Status show_file_list(Answer& answer, std::string const& unit,
                          MEM_VECTOR<GEN_SOURCE_CANDIDATE> const& candidates) const {
        auto const source =
            std::find_if(candidates.begin(), candidates.end(), [](auto const& candidate) {
                return candidate.second.extension() == "v" || candidate.second.extension() == "sv";
            });
        if (source == candidates.end()) {
            answer.remark("'" + unit + "' has no Verilog source");
            return STATUS_NO;
        }
        std::error_code fault;
        std::string const path =
            std::filesystem::absolute(host_text(source->second.fullpath()), fault);
        std::vector<std::string> const directories =
            m_shipped ? directories_of({gen_korvane_libraries}) : lookup_directories();
        SimulatorList list;
        list.add("", path);
        list.add_includes(directories);
        // What it instantiates, simulators look for where the tools do, and in the same order.
        for (std::string const& directory : directories)
            list.add("-y ", directory);
        list.add_option("+libext+.v+.sv");
        for (std::string const& one : list.faults())
            answer.remark(one);
        answer.plain("lines", Value::List(list.lines().begin(), list.lines().end()));
        return status_of(list.faults().empty());
    }

    static void describe_file_types(Answer& answer) {
        Value::List order;
        for (STR const& extension : *gen_get_file_type_order_helper())
            order.emplace_back(extension);
        answer.detail("file_type_order", std::move(order));
    }

    /// As a table; of several units each in a line.
    static void show(Answer& answer, bool one_of_several,
                     MEM_VECTOR<GEN_SOURCE_CANDIDATE> const& candidates,
                     MEM_VECTOR<ExistenceCheck> const& hits) {
        Value::List files;
        std::string line;
        for (auto const& [group, path] : candidates) {
            files.emplace_back(Value::Record{{"group", static_cast<int>(group)},
                                             {"from", group_of(path.fullpath(), hits)},
                                             {"type", path.extension()},
                                             {"path", path.fullpath()}});
            line += (line.empty() ? "" : "\t") + host_text(path.fullpath());
        }
        if (!one_of_several)
            return answer.table("files", std::move(files));
        answer.detail("files", std::move(files));
        answer.view(line);
    }

    /// The group that the lookup asked when it found @p path. (Its tag is shared by two groups.)
    static std::string group_of(STR const& path, MEM_VECTOR<ExistenceCheck> const& hits) {
        auto const hit =
            std::find_if(hits.begin(), hits.end(),
                         [&path](ExistenceCheck const& check) { return check.path == path; });
        return hit != hits.end() ? hit->group : "";
    }

    std::string m_unit;
    Batch m_batch;
    bool m_shipped = false;
    bool m_file_list = false;
    ProjectOptions m_project;
    LookupView m_view{LookupRivals::same_extension}; ///< since one of each type is found
};

constexpr Help help = {
    .name = "sources",
    .summary = "Collects the source files of a design unit, one of each type",
    .example = "  $ gen_query sources counter\n"
               "  group  from     type  path\n"
               "  1      project  kbd   /opt/korvane/project/counter.kbd\n"
               "  1      project  vhd   /opt/korvane/project/counter.vhd\n"
               "  1      project  v     /opt/korvane/project/counter.v\n"
               "The groups are visited in the order of a lookup: 1, 2, 3, 5, 4.\n"
               "With the name \"-\" names are read from standard input and answered a line each,\n"
               "the paths parted by tabs.\n"
               "With --filelist come the Verilog source of the unit, the directories that it\n"
               "includes from, and with -y those in which simulators find the units it uses.\n"
               "The exit status is 0 when there is any, else 1.",
};

} // namespace

void add_sources(Commands& commands) {
    commands.add<Sources>(help);
}
