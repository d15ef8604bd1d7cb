#pragma once

/// The characters of a condition: which of them make a word, which stand for themselves, which are
/// passed over.

#include <algorithm>
#include <array>
#include <emmintrin.h>
#include <string_view>

#include "gen_bp_parser_buffer.h"
#include "gen_bp_parser_terms.h"

/// What kind of term a word is, which is neither empty nor "&&" nor "||".
inline BP_KIND bp_word_kind(std::string_view word) {
    auto const is_letter = [](char character) {
        return static_cast<unsigned char>((character | 32) - 'a') < 26;
    };
    if (!is_letter(word.front()) && word.front() != '|')
        return is_letter(word.back()) ? BP_KIND::literal : BP_KIND::bus;
    bool const is_time = word.size() == 4 && (word[0] | 32) == 't' && (word[1] | 32) == 'i' &&
                         (word[2] | 32) == 'm' && (word[3] | 32) == 'e';
    return is_time ? BP_KIND::time : BP_KIND::hpath;
}

/// Takes a text apart and tells @p SINK of its tokens in their order:
///     void word(std::string_view)         in the text itself
///     void joined_word(std::string_view)  put together from pieces, valid for the call
///     void symbol(BP_KIND)                an operator, "~" included
///     void paren(BP_KIND)
///     void expect(std::size_t behind, std::size_t ahead)
/// The last tells now and then how many characters have been taken and how many are left. Not more
/// than @c piece are taken until it is called again.
template <typename SINK>
class BP_SCANNER {
  public:
    static constexpr std::size_t piece = 4096;

    BP_SCANNER(std::string_view text, SINK& sink) : m_text(text), m_sink(sink) {}

    void scan() {
        WORD word;
        for (std::size_t start = 0; start < m_text.size(); start += stride) {
            std::size_t const left = m_text.size() - start;
            if (start % piece == 0)
                m_sink.expect(start, left);
            char const* const first = m_text.data() + start;
            if (left >= stride) [[likely]] {
                take(word, first, stride, specials(first));
            } else {
                char last_ones[stride] = {};
                m_text.copy(last_ones, left, start);
                take(word, first, left, specials(last_ones) & ((1U << left) - 1));
            }
        }
        end(word);
    }

  private:
    static constexpr std::size_t stride = 32;
    static_assert(piece % stride == 0);

    enum class ROLE : std::uint8_t {
        skipped, ///< does not even end the word
        doubled, ///< of a word, and twice a word of its own
        paren,
        symbol
    };
    struct SPECIAL {
        ROLE role = ROLE::skipped;
        BP_KIND kind = BP_KIND::other;
    };

    static constexpr std::array<SPECIAL, 256> make_specials() {
        std::array<SPECIAL, 256> specials{};
        specials['&'] = {ROLE::doubled, BP_KIND::logical_and};
        specials['|'] = {ROLE::doubled, BP_KIND::logical_or};
        specials['('] = {ROLE::paren, BP_KIND::left_paren};
        specials[')'] = {ROLE::paren, BP_KIND::right_paren};
        specials['='] = {ROLE::symbol, BP_KIND::equal};
        specials['>'] = {ROLE::symbol, BP_KIND::greater};
        specials['<'] = {ROLE::symbol, BP_KIND::less};
        specials['~'] = {ROLE::symbol, BP_KIND::logical_not};
        return specials;
    }

    /// A bit for each of 16 characters that is not simply of a word.
    static unsigned specials_of_16(char const* text) {
        __m128i const here = _mm_loadu_si128(reinterpret_cast<__m128i const*>(text));
        auto const is = [](__m128i characters, char wanted) {
            return _mm_cmpeq_epi8(characters, _mm_set1_epi8(wanted));
        };
        // Blanks and control characters, and, the comparison being signed, what is above 127.
        __m128i const blanks = _mm_cmplt_epi8(here, _mm_set1_epi8(33));
        // Neighbours that differ in the lowest bit alone: "(" and ")", "<" and "=", "~" and 127.
        __m128i const odd = _mm_or_si128(here, _mm_set1_epi8(1));
        __m128i const pairs = _mm_or_si128(_mm_or_si128(is(odd, ')'), is(odd, '=')), is(odd, 127));
        __m128i const singles =
            _mm_or_si128(_mm_or_si128(is(here, '>'), is(here, '&')), is(here, '|'));
        __m128i const all = _mm_or_si128(_mm_or_si128(blanks, pairs), singles);
        return static_cast<unsigned>(_mm_movemask_epi8(all));
    }
    static std::uint32_t specials(char const* text) {
        return specials_of_16(text) | specials_of_16(text + 16) << 16;
    }

    /// The word so far: a part of the text, or, when it is none, what has been joined.
    struct WORD {
        char const* first = nullptr;
        char const* last = nullptr;
    };

    // In line, all of them, so that the word stays in registers.

    [[gnu::always_inline]] void take(WORD& word, char const* first, std::size_t count,
                                     std::uint32_t specials) {
        char const* run = first;
        for (; specials != 0; specials &= specials - 1) {
            char const* const at = first + __builtin_ctz(specials);
            append(word, run, at);
            run = at + 1;
            take_special(word, at);
        }
        append(word, run, first + count);
    }

    [[gnu::always_inline]] void take_special(WORD& word, char const* at) {
        static constexpr std::array<SPECIAL, 256> specials = make_specials();
        SPECIAL const special = specials[static_cast<unsigned char>(*at)];
        switch (special.role) {
        case ROLE::skipped:
            break;
        case ROLE::doubled:
            append(word, at, at + 1);
            if (is_double(word, *at)) {
                forget(word);
                m_sink.symbol(special.kind);
            }
            break;
        case ROLE::paren:
            end(word);
            m_sink.paren(special.kind);
            break;
        case ROLE::symbol:
            end(word);
            m_sink.symbol(special.kind);
        }
    }

    /// Characters of the word, none of them skipped.
    [[gnu::always_inline]] void append(WORD& word, char const* first, char const* last) {
        if (first == last)
            return;
        if (word.last == first)
            word.last = last;
        else if (word.first == nullptr && m_joined.empty())
            word = {first, last};
        else
            word = join(word, first, last);
    }
    [[gnu::noinline]] WORD join(WORD word, char const* first, char const* last) {
        m_joined.append(word.first, static_cast<std::size_t>(word.last - word.first));
        m_joined.append(first, static_cast<std::size_t>(last - first));
        return {};
    }
    [[gnu::always_inline]] bool is_double(WORD const& word, char character) const {
        if (word.first != nullptr)
            return word.last - word.first == 2 && *word.first == character;
        return m_joined.size() == 2 && m_joined[0] == character;
    }
    [[gnu::always_inline]] void end(WORD& word) {
        if (word.first != nullptr) {
            m_sink.word({word.first, static_cast<std::size_t>(word.last - word.first)});
            word = {};
        } else if (!m_joined.empty()) {
            m_sink.joined_word({m_joined.data(), m_joined.size()});
            m_joined.clear();
        }
    }
    [[gnu::always_inline]] void forget(WORD& word) {
        word = {};
        m_joined.clear();
    }

    std::string_view m_text;
    SINK& m_sink;
    BP_BUFFER<char, 64> m_joined;
};
