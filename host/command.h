#pragma once

/// How a family adds its subcommands to gen_query.

#include "answer.h"
#include "option.h"

#include <functional>
#include <list>
#include <memory>
#include <string_view>
#include <utility>

/// What the process ends with. What is worse is greater: of several answers the greatest counts.
enum Status : int {
    STATUS_YES = 0,   ///< found, true, equal, nothing to complain of
    STATUS_NO = 1,    ///< not found, false, different, diagnostics
    STATUS_USAGE = 2, ///< the command line or the input cannot be used
};

constexpr Status status_of(bool yes) {
    return yes ? STATUS_YES : STATUS_NO;
}

/// One subcommand, made anew for every command line. Its options and arguments are members of the
/// class that implements it.
class Command {
  public:
    virtual ~Command() = default;
    /// Declares the options and arguments; --json and --help are there already.
    virtual void declare(Options& /*options*/) {}
    /// Asks gen and describes what it said.
    virtual Status run(Answer& answer) = 0;
};

/// What --help says about a subcommand or a family. The strings live as long as the program.
struct Help {
    char const* name;
    char const* summary; ///< one line, in the third person: "Sorts lines ..."
    char const* example; ///< a command line, and what it prints
};

/// A subcommand, or a family with the subcommands below it.
class Commands {
  public:
    using Maker = std::function<std::unique_ptr<Command>()>;

    explicit Commands(Help const& help, Maker make = {}) : m_help(help), m_make(std::move(make)) {}

    /// What is added from now on is listed under this heading; under "" it is not listed.
    void group(char const* heading) { m_next_heading = heading; }
    /// Adds a family. What it gives takes its subcommands, and stays where it is.
    Commands& family(Help const& help);
    template <typename Kind>
    void add(Help const& help) {
        add(help, [] { return std::make_unique<Kind>(); });
    }
    void add(Help const& help, Maker make);

    /// Whether it is gen_query itself.
    bool is_root() const { return m_is_root; }
    Help const& help() const { return m_help; }
    char const* heading() const { return m_heading; }
    bool is_family() const { return m_make == nullptr; }
    bool is_hidden() const { return *m_heading == '\0'; }
    std::list<Commands> const& below() const { return m_below; }
    /// The one of that name directly below, or null.
    Commands const* find(std::string_view name) const;
    /// Not for a family, which has nothing to make.
    std::unique_ptr<Command> make() const { return m_make(); }

  private:
    Help m_help;
    Maker m_make;
    bool m_is_root = true; ///< until it is added to another
    char const* m_heading = "";
    char const* m_next_heading = "Subcommands";
    std::list<Commands> m_below;
};

// The families, each in the source file of its name.
void add_condition(Commands& commands);
void add_describe(Commands& commands);
void add_env(Commands& commands);
void add_filelist(Commands& commands);
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
void add_serve(Commands& commands);
void add_sources(Commands& commands);
void add_text(Commands& commands);
void add_time(Commands& commands);
void add_undo(Commands& commands);
void add_units(Commands& commands);
void add_where(Commands& commands);

/// gen_query with all of them. It stays where it is: some know its address.
std::unique_ptr<Commands> all_commands();
