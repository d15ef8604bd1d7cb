#pragma once

#include "err_report.h"

#include <ostream>
#include <string>
#include <vector>

/// One internal error as it was reported.
struct ReportedError {
    std::string condition;
    std::string owner;
    std::string source_file;
    int line = 0;

    bool operator==(ReportedError const&) const = default;
};

std::ostream& operator<<(std::ostream& stream, ReportedError const& error);

/// Collects the internal errors reported in its scope instead of printing them. One at a time.
class ErrorRecorder {
  public:
    ErrorRecorder();
    ~ErrorRecorder();
    ErrorRecorder(ErrorRecorder const&) = delete;
    ErrorRecorder& operator=(ErrorRecorder const&) = delete;

    /// What was reported so far, in order.
    std::vector<ReportedError> const& errors() const;
    /// Only the conditions of it.
    std::vector<std::string> conditions() const;
    void clear();

  private:
    ERR_HANDLER m_previous;
};
