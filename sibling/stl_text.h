#pragma once

/// A text in the making: characters go straight into a local block, and into a library string only
/// once they no longer fit there. It grows to the longest text printf can make, INT_MAX bytes; what
/// goes past that is dropped and remembered.

#include "mem_alloc_sys.h"

#include <cstddef>
#include <cstring>

class STL_TEXT {
  public:
    STL_TEXT() : m_at(m_local), m_limit(m_local + sizeof m_local) {}
    STL_TEXT(STL_TEXT const&) = delete;
    STL_TEXT& operator=(STL_TEXT const&) = delete;

    char const* begin() const { return m_long.empty() ? m_local : m_long.data(); }
    std::size_t size() const { return static_cast<std::size_t>(m_at - begin()); }
    bool too_long() const { return m_too_long; }

    std::size_t room() const { return static_cast<std::size_t>(m_limit - m_at); }
    /// False when the text would become too long.
    bool make_room(std::size_t count) { return room() >= count || grow(count); }
    /// Where the next characters go; `advance` then says how many it was.
    char* place() { return m_at; }
    void advance(std::size_t count) { m_at += count; }

    void append(char const* characters, std::size_t count) {
        if (!make_room(count))
            return;
        std::memcpy(m_at, characters, count);
        m_at += count;
    }
    void append(std::size_t count, char c) {
        if (!make_room(count))
            return;
        std::memset(m_at, c, count);
        m_at += count;
    }

    /// Makes the text that of @p out; nothing is left of it here.
    void replace(STR& out);

  private:
    bool grow(std::size_t count);

    char* m_at;
    char* m_limit;
    bool m_too_long = false;
    STR m_long; // as long as it is, all of it to be written over
    char m_local[512];
};
