#pragma once

/// How a family adds its subcommands to gen_query.

#include <memory>

#include "answer.h"

namespace CLI {
class App;
}

/// What the process ends with.
enum Status : int {
    STATUS_YES = 0,   ///< found, true, equal, nothing to complain of
    STATUS_NO = 1,    ///< not found, false, different, diagnostics
    STATUS_USAGE = 2, ///< the command line or the input cannot be used
};

constexpr Status status_of(bool yes) {
    return yes ? STATUS_YES : STATUS_NO;
}

/// One subcommand. Its options and arguments are members of the class that implements it.
class Command {
  public:
    virtual ~Command() = default;
    /// Declares the options and arguments; --json and --help are there already.
    virtual void declare(CLI::App& app) = 0;
    /// Asks gen and describes what it said.
    virtual Status run(Answer& answer) = 0;
};

/// What --help tells about a subcommand or a family.
struct Help {
    char const* name;
    char const* summary; ///< one line, in the third person: "Sorts lines ..."
    char const* example; ///< a command line, and what it prints
};

/// All subcommands of gen_query.
class Commands {
  public:
    Commands();
    ~Commands();
    Commands(Commands const&) = delete;
    Commands& operator=(Commands const&) = delete;

    /// A subcommand that only groups others.
    CLI::App& family(Help const& help);
    /// A subcommand of its own, or one of a family.
    template <typename COMMAND>
    void add(Help const& help) {
        add(top(), help, std::make_unique<COMMAND>());
    }
    template <typename COMMAND>
    void add(CLI::App& family, Help const& help) {
        add(family, help, std::make_unique<COMMAND>());
    }

    /// Runs what the command line asks for, prints the answer and gives the exit status.
    int run(int argc, char const* const* argv);

  private:
    struct State;

    CLI::App& top();
    void add(CLI::App& parent, Help const& help, std::unique_ptr<Command> command);

    std::unique_ptr<State> m_state;
};

// The families, each in the source file of its name.
void add_condition(Commands& commands);
void add_describe(Commands& commands);
void add_env(Commands& commands);
void add_find(Commands& commands);
void add_flags(Commands& commands);
void add_histogram(Commands& commands);
void add_include(Commands& commands);
void add_installation(Commands& commands);
void add_legal(Commands& commands);
void add_machine(Commands& commands);
void add_message(Commands& commands);
void add_modules(Commands& commands);
void add_names(Commands& commands);
void add_project(Commands& commands);
void add_sources(Commands& commands);
void add_text(Commands& commands);
void add_time(Commands& commands);
void add_undo(Commands& commands);
void add_units(Commands& commands);
void add_where(Commands& commands);

/// All of them.
void add_all(Commands& commands);
