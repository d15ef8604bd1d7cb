#include "gen_string_compare.h"

#include "contest.h"

#include <cstring>
#include <emmintrin.h>
#include <memory>
#include <strings.h>

namespace {

/// Equal strings of one length at all alignments, with room to read whole blocks behind them.
struct TextPairs {
    explicit TextPairs(std::size_t length) : size(length) {
        for (std::size_t i = 0; i < input_count; ++i) {
            std::string const text = random_letters(length);
            first.push_back(place(text));
            second.push_back(place(text));
        }
    }

    char const* place(std::string const& text) {
        blocks.push_back(std::make_unique<char[]>(text.size() + 64));
        char* const start = blocks.back().get() + random_below(16);
        std::memcpy(start, text.c_str(), text.size() + 1);
        return start;
    }

    std::size_t size;
    std::vector<std::unique_ptr<char[]>> blocks;
    std::vector<char const*> first;
    std::vector<char const*> second;
};

template <typename Compare>
void enter_pairs(std::string const& work, std::string const& contestant,
                 std::shared_ptr<TextPairs const> const& pairs, Compare compare) {
    enter(work, contestant, [pairs, compare](std::size_t turn) {
        std::size_t const i = turn % input_count;
        return compare(pairs->first[i], pairs->second[i]);
    });
}

unsigned char byte_at(char const* text, std::size_t position) {
    return static_cast<unsigned char>(text[position]);
}

__m128i load(char const* text) {
    return _mm_loadu_si128(reinterpret_cast<__m128i const*>(text));
}

__m128i folded(__m128i block) {
    __m128i const from_a = _mm_add_epi8(block, _mm_set1_epi8(static_cast<char>(128 - 'A')));
    __m128i const letters = _mm_cmplt_epi8(from_a, _mm_set1_epi8(-128 + 26));
    return _mm_add_epi8(block, _mm_and_si128(letters, _mm_set1_epi8(32)));
}

/// Block comparison of strings that may be read past their ends: neither nulls nor pages looked at.
template <bool Fold>
int limit_compare(char const* a, char const* b) {
    for (std::size_t at = 0;; at += 16) {
        __m128i const first = Fold ? folded(load(a + at)) : load(a + at);
        __m128i const second = Fold ? folded(load(b + at)) : load(b + at);
        __m128i const ends = _mm_cmpeq_epi8(first, _mm_setzero_si128());
        __m128i const same = _mm_cmpeq_epi8(first, second);
        auto const stop =
            static_cast<unsigned>(_mm_movemask_epi8(_mm_andnot_si128(ends, same))) ^ 0xFFFFU;
        if (stop != 0) {
            std::size_t const last = at + static_cast<unsigned>(__builtin_ctz(stop));
            return byte_at(a, last) - byte_at(b, last);
        }
    }
}

void enter_equal_texts(std::size_t length) {
    auto const pairs = std::make_shared<TextPairs const>(length);
    std::string const size = " equal, " + std::to_string(length);

    enter_pairs("gen_strcmp" + size, "gen", pairs, gen_strcmp);
    enter_pairs("gen_strcmp" + size, "glibc strcmp", pairs, strcmp);
    enter_pairs("gen_strcmp" + size, "limit", pairs, limit_compare<false>);

    enter_pairs("gen_stricmp" + size, "gen", pairs, gen_stricmp);
    enter_pairs("gen_stricmp" + size, "glibc strcasecmp", pairs, strcasecmp);
    enter_pairs("gen_stricmp" + size, "limit", pairs, limit_compare<true>);

    enter_pairs("gen_strnicmp" + size, "gen", pairs, [pairs](char const* a, char const* b) {
        return gen_strnicmp(a, b, static_cast<unsigned>(pairs->size));
    });
    enter_pairs("gen_strnicmp" + size, "glibc strncasecmp", pairs,
                [pairs](char const* a, char const* b) { return strncasecmp(a, b, pairs->size); });
    enter_pairs("gen_strnicmp" + size, "limit", pairs, limit_compare<true>);
}

Family const equal_texts{[] {
    for (std::size_t const length : {8U, 24U, 64U, 1024U})
        enter_equal_texts(length);
}};

} // namespace
