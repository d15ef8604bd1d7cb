#include "batch.h"
#include "command.h"
#include "file_hint.h"
#include "lookup.h"
#include "project_options.h"

#include "gen_path.h"

#include <filesystem>

namespace {

class Include : public Command {
  public:
    void declare(Options& options) override {
        options
            .argument("name", &m_names,
                      "Names, as include directives would write them; - reads them")
            .required()
            .file();
        m_batch.declare(options);
        options.value("--from", &m_from, "The file that holds the directives").file();
        options.value("--alias", &m_alias, "Another path of that same file").file();
        m_project.declare(options);
        m_view.declare(options);
    }

    Status run(Answer& answer) override {
        m_project.apply(answer);
        for (std::optional<std::string> const& file : {m_from, m_alias})
            if (std::error_code fault; file && !std::filesystem::exists(*file, fault))
                answer.remark("including file '" + *file + "' does not exist");
        if (std::string fault = m_batch.expand(m_names); !fault.empty()) {
            answer.remark(std::move(fault));
            return STATUS_USAGE;
        }
        if (m_batch.is_on())
            answer.json_lines();
        bool all_found = true;
        Value::List files;
        Value::List paths;
        for (std::string const& name : m_names) {
            Found found;
            if (m_view.all()) // watched below, with each hit denied, it comes back with nothing
                found = look_up(name);
            LookupWatch watch(m_view.manner(),
                              name.starts_with('/') ? "as named" : "beside the including file");
            Found const watched = look_up(name);
            if (!m_view.all())
                found = watched;
            std::vector<Asked> const asked = watch.take();
            m_view.show(answer, name, m_names.size() > 1, asked);
            std::vector<Asked> const hits = LookupView::hits(asked);
            files.emplace_back(told(name, found.beside_alias, asked, hits));
            if (hits.empty()) {
                answer.remark("'" + name + "' is not found" +
                              (m_batch.is_on() ? "" : file_hint(name)));
                all_found = false;
            }
            if (!m_view.all() && (m_batch.is_on() || !hits.empty()))
                paths.emplace_back(found.path);
        }
        answer.detail("files", std::move(files));
        if (!m_view.all())
            answer.plain("paths", std::move(paths));
        return status_of(all_found);
    }

  private:
    struct Found {
        STR path;
        STR beside_alias;
    };

    Found look_up(std::string const& name) const {
        Found found;
        gen_find_include_file(name.c_str(), text_or_null(m_from), text_or_null(m_alias),
                              &found.path, &found.beside_alias);
        return found;
    }

    static char const* text_or_null(std::optional<std::string> const& text) {
        return text ? text->c_str() : nullptr;
    }

    Value::Record told(std::string const& name, STR const& beside_alias,
                       std::vector<Asked> const& asked, std::vector<Asked> const& hits) const {
        bool const found = !hits.empty();
        Value::Record record{
            {"name", name},
            {"path", found ? Value(hits.front().path) : Value()},
            {"group", found ? Value(hits.front().group) : Value()},
            {"beside_alias", beside_alias.empty() ? Value() : Value(beside_alias)},
        };
        m_view.tell(record, asked);
        return record;
    }

    std::vector<std::string> m_names;
    std::optional<std::string> m_from;
    std::optional<std::string> m_alias;
    Batch m_batch;
    ProjectOptions m_project;
    LookupView m_view;
};

constexpr Help help = {
    .name = "include",
    .summary = "Resolves the names of include directives",
    .example = "  $ gen_query include segments.vh --from inc/display.vh\n"
               "  inc/segments.vh\n"
               "The directory of the including file is looked in last, after every library.\n"
               "With the name \"-\" names are read from standard input and answered a line each.\n"
               "The exit status is 0 when every name is found, else 1.",
};

} // namespace

void add_include(Commands& commands) {
    commands.add<Include>(help);
}
