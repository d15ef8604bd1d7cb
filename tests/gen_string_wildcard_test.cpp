#include "gen_string_wildcard.h"

#include "effort.h"
#include "error_recorder.h"
#include "plain_string_wildcard.h"
#include "sanitizer.h"
#include "test_locale.h"

#include <clocale>
#include <cstdio>
#include <gtest/gtest.h>
#include <random>
#include <regex.h>
#include <string>
#include <sys/resource.h>
#include <vector>

namespace {

/// The expression, which must also be what is left in the pattern.
std::string expression_of(std::string const& pattern, bool anchor) {
    STR wildcard(pattern.data(), pattern.size());
    STR const expression = gen_wildcard_to_reg_expr(&wildcard, anchor);
    EXPECT_EQ(wildcard, expression);
    return std::string(expression.data(), expression.size());
}

/// A POSIX extended regular expression.
class Expression {
  public:
    explicit Expression(std::string const& text)
        : m_status(regcomp(&m_expression, text.c_str(), REG_EXTENDED | REG_NOSUB)) {}
    ~Expression() {
        if (compiles())
            regfree(&m_expression);
    }
    Expression(Expression const&) = delete;
    Expression& operator=(Expression const&) = delete;

    bool compiles() const { return m_status == 0; }
    bool matches(char const* name) const {
        return regexec(&m_expression, name, 0, nullptr, 0) == 0;
    }

  private:
    regex_t m_expression{};
    int m_status;
};

std::string random_pattern(std::mt19937& random, std::string const& alphabet,
                           std::size_t longest = 40) {
    std::string pattern(random() % longest, '\0');
    for (char& character : pattern)
        character = alphabet[random() % alphabet.size()];
    return pattern;
}

std::string every_byte() {
    std::string bytes(256, '\0');
    for (std::size_t byte = 0; byte < bytes.size(); ++byte)
        bytes[byte] = static_cast<char>(byte);
    return bytes;
}

/// All bytes but the NUL and the five that are passed on without being escaped.
std::string harmless_bytes() {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte)
        if (std::string_view("+^${}").find(static_cast<char>(byte)) == std::string_view::npos)
            bytes.push_back(static_cast<char>(byte));
    return bytes;
}

void expect_match_of_itself(std::string const& pattern) {
    for (bool const anchor : {false, true}) {
        std::string const text = expression_of(pattern, anchor);
        Expression const expression(text);
        EXPECT_TRUE(expression.compiles()) << text;
        EXPECT_TRUE(expression.compiles() && expression.matches(pattern.c_str())) << text;
    }
}

} // namespace

TEST(Wildcard, Table) {
    struct Row {
        char const* pattern;
        bool anchor;
        char const* expression;
    };
    Row const rows[] = {
        {"", false, ""},
        {"", true, "^$"},
        {"a*.v", true, "^[aA].*\\.[vV]$"},
        {"file?(1)", false, "[fF][iI][lL][eE].?\\(1\\)"},
        {"*", false, ".*"},
        {"?", true, "^.?$"},
        {".()[\\]|", false, "\\.\\(\\)\\[\\\\\\]\\|"},
        {"Az", false, "[aA][zZ]"},
        {"0+^${} -_9", false, "0+^${} -_9"},
        {"\xC4\xFF", false, "\xC4\xFF"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(expression_of(row.pattern, row.anchor), row.expression) << row.pattern;
}

TEST(Wildcard, NullIsReported) {
    ErrorRecorder const recorder;
    EXPECT_EQ(gen_wildcard_to_reg_expr(nullptr, true), "");
    EXPECT_EQ(recorder.errors(),
              (std::vector<ReportedError>{{"wildcard != 0", "GEN", "gen_string", 1681}}));
}

TEST(Wildcard, EmbeddedNulsAreKept) {
    EXPECT_EQ(expression_of(std::string("a\0*", 3), true), std::string("^[aA]\0.*$", 9));
}

TEST(Wildcard, LettersAreThoseOfTheLocale) {
    TestLocale const locale;
    if (!locale.trouble().empty())
        GTEST_SKIP() << locale.trouble();
    std::setlocale(LC_ALL, TestLocale::name);
    EXPECT_EQ(expression_of("\xC4", false), "[\xE4\xC4]");
    EXPECT_EQ(expression_of("\xE4", false), "[\xE4\xC4]");
    // A letter without an upper case, and the byte that reads as the end of a file.
    EXPECT_EQ(expression_of("\xDF\xFF", false), "[\xDF\xDF]\xFF");
    EXPECT_EQ(expression_of("\xD7", false), "\xD7");
    // A case that is that of another letter.
    EXPECT_EQ(expression_of("iI", false), "[i\xCC][iI]");

    std::mt19937 random(4);
    for (int round = 0; round < 1000; ++round) {
        std::string const pattern = random_pattern(random, every_byte(), 600);
        ASSERT_EQ(expression_of(pattern, true), plain_wildcard_to_reg_expr(pattern, true));
    }
}

TEST(Wildcard, SameTextsAsInserting) {
    std::mt19937 random(8);
    std::string bytes("abcXYZ019._-*?()[]\\|+^${} \xC4\xFF", 29);
    bytes.push_back('\0');
    for (std::size_t round = effort(200'000); round != 0; --round) {
        std::string const pattern = random_pattern(random, bytes);
        bool const anchor = round % 2 == 0;
        ASSERT_EQ(expression_of(pattern, anchor), plain_wildcard_to_reg_expr(pattern, anchor))
            << pattern;
    }
}

TEST(Wildcard, EveryLengthAroundItsPieces) {
    for (std::size_t size = 0; size < 1100; ++size) {
        std::string const pattern(size, size % 3 == 0 ? 'a' : '?');
        ASSERT_EQ(expression_of(pattern, true), plain_wildcard_to_reg_expr(pattern, true));
    }
}

TEST(Wildcard, LongPatternsOfAllCharacters) {
    std::mt19937 random(23);
    for (std::size_t round = effort(1000); round != 0; --round) {
        bool const anchor = round % 2 == 0;
        // What begins with digits takes more room than it seems to need.
        std::string const pattern =
            std::string(random() % 600, '7') + random_pattern(random, every_byte(), 2000);
        ASSERT_EQ(expression_of(pattern, anchor), plain_wildcard_to_reg_expr(pattern, anchor));
    }
}

// Inserting into a pattern of this size, byte by byte, takes minutes.
TEST(Wildcard, PatternOfAMegabyte) {
    constexpr std::size_t size = 1'000'000;
    STR wildcard(size, 'a');
    gen_wildcard_to_reg_expr(&wildcard, true);
    STR expected = "^";
    for (std::size_t i = 0; i < size; ++i)
        expected += "[aA]";
    EXPECT_EQ(wildcard, expected + "$");
}

TEST(WildcardDeathTest, PatternWhoseExpressionHasNoRoomEndsTheProcess) {
    if (address_sanitizer)
        GTEST_SKIP() << "the sanitizer's heap ends the process itself";
    auto const convert = [] {
        STR wildcard(std::size_t{1} << 29, '.');
        std::fputs("made\n", stderr);
        rlimit const two_gigabytes{2ULL << 30, 2ULL << 30}; // which 32-bit has not more of
        setrlimit(RLIMIT_AS, &two_gigabytes);
        gen_wildcard_to_reg_expr(&wildcard, false);
    };
    EXPECT_EXIT(convert(), testing::ExitedWithCode(255), "^made\nkorvane: out of memory: .*\n$");
}

TEST(Wildcard, PatternsWithoutUnescapedCharactersCompileAndMatchThemselves) {
    std::string const bytes = harmless_bytes();
    std::string const previous = std::setlocale(LC_ALL, nullptr);
    for (char const* const locale : {"C", "C.UTF-8"}) {
        EXPECT_NE(std::setlocale(LC_ALL, locale), nullptr) << locale;
        std::mt19937 random(15);
        for (std::size_t round = effort(10'000); round != 0; --round)
            expect_match_of_itself(random_pattern(random, bytes));
        for (char const first : bytes)
            for (char const second : std::string_view("*?.()[]\\|-a")) {
                expect_match_of_itself({first, second});
                expect_match_of_itself({second, first});
            }
    }
    std::setlocale(LC_ALL, previous.c_str());
}

TEST(Wildcard, ExpressionsMatchNamesInEitherCase) {
    struct Row {
        char const* pattern;
        char const* name;
        bool matches;
    };
    Row const rows[] = {
        {"*.v", "top.v", true},
        {"*.v", "TOP.V", true},
        {"*.v", "topxv", false},
        {"*.v", ".v", true},
        {"top?.v", "top1.v", true},
        {"top?.v", "top.v", true},
        {"top?.v", "top12.v", false},
        {"a[1].v", "A[1].v", true},
        {"a[1].v", "a1.v", false},
        {"a|b", "a", false},
        {"(a)", "(A)", true},
        {"a\\b", "a\\B", true},
        {"*", "", true},
        {"?", "", true},
        {"?", "xy", false},
        {"bus_*[?]", "BUS_Q[3]", true},
        {"bus_*[?]", "bus_q", false},
        {"", "", true},
    };
    for (Row const& row : rows)
        EXPECT_EQ(Expression(expression_of(row.pattern, true)).matches(row.name), row.matches)
            << row.pattern << ' ' << row.name;
}
