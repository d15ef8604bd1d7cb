#include "gen_bindata.h"

#include "gen_report.h"
#include "mem_alloc_sys.h"

#include <algorithm>

namespace {

// Truncates toward zero. What fits no 32-bit integer, NaN included, gives the value that the
// processor gives for it, where a cast would be undefined.
std::uint32_t truncate(double value) {
    constexpr std::uint32_t no_integer = 0x80000000U;
    // MUTANT_EXCL_LINE: the cast, where it is undefined, gives the same on this processor
    if (value > -2147483649.0 && value < 2147483648.0)
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(value));
    return no_integer;
}

// Divides by the width and does not multiply by its reciprocal: the two differ at bin edges.
std::uint32_t bin_index(double distance, double bin_width, std::uint32_t num_bins) {
    std::uint32_t const index = truncate(distance / bin_width);
    return index == num_bins ? index - 1 : index;
}

/// Has the compiler make a function of add_item, for hosts that call it or look it up by its name.
[[gnu::used]] constexpr auto exported_add_item = &GEN_BINDATA::add_item;

} // namespace

// The comparisons with bounds and edges are negated: with a NaN each is false, and a NaN has to be
// reported as well.
GEN_BINDATA::GEN_BINDATA(double low, double high, unsigned bins)
    : m_counts(nullptr), m_num_bins(bins), m_num_items(0), m_low(low), m_high(high),
      m_bin_width((high - low) / static_cast<double>(bins)) {
    if (!(m_high > m_low))
        report(reports::bin_edges_reversed);
    m_counts = MEM_STL_ALLOCATOR<std::uint32_t>().allocate(bins);
    std::fill_n(m_counts, bins, 0U);
}

GEN_BINDATA::~GEN_BINDATA() {
    std::uint32_t total = 0;
    for (std::uint32_t i = 0; i < m_num_bins; ++i) {
        total += item_count(i);
        if (!(lowbound(i + 1) == highbound(i)))
            report(reports::bin_edges_apart);
    }
    if (total != m_num_items)
        report(reports::bin_total_wrong);
}

void GEN_BINDATA::add_any_item(double item) {
    std::uint32_t const index = bin(item);
    if (index < m_num_bins) // MUTANT_EXCL_LINE(< to <=): bin() never answers the number of bins
        ++m_counts[index];
    ++m_num_items;
}

unsigned GEN_BINDATA::bin(double item) const {
    if (!(item >= m_low && item <= m_high))
        report(reports::item_outside);
    return bin_index(item - m_low, m_bin_width, m_num_bins);
}

unsigned GEN_BINDATA::item_count(unsigned bin) const {
    if (bin >= m_num_bins) {
        report(reports::no_such_bin);
        return 0;
    }
    return m_counts[bin];
}

unsigned GEN_BINDATA::size() const {
    return m_num_items;
}

unsigned GEN_BINDATA::num_bins() const {
    return m_num_bins;
}

double GEN_BINDATA::lowbound(unsigned i) const {
    return static_cast<double>(i) * m_bin_width + m_low;
}

double GEN_BINDATA::highbound(unsigned i) const {
    return (static_cast<double>(i) + 1.0) * m_bin_width + m_low;
}
