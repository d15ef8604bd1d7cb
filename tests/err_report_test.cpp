#include "err_report.h"

#include "error_recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

TEST(ErrHandler, ReceivesWhatIsReported) {
    ErrorRecorder recorder;
    err_report_internal_error("path != NULL", "GEN", "gen_path", 17);
    EXPECT_THAT(recorder.errors(),
                ElementsAre(ReportedError{"path != NULL", "GEN", "gen_path", 17}));
}

TEST(ErrHandler, NullTextsArriveEmpty) {
    ErrorRecorder recorder;
    err_report_internal_error(nullptr, nullptr, nullptr, 0);
    EXPECT_THAT(recorder.errors(), ElementsAre(ReportedError{"", "", "", 0}));
}

TEST(ErrHandler, InstallingGivesThePreviousOne) {
    ERR_HANDLER const mine = [](char const*, char const*, char const*, int) {};
    EXPECT_EQ(err_set_internal_error_handler(mine), nullptr);
    EXPECT_EQ(err_set_internal_error_handler(nullptr), mine);
    EXPECT_EQ(err_set_internal_error_handler(nullptr), nullptr);
}

TEST(ErrHandler, DefaultWritesOneLineToStandardErrorAndReturns) {
    testing::internal::CaptureStderr();
    err_report_internal_error("radix > 1", "GEN", "gen_string", 1111);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "korvane: internal error: radix > 1 (GEN, gen_string:1111)\n");
}
