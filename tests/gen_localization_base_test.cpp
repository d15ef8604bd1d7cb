// How the twins follow the base name, keep their locales apart from the process's, and let go of
// them.

#include "gen_localization_fixture.h"

#include "environment.h"
#include "run_program.h"
#include "test_directories.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctype.h>
#include <gtest/gtest.h>
#include <locale.h>
#include <thread>

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

// setlocale takes such a name for all categories at once only.
TEST_F(LocalBase, NameThatTellsTheCategoriesOneByOneCountsAsNotInstalled) {
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
