#include "gen_iterator_sys.h"

#include "error_recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

using testing::ElementsAre;

namespace {

enum Small : unsigned char { FIRST = 1, LAST = 3, LARGEST = 255 };

std::vector<int> values(Small first, Small last) {
    std::vector<int> visited;
    for (GEN_ENUM_ITERATOR<Small> value(first, last); !value.at_end(); ++value)
        visited.push_back(*value);
    return visited;
}

} // namespace

TEST(EnumIterator, VisitsTheClosedRange) {
    EXPECT_THAT(values(FIRST, LAST), ElementsAre(1, 2, 3));
    EXPECT_THAT(values(LAST, LAST), ElementsAre(3));
}

TEST(EnumIterator, ReachesTheLargestValueOfItsType) {
    EXPECT_EQ(values(FIRST, LARGEST).size(), 255U);
}

TEST(EnumIterator, ReversedRangeIsEmpty) {
    EXPECT_THAT(values(LAST, FIRST), ElementsAre());
}

TEST(EnumIterator, DereferencingTheEndIsReported) {
    ErrorRecorder recorder;
    GEN_ENUM_ITERATOR<Small> value(FIRST, FIRST);
    EXPECT_EQ(*value, FIRST);
    EXPECT_THAT(recorder.errors(), ElementsAre());
    ++value;
    EXPECT_TRUE(value == std::default_sentinel);
    EXPECT_EQ(*value, FIRST);
    ASSERT_EQ(recorder.errors().size(), 1U);
    EXPECT_EQ(recorder.errors()[0].condition, "Cannot dereference an end enum iterator");
    EXPECT_EQ(recorder.errors()[0].owner, "GEN");
    EXPECT_EQ(recorder.errors()[0].source_file, "../../h/gen_iterator_sys");
    ++value;
    EXPECT_TRUE(value.at_end());
}
