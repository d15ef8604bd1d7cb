#pragma once

/// The loop behind gen_string_compare_block.h, compiled once for each width of register.

#include <algorithm>
#include <bit>

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

/// How bytes are compared: as they are.
struct EXACT {
    /// Zero where the texts differ or end.
    BLOCK_INLINE BLOCK same(char const* a, char const* b) const {
        return block_same(block_kept(load(a)), load(b));
    }
    BLOCK_INLINE int difference(char a, char b) const {
        return static_cast<unsigned char>(a) - static_cast<unsigned char>(b);
    }
};

/// How bytes are compared: letters in either case.
class FOLDED {
  public:
    BLOCK_INLINE explicit FOLDED(FOLD_CONSTANTS const& fold) : m_fold(fold) {}

    BLOCK_INLINE BLOCK same(char const* a, char const* b) const {
        return block_same_folded(block_kept(load(a)), load(b), load(m_fold.case_bit),
                                 load(m_fold.to_bottom), load(m_fold.past_z));
    }
    BLOCK_INLINE int difference(char a, char b) const {
        return m_fold.lower[static_cast<unsigned char>(a)] -
               m_fold.lower[static_cast<unsigned char>(b)];
    }

  private:
    FOLD_CONSTANTS const& m_fold;
};

/// Walks two texts together from AT, up to where they are known to be equal, until they differ or
/// end, or until the limit is reached.
template <bool LIMITED, std::size_t AT, typename RULE>
class WALK {
  public:
    BLOCK_INLINE WALK(char const* a, char const* b, RULE rule, std::size_t limit)
        : m_a(a), m_b(b), m_rule(rule), m_limit(limit) {}

    BLOCK_INLINE int compare() {
        for (;;) {
            m_room = std::min(block_page_room(m_a + m_at), block_page_room(m_b + m_at));
            if (m_room >= 4 * block_size && m_at >= block_size)
                run_ahead();
            while (m_room >= block_size)
                if (block_stops())
                    return result();
            if (m_room != 0 && page_end_stops())
                return result();
        }
    }

  private:
    BLOCK_INLINE bool is_past_limit() const { return LIMITED && m_at >= m_limit; }

    /// Steps over a block, or stops inside it at the first difference or end. The limit is looked
    /// at by result() for a stop behind it, so that this may run past it by a block.
    BLOCK_INLINE bool block_stops() {
        unsigned const stop = block_zeros(m_rule.same(m_a + m_at, m_b + m_at));
        if (stop != 0)
            m_at += static_cast<unsigned>(std::countr_zero(stop));
        else
            skip(block_size);
        return stop != 0 || is_past_limit();
    }

    /// Four blocks at once, from where the loads from one of the texts are aligned. That goes back
    /// over what is known to be equal.
    BLOCK_INLINE void run_ahead() {
        skip(-(reinterpret_cast<std::uintptr_t>(m_a + m_at) & (block_size - 1)));
        while (m_room >= 4 * block_size && !is_past_limit() && four_go_on())
            skip(4 * block_size);
    }

    BLOCK_INLINE bool four_go_on() const {
        char const* const a = m_a + m_at;
        char const* const b = m_b + m_at;
        BLOCK const near =
            block_lesser(m_rule.same(a, b), m_rule.same(a + block_size, b + block_size));
        BLOCK const far = block_lesser(m_rule.same(a + 2 * block_size, b + 2 * block_size),
                                       m_rule.same(a + 3 * block_size, b + 3 * block_size));
        return block_zeros(block_lesser(near, far)) == 0;
    }

    /// The bytes up to a page's end: by the block that ends there where that many are known to be
    /// equal, otherwise one by one.
    BLOCK_INLINE bool page_end_stops() {
        if constexpr (AT < block_size)
            if (m_at < block_size - m_room)
                return bytes_stop();
        skip(m_room - block_size);
        return block_stops();
    }

    BLOCK_INLINE bool bytes_stop() {
        for (; m_room != 0 && !is_past_limit(); skip(1))
            if (m_a[m_at] == '\0' || difference() != 0)
                return true;
        return is_past_limit();
    }

    BLOCK_INLINE int difference() const { return m_rule.difference(m_a[m_at], m_b[m_at]); }

    BLOCK_INLINE int result() const { return is_past_limit() ? 0 : difference(); }

    BLOCK_INLINE void skip(std::size_t bytes) {
        m_at += bytes;
        m_room -= bytes;
    }

    char const* m_a;
    char const* m_b;
    RULE m_rule;
    std::size_t m_limit;
    std::size_t m_at = AT;
    std::size_t m_room = 0; ///< bytes that may be read at m_at before one of the pages ends
};

/// Most names end in their first blocks, and few of those are near the end of a page: these few
/// blocks are compared one after the other without a look at anything else.
constexpr std::size_t head_size = 4 * block_size;

BLOCK_INLINE bool head_fits(char const* text) {
    return (reinterpret_cast<std::uintptr_t>(text) & (block_page_size - 1)) <=
           block_page_size - head_size;
}

/// Where the walk starts is no argument: one more does not fit into registers on 32-bit, and then
/// every comparison would pay for a frame that only the long ones need.
template <bool LIMITED, std::size_t AT, typename RULE>
BLOCK_READS_PAGE __attribute__((noinline)) int walk(char const* a, char const* b, RULE rule,
                                                    std::size_t limit) {
    return WALK<LIMITED, AT, RULE>(a, b, rule, limit).compare();
}

template <bool LIMITED, typename RULE>
BLOCK_INLINE int compare(char const* a, char const* b, RULE rule, std::size_t limit) {
    if (!head_fits(a) || !head_fits(b)) [[unlikely]]
        return walk<LIMITED, 0>(a, b, rule, limit);
#pragma GCC unroll 4
    for (std::size_t at = 0; at < head_size; at += block_size) {
        unsigned const stop = block_zeros(rule.same(a + at, b + at));
        if (stop != 0) {
            std::size_t const last = at + static_cast<unsigned>(std::countr_zero(stop));
            return LIMITED && last >= limit ? 0 : rule.difference(a[last], b[last]);
        }
        if (LIMITED && limit <= at + block_size)
            return 0;
    }
    return walk<LIMITED, head_size>(a, b, rule, limit);
}

} // namespace
