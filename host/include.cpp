#include "batch.h"
#include "command.h"
#include "file_hint.h"
#include "gen_path.h"
#include "lookup.h"
#include "project_options.h"

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
        options.value("--from", &m_from, "The file with the directives").file();
        options.value("--alias", &m_alias, "Another path of that same file").file();
        m_project.declare(options);
        m_view.declare(options);
    }

    Status run(Answer& answer) override {
        m_project.apply(answer);
        for (std::optional<std::string> const& file : {m_from, m_alias})
            if (std::error_code fault; file && !std::filesystem::exists(*file, fault))
                answer.remark("including file '" + *file + "' does not exist");
        if (Batch::is_asked_for(m_names))
            return m_batch.answer(m_names, answer, [&](std::string const& name, Answer& one) {
                return answer_one(name, one);
            });
        bool all_found = true;
        Value::List files;
        Value::List paths;
        for (std::string const& name : m_names) {
            Found found = find(name, m_names.size() > 1, answer);
            files.emplace_back(std::move(found.record));
            if (!found.any) {
                answer.remark(not_found(name) + file_hint(name));
                all_found = false;
            } else if (!m_view.all()) {
                paths.emplace_back(found.path);
            }
        }
        answer.detail("files", std::move(files));
        if (!m_view.all())
            answer.plain("paths", std::move(paths));
        return status_of(all_found);
    }

  private:
    struct Found {
        bool any; ///< a file that is read; one beside the alias alone is none
        STR path;
        Value::Record record;
    };
    struct Paths {
        STR path;
        STR beside_alias;
    };

    /// Without a hint, which would look through whole directories for each of thousands of names.
    Status answer_one(std::string const& name, Answer& answer) const {
        Found found = find(name, true, answer);
        for (auto& [key, value] : found.record)
            answer.detail(key, std::move(value));
        if (!m_view.all())
            answer.view(host_text(found.path));
        if (!found.any)
            answer.remark(not_found(name));
        return status_of(found.any);
    }

    static std::string not_found(std::string const& name) { return "'" + name + "' is not found"; }

    /// Finds one, and shows people what they want to see of that.
    Found find(std::string const& name, bool one_of_several, Answer& answer) const {
        Paths paths;
        if (m_view.all()) // watched below, with each hit denied, it comes back with nothing
            paths = look_up(name);
        LookupWatch watch(m_view.manner(), outside_of_include(name.c_str()));
        Paths const watched = look_up(name);
        if (!m_view.all())
            paths = watched;
        MEM_VECTOR<ExistenceCheck> const checks = watch.take();
        m_view.show(answer, name, one_of_several, checks);
        MEM_VECTOR<ExistenceCheck> const hits = LookupView::hits(checks);
        return {!hits.empty(), paths.path, described(name, paths.beside_alias, checks, hits)};
    }

    Paths look_up(std::string const& name) const {
        Paths found;
        gen_find_include_file(name.c_str(), text_or_null(m_from), text_or_null(m_alias),
                              &found.path, &found.beside_alias);
        return found;
    }

    static char const* text_or_null(std::optional<std::string> const& text) {
        return text ? text->c_str() : nullptr;
    }

    Value::Record described(std::string const& name, STR const& beside_alias,
                            MEM_VECTOR<ExistenceCheck> const& checks,
                            MEM_VECTOR<ExistenceCheck> const& hits) const {
        bool const found = !hits.empty();
        Value::Record record{
            {"name", name},
            {"path", found ? Value(hits.front().path) : Value()},
            {"group", found ? Value(hits.front().group) : Value()},
            {"beside_alias", beside_alias.empty() ? Value() : Value(beside_alias)},
        };
        m_view.describe(record, checks);
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
