#include "batch.h"
#include "command.h"
#include "file_hint.h"
#include "gen_path.h"
#include "lookup.h"
#include "project_options.h"

namespace {

class Find : public Command {
  public:
    void declare(Options& options) override {
        options.argument("name", &m_names, "File names, as a design would write them; - reads them")
            .required()
            .file();
        m_batch.declare(options);
        m_project.declare(options);
        options.flag("--eda", m_eda, "Look in the EDA libraries alone");
        m_view.declare(options);
        // All are found by denying each hit, and the cache would keep that.
        options.flag("--cached", m_cached, "Use the cache: a name asked twice is looked up once")
            .excludes("--eda")
            .excludes("--all");
    }

    Status run(Answer& answer) override {
        m_project.apply(answer);
        LookupWatch watch(m_view.manner(), "as named");
        if (Batch::is_asked_for(m_names))
            return m_batch.answer(m_names, answer, [&](std::string const& name, Answer& one) {
                return answer_one(name, watch, one);
            });
        bool all_found = true;
        Value::List files;
        Value::List paths;
        for (std::string const& name : m_names) {
            Found found = find(name, watch, m_names.size() > 1, answer);
            files.emplace_back(std::move(found.record));
            if (found.path.empty()) {
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
        std::string path; ///< "" for none
        Value::Record record;
    };

    /// Without a hint, which would look through whole directories for each of thousands of names.
    Status answer_one(std::string const& name, LookupWatch& watch, Answer& answer) const {
        Found found = find(name, watch, true, answer);
        for (auto& [key, value] : found.record)
            answer.detail(key, std::move(value));
        if (!m_view.all())
            answer.view(found.path);
        if (found.path.empty())
            answer.remark(not_found(name));
        return status_of(!found.path.empty());
    }

    static std::string not_found(std::string const& name) { return "'" + name + "' is not found"; }

    /// Finds one, and shows people what they want to see of that.
    Found find(std::string const& name, LookupWatch& watch, bool one_of_several,
               Answer& answer) const {
        std::string path = look_up(name);
        MEM_VECTOR<ExistenceCheck> const checks = watch.take();
        m_view.show(answer, name, one_of_several, checks);
        // With each hit denied the lookup itself has come back with nothing.
        MEM_VECTOR<ExistenceCheck> const hits = LookupView::hits(checks);
        if (m_view.all() && !hits.empty())
            path = host_text(hits.front().path);
        return {path, described(name, path, checks, hits)};
    }

    std::string look_up(std::string const& name) const {
        STR const text = gen_text(name);
        if (m_eda)
            return host_text(gen_find_eda_file(text).fullpath());
        if (m_cached)
            return host_text(gen_find_file_cache_assisted(text).fullpath());
        return host_text(gen_find_file(text).fullpath());
    }

    Value::Record described(std::string const& name, std::string const& path,
                            MEM_VECTOR<ExistenceCheck> const& checks,
                            MEM_VECTOR<ExistenceCheck> const& hits) const {
        Value::Record record{{"name", name}};
        if (path.empty()) {
            record.insert(record.end(), {{"path", {}}, {"group", {}}, {"in_project", {}}});
        } else {
            record.emplace_back("path", path);
            // What is found without a check was in the cache.
            record.emplace_back("group", hits.empty() ? "cache" : hits.front().group);
            record.emplace_back("in_project", in_project(path));
        }
        m_view.describe(record, checks);
        return record;
    }

    /// The path as seen from the project directory, where it lies below it.
    static Value in_project(std::string const& path) {
        // gen would look a relative one up, as if it were a name.
        if (path.front() != '/')
            return {};
        STR const relative = gen_get_relative_path_if_starts_with_project_dir(path.c_str());
        return host_text(relative) == path ? Value() : Value(relative);
    }

    std::vector<std::string> m_names;
    Batch m_batch;
    ProjectOptions m_project;
    LookupView m_view;
    bool m_eda = false;
    bool m_cached = false;
};

constexpr Help help = {
    .name = "find",
    .summary = "Finds the file that a name means, and says why that one",
    .example = "  $ gen_query find adder.v\n"
               "  /opt/korvane/project/adder.v\n"
               "  $ gen_query find adder.v --user-libs /opt/korvane/home/ada/lib --all\n"
               "  standing  group              path\n"
               "  wins      project            /opt/korvane/project/adder.v\n"
               "  shadowed  user libraries     /opt/korvane/home/ada/lib/adder.v\n"
               "  ...\n"
               "Asked are the project, its database, the project's libraries, the user's\n"
               "libraries, the project's parablocks and the shipped libraries, in this order.\n"
               "With the name \"-\" names are read from standard input and answered a line each,\n"
               "at once, which is empty where nothing is found; with --json it is an object.\n"
               "The exit status is 0 when every name is found, else 1.",
};

} // namespace

void add_find(Commands& commands) {
    commands.add<Find>(help);
}
