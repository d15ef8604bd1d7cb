#include "gen_username.h"

#include "error_recorder.h"
#include "in_child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sstream>
#include <unistd.h>

using testing::IsEmpty;

namespace {

/// What a process of another user gets: the name, and what was reported.
std::string name_for(uid_t real, uid_t effective) {
    return in_child([=]() -> std::string {
        if (setreuid(real, effective) != 0)
            return "refused";
        ErrorRecorder const recorder;
        std::ostringstream text;
        text << "'" << gen_get_user_name() << "'";
        for (ReportedError const& error : recorder.errors())
            text << " " << error;
        return text.str();
    });
}

} // namespace

TEST(UserName, IsTheLoginName) {
    passwd const* const entry = getpwuid(getuid());
    if (entry == nullptr)
        GTEST_SKIP() << "the user who runs the tests has no name";
    std::string const name = entry->pw_name;
    ErrorRecorder const recorder;
    EXPECT_EQ(gen_get_user_name(), name.c_str());
    EXPECT_THAT(recorder.errors(), IsEmpty());
}

TEST(UserName, OfNobodyIsReportedAndEmpty) {
    uid_t unused = 54321;
    while (getpwuid(unused) != nullptr)
        ++unused;
    std::string const answer = name_for(unused, unused);
    if (answer == "refused")
        GTEST_SKIP() << "only root may become somebody else";
    EXPECT_EQ(answer, "'' \"Failed to get username from os\" (GEN, gen_username:57)");
}

TEST(UserName, IsOfTheRealUser) {
    passwd const* const entry = getpwuid(1);
    if (entry == nullptr)
        GTEST_SKIP() << "there is no user 1";
    std::string const name = entry->pw_name;
    std::string const answer = name_for(1, 0);
    if (answer == "refused")
        GTEST_SKIP() << "only root may become somebody else";
    EXPECT_EQ(answer, "'" + name + "'");
}
