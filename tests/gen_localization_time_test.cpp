#include "environment.h"
#include "error_recorder.h"
#include "gen_localization_fixture.h"

#include <cstring>
#include <ctime>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace {

using LocalTime = LocalizationTest;

// Friday, 13 March 2026, 14:05:09.
std::tm a_friday() {
    std::tm time = {};
    time.tm_year = 126;
    time.tm_mon = 2;
    time.tm_mday = 13;
    time.tm_hour = 14;
    time.tm_min = 5;
    time.tm_sec = 9;
    time.tm_wday = 5;
    time.tm_yday = 71;
    return time;
}

char const* const formats[] = {
    "",   "%a %b %d %Y",   "%A, %B",    "%x %X", "%c",  "%r",          "%p",
    "%P", "%^A",           "%^B",       "%#p",   "%^c", "%Ec %Ex %Od", "%H:%M:%S",
    "%%", "no conversion", "%G-W%V-%u", "%",
};

std::string formatted(auto&& format_time, unsigned size, char const* format) {
    char buffer[64];
    std::memset(buffer, '#', sizeof buffer);
    std::tm const time = a_friday();
    auto const length = format_time(buffer, size, format, &time);
    return std::to_string(length) + ":" + std::string(buffer, length);
}

TEST_F(LocalTime, FormatAnswersAsIfTheCategoryWereSwitched) {
    under_every_pair_of_locales([] {
        for (char const* const format : formats)
            for (unsigned const size : {0U, 1U, 5U, 64U})
                EXPECT_EQ(formatted(gen_local_strftime, size, format),
                          switched(LC_TIME, [&] { return formatted(std::strftime, size, format); }))
                    << format;
    });
}

TEST_F(LocalTime, NeutralNamesApplyUnderAForeignLocale) {
    std::setlocale(LC_ALL, TestLocale::name);
    EXPECT_EQ(formatted(std::strftime, 64, "%A"), "7:Freitag");
    EXPECT_EQ(formatted(gen_local_strftime, 64, "%A"), "6:Friday");
}

// Only the time category is the neutral one: the letters are still folded as the user's alphabet
// says.
TEST_F(LocalTime, CaseFlagsFollowTheUsersAlphabet) {
    std::setlocale(LC_ALL, TestLocale::name);
    EXPECT_EQ(formatted(gen_local_strftime, 64, "%^a"), "3:FR\xCC");
    std::setlocale(LC_CTYPE, "C");
    EXPECT_EQ(formatted(gen_local_strftime, 64, "%^a"), "3:FRI");
    LOCALIZATION_BASE_STRING = TestLocale::name;
    EXPECT_EQ(formatted(gen_local_strftime, 64, "%c"), "18:FREITAG 13.03.2026");
}

TEST_F(LocalTime, BaseNameMayBeAnotherInstalledLocale) {
    LOCALIZATION_BASE_STRING = TestLocale::name;
    EXPECT_EQ(formatted(gen_local_strftime, 64, "%a, %B"), "8:Fr, M\xE4rz");
}

// The conversion to bytes is made in the user's character set, not in the neutral one.
TEST_F(LocalTime, WideFormatIsJudgedByTheUsersCharacterSet) {
    wchar_t buffer[4] = L"###";
    std::tm const time = a_friday();
    ReportedError const foreign{"A wide-character code does not correspond to a valid character",
                                "GEN", "gen_localization", 1227};
    ReportedError const unsupported{"gen_local_wcsftime is not supported on Linux.", "GEN",
                                    "gen_localization", 1233};
    ErrorRecorder recorder;
    EXPECT_EQ(gen_local_wcsftime(buffer, 4, L"%Y \u00E4", &time), 0U);
    EXPECT_THAT(recorder.errors(), ElementsAre(foreign, unsupported));
    recorder.clear();

    std::setlocale(LC_CTYPE, TestLocale::name);
    EXPECT_EQ(gen_local_wcsftime(buffer, 4, L"%Y \u00E4", &time), 0U);
    EXPECT_THAT(recorder.errors(), ElementsAre(unsupported));
    EXPECT_EQ(std::wstring(buffer), L"###");
    recorder.clear();

    // As many bytes are converted as the format has characters, and one more.
    ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
    gen_local_wcsftime(buffer, 4, L"\u00E4\xD800", &time);
    EXPECT_THAT(recorder.errors(), ElementsAre(foreign, unsupported));
    recorder.clear();
    gen_local_wcsftime(buffer, 4, L"\u00E4\u00E4\xD800", &time);
    EXPECT_THAT(recorder.errors(), ElementsAre(unsupported));
}

} // namespace

TEST(LocalWideTime, IsNotSupported) {
    ReportedError const unsupported{"gen_local_wcsftime is not supported on Linux.", "GEN",
                                    "gen_localization", 1233};
    wchar_t buffer[4] = L"###";
    std::tm const time = a_friday();
    for (wchar_t const* const format : {L"%Y", L"", static_cast<wchar_t const*>(nullptr)}) {
        ErrorRecorder recorder;
        EXPECT_EQ(gen_local_wcsftime(buffer, 4, format, &time), 0U);
        EXPECT_THAT(recorder.errors(), ElementsAre(unsupported));
        EXPECT_EQ(std::wstring(buffer), L"###");
    }
}

TEST(LocalTimeFormat, NullArgumentsAreReported) {
    ErrorRecorder recorder;
    char buffer[8] = "##";
    std::tm const time = a_friday();
    EXPECT_EQ(gen_local_strftime(buffer, 8, nullptr, &time), 0U);
    EXPECT_EQ(gen_local_strftime(buffer, 8, "%Y", nullptr), 0U);
    EXPECT_THAT(recorder.conditions(), ElementsAre("format != NULL", "time != NULL"));
    EXPECT_STREQ(buffer, "##");
}

TEST(LocalTimeNow, NullIsReported) {
    ErrorRecorder recorder;
    gen_local_tm_struct(nullptr);
    EXPECT_THAT(recorder.errors(),
                ElementsAre(ReportedError{"timeptr != NULL", "GEN", "gen_localization", 1187}));
}

TEST(LocalTimeNow, FillsEveryField) {
    ScopedVariable const zone("TZ", "KVT-05:45");
    std::tm now;
    std::memset(&now, 0x5A, sizeof now);
    std::time_t const before = std::time(nullptr);
    gen_local_tm_struct(&now);
    std::time_t const after = std::time(nullptr);
    EXPECT_EQ(now.tm_gmtoff, (5 * 60 + 45) * 60);
    EXPECT_STREQ(now.tm_zone, "KVT");
    std::tm copy = now;
    std::time_t const instant = std::mktime(&copy);
    EXPECT_LE(before, instant);
    EXPECT_LE(instant, after);
    EXPECT_EQ(copy.tm_wday, now.tm_wday);
    EXPECT_EQ(copy.tm_yday, now.tm_yday);
    EXPECT_EQ(copy.tm_isdst, now.tm_isdst);
}

TEST(LocalTimeNow, FollowsTheZoneOfTheEnvironment) {
    std::tm now;
    for (auto const& [zone, offset] : {std::pair("AAA0", 0), std::pair("BBB-3", 3 * 3600)}) {
        ScopedVariable const variable("TZ", zone);
        gen_local_tm_struct(&now);
        EXPECT_EQ(now.tm_gmtoff, offset);
    }
    tzset();
}
