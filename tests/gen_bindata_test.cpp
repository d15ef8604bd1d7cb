#include "gen_bindata.h"

#include "effort.h"
#include "error_recorder.h"
#include "mem_alloc_sys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <deque>
#include <limits>
#include <new>
#include <random>
#include <type_traits>
#include <vector>

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double smallest = std::numeric_limits<double>::denorm_min();
constexpr double largest = std::numeric_limits<double>::max();
constexpr unsigned no_integer = 0x80000000U;

ReportedError const item_error{"item >= m_low && item <= m_high", "GEN", "gen_bindata", 164};
ReportedError const bin_error{"0 <= bin && bin < m_num_bins", "GEN", "gen_bindata", 149};
ReportedError const range_error{"m_high > m_low", "GEN", "gen_bindata", 133};
ReportedError const edge_error{"lowbound(i+1) == highbound(i)", "GEN", "gen_bindata", 115};
ReportedError const total_error{"total == m_num_items", "GEN", "gen_bindata", 117};

/// A histogram that ends when the test says so. Its storage lives as long as the program, so that
/// the counts, which nobody releases, stay reachable for a leak detector.
class Histogram {
  public:
    Histogram(double low, double high, unsigned bins)
        : m_object(new (fresh_storage()) GEN_BINDATA(low, high, bins)) {}
    ~Histogram() { end(); }
    Histogram(Histogram const&) = delete;
    Histogram& operator=(Histogram const&) = delete;

    GEN_BINDATA* operator->() { return m_object; }

    void end() {
        if (m_object != nullptr)
            m_object->~GEN_BINDATA();
        m_object = nullptr;
    }

    std::vector<unsigned> counts() const {
        std::vector<unsigned> all;
        for (unsigned i = 0; i < m_object->num_bins(); ++i)
            all.push_back(m_object->item_count(i));
        return all;
    }

  private:
    struct Storage {
        alignas(GEN_BINDATA) unsigned char bytes[sizeof(GEN_BINDATA)];
    };

    static void* fresh_storage() {
        static auto* const all = new std::deque<Storage>;
        return all->emplace_back().bytes;
    }

    GEN_BINDATA* m_object;
};

/// The field of type @p T that lies at @p place.
template <typename T>
T value_at(unsigned char const* place) {
    T value;
    std::memcpy(&value, place, sizeof value);
    return value;
}

/// What bin() answers, in plain arithmetic.
unsigned plain_bin(double low, double high, unsigned bins, double item) {
    double const quotient = (item - low) / ((high - low) / static_cast<double>(bins));
    double const whole = std::trunc(quotient);
    unsigned index = no_integer;
    if (whole >= -2147483648.0 && whole <= 2147483647.0)
        index = static_cast<unsigned>(static_cast<std::int32_t>(whole));
    return index == bins ? index - 1 : index;
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

TEST(BinData, StartsEmpty) {
    ErrorRecorder const recorder;
    Histogram histogram(0, 10, 5);
    EXPECT_EQ(histogram->size(), 0U);
    EXPECT_EQ(histogram->num_bins(), 5U);
    EXPECT_THAT(histogram.counts(), ElementsAre(0U, 0U, 0U, 0U, 0U));
    histogram.end();
    EXPECT_THAT(recorder.errors(), IsEmpty());
}

TEST(BinData, BinsHoldTheirLowerEdgeAndTheLastOneBoth) {
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
