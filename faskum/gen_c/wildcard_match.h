#pragma once

/// Matching names with a wildcard, by the C library's regular expressions.

#include <optional>
#include <regex.h>

/// Whether compiling the expression of @p pattern would cost the C library too much time and
/// memory: both grow by the square of its size.
bool is_too_large_to_match(char const* pattern);

/// A POSIX extended regular expression.
class PosixExpression {
  public:
    explicit PosixExpression(char const* text);
    ~PosixExpression();
    PosixExpression(PosixExpression const&) = delete;
    PosixExpression& operator=(PosixExpression const&) = delete;

    bool valid() const { return m_status == 0; }
    /// It is not valid for want of memory.
    bool lacks_memory() const { return m_status == REG_ESPACE; }
    /// Whether it is found in @p name; nothing where there was no memory to look. Asked of a valid
    /// one alone.
    std::optional<bool> matches(char const* name) const;

  private:
    regex_t m_compiled{};
    int m_status;
};
