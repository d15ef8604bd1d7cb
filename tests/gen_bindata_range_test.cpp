// Items out of range, and ranges that are none.

#include "effort.h"
#include "gen_bindata_fixture.h"

#include <bit>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(BinData, ItemOutOfRangeIsReportedAndCountedAtItsComputedBin) {
    struct Row {
        double item;
        unsigned bin;
    };
    // Over 0 to 10 in 5 bins.
    Row const counted[] = {
        {-1, 0}, // truncation is toward zero
        {std::nextafter(0.0, -1.0), 0},
        {-1.999, 0},
        {std::nextafter(10.0, 11.0), 4},
        {11, 4}, // an index of num_bins is reduced by one
        {11.999, 4},
    };
    for (Row const& row : counted) {
        SCOPED_TRACE(row.item);
        ErrorRecorder recorder;
        Histogram histogram(0, 10, 5);
        EXPECT_EQ(histogram->bin(row.item), row.bin);
        EXPECT_THAT(recorder.errors(), ElementsAre(item_error));
        recorder.clear();
        histogram->add_item(row.item);
        EXPECT_THAT(recorder.errors(), ElementsAre(item_error));
        EXPECT_EQ(histogram->item_count(row.bin), 1U);
        EXPECT_EQ(histogram->size(), 1U);
        histogram.end();
        EXPECT_THAT(recorder.errors(), ElementsAre(item_error)); // the total is right
    }
}

TEST(BinData, ItemWithoutABinCountsInTheTotalAlone) {
    struct Row {
        double item;
        unsigned bin;
    };
    // Over 0 to 10 in 5 bins.
    Row const rows[] = {
        {-2, 0xFFFFFFFFU},
        {-4.5, 0xFFFFFFFEU},
        {-4294967296.0, no_integer},
        {-4294967298.0, no_integer},
        {12, 6},
        {4294967292.0, 2147483646U},
        {4294967294.0, 2147483647U},
        {4294967296.0, no_integer},
        {1e300, no_integer},
        {-1e300, no_integer},
        {infinity, no_integer},
        {-infinity, no_integer},
        {not_a_number, no_integer},
        {-not_a_number, no_integer},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.item);
        ErrorRecorder recorder;
        Histogram histogram(0, 10, 5);
        EXPECT_EQ(histogram->bin(row.item), row.bin);
        histogram->add_item(row.item);
        EXPECT_THAT(recorder.errors(), ElementsAre(item_error, item_error));
        EXPECT_THAT(histogram.counts(), Each(0U));
        EXPECT_EQ(histogram->size(), 1U);
        recorder.clear();
        histogram.end();
        EXPECT_THAT(recorder.errors(), ElementsAre(total_error));
    }
}

TEST(BinData, BoundsThatAreNotARangeAreReportedAndKept) {
    struct Row {
        double low;
        double high;
        std::size_t edges; ///< how many of the two edges between bins are not equal to themselves
    };
    Row const rows[] = {
        {3, 3, 0},
        {3, 2, 0},
        {0.0, -0.0, 0},
        {infinity, infinity, 2},
        {0, -infinity, 0},
        {not_a_number, 1, 2},
        {0, not_a_number, 2},
        {not_a_number, not_a_number, 2},
        {infinity, -infinity, 2},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.low << " to " << row.high);
        ErrorRecorder recorder;
        Histogram histogram(row.low, row.high, 2);
        EXPECT_THAT(recorder.errors(), ElementsAre(range_error));
        EXPECT_EQ(histogram->num_bins(), 2U);
        EXPECT_EQ(histogram->size(), 0U);
        recorder.clear();
        histogram.end();
        EXPECT_THAT(recorder.errors(), AllOf(SizeIs(row.edges), Each(edge_error)));
    }
}

TEST(BinData, ZeroWidthTakesEveryItemWithoutABin) {
    ErrorRecorder recorder;
    Histogram histogram(3, 3, 4);
    recorder.clear();
    EXPECT_EQ(histogram->bin(3), no_integer);  // 0 / 0
    EXPECT_THAT(recorder.errors(), IsEmpty()); // the item itself is in range
    EXPECT_EQ(histogram->bin(4), no_integer);
    EXPECT_THAT(recorder.errors(), ElementsAre(item_error));
    histogram->add_item(3);
    histogram->add_item(2);
    EXPECT_THAT(histogram.counts(), Each(0U));
    EXPECT_EQ(histogram->size(), 2U);
    EXPECT_EQ(histogram->lowbound(2), 3);
    EXPECT_EQ(histogram->highbound(2), 3);
    recorder.clear();
    histogram.end();
    EXPECT_THAT(recorder.errors(), ElementsAre(total_error)); // equal edges are equal
}

TEST(BinData, WidthTooSmallForADoubleTouchesNoOtherMemory) {
    // The width of a fifth of five smallest steps rounds down, and the quotient passes the count.
    ErrorRecorder recorder;
    Histogram coarse(0, 5 * smallest, 4);
    EXPECT_EQ(coarse->bin(5 * smallest), 5U);
    coarse->add_item(5 * smallest);
    EXPECT_THAT(coarse.counts(), Each(0U));
    EXPECT_THAT(recorder.errors(), IsEmpty());
    coarse.end();
    EXPECT_THAT(recorder.errors(), ElementsAre(total_error));

    recorder.clear();
    Histogram vanished(0, smallest, 3); // the width rounds to zero
    EXPECT_EQ(vanished->bin(smallest), no_integer);
    EXPECT_THAT(recorder.errors(), IsEmpty());
}

TEST(BinData, NoBinsCountNothingButTheTotal) {
    ErrorRecorder recorder;
    Histogram histogram(0, 1, 0);
    EXPECT_THAT(recorder.errors(), IsEmpty());
    EXPECT_EQ(histogram->bin(0.5), 0xFFFFFFFFU); // index 0 equals the number of bins
    histogram->add_item(0.5);
    EXPECT_THAT(recorder.errors(), IsEmpty());
    EXPECT_EQ(histogram->item_count(0), 0U);
    EXPECT_THAT(recorder.errors(), ElementsAre(bin_error));
    EXPECT_EQ(histogram->size(), 1U);
    recorder.clear();
    histogram.end();
    EXPECT_THAT(recorder.errors(), ElementsAre(total_error));
}

TEST(BinData, NoBinsOverNoRangeIsHarmless) {
    ErrorRecorder recorder;
    Histogram histogram(2, 2, 0); // the width is 0 / 0
    EXPECT_THAT(recorder.errors(), ElementsAre(range_error));
    EXPECT_EQ(histogram->bin(2), no_integer);
    histogram->add_item(2);
    EXPECT_EQ(histogram->size(), 1U);
}

TEST(BinData, AnyItemOverAnyBoundsAgreesWithPlainArithmetic) {
    double const specials[] = {
        0.0,           -0.0,     1,         -1,     smallest,     -smallest,    largest,
        -largest,      infinity, -infinity, 1e-300, not_a_number, 4294967296.0, 2147483648.0,
        -2147483648.0, 0.1};
    std::mt19937_64 random(6);
    auto const any_double = [&] {
        unsigned const kind = static_cast<unsigned>(random() % 4);
        if (kind == 0)
            return specials[random() % std::size(specials)];
        if (kind == 1) // any bit pattern
            return std::bit_cast<double>(random());
        return std::uniform_real_distribution<double>(-50, 50)(random);
    };
    for (std::size_t round = 0; round < effort(100000); ++round) {
        ErrorRecorder const recorder;
        double const low = any_double();
        double const high = any_double();
        double const item = any_double();
        unsigned const bins = static_cast<unsigned>(random() % 9);
        SCOPED_TRACE(testing::Message()
                     << item << " in " << low << " to " << high << " by " << bins);
        Histogram histogram(low, high, bins);
        unsigned const bin = plain_bin(low, high, bins, item);
        ASSERT_EQ(histogram->bin(item), bin);
        histogram->add_item(item);
        ASSERT_EQ(histogram->size(), 1U);
        for (unsigned i = 0; i < bins; ++i)
            ASSERT_EQ(histogram->item_count(i), static_cast<unsigned>(i == bin));
        std::size_t const range_reports = high > low ? 0 : 1;
        std::size_t const item_reports = item >= low && item <= high ? 0 : 2;
        ASSERT_THAT(recorder.errors(), SizeIs(range_reports + item_reports));
    }
}
