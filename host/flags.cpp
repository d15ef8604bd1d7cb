// A flag manager that people try without a host: standard input has the steps, one a line.

#include "command.h"
#include "gen_dyn_flag.h"
#include "input.h"
#include "reports.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <unistd.h>

namespace {

constexpr unsigned slots = 32;

std::string hex(unsigned mask) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", mask);
    return text;
}

/// A mask as "0x..." or as a decimal number.
std::optional<unsigned> mask_of(std::string_view text) {
    bool const is_hex = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
    std::string_view const digits = is_hex ? text.substr(2) : text;
    unsigned mask = 0;
    auto const [end, fault] =
        std::from_chars(digits.data(), digits.data() + digits.size(), mask, is_hex ? 16 : 10);
    if (fault != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return mask;
}

/// The host's objects are imagined; only the sweeps asked of them are kept.
struct SweepRecorder : GEN_DYN_FLAG_CLEARER {
    void clear_flags(GEN_DYN_FLAG const& mask) override { sweeps.push_back(mask.mask()); }

    std::vector<unsigned> sweeps;
};

/// What one step of a session came to.
struct Reply {
    std::string answer;
    std::vector<unsigned> sweeps;
    std::vector<Reports::Report> reports;
};

/// The manager's counts of its slots.
struct Statistics {
    int used = 0;
    int dirty = 0;
    int clean = 0;

    std::string sentence() const {
        return "used " + std::to_string(used) + ", dirty " + std::to_string(dirty) + ", clean " +
               std::to_string(clean);
    }
};

/// A manager, and the steps that a script takes with it.
class Session {
  public:
    Session() { m_clearer.sweeps.clear(); } // of the whole word, when the manager was made

    /// Takes one step; nothing when the line is none.
    std::optional<Reply> take(std::string_view word, std::string const& argument) {
        m_reports.take();
        m_clearer.sweeps.clear();
        std::optional<std::string> answer = take_word(word, argument);
        if (!answer)
            return std::nullopt;
        return Reply{std::move(*answer), m_clearer.sweeps, m_reports.take()};
    }

    /// '#' named, 'x' free and dirty, '.' free and clean, from slot 0 upwards.
    std::string picture() const {
        std::string states;
        for (unsigned i = 0; i < slots; ++i) {
            if (i != 0 && i % 8 == 0)
                states += ' ';
            states += state_of(i);
        }
        return states;
    }

    Value::List slot_records() const {
        Value::List all;
        for (unsigned i = 0; i < slots; ++i) {
            char const state = state_of(i);
            all.push_back(Value::Record{
                {"slot", i},
                {"mask", hex(1U << i)},
                {"state", state == '#'   ? "named"
                          : state == 'x' ? "dirty"
                                         : "clean"},
                {"name", state == '#' ? Value(entry_of(i)) : Value()},
            });
        }
        return all;
    }

    Statistics statistics() const {
        Statistics counts;
        m_manager.get_usage_stats(&counts.used, &counts.dirty, &counts.clean);
        return counts;
    }

  private:
    std::optional<std::string> take_word(std::string_view word, std::string const& argument) {
        if (word == "create")
            return create(argument);
        if (word == "destroy")
            return destroy(argument);
        if (word == "find")
            return name_of(m_manager.get_named_flag(argument.c_str()));
        if (word == "stats" && argument.empty())
            return statistics().sentence();
        if (word == "slots" && argument.empty())
            return picture();
        if (std::optional<unsigned> const mask = mask_of(argument); word == "name" && mask)
            return name_of(GEN_DYN_FLAG(*mask));
        return std::nullopt;
    }

    std::string create(std::string const& name) {
        GEN_DYN_FLAG const flag = m_manager.create_flag(name.c_str());
        m_named |= flag;
        return name_of(flag);
    }

    /// By a mask where the argument is one and nobody's name, else by name.
    std::string destroy(std::string const& argument) {
        std::optional<unsigned> const mask = is_name(argument) ? std::nullopt : mask_of(argument);
        GEN_DYN_FLAG const flag =
            mask ? GEN_DYN_FLAG(*mask) : m_manager.get_named_flag(argument.c_str());
        // What the manager is about to free. Anything else it ignores or reports.
        bool const is_named =
            flag.mask() != 0 && (flag.mask() & (flag.mask() - 1)) == 0 && (flag & m_named) == flag;
        m_manager.destroy_flag(flag);
        if (is_named)
            m_named &= ~flag;
        return name_of(flag);
    }

    /// Whether a flag has that name, without the manager's report if none has.
    bool is_name(std::string const& text) const {
        for (unsigned i = 0; i < slots; ++i)
            if (state_of(i) == '#' && entry_of(i) == text)
                return true;
        return false;
    }

    std::string name_of(GEN_DYN_FLAG flag) const { return m_manager.get_flag_name(flag).c_str(); }

    /// What the manager calls that slot's bit, without the "(0x...) " before it.
    std::string entry_of(unsigned slot) const {
        std::string const text = name_of(GEN_DYN_FLAG(1U << slot));
        return text.substr(text.find(' ') + 1);
    }

    char state_of(unsigned slot) const {
        if ((m_named & GEN_DYN_FLAG(1U << slot)) != GEN_DYN_FLAG())
            return '#';
        return entry_of(slot) == "DIRTY" ? 'x' : '.';
    }

    // In this order: when it is made the manager calls the clearer, and nothing that it reports may
    // reach standard error.
    Reports m_reports;
    SweepRecorder m_clearer;
    GEN_DYN_FLAG_MANAGER m_manager{&m_clearer};
    GEN_DYN_FLAG m_named; ///< a flag may be called "DIRTY": its name alone does not show that
};

/// Lines of standard input as they come, each asked for when somebody sits in front of it.
class Prompt {
  public:
    explicit Prompt(bool interactive) : m_interactive(interactive) {}
    ~Prompt() { std::free(m_line); }
    Prompt(Prompt const&) = delete;
    Prompt& operator=(Prompt const&) = delete;

    std::optional<std::string_view> next() {
        if (m_interactive)
            std::fputs("flags> ", stderr);
        ssize_t const size = getline(&m_line, &m_room, stdin);
        if (size >= 0)
            return std::string_view(m_line, static_cast<std::size_t>(size));
        if (m_interactive)
            std::fputs("\n", stderr);
        return std::nullopt;
    }

  private:
    bool m_interactive;
    char* m_line = nullptr;
    std::size_t m_room = 0;
};

class Flags : public Command {
  public:
    Status run(Answer& answer) override {
        bool const interactive = isatty(STDIN_FILENO) == 1 && !answer.for_scripts();
        Prompt prompt(interactive);
        Session session;
        std::size_t number = 0;
        while (std::optional<std::string_view> const line = prompt.next()) {
            ++number;
            auto const [word, rest] = first_word(*line);
            if (word.empty() || word.front() == '#')
                continue;
            std::optional<Reply> const reply = session.take(word, std::string(rest));
            if (reply) {
                add(std::string(trimmed(*line)), *reply, interactive);
                continue;
            }
            // At a terminal a slip does not end the session.
            if (interactive) {
                std::fputs("not a step; see gen_query flags --help\n", stderr);
                continue;
            }
            std::string const problem =
                "line " + std::to_string(number) + ": not a step: " + std::string(trimmed(*line));
            answer.remark(problem);
            return STATUS_USAGE;
        }
        if (std::feof(stdin) == 0) { // memory may have failed, too
            answer.remark(reading_fault("-"));
            return STATUS_USAGE;
        }
        describe(session, interactive, answer);
        return status_of(!m_reported);
    }

  private:
    void add(std::string step, Reply const& reply, bool interactive) {
        Value::List sweeps;
        for (unsigned const mask : reply.sweeps)
            sweeps.emplace_back(hex(mask));
        Value::List reports;
        for (auto const& [condition, times] : reply.reports)
            reports.insert(reports.end(), times, condition);
        m_reported = m_reported || !reports.empty();
        if (interactive)
            show(reply, sweeps);
        m_steps.push_back(Value::Record{{"step", std::move(step)},
                                        {"answer", reply.answer},
                                        {"swept", std::move(sweeps)},
                                        {"reported", reports}});
    }

    static void show(Reply const& reply, Value::List const& sweeps) {
        Answer now;
        now.plain("answer", reply.answer);
        if (!sweeps.empty())
            now.field("swept", sweeps);
        for (auto const& [condition, times] : reply.reports)
            now.field("reported", condition);
        print_text(now, stdout);
        std::fflush(stdout);
    }

    void describe(Session const& session, bool interactive, Answer& answer) {
        if (interactive)
            answer.detail("steps", std::move(m_steps));
        else
            answer.table("steps", std::move(m_steps));
        answer.plain("picture", "[" + session.picture() + "]  # named  x dirty  . clean");
        Statistics const counts = session.statistics();
        answer.view(counts.sentence());
        answer.detail(
            "statistics",
            Value::Record{{"used", counts.used}, {"dirty", counts.dirty}, {"clean", counts.clean}});
        answer.detail("slots", session.slot_records());
    }

    Value::List m_steps;
    bool m_reported = false;
};

} // namespace

void add_flags(Commands& commands) {
    commands.add<Flags>({
        .name = "flags",
        .summary = "Takes a flag manager through the steps on standard input",
        .example = "  $ printf 'create alpha\\ncreate beta\\ndestroy alpha\\n' | gen_query flags\n"
                   "  step           answer       swept  reported\n"
                   "  create alpha   (0x1) alpha  -      -\n"
                   "  create beta    (0x2) beta   -      -\n"
                   "  destroy alpha  (0x1) DIRTY  -      -\n"
                   "  [x#...... ........ ........ ........]  # named  x dirty  . clean\n"
                   "  used 1, dirty 0, clean 31\n"
                   "\n"
                   "Steps: create NAME, destroy NAME or MASK, find NAME, name MASK, stats, slots.\n"
                   "At a terminal every step is answered at once; end with Ctrl-D.\n"
                   "Slots that are free count as clean, dirty or not. Status 1 says that the\n"
                   "manager reported something.",
    });
}
