#include "wildcard_match.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

constexpr std::size_t most_characters = 2000;

/// How many times the repetition that begins behind a "{" asks for, as "3}" or "2,5}".
std::size_t repetitions(char const* text) {
    char* end = nullptr;
    unsigned long const least = std::strtoul(text, &end, 10);
    unsigned long const most = *end == ',' ? std::strtoul(end + 1, &end, 10) : 0;
    return std::clamp<std::size_t>(std::max(least, most), 1, most_characters + 1);
}

} // namespace

// Repetitions are written out when they are compiled, and repetitions of repetitions multiply;
// there are none of more than one character.
bool is_too_large_to_match(char const* pattern) {
    std::size_t repeated = 1;
    for (char const* brace = std::strchr(pattern, '{');
         brace != nullptr && repeated <= most_characters; brace = std::strchr(brace + 1, '{'))
        repeated *= repetitions(brace + 1);
    return std::strlen(pattern) + repeated > most_characters;
}

PosixExpression::PosixExpression(char const* text)
    : m_status(regcomp(&m_compiled, text, REG_EXTENDED | REG_NOSUB)) {}

PosixExpression::~PosixExpression() {
    if (valid())
        regfree(&m_compiled);
}

std::optional<bool> PosixExpression::matches(char const* name) const {
    errno = 0;
    bool const found = regexec(&m_compiled, name, 0, nullptr, 0) == 0;
    if (!found && errno == ENOMEM) // the C library then says that it does not match
        return std::nullopt;
    return found;
}
