#pragma once

#include <cstddef>
#include <string_view>

/// Readable memory between two pages that may not be touched: a routine that reads before or behind
/// its string ends the program.
class GuardedText {
  public:
    /// Room for @p pages pages of 4096 bytes.
    explicit GuardedText(std::size_t pages);
    ~GuardedText();
    GuardedText(GuardedText const&) = delete;
    GuardedText& operator=(GuardedText const&) = delete;

    /// Copies @p text and its terminator so that @p gap bytes lie behind them before the forbidden
    /// page. Gives the copy, which lives until the next call.
    char* before_end(std::string_view text, std::size_t gap = 0);
    /// Copies @p text and its terminator to the first bytes behind the forbidden page.
    char* at_start(std::string_view text);
    /// Copies @p text without a terminator so that @p gap bytes lie behind it before the forbidden
    /// page.
    char* unterminated(std::string_view text, std::size_t gap = 0);
    /// The same to the first bytes behind the forbidden page.
    char* unterminated_at_start(std::string_view text);

  private:
    char* place(std::string_view text, std::size_t offset);

    char* m_mapping;
    char* m_start;
    std::size_t m_size;
};
