#include "command.h"
#include "gen_time.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class Now : public Command {
  public:
    Status run(Answer& answer) override {
        answer.field("date_and_time", gen_get_current_date_and_time(0));
        answer.field("time", gen_get_current_time());
        answer.field("seconds", gen_get_current_time_seconds());
        answer.field("tick_count_ms", gen_get_tick_count());
        answer.field("own_cpu_seconds", GEN_STOPWATCH::get_cpu_seconds_elapsed());
        return STATUS_YES;
    }
};

class Date : public Command {
  public:
    void declare(Options& options) override {
        options.argument("seconds", &m_instants, "Seconds since 1970; 0 means now").required();
    }

    Status run(Answer& answer) override {
        Value::List rows;
        bool all = true;
        for (std::int32_t const instant : m_instants) {
            STR const date = gen_get_current_date_and_time(instant);
            rows.push_back(Value::Record{{"seconds", instant}, {"date_and_time", date}});
            all = all && !date.empty();
        }
        answer.table("dates", std::move(rows));
        return status_of(all);
    }

  private:
    std::vector<std::int32_t> m_instants; // what fits a long of either width
};

class Format : public Command {
  public:
    void declare(Options& options) override {
        options.argument("format", &m_format, "A strftime format, as in '%Y-%m-%d'").required();
    }

    Status run(Answer& answer) override {
        STR text;
        if (!gen_format_current_date_and_time(&text, m_format.c_str())) {
            answer.plain("text", Value());
            answer.remark("the format gives nothing, or more than 249 bytes");
            return STATUS_NO;
        }
        answer.plain("text", text);
        return STATUS_YES;
    }

  private:
    std::string m_format;
};

class Elapsed : public Command {
  public:
    void declare(Options& options) override {
        options.argument("seconds", &m_durations, "Durations in seconds").required();
    }

    Status run(Answer& answer) override {
        Value::List rows;
        for (std::int32_t const seconds : m_durations)
            rows.push_back(Value::Record{{"seconds", seconds},
                                         {"elapsed", gen_format_elapsed_time(long{seconds})}});
        answer.table("durations", std::move(rows));
        return STATUS_YES;
    }

  private:
    std::vector<std::int32_t> m_durations;
};

/// Starts a command with its standard output joined to standard error, where it does not get
/// between the lines of the answer, and waits for it.
/// @return its exit status, 128 and the signal's number for one that was killed, nothing for one
///         that could not be started; errno says why
std::optional<int> run_command(std::vector<std::string>& command) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (std::string& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);

    // Some daemons start their children with it ignored, and then nobody learns an exit status.
    std::signal(SIGCHLD, SIG_DFL);
    posix_spawn_file_actions_t streams;
    posix_spawn_file_actions_init(&streams);
    if (fcntl(STDERR_FILENO, F_GETFD) < 0) // it is closed
        posix_spawn_file_actions_addopen(&streams, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&streams, STDERR_FILENO, STDOUT_FILENO);
    pid_t child = 0;
    int const refused =
        posix_spawnp(&child, arguments[0], &streams, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&streams);
    int status = 0;
    if (refused != 0) {
        errno = refused;
        return std::nullopt;
    }
    if (waitpid(child, &status, 0) != child)
        return std::nullopt;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

class Stopwatch : public Command {
  public:
    void declare(Options& options) override {
        options.argument("command", &m_command, "The command and its arguments")
            .required()
            .program()
            .rest();
    }

    Status run(Answer& answer) override {
        using Clock = std::chrono::steady_clock;
        GEN_STOPWATCH watch;
        watch.start();
        Clock::time_point const before = Clock::now();
        std::optional<int> const status = run_command(m_command);
        int const fault = errno;
        // The tick count restarts every few hours, where a command may still run.
        auto const elapsed =
            std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - before).count();
        watch.stop();
        if (!status) {
            answer.remark("cannot start '" + m_command.front() + "': " + std::strerror(fault));
            return STATUS_USAGE;
        }
        answer.field("exit_status", *status);
        answer.field("own_cpu_time", watch.lap());
        answer.field("elapsed_ms", elapsed);
        answer.field("elapsed", gen_format_elapsed_time(static_cast<long>(elapsed / 1000)));
        return status_of(*status == 0);
    }

  private:
    std::vector<std::string> m_command;
};

} // namespace

void add_time(Commands& commands) {
    Commands& time = commands.family({
        .name = "time",
        .summary = "Shows the time, prints dates and durations, runs the stopwatch",
        .example = "  $ gen_query time elapsed 90061\n"
                   "  seconds  elapsed\n"
                   "  90061    1:01:01:01",
    });
    time.add<Now>({
        .name = "now",
        .summary = "Shows the time in all the ways the library has",
        .example = "  $ gen_query time now\n"
                   "  ...\n"
                   "The lines are date and time, time of day, seconds since "
                   "1970, tick count in\nmilliseconds, and the CPU seconds that "
                   "gen_query itself has used.",
    });
    time.add<Date>({
        .name = "date",
        .summary = "Prints instants as local dates",
        .example = "  $ TZ=UTC gen_query time date 1794746854\n"
                   "  seconds     date and time\n"
                   "  1794746854  Sun Nov 15 12:47:34 2026",
    });
    time.add<Format>({
        .name = "format",
        .summary = "Prints the time now in a strftime format",
        .example = "  $ gen_query time format '%Y-%m-%d'\n"
                   "  ...\n"
                   "That is 2026-11-15, say. The exit status is 1 where the "
                   "format gives nothing, or\nmore than 249 bytes.",
    });
    time.add<Elapsed>({
        .name = "elapsed",
        .summary = "Prints durations as [days:]hours:minutes:seconds",
        .example = "  $ gen_query time elapsed 3725 -5\n"
                   "  seconds  elapsed\n"
                   "  3725     01:02:05\n"
                   "  -5       00:00:0-5",
    });
    time.add<Stopwatch>({
        .name = "stopwatch",
        .summary = "Runs a command under the stopwatch, which counts this process's own "
                   "CPU time only, and says how long it took",
        .example =
            "  $ gen_query time stopwatch true\n"
            "  exit status   0\n"
            "  ...\n"
            "Own CPU time, elapsed milliseconds and elapsed time follow. What the command\n"
            "writes goes to standard error. The exit status is 0 where the command's is,\n"
            "else 1; 2 for one that cannot be started. All behind the command's name is its\n"
            "own: options of gen_query's, as --json, stand before it.",
    });
}
