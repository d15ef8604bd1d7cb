#pragma once

/// Names by the thousand: a subcommand that takes names reads them from standard input for "-".

#include "command.h"

#include <functional>
#include <string>
#include <vector>

class Batch {
  public:
    /// Answers for one name: @p one is a line of text, or an object, of its own. The name is a copy
    /// that it may change.
    using Ask = std::function<Status(std::string& name, Answer& one)>;

    void declare(Options& options);
    /// Whether names are to be read.
    static bool is_asked_for(std::vector<std::string> const& names);
    /// Asks for every name in turn. What comes out is written at once where the answer can be, so
    /// that nobody waits for the end of input, and else is the list "answers" of @p all.
    /// @return the worst status of them all
    Status answer(std::vector<std::string> const& names, Answer& all, Ask const& ask) const;

  private:
    /// Hands over all names in order, those on standard input for each "-", until @p take gives
    /// false. Gives why they cannot all be read, or "".
    std::string each(std::vector<std::string> const& names,
                     std::function<bool(std::string&)> const& take) const;

    bool m_nul = false;
};
