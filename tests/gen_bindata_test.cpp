#include "gen_bindata.h"

#include "effort.h"
#include "gen_bindata_fixture.h"
#include "mem_alloc_sys.h"

#include <cstdint>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <type_traits>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// The field of type @p T that lies at @p place.
template <typename T>
T value_at(unsigned char const* place) {
    T value;
    std::memcpy(&value, place, sizeof value);
    return value;
}

} // namespace

TEST(BinData, HasTheFieldsOfItsBinaryInterface) {
    EXPECT_EQ(sizeof(GEN_BINDATA), sizeof(void*) == 4 ? 36U : 40U);
    EXPECT_FALSE(std::is_polymorphic_v<GEN_BINDATA>);
    EXPECT_FALSE(std::is_copy_constructible_v<GEN_BINDATA>);
    EXPECT_FALSE(std::is_copy_assignable_v<GEN_BINDATA>);
}

TEST(BinData, FieldsHaveTheirPlaces) {
    Histogram histogram(3, 7, 5);
    histogram->add_item(4);
    auto const* const bytes = reinterpret_cast<unsigned char const*>(histogram.operator->());
    EXPECT_EQ(value_at<std::uint32_t const*>(bytes)[1], 1U); // the counts
    unsigned char const* const behind = bytes + sizeof(void*);
    EXPECT_EQ(value_at<std::uint32_t>(behind), 5U);
    EXPECT_EQ(value_at<std::uint32_t>(behind + 4), 1U);
    EXPECT_EQ(value_at<double>(behind + 8), 3.0);
    EXPECT_EQ(value_at<double>(behind + 16), 7.0);
    EXPECT_EQ(value_at<double>(behind + 24), 0.8);
}

TEST(BinData, EdgesAreReportedBeforeTheCountsAreAllocated) {
    EXPECT_EXIT(GEN_BINDATA(1, 0, ~0U), testing::ExitedWithCode(255),
                "m_high > m_low(.|\n)*out of memory");
}

TEST(BinData, StartsEmpty) {
    ErrorRecorder const recorder;
    Histogram histogram(0, 10, 5);
    EXPECT_EQ(histogram->size(), 0U);
    EXPECT_EQ(histogram->num_bins(), 5U);
    EXPECT_THAT(histogram.counts(), ElementsAre(0U, 0U, 0U, 0U, 0U));
    histogram.end();
    EXPECT_THAT(recorder.errors(), IsEmpty());
}

TEST(BinData, BinsContainTheirLowerEdgeAndTheLastOneBoth) {
    struct Row {
        double low;
        double high;
        unsigned bins;
        double item;
        unsigned bin;
    };
    Row const rows[] = {
        {0, 10, 5, 0, 0},
        {0, 10, 5, -0.0, 0},
        {0, 10, 5, 1.999, 0},
        {0, 10, 5, std::nextafter(2.0, 0.0), 0},
        {0, 10, 5, 2, 1},
        {0, 10, 5, 7.999, 3},
        {0, 10, 5, 8, 4},
        {0, 10, 5, std::nextafter(10.0, 0.0), 4},
        {0, 10, 5, 10, 4},
        // A width that no double holds exactly: division by it, not by its reciprocal.
        {0, 1, 3, 0, 0},
        {0, 1, 3, 1.0 / 3, 1},
        {0, 1, 3, 2.0 / 3, 2},
        {0, 1, 3, 1, 2},
        {0, 49, 49, 49, 48},
        {0, 1, 49, 1, 48},
        // A range below zero, and one bin.
        {-4, -2, 4, -4, 0},
        {-4, -2, 4, -3, 2},
        {-4, -2, 4, -2, 3},
        {-1, 1, 1, 1, 0},
        {-1, 1, 1, -1, 0},
        // The whole range of doubles has an infinite span: all but the bounds' own infinities fall
        // into the first bin.
        {-largest, largest, 4, 5, 0},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(testing::Message() << "item " << row.item << " in " << row.low << " to "
                                        << row.high << " by " << row.bins);
        ErrorRecorder recorder;
        Histogram histogram(row.low, row.high, row.bins);
        EXPECT_EQ(histogram->bin(row.item), row.bin);
        histogram->add_item(row.item);
        std::vector<unsigned> expected(row.bins, 0);
        expected[row.bin] = 1;
        EXPECT_EQ(histogram.counts(), expected);
        EXPECT_EQ(histogram->size(), 1U);
        EXPECT_THAT(recorder.errors(), IsEmpty());
        histogram.end();
        recorder.clear();
    }
}

TEST(BinData, DividesByTheWidthWhereTheReciprocalWouldMissTheEdge) {
    // Without a case in which the two differ, the rule would go untested.
    unsigned differences = 0;
    for (unsigned bins = 1; bins <= 200; ++bins) {
        Histogram histogram(0, 1, bins);
        double const width = 1.0 / bins;
        double const reciprocal = 1.0 / width;
        for (unsigned i = 0; i < bins; ++i) {
            double const edge = histogram->lowbound(i);
            unsigned const bin = plain_bin(0, 1, bins, edge);
            EXPECT_EQ(histogram->bin(edge), bin);
            unsigned const before = histogram->item_count(bin);
            histogram->add_item(edge); // computes for itself, in line
            EXPECT_EQ(histogram->item_count(bin), before + 1) << edge;
            differences += static_cast<unsigned>(static_cast<unsigned>(edge * reciprocal) !=
                                                 histogram->bin(edge));
        }
    }
    EXPECT_GT(differences, 0U);
}

TEST(BinData, BoundsAreMultiplesOfTheWidthAboveTheLowBound) {
    Histogram histogram(0, 10, 5);
    EXPECT_EQ(histogram->lowbound(0), 0);
    EXPECT_EQ(histogram->lowbound(4), 8);
    EXPECT_EQ(histogram->highbound(4), 10);
    EXPECT_EQ(histogram->lowbound(5), 10); // no such bin, but an edge all the same
    EXPECT_EQ(histogram->highbound(0xFFFFFFFFU), 8589934592.0);

    Histogram shifted(-3, 1, 8);
    EXPECT_EQ(shifted->lowbound(0), -3);
    EXPECT_EQ(shifted->highbound(0), -2.5);
    EXPECT_EQ(shifted->lowbound(7), 0.5);
    EXPECT_EQ(shifted->highbound(7), 1);
}

TEST(BinDataDeathTest, MoreBinsThanMemoryEndTheProcessWithAMessage) {
    EXPECT_EXIT(GEN_BINDATA(0, 1, 0xFFFFFFFFU), testing::ExitedWithCode(255), "out of memory");
}

TEST(BinData, CountOfABinThatDoesNotExistIsReportedAndZero) {
    for (unsigned const bin : {5U, 6U, 0x40000000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        ErrorRecorder const recorder;
        Histogram histogram(0, 10, 5);
        EXPECT_EQ(histogram->item_count(bin), 0U);
        EXPECT_THAT(recorder.errors(), ElementsAre(bin_error));
    }
}

TEST(BinData, DestructorReportsEachEdgeThatDoesNotMeetTheNext) {
    ErrorRecorder recorder;
    Histogram open(0, infinity, 3); // every edge above the first is infinity, and equal to it
    open.end();
    EXPECT_THAT(recorder.errors(), IsEmpty());
    Histogram bottomless(-infinity, 0, 3);
    bottomless.end();
    EXPECT_THAT(recorder.errors(), ElementsAre(edge_error, edge_error, edge_error));

    recorder.clear();
    Histogram histogram(-infinity, infinity, 3); // edges that are no numbers are not equal
    EXPECT_THAT(recorder.errors(), IsEmpty());
    histogram.end();
    EXPECT_THAT(recorder.errors(), ElementsAre(edge_error, edge_error, edge_error));

    recorder.clear();
    Histogram both(-infinity, infinity, 2);
    both->add_item(1); // infinity / infinity
    EXPECT_THAT(recorder.errors(), IsEmpty());
    both.end();
    EXPECT_THAT(recorder.errors(), ElementsAre(edge_error, edge_error, total_error));
}

TEST(BinData, DestructorChecksTheTotalOnce) {
    ErrorRecorder recorder;
    Histogram histogram(0, 1, 2);
    histogram->add_item(0.25);
    histogram->add_item(7);
    histogram->add_item(not_a_number);
    recorder.clear();
    histogram.end();
    EXPECT_THAT(recorder.errors(), ElementsAre(total_error));
}

TEST(BinData, DestructorDoesNotReleaseTheCounts) {
    std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
    Histogram histogram(0, 1, 1000);
    std::size_t const alive = MEM_MANAGER::s_system_memory_counter.current();
    EXPECT_GE(alive - before, 4000U);
    histogram.end();
    EXPECT_EQ(MEM_MANAGER::s_system_memory_counter.current(), alive);
}

TEST(BinData, CountsOfItemsInRangeSumToTheSize) {
    std::mt19937_64 random(5);
    for (std::size_t round = 0; round < effort(300); ++round) {
        ErrorRecorder const recorder;
        double const low = std::uniform_real_distribution<double>(-1000, 1000)(random);
        double const span = std::exp2(std::uniform_real_distribution<double>(-20, 20)(random));
        unsigned const bins = std::uniform_int_distribution<unsigned>(1, 3000)(random);
        Histogram histogram(low, low + span, bins);
        std::uniform_real_distribution<double> item(low, low + span);
        std::vector<unsigned> expected(bins, 0);
        unsigned const items = 500;
        for (unsigned i = 0; i < items; ++i) {
            double const value = i == 0 ? low : i == 1 ? low + span : item(random);
            ++expected[plain_bin(low, low + span, bins, value)];
            histogram->add_item(value);
        }
        EXPECT_EQ(histogram->size(), items);
        EXPECT_EQ(histogram.counts(), expected);
        histogram.end();
        EXPECT_THAT(recorder.errors(), IsEmpty());
    }
}
