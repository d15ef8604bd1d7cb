#pragma once

/// Names by the thousand: a subcommand that takes names reads them from standard input for "-".

#include "option.h"

class Batch {
  public:
    void declare(Options& options);
    /// Puts the names of standard input in the place of each "-". Gives why it cannot be read, or
    /// "".
    std::string expand(std::vector<std::string>& names);
    /// Whether there was one: each name is then answered in a line of its own.
    bool is_on() const { return m_on; }

  private:
    bool m_nul = false;
    bool m_on = false;
};
