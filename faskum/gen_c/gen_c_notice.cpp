#include "gen_c_call.h"
#include "gen_c_table.h"
#include "gen_legal.h"

#include <iterator>
#include <span>

using namespace gen_c;

namespace {

struct Notice {
    STR (*paragraph)();
    std::span<char const* const> lines;
};

/// In the order of gen_c_notice_name.
Notice const notices[] = {
    {gen_get_legal_banner, GEN_LEGAL_BANNER_ARRAY},
    {gen_get_legal_trademark_text, GEN_LEGAL_TRADEMARK_ARRAY},
    {gen_get_legal_warning_text, GEN_COPYRIGHT_WARNING_ARRAY},
    {gen_get_bitstream_encryption_legal_text, GEN_LEGAL_BSTRM_ENC_ARRAY},
};

bool is_none(int notice) {
    if (notice >= 0 && notice < static_cast<int>(std::size(notices)))
        return false;
    refuse(GEN_C_BAD_ARGUMENT, "notice", " is none of the four");
    return true;
}

} // namespace

gen_c_status gen_c_notice(int notice, gen_c_text* paragraph) {
    if (lacks("paragraph", paragraph) || is_none(notice))
        return GEN_C_BAD_ARGUMENT;
    return put(paragraph, notices[notice].paragraph());
}

gen_c_status gen_c_notice_lines(int notice, char const* prefix, gen_c_table** lines) {
    if (lacks("prefix", prefix) || lacks("lines", lines) || is_none(notice))
        return GEN_C_BAD_ARGUMENT;
    // gen itself makes comment lines of the banner alone, below the copyright line.
    if (notice == GEN_C_NOTICE_BANNER)
        return give_lines(gen_get_legal_text(prefix), lines);
    STR text;
    for (char const* const line : notices[notice].lines)
        text.append(prefix).append(line) += '\n';
    return give_lines(text, lines);
}

gen_c_status gen_c_do_not_edit(char const* prefix, gen_c_table** lines) {
    if (lacks("prefix", prefix) || lacks("lines", lines))
        return GEN_C_BAD_ARGUMENT;
    return give_lines(gen_get_do_not_edit_text(prefix), lines);
}
