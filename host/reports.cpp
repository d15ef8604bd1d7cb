#include "reports.h"

#include <algorithm>
#include <utility>

// Not a member: a handler is a plain function.
static std::vector<Reports::Report> kept;

static void keep(char const* condition, char const* /*owner*/, char const* /*source_file*/,
                 int /*line*/) {
    auto const known =
        std::find_if(kept.begin(), kept.end(), [condition](Reports::Report const& report) {
            return report.condition == condition;
        });
    if (known == kept.end())
        kept.push_back({condition, 1});
    else
        ++known->times;
}

Reports::Reports() : m_previous(err_set_internal_error_handler(keep)) {
    kept.clear();
}

Reports::~Reports() {
    err_set_internal_error_handler(m_previous);
}

std::vector<Reports::Report> Reports::take() {
    return std::exchange(kept, {});
}
