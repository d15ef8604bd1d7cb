#include "error_recorder.h"
#include "gen.h"

#include <climits>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace {

/// A check that nothing else in the tests asks for the number of.
struct FrozenCheck {
    ReportedError error;
    void (*provoke)();
};

void parse_null() {
    GEN_BP_PARSER().parse_string(nullptr);
}

void split_reversed_parentheses() {
    GEN_BP_PARSER parser;
    parser.add_token_to_list(BP_TOKEN_RIGHT_PAREN, nullptr);
    MEM_LIST<BP_TOKEN*>& tokens = parser.token_list();
    parser.expression_has_multiple_terms(tokens.begin(), tokens.end());
    delete tokens.front();
    tokens.clear();
}

void format_no_time() {
    char buffer[8];
    gen_local_strftime(buffer, sizeof buffer, "%Y", nullptr);
}

void format_without_format() {
    char buffer[8];
    std::tm const time{};
    gen_local_strftime(buffer, sizeof buffer, nullptr, &time);
}

FrozenCheck const frozen_checks[] = {
    {{"type < GEN_LIB_SIZE", "GEN", "gen_path", 474}, [] { gen_get_library_path(GEN_LIB_SIZE); }},
    {{"path != NULL", "GEN", "gen_path", 1268},
     [] { gen_get_relative_path_if_starts_with_project_dir(nullptr); }},
    {{"expression != NULL", "GEN", "gen_bp_parser", 187}, parse_null},
    {{"paren_count >= 0", "GEN", "gen_bp_parser", 342}, split_reversed_parentheses},
    {{"string != NULL", "GEN", "gen_localization", 901},
     [] { gen_local_mbstowcs(nullptr, nullptr, 0); }},
    {{"wide != NULL", "GEN", "gen_localization", 935},
     [] { gen_local_wcstombs(nullptr, nullptr, 0); }},
    {{"format != NULL", "GEN", "gen_localization", 1131}, format_without_format},
    {{"time != NULL", "GEN", "gen_localization", 1132}, format_no_time},
    {{"text != NULL", "GEN", "gen_localization", 1304},
     [] { gen_local_strtol(nullptr, nullptr, 10); }},
    {{"radix > 1", "GEN", "gen_string", 1111},
     [] {
         STR out;
         gen_itoa(1, out, 1);
     }},
    {{"wildcard != 0", "GEN", "gen_string", 1681}, [] { gen_wildcard_to_reg_expr(nullptr, true); }},
    {{"Could not find index for time unit enum.", "GEN", "gen_time", 164},
     [] { GEN_TIME_UNIT::get_list_index(static_cast<GEN_TIME_UNIT::UNIT_ENUM>(INT_MAX)); }},
    {{"Could not find index for time freq enum.", "GEN", "gen_time", 331},
     [] { GEN_TIME_FREQ::get_list_index(static_cast<GEN_TIME_FREQ::FREQ_ENUM>(INT_MAX)); }},
};

} // namespace

TEST(InternalError, ChecksKeepTheirSourceAndLine) {
    char path[] = "/opt/k/linux/tool";
    char* const previous = std::exchange<char*>(gen_module_fullpath, path);
    for (FrozenCheck const& check : frozen_checks) {
        ErrorRecorder recorder;
        check.provoke();
        EXPECT_THAT(recorder.errors(), ElementsAre(check.error));
    }
    gen_module_fullpath = previous;
}
