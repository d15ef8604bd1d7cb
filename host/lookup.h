#pragma once

/// What the subcommands that look files up share: how they show what a lookup checks.

#include "answer.h"
#include "lookup_watch.h"
#include "option.h"

#include <initializer_list>
#include <string>
#include <vector>

/// A string of gen as one of the host's, and the other way round.
inline std::string host_text(STR const& text) {
    return {text.data(), text.size()};
}
inline STR gen_text(std::string const& text) {
    return {text.data(), text.size()};
}

/// Forgets the project, all libraries and the cache of lookups, as if nothing had been asked.
void forget_project();

/// The directories of these groups of a lookup that are there, absolute, each once. Groups that are
/// null have none.
std::vector<std::string> directories_of(std::initializer_list<FIO_FIND const*> groups);
/// Those that a lookup asks for a source, in its order.
std::vector<std::string> lookup_directories();

/// The two ways to see more of a lookup than its result, and how they show it.
class LookupView {
  public:
    explicit LookupView(LookupRivals rivals = LookupRivals::all) : m_rivals(rivals) {}

    void declare(Options& options);

    LookupWatch::Manner manner() const;
    bool all() const { return m_all; }
    /// The checks that found something.
    static MEM_VECTOR<ExistenceCheck> hits(MEM_VECTOR<ExistenceCheck> const& checks);

    /// Shows people what was checked for @p name, as far as they want to see it. The name goes in
    /// front when it is one of several.
    void show(Answer& answer, std::string const& name, bool one_of_several,
              MEM_VECTOR<ExistenceCheck> const& checks) const;
    /// The same for scripts, as members of the record of that name.
    void describe(Value::Record& record, MEM_VECTOR<ExistenceCheck> const& checks) const;

  private:
    LookupRivals m_rivals; ///< among which files the first one shadows the others
    bool m_trace = false;
    bool m_all = false;
};
