#pragma once

/// The loop behind gen_string_compare_block.h, compiled once for each width of register.

#include <algorithm>
#include <bit>

#include "gen_string_ascii.h"
#include "gen_string_block.h"

namespace {

#if defined(__AVX2__)
using BLOCK = __m256i;
BLOCK_INLINE BLOCK load(char const* text) {
    return block_load32(text);
}
#else
using BLOCK = __m128i;
BLOCK_INLINE BLOCK load(char const* text) {
    return block_load16(text);
}
#endif

constexpr std::size_t block_size = sizeof(BLOCK);

/// Walks two texts together until they differ or end, or until the limit is reached.
template <bool FOLD>
class WALK {
  public:
    BLOCK_INLINE WALK(char const* a, char const* b, std::size_t limit)
        : m_a(a), m_b(b), m_limit(limit) {}

    BLOCK_INLINE int compare() {
        for (unsigned singles = 4;; singles = 4) {
            m_room = std::min(block_page_room(m_a + m_at), block_page_room(m_b + m_at));
            while (m_room >= block_size) {
                if (block_stops())
                    return result();
                if (--singles == 0)
                    run_ahead();
            }
            if (m_room != 0 && page_end_stops())
                return result();
        }
    }

  private:
    /// Steps over a block, or stops inside it at the first difference or end. The limit is looked
    /// at by result() for a stop behind it, so that this may run past it by a block.
    BLOCK_INLINE bool block_stops() {
        unsigned const stop = block_zeros(same(0));
        if (stop != 0)
            m_at += static_cast<unsigned>(std::countr_zero(stop));
        else
            skip(block_size);
        return stop != 0 || m_at >= m_limit;
    }

    /// Long texts: four blocks at once, from where the loads from one of them are aligned. That
    /// goes back over what is known to be equal.
    BLOCK_INLINE void run_ahead() {
        skip(-(reinterpret_cast<std::uintptr_t>(m_a + m_at) & (block_size - 1)));
        while (m_room >= 4 * block_size && m_at < m_limit && four_go_on())
            skip(4 * block_size);
    }

    BLOCK_INLINE bool four_go_on() const {
        BLOCK const near = block_lesser(same(0), same(block_size));
        BLOCK const far = block_lesser(same(2 * block_size), same(3 * block_size));
        return block_zeros(block_lesser(near, far)) == 0;
    }

    /// The bytes up to a page's end: by the block that ends there where that many are known to be
    /// equal, otherwise one by one.
    BLOCK_INLINE bool page_end_stops() {
        if (m_at >= block_size - m_room) {
            skip(m_room - block_size);
            return block_stops();
        }
        for (; m_room != 0 && m_at < m_limit; skip(1))
            if (m_a[m_at] == '\0' || difference() != 0)
                return true;
        return m_at >= m_limit;
    }

    /// Zero where the texts differ or end, in the block this far ahead.
    BLOCK_INLINE BLOCK same(std::size_t ahead) const {
        BLOCK const a = load(m_a + m_at + ahead);
        BLOCK const b = load(m_b + m_at + ahead);
        return FOLD ? block_same_folded(a, b) : block_same(a, b);
    }

    BLOCK_INLINE int difference() const {
        char const a = m_a[m_at];
        char const b = m_b[m_at];
        return FOLD ? ascii_folded(a) - ascii_folded(b)
                    : static_cast<unsigned char>(a) - static_cast<unsigned char>(b);
    }

    BLOCK_INLINE int result() const { return m_at < m_limit ? difference() : 0; }

    BLOCK_INLINE void skip(std::size_t bytes) {
        m_at += bytes;
        m_room -= bytes;
    }

    char const* m_a;
    char const* m_b;
    std::size_t m_limit;
    std::size_t m_at = 0;
    std::size_t m_room = 0; ///< bytes that may be read at m_at before one of the pages ends
};

} // namespace
