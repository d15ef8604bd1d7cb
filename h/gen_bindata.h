#pragma once

/// Histogram bins: counting real-valued items into bins of equal width over a closed range.

#include "korvane_export.h"

#include <cstdint>

/// Counts items into a fixed number of equal-width bins from `low` to `high`.
///
/// Every bin contains its lower edge and not its upper one, but for the last, which has both. An
/// item's bin is found by dividing by the same bin width that lowbound and highbound multiply by,
/// so that the two agree as closely as doubles can: an edge that no double represents exactly may
/// be counted below itself.
///
///     GEN_BINDATA(0, 10, 5)   item    bin     counted in
///                             0       0       0
///                             1.999   0       0
///                             2       1       1
///                             10      4       4, the closed end
///                             -1      0       0, after a report
///                             13      6       none, after a report
///                             NaN     2^31    none, after a report
///
/// A histogram checks itself at its end (see the destructor) but never releases its counts: their
/// storage stays with the process. Give a histogram the life of the tool, or count on that loss.
///
/// Internal errors are reported for "gen_bindata". Not copied, since two objects would count into
/// one array.
class KORVANE_API GEN_BINDATA {
  public:
    /// An empty histogram. Reports "m_high > m_low" unless @p high is above @p low (which no NaN
    /// is) and goes on with what it was given. No bins at all are taken as they are: every item is
    /// then counted in the total alone. More bins than there is memory for end the process as every
    /// exhausted allocation does: "out of memory" on standard error, status 255.
    GEN_BINDATA(double low, double high, unsigned bins);

    /// Checks itself: reports "lowbound(i+1) == highbound(i)" for each bin whose upper edge is not
    /// the next one's lower edge (as with a low bound of minus infinity, whose edges are no
    /// numbers), and "total == m_num_items" when the counts do not sum to size(), as after
    /// items outside the range. Releases nothing.
    ~GEN_BINDATA();

    GEN_BINDATA(GEN_BINDATA const&) = delete;
    GEN_BINDATA& operator=(GEN_BINDATA const&) = delete;

    /// Counts one item in bin(item), with the same report for one out of range, and in size(). An
    /// item whose bin does not exist counts in size() alone.
    void add_item(double item);

    /// The index of the bin that @p item falls in. Reports "item >= m_low && item <= m_high" for
    /// any other item, NaN included, and answers with the same computation: the distance from the
    /// low bound in bin widths, truncated toward zero to 32 bits, reduced by one where it is
    /// num_bins(). So the index may be past the last bin. What fits no 32-bit integer gives 2^31.
    unsigned bin(double item) const;

    /// The count of that bin. Reports "0 <= bin && bin < m_num_bins" for a bin that does not exist
    /// and gives 0.
    unsigned item_count(unsigned bin) const;

    /// Number of items added, wherever they were counted.
    unsigned size() const;
    unsigned num_bins() const;

    /// The edges of bin @p i, whether or not there is such a bin.
    double lowbound(unsigned i) const;
    double highbound(unsigned i) const;

  private:
    std::uint32_t* m_counts; ///< one a bin
    std::uint32_t m_num_bins;
    std::uint32_t m_num_items;
    double m_low;
    double m_high;
    double m_bin_width;

    /// The whole of add_item.
    void add_any_item(double item);
};

inline void GEN_BINDATA::add_item(double item) {
#if __FLT_EVAL_METHOD__ == 0
    // The usual item is counted in the caller, which is several times cheaper than a call. Only
    // where doubles round as they do in the library, though: wider arithmetic would count some
    // items in another bin than bin() gives. The item at the high bound, whose index needs its
    // correction, is left to the call.
    if (item >= m_low && item <= m_high) [[likely]] {
        double const quotient = (item - m_low) / m_bin_width;
        constexpr double too_large = 2147483648.0; // for the conversion; nor is NaN less than it
        if (quotient < too_large) [[likely]] {
            auto const index = static_cast<std::uint32_t>(static_cast<std::int32_t>(quotient));
            if (index < m_num_bins) [[likely]] {
                // Read before the count is written, which might be this very number for all that
                // the compiler knows.
                std::uint32_t const num_items = m_num_items;
                ++m_counts[index];
                m_num_items = num_items + 1;
                return;
            }
        }
    }
#endif
    add_any_item(item);
}
