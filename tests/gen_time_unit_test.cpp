#include "gen_time_unit.h"

#include "error_recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

using testing::ElementsAre;

namespace {

struct Row {
    int value;
    char const* short_name;
    char const* long_name;
    int magnitude;
};

constexpr Row units[] = {
    {0, "s", "second", 0},       {1, "ms", "millisecond", -3}, {2, "us", "microsecond", -6},
    {3, "ns", "nanosecond", -9}, {4, "ps", "picosecond", -12},
};
constexpr Row frequencies[] = {
    {0, "Hz", "hertz", 0},
    {1, "kHz", "kilohertz", 3},
    {2, "MHz", "megahertz", 6},
    {3, "GHz", "gigahertz", 9},
};

// Outside both tables.
constexpr int strangers[] = {-1, 5, 100, std::numeric_limits<int>::min(),
                             std::numeric_limits<int>::max()};

GEN_TIME_UNIT::UNIT_ENUM unit(int value) {
    return static_cast<GEN_TIME_UNIT::UNIT_ENUM>(value);
}

GEN_TIME_FREQ::FREQ_ENUM freq(int value) {
    return static_cast<GEN_TIME_FREQ::FREQ_ENUM>(value);
}

} // namespace

static_assert(GEN_TIME_UNIT::UNIT_S == 0 && GEN_TIME_UNIT::UNIT_MS == 1 &&
              GEN_TIME_UNIT::UNIT_US == 2 && GEN_TIME_UNIT::UNIT_NS == 3 &&
              GEN_TIME_UNIT::UNIT_PS == 4 && sizeof(GEN_TIME_UNIT::UNIT_ENUM) == 4);
static_assert(GEN_TIME_FREQ::FREQ_HZ == 0 && GEN_TIME_FREQ::FREQ_KHZ == 1 &&
              GEN_TIME_FREQ::FREQ_MHZ == 2 && GEN_TIME_FREQ::FREQ_GHZ == 3 &&
              sizeof(GEN_TIME_FREQ::FREQ_ENUM) == 4);

TEST(TimeUnit, TableAnswersByValue) {
    ErrorRecorder const recorder;
    for (Row const& row : units) {
        SCOPED_TRACE(row.long_name);
        EXPECT_EQ(GEN_TIME_UNIT::get_short_name(unit(row.value)), row.short_name);
        EXPECT_EQ(GEN_TIME_UNIT::get_long_name(unit(row.value)), row.long_name);
        EXPECT_EQ(GEN_TIME_UNIT::get_magnitude(unit(row.value)), row.magnitude);
        EXPECT_EQ(GEN_TIME_UNIT::get_list_index(unit(row.value)), row.value);
    }
    EXPECT_THAT(recorder.errors(), testing::IsEmpty());
}

TEST(TimeFreq, TableAnswersByValue) {
    ErrorRecorder const recorder;
    for (Row const& row : frequencies) {
        SCOPED_TRACE(row.long_name);
        EXPECT_EQ(GEN_TIME_FREQ::get_short_name(freq(row.value)), row.short_name);
        EXPECT_EQ(GEN_TIME_FREQ::get_long_name(freq(row.value)), row.long_name);
        EXPECT_EQ(GEN_TIME_FREQ::get_magnitude(freq(row.value)), row.magnitude);
        EXPECT_EQ(GEN_TIME_FREQ::get_list_index(freq(row.value)), row.value);
    }
    EXPECT_THAT(recorder.errors(), testing::IsEmpty());
}

TEST(TimeUnit, EntireListIsInTableOrder) {
    MEM_LIST<GEN_TIME_UNIT_DATA> list;
    ASSERT_EQ(GEN_TIME_UNIT::get_entire_list(&list), 5);
    ASSERT_EQ(list.size(), 5U);
    Row const* expected = units;
    for (GEN_TIME_UNIT_DATA const& row : list) {
        EXPECT_EQ(row.unit, expected->value);
        EXPECT_STREQ(row.short_name, expected->short_name);
        EXPECT_STREQ(row.long_name, expected->long_name);
        EXPECT_EQ(row.magnitude, expected->magnitude);
        ++expected;
    }
}

TEST(TimeFreq, EntireListIsInTableOrder) {
    MEM_LIST<GEN_TIME_FREQ_DATA> list;
    ASSERT_EQ(GEN_TIME_FREQ::get_entire_list(&list), 4);
    ASSERT_EQ(list.size(), 4U);
    Row const* expected = frequencies;
    for (GEN_TIME_FREQ_DATA const& row : list) {
        EXPECT_EQ(row.freq, expected->value);
        EXPECT_STREQ(row.short_name, expected->short_name);
        EXPECT_STREQ(row.long_name, expected->long_name);
        EXPECT_EQ(row.magnitude, expected->magnitude);
        ++expected;
    }
}

TEST(TimeUnit, EntireListAppendsAndReturnsTheTableSize) {
    MEM_LIST<GEN_TIME_UNIT_DATA> list;
    GEN_TIME_UNIT::get_entire_list(&list);
    EXPECT_EQ(GEN_TIME_UNIT::get_entire_list(&list), 5);
    ASSERT_EQ(list.size(), 10U);
    EXPECT_EQ(list.back().unit, GEN_TIME_UNIT::UNIT_PS);
    EXPECT_EQ(std::next(list.begin(), 5)->unit, GEN_TIME_UNIT::UNIT_S);
}

TEST(TimeFreq, EntireListAppendsAndReturnsTheTableSize) {
    MEM_LIST<GEN_TIME_FREQ_DATA> list;
    GEN_TIME_FREQ::get_entire_list(&list);
    EXPECT_EQ(GEN_TIME_FREQ::get_entire_list(&list), 4);
    EXPECT_EQ(list.size(), 8U);
}

TEST(TimeUnit, NameListsAppend) {
    MEM_LIST<STR> names{"first"};
    EXPECT_EQ(GEN_TIME_UNIT::get_short_name_list(&names), 5);
    EXPECT_THAT(names, ElementsAre("first", "s", "ms", "us", "ns", "ps"));
    EXPECT_EQ(GEN_TIME_UNIT::get_long_name_list(&names), 5);
    EXPECT_THAT(names, ElementsAre("first", "s", "ms", "us", "ns", "ps", "second", "millisecond",
                                   "microsecond", "nanosecond", "picosecond"));
}

TEST(TimeFreq, NameListsAppend) {
    MEM_LIST<STR> names{"first"};
    EXPECT_EQ(GEN_TIME_FREQ::get_short_name_list(&names), 4);
    EXPECT_THAT(names, ElementsAre("first", "Hz", "kHz", "MHz", "GHz"));
    EXPECT_EQ(GEN_TIME_FREQ::get_long_name_list(&names), 4);
    EXPECT_THAT(names, ElementsAre("first", "Hz", "kHz", "MHz", "GHz", "hertz", "kilohertz",
                                   "megahertz", "gigahertz"));
}

TEST(TimeUnit, NullListReceivesNothing) {
    EXPECT_EQ(GEN_TIME_UNIT::get_entire_list(nullptr), 5);
    EXPECT_EQ(GEN_TIME_UNIT::get_short_name_list(nullptr), 5);
    EXPECT_EQ(GEN_TIME_UNIT::get_long_name_list(nullptr), 5);
    EXPECT_EQ(GEN_TIME_FREQ::get_entire_list(nullptr), 4);
    EXPECT_EQ(GEN_TIME_FREQ::get_short_name_list(nullptr), 4);
    EXPECT_EQ(GEN_TIME_FREQ::get_long_name_list(nullptr), 4);
}

TEST(TimeUnit, ValueOutsideTheTableIsReportedAndAnsweredNeutrally) {
    for (int const value : strangers) {
        SCOPED_TRACE(value);
        ErrorRecorder recorder;
        EXPECT_EQ(GEN_TIME_UNIT::get_list_index(unit(value)), -1);
        EXPECT_EQ(GEN_TIME_UNIT::get_short_name(unit(value)), "");
        EXPECT_EQ(GEN_TIME_UNIT::get_long_name(unit(value)), "");
        EXPECT_EQ(GEN_TIME_UNIT::get_magnitude(unit(value)), 0);
        ASSERT_EQ(recorder.errors().size(), 4U);
        for (ReportedError const& error : recorder.errors()) {
            EXPECT_EQ(error.condition, "Could not find index for time unit enum.");
            EXPECT_EQ(error.owner, "GEN");
            EXPECT_EQ(error.source_file, "gen_time");
        }
    }
}

TEST(TimeFreq, ValueOutsideTheTableIsReportedAndAnsweredNeutrally) {
    for (int const value : {-1, 4, 5, std::numeric_limits<int>::max()}) {
        SCOPED_TRACE(value);
        ErrorRecorder recorder;
        EXPECT_EQ(GEN_TIME_FREQ::get_list_index(freq(value)), -1);
        EXPECT_EQ(GEN_TIME_FREQ::get_short_name(freq(value)), "");
        EXPECT_EQ(GEN_TIME_FREQ::get_long_name(freq(value)), "");
        EXPECT_EQ(GEN_TIME_FREQ::get_magnitude(freq(value)), 0);
        ASSERT_EQ(recorder.errors().size(), 4U);
        for (ReportedError const& error : recorder.errors()) {
            EXPECT_EQ(error.condition, "Could not find index for time freq enum.");
            EXPECT_EQ(error.owner, "GEN");
            EXPECT_EQ(error.source_file, "gen_time");
        }
    }
}

TEST(TimeUnit, MagnitudesOfPeriodAndFrequencyAddUp) {
    EXPECT_EQ(GEN_TIME_UNIT::get_magnitude(GEN_TIME_UNIT::UNIT_NS) +
                  GEN_TIME_FREQ::get_magnitude(GEN_TIME_FREQ::FREQ_GHZ),
              0);
    EXPECT_EQ(GEN_TIME_UNIT::get_magnitude(GEN_TIME_UNIT::UNIT_PS) +
                  GEN_TIME_FREQ::get_magnitude(GEN_TIME_FREQ::FREQ_KHZ),
              -9);
}
