#include "effort.h"
#include "error_recorder.h"
#include "gen_localization_fixture.h"
#include "gen_localization_reading.h"

#include <bit>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>

using testing::ElementsAre;

namespace {

using LocalNumber = LocalizationTest;

char const* const number_texts[] = {
    // Short decimals, in every spelling.
    "0",
    "-0",
    "+0",
    "0.0",
    "-0.0e5",
    "1",
    "-1",
    "+1",
    "1.5",
    "1,5",
    "-1.5",
    ".5",
    "-.5",
    "5.",
    "+5.e1",
    "00001.5000",
    "0.1",
    "0.3",
    "123456789",
    "3.14159265358979",
    "1e5",
    "1E5",
    "1e+5",
    "1e-5",
    "2.5e-3",
    "1e22",
    "1e23",
    "1e27",
    "1e28",
    "1e-22",
    "1e-27",
    "1e-28",
    "9007199254740993",
    "9007199254740992.5",
    "90071992547409930e-1",
    "4.35",
    "0.000001",
    "8.41e21",
    "9.5367431640625e-07",
    // Nineteen digits and twenty; zeros count as digits here.
    "1234567890123456789",
    "9999999999999999999",
    "12345678901234567890",
    "18446744073709551616",
    "0.1234567890123456789",
    "0.0000000000000000001",
    "00000000000000000000001",
    // What ends a number.
    "1.5abc",
    "1.5.5",
    "1 5",
    "1e",
    "1e+",
    "1e-x",
    "1.e",
    "1.5e5e5",
    "1..5",
    "7%",
    "12\x80",
    "1e5.5",
    // What is none.
    "",
    " ",
    ".",
    "-",
    "+",
    "-.",
    "e5",
    ".e5",
    "+-1",
    "- 1",
    "abc",
    "\3771",
    ",5",
    // Blanks before it; the no-break space of ISO-8859-1 is one to some users.
    " 1",
    "\t\n\v\f\r 2.5",
    "\2401.5",
    " \xA0 -2.5e1",
    "\xA0",
    "\0371",
    " \xA0 x",
    // Words and other radices.
    "inf",
    "-INF",
    "infinity",
    "infinit",
    "nan",
    "-nan",
    "nan(12)",
    "nan(",
    "0x10",
    "0x1.8p3",
    "-0X.8",
    "0x",
    "0x.",
    "0xg",
    "00x1",
    // The ends of the range.
    "1e308",
    "1.7976931348623157e308",
    "1e309",
    "-1e400",
    "1e99999999999999999999",
    "1e-308",
    "2.2250738585072014e-308",
    "4.9e-324",
    "2e-324",
    "1e-400",
    "-1e-400",
    "0e400",
    "0e99999999999",
    "1e-99999999999",
    "1e2147483648",
    "1e4294967296",
    "1e-4294967296",
};

TEST_F(LocalNumber, FloatingPointAnswersAsIfTheCategoryWereSwitched) {
    under_every_pair_of_locales([] {
        for (char const* const text : number_texts) {
            expect_same(reading(gen_local_strtod, text),
                        switched(LC_NUMERIC, [&] { return reading(strtod, text); }), text);
            EXPECT_EQ(bits_of(gen_local_atof(text)),
                      switched(LC_NUMERIC, [&] { return bits_of(strtod(text, nullptr)); }))
                << text;
        }
    });
}

TEST_F(LocalNumber, WideFloatingPointAnswersAsIfTheCategoryWereSwitched) {
    std::vector<std::wstring> texts = {L"\u20031.5", L"\u00A01.5", L"\u2003", L"1\u20035",
                                       L"\u20AC"};
    for (std::string const text : number_texts) // bytes as characters of ISO-8859-1
        texts.emplace_back(reinterpret_cast<unsigned char const*>(text.data()),
                           reinterpret_cast<unsigned char const*>(text.data()) + text.size());
    under_every_pair_of_locales([&] {
        for (std::wstring const& text : texts)
            expect_same(reading(gen_local_wcstod, text.c_str()),
                        switched(LC_NUMERIC, [&] { return reading(wcstod, text.c_str()); }), text);
    });
}

TEST_F(LocalNumber, DecimalPointAppliesUnderADecimalComma) {
    std::setlocale(LC_ALL, TestLocale::name);
    EXPECT_EQ(strtod("1.5", nullptr), 1.0);
    EXPECT_EQ(gen_local_atof("1.5"), 1.5);
    EXPECT_EQ(gen_local_atof("1.234567890123456789012345"), 1.234567890123456789012345);
    EXPECT_EQ(gen_local_wcstod(L"1.5", nullptr), 1.5);
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), TestLocale::name);
    EXPECT_STREQ(localeconv()->decimal_point, ",");
}

TEST_F(LocalNumber, OnlyBlanksAndSignsMayStandBeforeTheDigits) {
    for (int c = 1; c <= UCHAR_MAX; ++c)
        for (char const* const digits : {"5", "2.5", ".5e1"})
            expect_read_as_strtod_reads(std::string(1, static_cast<char>(c)) + digits);
}

TEST_F(LocalNumber, NoCharacterButADigitGoesOnWithDigits) {
    for (int c = 1; c <= UCHAR_MAX; ++c)
        for (char const* const digits : {"5", "2.5", "1e0", "1e-0", "1e", "1e+"})
            expect_read_as_strtod_reads(digits + std::string(1, static_cast<char>(c)));
}

TEST_F(LocalNumber, BaseNameMayBeAnotherInstalledLocale) {
    LOCALIZATION_BASE_STRING = TestLocale::name;
    EXPECT_EQ(gen_local_atof("1,5"), 1.5);
    EXPECT_EQ(gen_local_atof("1.5"), 1.0);
    EXPECT_EQ(gen_local_atof("1,234567890123456789012345"), 1.234567890123456789012345);
    EXPECT_EQ(gen_local_wcstod(L"1,5", nullptr), 1.5);
}

TEST_F(LocalNumber, DecimalPointOfTheBaseMayBeOfTwoBytes) {
    TestLocale const locale(TestLocale::wide_point);
    if (!locale.trouble().empty())
        GTEST_SKIP() << locale.trouble();
    LOCALIZATION_BASE_STRING = TestLocale::wide_point;
    EXPECT_EQ(gen_local_atof("1\u066B5"), 1.5);
    EXPECT_EQ(gen_local_atof("1.5"), 1.0);
    EXPECT_EQ(gen_local_wcstod(L"1\u066B5", nullptr), 1.5);
}

TEST_F(LocalNumber, BlanksBeforeTheNumberAreTheUsers) {
    char const* const text = "\2401.5";
    EXPECT_EQ(gen_local_atof(text), 0.0);
    std::setlocale(LC_CTYPE, TestLocale::name);
    EXPECT_EQ(gen_local_atof(text), 1.5);
    std::setlocale(LC_CTYPE, "C.UTF-8");
    EXPECT_EQ(gen_local_wcstod(L"\u20031.5", nullptr), 1.5);
}

char const* const integer_texts[] = {
    "",
    "0",
    "-0",
    "42",
    "-42",
    "+42",
    " \t\n42",
    "\24042",
    "42abc",
    "abc",
    "- 1",
    "1.234",
    "1,234",
    "2147483647",
    "2147483648",
    "-2147483648",
    "-2147483649",
    "4294967295",
    "4294967296",
    "9223372036854775807",
    "9223372036854775808",
    "-9223372036854775808",
    "-9223372036854775809",
    "18446744073709551615",
    "18446744073709551616",
    "99999999999999999999999",
    "0x7f",
    "0X7F",
    "017",
    "0b101",
    "zz",
    "7fffffff",
    "0x",
    "1e5",
};

TEST_F(LocalNumber, WholeNumbersAnswerAsIfTheCategoryWereSwitched) {
    under_every_pair_of_locales([] {
        for (std::string const narrow : integer_texts) {
            std::wstring wide(narrow.size(), L'\0');
            for (std::size_t i = 0; i < narrow.size(); ++i)
                wide[i] = static_cast<unsigned char>(narrow[i]);
            auto const expect = [](auto const& text, auto twin, auto wrapped, int radix) {
                auto const call = [&](auto function) {
                    return reading([&](auto* at, auto** end) { return function(at, end, radix); },
                                   text.c_str());
                };
                expect_same(call(twin), switched(LC_NUMERIC, [&] { return call(wrapped); }), text);
            };
            for (int const radix : {0, 2, 8, 10, 16, 36}) {
                expect(narrow, gen_local_strtol, strtol, radix);
                expect(narrow, gen_local_strtoul, strtoul, radix);
                expect(wide, gen_local_wcstol, wcstol, radix);
                expect(wide, gen_local_wcstoul, wcstoul, radix);
            }
            EXPECT_EQ(gen_local_atol(narrow.c_str()), strtol(narrow.c_str(), nullptr, 10));
            EXPECT_EQ(gen_local_atosqword(narrow.c_str()), strtoll(narrow.c_str(), nullptr, 10));
        }
    });
}

} // namespace

TEST(LocalAtoi, SticksAtTheLimitsOnBothWidths) {
    struct {
        char const* text;
        int value;
        int error;
    } const rows[] = {
        {"", 0, 0},
        {" -17 apples", -17, 0},
        {"2147483647", INT_MAX, 0},
        {"2147483648", INT_MAX, ERANGE},
        {"4294967297", INT_MAX, ERANGE},
        {"99999999999999999999", INT_MAX, ERANGE},
        {"-2147483648", INT_MIN, 0},
        {"-2147483649", INT_MIN, ERANGE},
        {"-99999999999999999999", INT_MIN, ERANGE},
    };
    for (auto const& [text, value, error] : rows) {
        errno = 0;
        EXPECT_EQ(gen_local_atoi(text), value) << text;
        EXPECT_EQ(errno, error) << text;
    }
}

TEST(LocalWholeNumbers, RadixOutOfRangeIsInvalid) {
    for (int const radix : {-1, 1, 37}) {
        auto const expect_invalid = [&](auto twin, auto const* text) {
            errno = 0;
            auto const value = twin(text, nullptr, radix);
            EXPECT_TRUE(value == 0 && errno == EINVAL) << radix << ": " << value << ", " << errno;
        };
        expect_invalid(gen_local_strtol, "42");
        expect_invalid(gen_local_strtoul, "42");
        expect_invalid(gen_local_wcstol, L"42");
        expect_invalid(gen_local_wcstoul, L"42");
    }
}

TEST(LocalAtosqword, Has64Bits) {
    EXPECT_EQ(gen_local_atosqword("9223372036854775807"), INT64_MAX);
    EXPECT_EQ(gen_local_atosqword("-9223372036854775808"), INT64_MIN);
    errno = 0;
    EXPECT_EQ(gen_local_atosqword("9223372036854775808"), INT64_MAX);
    EXPECT_EQ(errno, ERANGE);
}

TEST(LocalNumberText, NullIsReportedAndGivesZeroWithANullEnd) {
    char text[] = "x";
    wchar_t wide[] = L"x";
    char* end = text;
    wchar_t* wide_end = wide;
    ErrorRecorder recorder;
    EXPECT_EQ(gen_local_atof(nullptr), 0.0);
    EXPECT_EQ(gen_local_atoi(nullptr), 0);
    EXPECT_EQ(gen_local_atol(nullptr), 0);
    EXPECT_EQ(gen_local_atosqword(nullptr), 0);
    EXPECT_EQ(gen_local_strtod(nullptr, &end), 0.0);
    EXPECT_EQ(std::exchange(end, text), nullptr);
    EXPECT_EQ(gen_local_strtol(nullptr, &end, 10), 0);
    EXPECT_EQ(std::exchange(end, text), nullptr);
    EXPECT_EQ(gen_local_strtoul(nullptr, &end, 10), 0U);
    EXPECT_EQ(std::exchange(end, text), nullptr);
    EXPECT_EQ(gen_local_wcstod(nullptr, &wide_end), 0.0);
    EXPECT_EQ(std::exchange(wide_end, wide), nullptr);
    EXPECT_EQ(gen_local_wcstol(nullptr, &wide_end, 10), 0);
    EXPECT_EQ(std::exchange(wide_end, wide), nullptr);
    EXPECT_EQ(gen_local_wcstoul(nullptr, &wide_end, 10), 0U);
    EXPECT_EQ(std::exchange(wide_end, wide), nullptr);
    EXPECT_THAT(recorder.conditions(), testing::Each(testing::StrEq("text != NULL")));
    EXPECT_EQ(recorder.errors().size(), 10U);
}

TEST(LocalNumberText, WideWholeNumbersWithoutRadixAreNotImplemented) {
    for (wchar_t const* const text : {L"42", L"", static_cast<wchar_t const*>(nullptr)}) {
        ErrorRecorder recorder;
        EXPECT_EQ(gen_local_wtoi(text), 0);
        EXPECT_EQ(gen_local_wtol(text), 0);
        EXPECT_THAT(recorder.errors(),
                    ElementsAre(ReportedError{"not implemented", "GEN", "gen_localization", 1602},
                                ReportedError{"not implemented", "GEN", "gen_localization", 1630}));
    }
}

TEST(LocalItoa, WritesTheDigitsOfValuesFromZeroUp) {
    struct {
        int value;
        char const* text;
    } const rows[] = {
        {0, "0"},
        {1, "1"},
        {9, "9"},
        {10, "10"},
        {120, "120"},
        {99999, "99999"},
        {1000000000, "1000000000"},
        {INT_MAX, "2147483647"},
    };
    for (auto const& [value, text] : rows) {
        char buffer[12] = "###########";
        EXPECT_EQ(gen_local_itoa(value, buffer), buffer);
        EXPECT_STREQ(buffer, text);
    }
}

// Kept as callers know it: a negative value is outside what the function is for.
TEST(LocalItoa, NegativeValuesGiveOneCharacterBelowZero) {
    struct {
        int value;
        char const* text;
    } const rows[] = {{-15, "+"}, {-1, "/"}, {-9, "'"}, {-10, "0"}, {-120, "0"}, {INT_MIN, "("}};
    for (auto const& [value, text] : rows) {
        char buffer[12] = "###########";
        gen_local_itoa(value, buffer);
        EXPECT_STREQ(buffer, text) << value;
    }
}

TEST(LocalItoa, NullIsReported) {
    ErrorRecorder recorder;
    EXPECT_EQ(gen_local_itoa(1, nullptr), nullptr);
    EXPECT_THAT(recorder.errors(),
                ElementsAre(ReportedError{"string != 0", "GEN", "gen_localization", 230}));
}
