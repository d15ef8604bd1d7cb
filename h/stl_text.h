#pragma once

/// A string in the making.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

#include <charconv>
#include <cstddef>
#include <cstring>
#include <limits>

/// Characters go straight into a block of its own, and into tracked memory only once they no longer
/// fit there: a string of usual length is allocated once, at its size, by whoever it is handed to.
/// It grows to the longest string printf can make, INT_MAX bytes; a piece that goes past that is
/// dropped.
class STL_TEXT {
  public:
    STL_TEXT() = default;
    STL_TEXT(STL_TEXT const&) = delete;
    STL_TEXT& operator=(STL_TEXT const&) = delete;

    /// The characters and their number; valid until more is appended.
    char const* begin() const { return m_begin; }
    std::size_t size() const { return m_size; }
    /// Whether a piece has been dropped.
    bool too_long() const { return m_too_long; }

    /// Appends @p count characters, or nothing where the string would become too long.
    void append(char const* characters, std::size_t count) {
        if (!make_room(count))
            return;
        std::memcpy(end(), characters, count);
        advance(count);
    }

    /// Appends one character, or nothing where the string would become too long.
    void append(char c) {
        if (!make_room(1))
            return;
        *end() = c;
        advance(1);
    }

    /// Appends the digits of an int or unsigned in radix 10 or 16, with its sign.
    template <typename Integer>
    void append_integer(Integer value, int radix = 10) {
        // MUTANT_EXCL_LINE(2 to 3): room alone
        constexpr std::size_t most_digits = std::numeric_limits<Integer>::digits10 + 2;
        if (make_room(most_digits))
            m_size = static_cast<std::size_t>(
                std::to_chars(end(), end() + most_digits, value, radix).ptr - m_begin);
    }

    /// Appends what @p print writes, which is called as snprintf is: with a buffer and its size.
    /// False when it gives a negative length, or the string would become too long.
    template <typename Print>
    bool append_printed(Print print) {
        for (;;) {
            int const length = print(end(), room());
            if (length < 0)
                return false;
            auto const count = static_cast<std::size_t>(length);
            if (count < room()) {
                advance(count);
                return true;
            }
            if (!make_room(count + 1))
                return false;
        }
    }

    /// The room behind the characters, for who writes there, and then calls advance().
    char* end() { return m_begin + m_size; }
    std::size_t room() const { return m_capacity - m_size; }
    /// Makes the room at least @p count characters. False, with errno EOVERFLOW, when the string
    /// would become too long.
    bool make_room(std::size_t count) { return count <= room() || grow(count); }
    /// Makes the first @p count characters of the room part of the string.
    void advance(std::size_t count) { m_size += count; }

    /// Puts the string behind what @p out has, unless that became longer than a string can be.
    void append_to(STR& out) const {
        if (m_size <= out.max_size() - out.size())
            out.append(m_begin, m_size);
    }
    /// Makes @p out this string, and leaves none here.
    KORVANE_API void move_to(STR& out);

  private:
    KORVANE_API bool grow(std::size_t count);

    char* m_begin = m_local;
    std::size_t m_size = 0;
    std::size_t m_capacity = sizeof m_local;
    bool m_too_long = false;
    STR m_long; // the block once m_local is too small; m_capacity is its size
    char m_local[512];
};
