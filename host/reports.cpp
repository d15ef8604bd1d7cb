#include "reports.h"

#include <utility>

static std::vector<std::string> kept;

static void keep(char const* condition, char const* /*owner*/, char const* /*source_file*/,
                 int /*line*/) {
    kept.emplace_back(condition);
}

Reports::Reports() : m_previous(err_set_internal_error_handler(keep)) {
    kept.clear();
}

Reports::~Reports() {
    err_set_internal_error_handler(m_previous);
}

std::vector<std::string> Reports::take() {
    return std::exchange(kept, {});
}
