#pragma once

/// What the tests of histograms share.

#include "error_recorder.h"
#include "gen_bindata.h"

#include <cmath>
#include <cstdint>
#include <deque>
#include <limits>
#include <new>
#include <vector>

inline constexpr double infinity = std::numeric_limits<double>::infinity();
inline constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
inline constexpr double smallest = std::numeric_limits<double>::denorm_min();
inline constexpr double largest = std::numeric_limits<double>::max();
inline constexpr unsigned no_integer = 0x80000000U;

inline ReportedError const item_error{"item >= m_low && item <= m_high", "GEN", "gen_bindata", 164};
inline ReportedError const bin_error{"0 <= bin && bin < m_num_bins", "GEN", "gen_bindata", 149};
inline ReportedError const range_error{"m_high > m_low", "GEN", "gen_bindata", 133};
inline ReportedError const edge_error{"lowbound(i+1) == highbound(i)", "GEN", "gen_bindata", 115};
inline ReportedError const total_error{"total == m_num_items", "GEN", "gen_bindata", 117};

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

/// What bin() answers, in plain arithmetic.
inline unsigned plain_bin(double low, double high, unsigned bins, double item) {
    double const quotient = (item - low) / ((high - low) / static_cast<double>(bins));
    double const whole = std::trunc(quotient);
    unsigned index = no_integer;
    if (whole >= -2147483648.0 && whole <= 2147483647.0)
        index = static_cast<unsigned>(static_cast<std::int32_t>(whole));
    return index == bins ? index - 1 : index;
}
