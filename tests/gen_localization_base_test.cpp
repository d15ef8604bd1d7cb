// How the twins follow the base name, keep their locales apart from the process's, and let go of
// them.

#include "environment.h"
#include "err_report.h"
#include "gen_localization_fixture.h"
#include "run_program.h"
#include "test_directories.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctype.h>
#include <gtest/gtest.h>
#include <locale.h>
#include <string>
#include <thread>
#include <vector>

namespace {

using LocalBase = LocalizationTest;

TEST_F(LocalBase, MayBeAnotherInstalledLocale) {
    LOCALIZATION_BASE_STRING = TestLocale::name;
    EXPECT_EQ(isalpha(0xE4), 0);
    EXPECT_NE(gen_local_isalpha(0xE4), 0);
    EXPECT_EQ(gen_local_toupper('i'), 0xCC);
}

TEST_F(LocalBase, IsFollowedWhenItsTextIsRewritten) {
    char base[16] = "C";
    LOCALIZATION_BASE_STRING = base;
    EXPECT_EQ(gen_local_isalpha(0xE4), 0);
    std::strcpy(base, TestLocale::name);
    EXPECT_NE(gen_local_isalpha(0xE4), 0);
    std::strcpy(base, "C");
    EXPECT_EQ(gen_local_isalpha(0xE4), 0);
    std::strcpy(base, "no_SUCH");
    EXPECT_EQ(gen_local_isalpha(0xE4), 0);
    std::setlocale(LC_ALL, TestLocale::name);
    EXPECT_NE(gen_local_isalpha(0xE4), 0);
}

TEST_F(LocalBase, EmptyNameFollowsTheEnvironment) {
    ScopedVariable const all("LC_ALL", "C");
    ScopedVariable const character("LC_CTYPE", "C");
    ScopedVariable const numeric("LC_NUMERIC", TestLocale::name);
    ScopedVariable const language("LANG", TestLocale::name);
    LOCALIZATION_BASE_STRING = "";
    EXPECT_EQ(gen_local_isalpha(0xE4), 0);
    setenv("LC_ALL", TestLocale::name, 1);
    EXPECT_NE(gen_local_isalpha(0xE4), 0);
    EXPECT_EQ(gen_local_atof("1,5"), 1.5);
    setenv("LC_ALL", "", 1); // as good as none
    EXPECT_EQ(gen_local_isalpha(0xE4), 0);
    EXPECT_EQ(gen_local_atof("1,5"), 1.5);
    unsetenv("LC_CTYPE");
    unsetenv("LC_ALL");
    EXPECT_NE(gen_local_isalpha(0xE4), 0);
    unsetenv("LANG");
    EXPECT_EQ(gen_local_isalpha(0xE4), 0);
}

TEST_F(LocalBase, EmptyNameDistinguishesTheCategoriesOfTheEnvironment) {
    std::setlocale(LC_ALL, TestLocale::name);
    ScopedVariable const all("LC_ALL", ""); // as good as none
    ScopedVariable const language("LANG", nullptr);
    LOCALIZATION_BASE_STRING = "";
    // One behind the other, the names are the same string.
    ScopedVariable const character("LC_CTYPE", "C");
    ScopedVariable const numeric("LC_NUMERIC", "CC");
    EXPECT_EQ(gen_local_isalpha(0xE4), 0);
    setenv("LC_CTYPE", "CC", 1);
    setenv("LC_NUMERIC", "C", 1);
    EXPECT_NE(gen_local_isalpha(0xE4), 0);
}

TEST_F(LocalBase, EmptyNameFollowsTheEnvironmentInTimesToo) {
    ScopedVariable const all("LC_ALL", nullptr);
    ScopedVariable const time("LC_TIME", "C");
    LOCALIZATION_BASE_STRING = "";
    std::tm const january{};
    char text[40] = "";
    gen_local_strftime(text, sizeof text, "%B", &january);
    EXPECT_STREQ(text, "January");
    setenv("LC_TIME", TestLocale::name, 1);
    gen_local_strftime(text, sizeof text, "%B", &january);
    EXPECT_STRNE(text, "January");
}

// setlocale takes such a name for all categories at once only.
TEST_F(LocalBase, NameThatListsTheCategoriesOneByOneCountsAsNotInstalled) {
    std::string const every = std::string("LC_CTYPE=") + TestLocale::name +
                              ";LC_NUMERIC=C;LC_TIME=C;LC_COLLATE=C;LC_MONETARY=C;LC_MESSAGES=C;"
                              "LC_PAPER=C;LC_NAME=C;LC_ADDRESS=C;LC_TELEPHONE=C;LC_MEASUREMENT=C;"
                              "LC_IDENTIFICATION=C";
    LOCALIZATION_BASE_STRING = every.c_str();
    EXPECT_NE(std::setlocale(LC_ALL, every.c_str()), nullptr);
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(gen_local_isalpha(0xE4), 0);
}

// The user may have a locale for one thread alone: then it is that one the thread goes back to.
TEST_F(LocalBase, TheThreadsOwnLocaleIsKept) {
    locale_t const own = newlocale(LC_ALL_MASK, TestLocale::name, nullptr);
    ASSERT_NE(own, nullptr);
    locale_t const previous = uselocale(own);
    char text[] = "I\xC4";
    EXPECT_STREQ(gen_local_strlwr(text), "i\xC4");
    EXPECT_EQ(gen_local_isalpha(0xE4), 0);
    EXPECT_EQ(uselocale(nullptr), own);
    uselocale(previous);
    freelocale(own);
}

TEST_F(LocalBase, OtherThreadsNeverSeeTheNeutralLocale) {
    std::setlocale(LC_ALL, TestLocale::name);
    std::atomic<bool> done = false;
    std::atomic<int> strayed = 0;
    std::thread observer([&] {
        while (!done)
            strayed += isalpha(0xE4) == 0;
    });
    for (int i = 0; i < 20'000; ++i) {
        char text[] = "\xC4";
        gen_local_strlwr(text);
        gen_local_isalpha(i % 256);
    }
    done = true;
    observer.join();
    EXPECT_EQ(strayed, 0);
}

TEST_F(LocalBase, ThreadsMayCallAtOnceAlsoTheFirstTime) {
    LOCALIZATION_BASE_STRING = TestLocale::name;
    std::atomic<int> wrong = 0;
    auto const ask = [&] {
        for (int i = 0; i < 1000; ++i)
            wrong += gen_local_isalpha(0xE4) == 0;
    };
    std::thread other(ask);
    ask();
    other.join();
    EXPECT_EQ(wrong, 0);
}

/// The process's locale in @p category as the handler of each report finds it.
std::vector<std::string> categories_at_reports(int category, void (*call)()) {
    static int wanted;
    static std::vector<std::string> seen;
    wanted = category;
    seen.clear();
    ERR_HANDLER const previous =
        err_set_internal_error_handler([](char const*, char const*, char const*, int) {
            seen.emplace_back(std::setlocale(wanted, nullptr));
        });
    call();
    err_set_internal_error_handler(previous);
    return seen;
}

struct ReportingMember {
    char const* name;
    int category;
    void (*call)();
};

ReportingMember const reporting_members[] = {
    {"iscsym", LC_CTYPE, [] { gen_local_iscsym('a'); }},
    {"iscsymf", LC_CTYPE, [] { gen_local_iscsymf('a'); }},
    {"mbccpy", LC_CTYPE, [] { gen_local_mbccpy(nullptr, nullptr); }},
    {"mbclen", LC_CTYPE, [] { gen_local_mbclen(nullptr); }},
    {"mbstowcs", LC_CTYPE, [] { gen_local_mbstowcs(nullptr, nullptr, 0); }},
    {"wcstombs", LC_CTYPE, [] { gen_local_wcstombs(nullptr, nullptr, 0); }},
    {"wtoi", LC_NUMERIC, [] { gen_local_wtoi(L"1"); }},
    {"wtol", LC_NUMERIC, [] { gen_local_wtol(L"1"); }},
    {"atof", LC_NUMERIC, [] { gen_local_atof(nullptr); }},
    {"atoi", LC_NUMERIC, [] { gen_local_atoi(nullptr); }},
    {"atol", LC_NUMERIC, [] { gen_local_atol(nullptr); }},
    {"atosqword", LC_NUMERIC, [] { gen_local_atosqword(nullptr); }},
    {"strtod", LC_NUMERIC, [] { gen_local_strtod(nullptr, nullptr); }},
    {"wcstod", LC_NUMERIC, [] { gen_local_wcstod(nullptr, nullptr); }},
    {"strtol", LC_NUMERIC, [] { gen_local_strtol(nullptr, nullptr, 10); }},
    {"wcstol", LC_NUMERIC, [] { gen_local_wcstol(nullptr, nullptr, 10); }},
    {"strtoul", LC_NUMERIC, [] { gen_local_strtoul(nullptr, nullptr, 10); }},
    {"wcstoul", LC_NUMERIC, [] { gen_local_wcstoul(nullptr, nullptr, 10); }},
    {"strftime", LC_TIME, [] { gen_local_strftime(nullptr, 0, nullptr, nullptr); }},
    {"tm_struct", LC_TIME, [] { gen_local_tm_struct(nullptr); }},
    {"wcsftime", LC_TIME, [] { gen_local_wcsftime(nullptr, 0, L"\u20AC", nullptr); }},
};

TEST_F(LocalBase, HandlerOfAReportFindsTheMembersCategoryNeutral) {
    std::setlocale(LC_ALL, TestLocale::name);
    std::string const users = std::setlocale(LC_ALL, nullptr);
    for (ReportingMember const& member : reporting_members)
        for (int const category : {LC_CTYPE, LC_NUMERIC, LC_TIME, LC_COLLATE}) {
            std::string const expected = category == member.category ? "C" : TestLocale::name;
            auto const seen = categories_at_reports(category, member.call);
            EXPECT_FALSE(seen.empty()) << member.name;
            for (std::string const& found : seen)
                EXPECT_EQ(found, expected) << member.name << ' ' << category;
            EXPECT_EQ(std::setlocale(LC_ALL, nullptr), users) << member.name;
        }
}

TEST_F(LocalBase, HandlerOfAReportFindsTheBaseThatTheHostNamed) {
    LOCALIZATION_BASE_STRING = TestLocale::name;
    EXPECT_EQ(categories_at_reports(LC_NUMERIC, [] { gen_local_wtoi(L"1"); }),
              std::vector<std::string>{TestLocale::name});
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
    LOCALIZATION_BASE_STRING = nullptr;
    EXPECT_EQ(categories_at_reports(LC_NUMERIC, [] { gen_local_wtoi(L"1"); }),
              std::vector<std::string>{"C"});
}

// The one member without a category.
TEST_F(LocalBase, HandlerOfADecimalsReportFindsTheUsersLocale) {
    std::setlocale(LC_ALL, TestLocale::name);
    for (int const category : {LC_CTYPE, LC_NUMERIC, LC_TIME})
        EXPECT_EQ(categories_at_reports(category, [] { gen_local_itoa(1, nullptr); }),
                  std::vector<std::string>{TestLocale::name});
}

TEST_F(LocalBase, ErrnoIsLeftAloneWhenTheNameIsNew) {
    LOCALIZATION_BASE_STRING = "another_NAME_that_is_not_installed";
    errno = 0;
    gen_local_isalpha('a');
    EXPECT_EQ(errno, 0);
}

} // namespace

TEST(LocalBaseString, IsCAtFirst) {
    EXPECT_STREQ(LOCALIZATION_BASE_STRING, "C");
}

TEST(LocalBaseUnload, LocalesAreReleasedWithTheLibrary) {
    ProgramStart start;
    start.arguments = {TEST_BINARY_DIR "/locale_probe", TEST_LIBRARY_DIR "/libkorvane_gen.so.1"};
    // The blocks that the C library keeps at hand for a thread would count as being in use.
    start.set = {{"GLIBC_TUNABLES", "glibc.malloc.tcache_count=0"}};
    ProgramResult const result = run_program(start);
    EXPECT_EQ(result.status, 0) << result.errors;
}
