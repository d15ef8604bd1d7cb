// Every function that is given a string or a count, beside pages that may not be touched: strings
// of every length, at every distance of their ends from the page behind, and at the page in front.

#include <gtest/gtest.h>

#include <climits>
#include <cstdarg>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "effort.h"
#include "gen_string.h"
#include "guarded_text.h"
#include "sanitizer.h"

namespace {

constexpr std::size_t longest = 1300;
constexpr std::size_t alignments = 64;

/// What a call is given: strings of one length, each at a guarded page of its own.
struct Strings {
    char* text;
    char const* same;
    /// With the letters in the other case.
    char const* swapped;
    unsigned length;
    /// What the text becomes when it is folded.
    std::string const& lower;
    std::string const& upper;
};

struct Row {
    char const* name;
    /// Whether the call answers as it should.
    bool (*answers)(Strings const& strings);
};

std::ostream& operator<<(std::ostream& stream, Row const& row) {
    return stream << row.name;
}

std::string row_name(testing::TestParamInfo<Row> const& info) {
    return info.param.name;
}

enum class End {
    terminated,
    unterminated,
};

/// Letters of both cases, or nothing but digits.
std::string some_text(std::size_t length, bool digits) {
    std::string text(length, '7');
    for (std::size_t i = 0; i < length && !digits; ++i)
        text[i] = i % 3 == 0 ? 'K' : 'k';
    return text;
}

std::string with_bits(std::string text, bool (*changed)(char letter)) {
    for (char& letter : text)
        letter = static_cast<char>(changed(letter) ? letter ^ 0x20 : letter);
    return text;
}

/// Places strings of one text.
class Pages {
  public:
    explicit Pages(std::string const& text)
        : m_string(text), m_other(with_bits(text, [](char letter) { return letter >= 'A'; })),
          m_lower(with_bits(text, [](char letter) { return letter == 'K'; })),
          m_upper(with_bits(text, [](char letter) { return letter == 'k'; })) {}

    /// @p gap bytes lie between the strings and the page behind.
    Strings before_end(std::size_t gap, End end) const {
        std::size_t const other_gap = gap * 29 % alignments;
        if (end == End::unterminated)
            return strings(text_page.unterminated(m_string, gap),
                           same_page.unterminated(m_string, other_gap),
                           swapped_page.unterminated(m_other, other_gap));
        return strings(text_page.before_end(m_string, gap),
                       same_page.before_end(m_string, other_gap),
                       swapped_page.before_end(m_other, other_gap));
    }

    Strings at_start() const {
        return strings(text_page.at_start(m_string), same_page.at_start(m_string),
                       swapped_page.at_start(m_other));
    }

  private:
    Strings strings(char* text, char const* same, char const* swapped) const {
        return {text, same, swapped, static_cast<unsigned>(m_string.size()), m_lower, m_upper};
    }

    inline static GuardedText text_page{1};
    inline static GuardedText same_page{1};
    inline static GuardedText swapped_page{1};

    std::string m_string;
    std::string m_other;
    std::string m_lower;
    std::string m_upper;
};

/// All lengths and alignments, or some of each where the tests have to be quick.
void try_everywhere(Row const& row, End end) {
    bool const quick = effort(longest) < longest;
    for (std::size_t length = 0; length <= longest; length += quick ? 97 : 1)
        for (bool const digits : {false, true}) {
            Pages const pages(some_text(length, digits));
            for (std::size_t gap = 0; gap < alignments; gap += quick ? 21 : 1)
                ASSERT_TRUE(row.answers(pages.before_end(gap, end))) << length << ' ' << gap;
            if (end == End::terminated) {
                ASSERT_TRUE(row.answers(pages.at_start())) << length;
            }
        }
}

/// Memory for results that may be written up to the page behind.
char* room_for(std::size_t size) {
    static GuardedText pages(1);
    static std::string const filling(2 * longest + 1, '#');
    return pages.unterminated(std::string_view(filling).substr(0, size));
}

STR expanded(char const* format, ...) {
    va_list args;
    va_start(args, format);
    STR out;
    gen_formatmessage(out, format, STL_ARGS(args));
    va_end(args);
    return out;
}

bool stored_alike(char const* format, unsigned length) {
    char* const buffer = room_for(length + 1);
    unsigned long const stored =
        gen_formatmessage(FORMAT_MESSAGE_FROM_STRING, format, 0, 0, buffer, length + 1, nullptr);
    return stored == length && (length == 0 || std::strcmp(buffer, format) == 0);
}

/// Compares the whole of both as one integer; without a digit the answer is a report.
bool integers_equal(Strings const& strings) {
    if (strings.length == 0 || *strings.text != '7')
        return true;
    char const* at = strings.text;
    char const* other_at = strings.same;
    return gen_compare_integer_strings(at + strings.length, &at, other_at + strings.length,
                                       &other_at) == 0 &&
           at == strings.text + strings.length && other_at == strings.same + strings.length;
}

template <auto fold>
bool lowers(Strings const& strings) {
    fold(strings.text);
    return strings.text == strings.lower;
}

template <auto fold>
bool raises(Strings const& strings) {
    fold(strings.text);
    return strings.text == strings.upper;
}

void to_lower(char* text) {
    gen_tolower(text);
}
void to_upper(char* text) {
    gen_toupper(text);
}
void ascii_to_lower(char* text) {
    gen_ascii_tolower(text);
}
void ascii_to_upper(char* text) {
    gen_ascii_toupper(text);
}

Row const terminated_rows[] = {
    {"Strcmp",
     [](Strings const& s) {
         return gen_strcmp(s.text, s.same) == 0 && gen_strcmp(s.text, "") == s.text[0] &&
                gen_strcmp("", s.text) == -s.text[0];
     }},
    {"Stricmp", [](Strings const& s) { return gen_stricmp(s.text, s.swapped) == 0; }},
    {"AsciiStricmp", [](Strings const& s) { return gen_ascii_stricmp(s.text, s.swapped) == 0; }},
    {"StricmpMt", [](Strings const& s) { return gen_stricmp_mt(s.text, s.swapped) == 0; }},
    {"Strnicmp",
     [](Strings const& s) {
         return gen_strnicmp(s.text, s.swapped, 0) == 0 &&
                gen_strnicmp(s.text, s.swapped, s.length + 1) == 0 &&
                gen_strnicmp(s.text, s.swapped, UINT_MAX) == 0;
     }},
    {"AsciiStrnicmp",
     [](Strings const& s) {
         return gen_ascii_strnicmp(s.text, s.swapped, 0) == 0 &&
                gen_ascii_strnicmp(s.text, s.swapped, s.length + 100) == 0;
     }},
    {"Strlen", [](Strings const& s) { return gen_strlen(s.text) == static_cast<int>(s.length); }},
    {"HasWildcardChars", [](Strings const& s) { return gen_has_wildcard_chars(s.text) == 0; }},
    {"CompareIntegerStrings", integers_equal},
    {"Lexcmp", [](Strings const& s) { return gen_lexcmp(s.text, s.same) == 0; }},
    {"Ilexcmp", [](Strings const& s) { return gen_ilexcmp(s.text, s.swapped) == 0; }},
    {"Tolower", lowers<to_lower>},
    {"Toupper", raises<to_upper>},
    {"AsciiTolower", lowers<ascii_to_lower>},
    {"AsciiToupper", raises<ascii_to_upper>},
    {"Strlwr", lowers<gen_strlwr>},
    {"Strupr", raises<gen_strupr>},
    {"Strcpy",
     [](Strings const& s) {
         return std::strcmp(gen_strcpy(room_for(s.length + 1), s.text), s.same) == 0;
     }},
    {"Strcat",
     [](Strings const& s) {
         char* const whole = gen_strcpy(room_for(2 * s.length + 1), s.text);
         return gen_strcat(whole, s.same) == whole && std::strcmp(whole + s.length, s.same) == 0;
     }},
    {"Strncpy",
     [](Strings const& s) {
         char* const copy = gen_strncpy(room_for(s.length + 2), s.text, s.length + 1);
         return std::strcmp(copy, s.same) == 0;
     }},
    {"Strrev",
     [](Strings const& s) {
         return gen_strrev(s.text) == s.text &&
                (s.length == 0 || s.text[0] == s.same[s.length - 1]);
     }},
    {"Writeprivateprofilestring",
     [](Strings const& s) {
         return gen_writeprivateprofilestring(s.text, s.same, s.swapped, s.text) == 0;
     }},
    {"Sprintf",
     [](Strings const& s) {
         STR out;
         return gen_vsprintf(&out, s.text, nullptr) == static_cast<int>(s.length) &&
                out == s.same && gen_sprintf(&out, "%s", s.text) == static_cast<int>(s.length) &&
                out == s.same;
     }},
    {"FormatmessageText", [](Strings const& s) { return expanded(s.text) == s.same; }},
    {"FormatmessageInsert", [](Strings const& s) { return expanded("%1", s.text) == s.same; }},
    {"FormatmessageIntoBuffer", [](Strings const& s) { return stored_alike(s.text, s.length); }},
    {"ReplaceInvalidChars",
     [](Strings const& s) {
         gen_replace_invalid_chars(s.text);
         return std::strcmp(s.text, s.same) == 0;
     }},
    {"CrcGenerator",
     [](Strings const& s) { return gen_crc_generator(s.text) == gen_crc_generator(s.same); }},
    {"CrcStringToDword",
     [](Strings const& s) { return gen_crc_string_to_dword(s.text) == gen_crc_generator(s.same); }},
};

Row const unterminated_rows[] = {
    {"Strnicmp",
     [](Strings const& s) {
         return s.length == 0 || (gen_strnicmp(s.text, s.swapped, s.length) == 0 &&
                                  gen_strnicmp(s.swapped, s.text, s.length) == 0);
     }},
    {"AsciiStrnicmp",
     [](Strings const& s) {
         return s.length == 0 || gen_ascii_strnicmp(s.text, s.swapped, s.length) == 0;
     }},
    {"CompareIntegerStrings", integers_equal},
    {"Lexcmp",
     [](Strings const& s) { return gen_lexcmp(s.text, s.length, s.same, s.length) == 0; }},
    {"Ilexcmp",
     [](Strings const& s) { return gen_ilexcmp(s.text, s.length, s.swapped, s.length) == 0; }},
    {"Strncpy",
     [](Strings const& s) {
         char* const copy = gen_strncpy(room_for(s.length + 1), s.text, s.length);
         return std::memcmp(copy, s.same, s.length) == 0 && copy[s.length] == '\0';
     }},
    {"SprintfPrecision",
     [](Strings const& s) {
         STR out;
         return gen_sprintf(&out, "%.*s", static_cast<int>(s.length), s.text) ==
                    static_cast<int>(s.length) &&
                std::memcmp(out.data(), s.same, s.length) == 0;
     }},
};

class Terminated : public testing::TestWithParam<Row> {};
class Unterminated : public testing::TestWithParam<Row> {};

/// The radixes of which a number with the most digits is written.
constexpr int radixes[] = {2, 3, 8, 10, 16, 36};

} // namespace

TEST_P(Terminated, NothingBeforeOrBehindTheStringIsTouched) {
    try_everywhere(GetParam(), End::terminated);
}

TEST_P(Unterminated, NothingBehindTheCountIsRead) {
    try_everywhere(GetParam(), End::unterminated);
}

INSTANTIATE_TEST_SUITE_P(Guard, Terminated, testing::ValuesIn(terminated_rows), row_name);
INSTANTIATE_TEST_SUITE_P(Guard, Unterminated, testing::ValuesIn(unterminated_rows), row_name);

TEST(Guard, NumbersFillTheirBuffersAndNoMore) {
    for (int const radix : radixes)
        for (unsigned shift = 0; shift < 64; ++shift) {
            auto const number = static_cast<unsigned long>(UINT64_MAX >> shift);
            auto const value = static_cast<int>(number);
            STR const text = gen_itoa(value, radix);
            EXPECT_EQ(gen_itoa(value, room_for(text.size() + 1), radix), text);
            char enough[70];
            std::size_t const size = std::strlen(gen_ultoa(number, enough, radix)) + 1;
            EXPECT_STREQ(gen_ultoa(number, room_for(size), radix), enough);
        }
}

#ifdef TEST_ADDRESS_SANITIZER
// A host under the address sanitizer is helped as if it had written the loop itself.
TEST(GuardDeathTest, ABlockWithoutTerminatorIsSeenByTheSanitizer) {
    for (std::size_t const size : {1U, 7U, 16U, 31U, 40U, 200U}) {
        std::string const block(size, 'k');
        // A block of exactly that size: the string's own has a terminator.
        std::unique_ptr<char[]> const first(new char[size]);
        std::unique_ptr<char[]> const second(new char[size]);
        block.copy(first.get(), size);
        block.copy(second.get(), size);
        char* const a = first.get();
        char const* const b = second.get();
        char const* const message = "heap-buffer-overflow";
        EXPECT_DEATH(gen_strcmp(a, b), message);
        EXPECT_DEATH(gen_stricmp(a, b), message);
        EXPECT_DEATH(gen_strnicmp(a, b, 0), message);
        EXPECT_DEATH(gen_strnicmp(a, b, static_cast<unsigned>(size) + 1), message);
        EXPECT_DEATH(gen_lexcmp(a, b), message);
        EXPECT_DEATH(gen_lexcmp(a, static_cast<unsigned>(size) + 1, b, 300), message);
        EXPECT_DEATH(gen_crc_generator(a), message);
        EXPECT_DEATH(gen_replace_invalid_chars(a), message);
        EXPECT_DEATH(expanded("%1 and %1", a), message);
    }
}
#endif
