#pragma once

#include "environment.h"
#include "temp_directory.h"

#include <string>

/// Makes the process's locale one of a decimal comma and of "." between thousands, until the end of
/// the scope. The locale is made on the spot, so that none need be installed.
class CommaLocale {
  public:
    CommaLocale();
    ~CommaLocale();
    CommaLocale(CommaLocale const&) = delete;
    CommaLocale& operator=(CommaLocale const&) = delete;

    /// False when the locale could not be made or set.
    bool holds() const { return m_holds; }

  private:
    TempDirectory m_directory;
    ScopedVariable m_path;
    std::string m_previous;
    bool m_holds;
};
