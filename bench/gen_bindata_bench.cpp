#include "gen_bindata.h"

#include "contest.h"

#include <boost/histogram.hpp>
#include <cstdint>
#ifdef BENCH_LIBRARY_PEERS
#include <gsl/gsl_histogram.h>
#endif
#include <memory>

namespace {

constexpr std::size_t item_total = 10'000'000;
constexpr double low = -3;
constexpr double high = 7;
constexpr unsigned bins = 100;

using Items = std::vector<double>;

Items random_items() {
    Items items(item_total);
    std::uniform_real_distribution<double> anywhere(low, high);
    for (double& item : items)
        item = anywhere(bench_random());
    return items;
}

/// The items are made when the first contestant runs: eighty megabytes that no other work needs.
Items const& shared_items() {
    static Items const items = random_items();
    return items;
}

/// Counts all items with @p add_item, once a round.
template <typename AddItem>
void enter_filler(std::string const& contestant, AddItem add_item) {
    enter(
        "GEN_BINDATA::add_item, 1e7 items", contestant,
        [add_item](std::size_t) mutable {
            for (double const item : shared_items())
                add_item(item);
            return 0;
        },
        item_total);
}

auto make_boost_histogram() {
    namespace bh = boost::histogram;
    return bh::make_histogram_with(std::vector<std::uint32_t>(),
                                   bh::axis::regular<>(bins, low, high));
}

/// The work and nothing else: no report, no total, no look at the range.
struct Limit {
    void operator()(double item) {
        auto index = static_cast<std::uint32_t>(static_cast<std::int32_t>((item - low) / width));
        index -= static_cast<std::uint32_t>(index == bins);
        ++counts[index];
    }

    double width = (high - low) / bins;
    std::vector<std::uint32_t> counts = std::vector<std::uint32_t>(bins);
};

void enter_all() {
    // By reference, as in a host's loop: a pointer in the closure would be read anew for every
    // item, which no peer's histogram is.
    enter(
        "GEN_BINDATA::add_item, 1e7 items", "gen",
        [histogram = std::make_shared<GEN_BINDATA>(low, high, bins)](std::size_t) {
            GEN_BINDATA& counts = *histogram;
            for (double const item : shared_items())
                counts.add_item(item);
            return 0;
        },
        item_total);
    enter_filler("limit", Limit());
    enter_filler("Boost.Histogram operator()",
                 [histogram = make_boost_histogram()](double item) mutable { histogram(item); });
    enter(
        "GEN_BINDATA::add_item, 1e7 items", "Boost.Histogram fill",
        [histogram = make_boost_histogram()](std::size_t) mutable {
            histogram.fill(shared_items());
            return 0;
        },
        item_total);
#ifdef BENCH_LIBRARY_PEERS
    std::shared_ptr<gsl_histogram> const gsl(gsl_histogram_alloc(bins), gsl_histogram_free);
    gsl_histogram_set_ranges_uniform(gsl.get(), low, high);
    enter_filler("gsl_histogram_increment",
                 [gsl](double item) { gsl_histogram_increment(gsl.get(), item); });
#endif
}

Family const histograms{enter_all};

} // namespace
