#pragma once

#include "environment.h"
#include "temp_directory.h"

#include <string>

/// Makes the locale "xk_KV" of tests/data/locale available to this process and to those that it
/// starts, in a directory of its own, until the end of the scope; then the process's locale is what
/// it was. Its character set is ISO-8859-1, its decimal point a comma. There is also "xk_WP", with
/// nothing of its own but a decimal point of two bytes.
class TestLocale {
  public:
    static constexpr char const* name = "xk_KV";
    static constexpr char const* wide_point = "xk_WP";

    explicit TestLocale(char const* which = name);
    ~TestLocale();
    TestLocale(TestLocale const&) = delete;
    TestLocale& operator=(TestLocale const&) = delete;

    /// What this system lacks for making it; "" when it is made.
    std::string const& trouble() const { return m_trouble; }

  private:
    TempDirectory m_directory;
    ScopedVariable m_path;
    std::string m_previous;
    std::string m_trouble;
};
