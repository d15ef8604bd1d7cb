#pragma once

/// The internal errors that gen reports while a subcommand asks it, kept for the answer.

#include "err_report.h"

#include <cstddef>
#include <string>
#include <vector>

/// Keeps, from construction to destruction, what would go to standard error. One at a time.
class Reports {
  public:
    struct Report {
        std::string condition;
        std::size_t times;
    };

    Reports();
    ~Reports();
    Reports(Reports const&) = delete;
    Reports& operator=(Reports const&) = delete;

    /// What was reported since the last call, in the order of the first reports. However often a
    /// condition is reported, it takes no more room.
    std::vector<Report> take();

  private:
    ERR_HANDLER m_previous;
};
