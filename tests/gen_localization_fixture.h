#pragma once

#include "gen_localization.h"
#include "test_locale.h"

#include <clocale>
#include <gtest/gtest.h>
#include <string>
#include <utility>

/// A test that has the locale "xk_KV" and puts locale and base name back.
class LocalizationTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!m_locale.trouble().empty())
            GTEST_SKIP() << m_locale.trouble();
    }
    ~LocalizationTest() override { LOCALIZATION_BASE_STRING = m_base; }

  private:
    char const* m_base = LOCALIZATION_BASE_STRING;
    TestLocale m_locale;
};

/// A base name that no machine has.
inline constexpr char const* missing_locale = "no_SUCH";
inline constexpr char const* no_base = nullptr;

/// What a twin promises, taken word by word: switches the one category of the process's locale to
/// the base name, calls, puts the category back.
template <typename Call>
auto switched(int category, Call&& call) {
    std::string const users = std::setlocale(category, nullptr);
    // setlocale loses memory when it refuses a name, so it is not asked for one that it will
    // refuse.
    if (LOCALIZATION_BASE_STRING != missing_locale)
        std::setlocale(category, LOCALIZATION_BASE_STRING);
    auto const result = std::forward<Call>(call)();
    std::setlocale(category, users.c_str());
    return result;
}

/// Runs @p check under every pairing of a user's locale with a base name, one that is not installed
/// and none at all among them; each time the process's locale has to come out as it went in.
template <typename Check>
void under_every_pair_of_locales(Check&& check) {
    for (char const* const user : {"C", TestLocale::name, "C.UTF-8"})
        for (char const* const base :
             {"C", TestLocale::name, "C.UTF-8", "", missing_locale, no_base}) {
            ASSERT_NE(std::setlocale(LC_ALL, user), nullptr) << user;
            LOCALIZATION_BASE_STRING = base;
            SCOPED_TRACE(std::string("user ") + user + ", base " +
                         (base != nullptr ? base : "null"));
            std::string const before = std::setlocale(LC_ALL, nullptr);
            check();
            EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
        }
}
