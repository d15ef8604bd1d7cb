// Every function that is given a string or a count, beside pages that may not be touched: strings
// of every length, at every distance of their ends from the page behind, and at the page in front.
//
// The bytes of an STR lie where the heap puts them, always with a terminator, and so beside no such
// page: what works on those is not here. The address sanitizer watches it in the tests of its own.

#include "gen_string_guard.h"

#include "gen_string.h"
#include "sanitizer.h"

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

namespace {

/// What a call is given: strings of one length, each at a guarded page of its own.
struct Strings {
    char* text;
    char const* same;
    /// With the letters in the other case.
    char const* swapped;
    unsigned length;
    /// What the string becomes when it is folded.
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

    Strings at_start(End end) const {
        if (end == End::unterminated)
            return strings(text_page.unterminated_at_start(m_string),
                           same_page.unterminated_at_start(m_string),
                           swapped_page.unterminated_at_start(m_other));
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

void try_everywhere(Row const& row, End end) {
    for (std::size_t length = 0; length <= longest; length += length_step)
        for (bool const digits : {false, true}) {
            Pages const pages(some_text(length, digits));
            for (std::size_t gap = 0; gap < alignments; gap += gap_step)
                ASSERT_TRUE(row.answers(pages.before_end(gap, end))) << length << ' ' << gap;
            ASSERT_TRUE(row.answers(pages.at_start(end))) << length;
        }
}

STR expanded(char const* format, ...) {
    va_list args;
    va_start(args, format);
    STR out;
    gen_formatmessage(out, format, STL_ARGS(args));
    va_end(args);
    return out;
}

/// Stores the message, expanded or as it is, in a buffer for @p count of its characters.
template <unsigned long how>
bool stores(Strings const& strings, unsigned count) {
    char* const buffer = room_for(count + 1);
    unsigned long const stored = gen_formatmessage(FORMAT_MESSAGE_FROM_STRING | how, strings.text,
                                                   0, 0, buffer, count + 1, nullptr);
    return stored == count && std::memcmp(buffer, strings.same, count) == 0 &&
           (strings.length == 0 || buffer[count] == '\0');
}

/// The same with all characters, and with one less than there are.
template <unsigned long how>
bool stores_all_or_cuts(Strings const& strings) {
    return stores<how>(strings, strings.length) &&
           (strings.length == 0 || stores<how>(strings, strings.length - 1));
}

template <unsigned long how>
bool allocates(Strings const& strings) {
    char* block = nullptr;
    unsigned long const length = gen_formatmessage(
        FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER | how, strings.text, 0, 0,
        static_cast<char*>(static_cast<void*>(&block)), strings.length, nullptr);
    bool const is_alike = length == strings.length && (block == nullptr) == (length == 0) &&
                          (block == nullptr || std::strcmp(block, strings.same) == 0);
    std::free(block);
    return is_alike;
}

/// Compares the whole of both as one integer; without a digit the answer is a report.
template <typename Iterator>
bool integers_equal(Strings const& strings) {
    if (strings.length == 0 || *strings.text != '7')
        return true;
    Iterator at(strings.text);
    Iterator other_at(strings.same);
    Iterator const end = at + static_cast<std::ptrdiff_t>(strings.length);
    Iterator const other_end = other_at + static_cast<std::ptrdiff_t>(strings.length);
    return gen_compare_integer_strings(end, &at, other_end, &other_at) == 0 && at == end &&
           other_at == other_end;
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
    {"CompareIntegerStrings", integers_equal<char const*>},
    {"CompareIntegerStringsByIterator", integers_equal<STR::const_iterator>},
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
         for (unsigned const more : {1U, 2U, 3U, 70U}) { // of a longer count the last is kept
             std::size_t const written = std::max(s.length + 1, s.length + more - 1);
             char* const copy = gen_strncpy(room_for(written), s.text, s.length + more);
             if (std::strcmp(copy, s.same) != 0)
                 return false;
         }
         return true;
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
    {"FormatmessageIntoBuffer", stores_all_or_cuts<0>},
    {"FormatmessageAsItIs", stores_all_or_cuts<FORMAT_MESSAGE_IGNORE_INSERTS>},
    {"FormatmessageIntoNewBlock", allocates<0>},
    {"FormatmessageAsItIsIntoNewBlock", allocates<FORMAT_MESSAGE_IGNORE_INSERTS>},
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
    {"CompareIntegerStrings", integers_equal<char const*>},
    {"CompareIntegerStringsByIterator", integers_equal<STR::const_iterator>},
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
#ifndef TEST_ADDRESS_SANITIZER // reads a string to its end where the precision is no argument
    {"MessagePrecision",
     [](Strings const& s) {
         STL_ARG_LIST arguments;
         arguments.add(s.text);
         STR out;
         std::string const format = "%1!." + std::to_string(s.length) + "s!";
         gen_formatmessage(out, format.c_str(), arguments.args());
         return s.length == 0 || out == STR(s.same, s.length);
     }},
#endif
};

class Terminated : public testing::TestWithParam<Row> {};
class Unterminated : public testing::TestWithParam<Row> {};

} // namespace

TEST_P(Terminated, NothingBeforeOrBehindTheStringIsTouched) {
    try_everywhere(GetParam(), End::terminated);
}

TEST_P(Unterminated, NothingBehindTheCountIsRead) {
    try_everywhere(GetParam(), End::unterminated);
}

INSTANTIATE_TEST_SUITE_P(Guard, Terminated, testing::ValuesIn(terminated_rows), row_name);
INSTANTIATE_TEST_SUITE_P(Guard, Unterminated, testing::ValuesIn(unterminated_rows), row_name);

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
