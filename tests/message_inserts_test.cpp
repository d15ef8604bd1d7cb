#include "message_inserts.h"

#include "test_locale.h"

#include <clocale>
#include <gtest/gtest.h>

TEST(MessageArguments, HaveAPointWhateverTheLocale) {
    TestLocale const locale;
    if (!locale.trouble().empty())
        GTEST_SKIP() << locale.trouble();
    ASSERT_NE(std::setlocale(LC_ALL, TestLocale::name), nullptr);
    for (char const* const format : {"%1!f!", "%1!Lf!"}) {
        MessageInserts inserts;
        EXPECT_EQ(inserts.read(format), "");
        EXPECT_EQ(MessageArguments().make(inserts, {"97.25"}), "");
        EXPECT_NE(MessageArguments().make(inserts, {"97,25"}), "");
    }
}
