/// A host compiled for the old floating-point unit, alone or along with SSE2: its arithmetic is, at
/// times, wider than a double. Its items must be counted in the bins that the library names. Exit
/// status 0 if they are.

#include "gen_bindata.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#if __FLT_EVAL_METHOD__ == 0
#error "this program is about arithmetic that is wider than a double"
#endif

// Never destroyed: the counts, which nobody releases, stay reachable for a leak detector.
static auto& histograms = *new std::vector<GEN_BINDATA*>;

// Adds the edges of all bins, where rounding decides; gives how many were counted in another bin.
static int count_edges(double low, double high, unsigned bins) {
    GEN_BINDATA& histogram = *histograms.emplace_back(new GEN_BINDATA(low, high, bins));
    int disagreements = 0;
    for (unsigned i = 0; i <= bins; ++i) {
        double const edge = std::min(histogram.lowbound(i), high);
        unsigned const bin = histogram.bin(edge);
        unsigned const before = histogram.item_count(bin);
        histogram.add_item(edge);
        if (histogram.item_count(bin) == before + 1)
            continue;
        std::printf("%g to %g in %u bins: %.17g is not in bin %u\n", low, high, bins, edge, bin);
        ++disagreements;
    }
    return disagreements;
}

int main() {
    int disagreements = 0;
    for (unsigned bins = 1; bins <= 200; ++bins) {
        disagreements += count_edges(0, 1, bins);
        disagreements += count_edges(-1 / 3.0, 1, bins);
        disagreements += count_edges(0.1, 1e6, bins);
    }
    return disagreements == 0 ? 0 : 1;
}
