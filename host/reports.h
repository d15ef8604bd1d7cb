#pragma once

/// The internal errors that gen reports while a subcommand asks it, kept for the answer.

#include <string>
#include <vector>

#include "err_report.h"

/// Keeps, from construction to destruction, what would go to standard error. One at a time.
class Reports {
  public:
    Reports();
    ~Reports();
    Reports(Reports const&) = delete;
    Reports& operator=(Reports const&) = delete;

    /// What was reported since the last call, in order.
    std::vector<std::string> take();

  private:
    ERR_HANDLER m_previous;
};
