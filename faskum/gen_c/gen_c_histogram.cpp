#include "gen_bindata.h"
#include "gen_c_call.h"
#include "gen_c_table.h"

#include <cmath>
#include <new>

using namespace gen_c;

/// Only items in the range get to the bins, which report any other and may count it all the same.
struct gen_c_histogram {
    GEN_BINDATA bins;
    double low;
    double high;
    std::size_t below = 0;
    std::size_t above = 0;
    std::size_t not_a_number = 0;

    bool contains(double item) const { return item >= low && item <= high; }
};

gen_c_status gen_c_histogram_create(double low, double high, unsigned bins,
                                    gen_c_histogram** histogram) {
    if (lacks("histogram", histogram))
        return GEN_C_BAD_ARGUMENT;
    if (!std::isfinite(low))
        return refuse(GEN_C_BAD_ARGUMENT, "low", " is not a finite number");
    if (!std::isfinite(high))
        return refuse(GEN_C_BAD_ARGUMENT, "high", " is not a finite number");
    if (!(low < high))
        return refuse(GEN_C_BAD_ARGUMENT, "low", " is not below high");
    if (!std::isfinite(high - low))
        return refuse(GEN_C_BAD_ARGUMENT, "high", " is further from low than a number can express");
    // The counts are never released, and more than there is memory for would end the process.
    if (bins < 1 || bins > 1000000)
        return refuse(GEN_C_BAD_ARGUMENT, "bins", " is not from 1 to 1000000");
    // Items would fall between bins without a width.
    if (!std::isnormal((high - low) / bins))
        return refuse(GEN_C_BAD_ARGUMENT, "bins", " are narrower than a number can express");
    Reports const reports;
    auto* const made = new (std::nothrow) gen_c_histogram{{low, high, bins}, low, high};
    if (made == nullptr)
        return GEN_C_NO_MEMORY;
    *histogram = made;
    return reports.status();
}

void gen_c_histogram_free(gen_c_histogram* histogram) {
    if (histogram == nullptr)
        return;
    Reports const reports; // edges that are not alike, which whoever reads the bins sees
    delete histogram;
}

gen_c_status gen_c_histogram_add(gen_c_histogram* histogram, double item) {
    if (lacks("histogram", histogram))
        return GEN_C_BAD_ARGUMENT;
    if (histogram->contains(item))
        histogram->bins.add_item(item);
    else if (std::isnan(item))
        ++histogram->not_a_number;
    else
        ++(item < histogram->low ? histogram->below : histogram->above);
    return GEN_C_OK;
}

gen_c_status gen_c_histogram_size(gen_c_histogram const* histogram, size_t* items) {
    if (lacks("histogram", histogram) || lacks("items", items))
        return GEN_C_BAD_ARGUMENT;
    *items = histogram->bins.size();
    return GEN_C_OK;
}

gen_c_status gen_c_histogram_bin(gen_c_histogram const* histogram, double item, unsigned* bin) {
    if (lacks("histogram", histogram) || lacks("bin", bin))
        return GEN_C_BAD_ARGUMENT;
    if (!histogram->contains(item))
        return GEN_C_NOT_FOUND;
    *bin = histogram->bins.bin(item);
    return GEN_C_OK;
}

gen_c_status gen_c_histogram_bins(gen_c_histogram const* histogram, gen_c_table** bins) {
    if (lacks("histogram", histogram) || lacks("bins", bins))
        return GEN_C_BAD_ARGUMENT;
    gen_c_table table{"low", "high", "count"};
    for (unsigned i = 0; i < histogram->bins.num_bins(); ++i)
        table.row({histogram->bins.lowbound(i), histogram->bins.highbound(i),
                   histogram->bins.item_count(i)});
    return give(std::move(table), bins);
}

gen_c_status gen_c_histogram_outside(gen_c_histogram const* histogram, gen_c_table** answer) {
    if (lacks("histogram", histogram) || lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    return give_row({{"below", histogram->below},
                     {"above", histogram->above},
                     {"not_a_number", histogram->not_a_number}},
                    answer);
}
