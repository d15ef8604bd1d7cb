#include "gen_os_info_meminfo.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

/// The text piece by piece: a line of more than 49 bytes comes as several.
class Meminfo {
  public:
    explicit Meminfo(std::string_view text) : m_rest(text) {}

    bool next() {
        if (m_rest.empty())
            return false;
        std::string_view const piece = m_rest.substr(0, sizeof m_piece - 1);
        // With its line end; where there is none, find gives more than any size.
        std::size_t const size = std::min(piece.find('\n'), piece.size() - 1) + 1;
        std::memcpy(m_piece, m_rest.data(), size);
        m_piece[size] = '\0';
        m_rest.remove_prefix(size);
        return true;
    }

    /// Whether the piece begins with @p key; then its second word as a number is in @p kilobytes.
    bool match(std::string_view key, std::int32_t& kilobytes) {
        if (!std::string_view(m_piece).starts_with(key))
            return false;
        char* rest = m_piece;
        strtok_r(rest, ": ", &rest);
        char const* const number = strtok_r(nullptr, ": ", &rest);
        kilobytes = number != nullptr ? number_of(number) : 0;
        return true;
    }

  private:
    /// Sticks at the limits of 32 bits, as strtol does where a long has no more.
    static std::int32_t number_of(char const* text) {
        using Limits = std::numeric_limits<std::int32_t>;
        return static_cast<std::int32_t>(
            std::clamp<long>(std::strtol(text, nullptr, 10), Limits::min(), Limits::max()));
    }

    std::string_view m_rest;
    char m_piece[50];
};

} // namespace

std::optional<std::int32_t> gen_meminfo_swap_total(std::string_view text) {
    Meminfo meminfo(text);
    std::int32_t swap = 0; // MUTANT_EXCL_LINE: is set before it is read
    while (meminfo.next())
        if (meminfo.match("SwapTotal", swap))
            return swap;
    return std::nullopt;
}

std::optional<std::int32_t> gen_meminfo_free(std::string_view text) {
    if (text.empty())
        return std::nullopt;
    Meminfo meminfo(text);
    std::int32_t memory = 0;
    std::int32_t swap = 0;
    while (meminfo.next())
        if (!meminfo.match("MemFree", memory))
            meminfo.match("SwapFree", swap);
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(memory) +
                                     static_cast<std::uint32_t>(swap));
}
