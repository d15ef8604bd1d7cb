#include "gen_c_call.h"

#include "gen_exe.h"
#include "gen_version.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

struct Report {
    STR condition;
    STR source;
    int line;
};

/// More than anybody reads: a condition reports one for every ")" too many, and more than once.
constexpr std::size_t most_reports = 100;

/// All of these are empty until a call needs them, and one thread's at a time.
MEM_VECTOR<Report> reports;
STR last_reason;

/// By realloc, not in tracked memory: a caller's text that has no room is a status, and does not
/// end the process.
bool make_room(gen_c_text* text, std::size_t size) {
    if (text->room > size) [[likely]]
        return true;
    std::size_t const room = std::max<std::size_t>(64, size + size / 2 + 1);
    auto* const bytes = static_cast<char*>(std::realloc(text->bytes, room));
    if (bytes == nullptr)
        return false;
    text->bytes = bytes;
    text->room = room;
    return true;
}

void write(gen_c_text* text, std::string_view value) {
    std::memmove(text->bytes, value.data(), value.size()); // the value may lie in it
    text->bytes[value.size()] = '\0';
    text->size = value.size();
}

void keep(char const* condition, char const* /*owner*/, char const* source_file, int line) {
    if (reports.size() < most_reports)
        reports.push_back({condition, source_file, line});
}

} // namespace

namespace gen_c {

gen_c_status refuse(gen_c_status status, std::string_view argument, std::string_view reason) {
    last_reason.assign(argument).append(reason);
    return status;
}

bool is_not_started() {
    if (gen_module_fullpath != nullptr)
        return false;
    refuse(GEN_C_NOT_STARTED, "gen_c_start", " has not been called");
    return true;
}

Reports::Reports() : m_previous(err_set_internal_error_handler(keep)) {
    reports.clear();
}

Reports::~Reports() {
    err_set_internal_error_handler(m_previous);
}

gen_c_status Reports::status(gen_c_status status) const {
    return reports.empty() || status != GEN_C_OK ? status : GEN_C_INTERNAL_ERROR;
}

gen_c_status put(gen_c_text* text, std::string_view value) {
    if (!make_room(text, value.size()))
        return GEN_C_NO_MEMORY;
    write(text, value);
    return GEN_C_OK;
}

gen_c_status put_both(gen_c_text* first, std::string_view first_value, gen_c_text* second,
                      std::string_view second_value) {
    if (!make_room(first, first_value.size()) || !make_room(second, second_value.size()))
        return GEN_C_NO_MEMORY;
    write(first, first_value);
    write(second, second_value);
    return GEN_C_OK;
}

} // namespace gen_c

char const* gen_c_reason(void) {
    return last_reason.c_str();
}

size_t gen_c_report_count(void) {
    return reports.size();
}

gen_c_status gen_c_report(size_t index, char const** condition, char const** source, int* line) {
    if (index >= reports.size())
        return GEN_C_NOT_FOUND;
    Report const& report = reports[index];
    if (condition != nullptr)
        *condition = report.condition.c_str();
    if (source != nullptr)
        *source = report.source.c_str();
    if (line != nullptr)
        *line = report.line;
    return GEN_C_OK;
}

char const* gen_c_version(void) {
    return gen_get_version();
}

void gen_c_text_free(gen_c_text* text) {
    if (text == nullptr)
        return;
    std::free(text->bytes);
    *text = GEN_C_TEXT_INIT;
}
