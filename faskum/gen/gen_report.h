#pragma once

/// Every internal error that gen reports.
///
/// Hosts and their support filter by source and line, so both are part of the interface: they name
/// the check, wherever the code that makes it is today. An error that comes in gets a line that its
/// source does not have yet; none is ever changed or used again.
///
/// The one error outside this table is that of h/gen_iterator_sys.h, which is compiled into hosts.

#include "err_report.h"

/// An internal error: the condition that was broken, and the name and line of its check.
struct Report {
    char const* condition;
    char const* source;
    int line;
};

/// Reports the error, with its condition as it stands here.
inline void report(Report const& error) {
    err_report_internal_error(error.condition, "GEN", error.source, error.line);
}

namespace reports {

// Histograms
inline constexpr Report bin_edges_apart{"lowbound(i+1) == highbound(i)", "gen_bindata", 115};
inline constexpr Report bin_total_wrong{"total == m_num_items", "gen_bindata", 117};
inline constexpr Report bin_edges_reversed{"m_high > m_low", "gen_bindata", 133};
inline constexpr Report no_such_bin{"0 <= bin && bin < m_num_bins", "gen_bindata", 149};
inline constexpr Report item_outside{"item >= m_low && item <= m_high", "gen_bindata", 164};

// Conditions
inline constexpr Report no_token{"new_token != 0", "gen_bp_parser", 110};
inline constexpr Report no_expression{"expression != NULL", "gen_bp_parser", 187};
inline constexpr Report negative_depth{"paren_count >= 0", "gen_bp_parser", 342};

// Dynamic flags: those with a conversion are formats, filled in with what was asked for.
inline constexpr Report no_clearer{"m_clearer != 0", "gen_dyn_flag", 256};
inline constexpr Report flag_exists{"flag '%s' (0x%x) already exists", "gen_dyn_flag", 344};
inline constexpr Report too_many_flags{"too many flags, can't create '%s'", "gen_dyn_flag", 355};
inline constexpr Report no_such_flag{"couldn't find flag '%s'", "gen_dyn_flag", 425};
// MUTANT_EXCL_LINE: is never reported today
inline constexpr Report flag_past_slots{"flag 0x%x: too many bits", "gen_dyn_flag", 509};
inline constexpr Report flag_of_many_bits{"flag 0x%x: not a single bit", "gen_dyn_flag", 514};
inline constexpr Report flag_unnamed{"flag 0x%x not found to delete", "gen_dyn_flag", 521};
inline constexpr Report no_manager{"mgr!=0", "gen_dyn_flag", 600};

// The neutral locale
inline constexpr Report no_itoa_buffer{"string != 0", "gen_localization", 230};
inline constexpr Report no_iscsym{"not implemented", "gen_localization", 559};
inline constexpr Report no_iscsymf{"not implemented", "gen_localization", 587};
inline constexpr Report no_multibyte_string{"string != NULL", "gen_localization", 901};
inline constexpr Report no_wide_string{"wide != NULL", "gen_localization", 935};
inline constexpr Report no_mbccpy{"not implemented", "gen_localization", 1011};
inline constexpr Report no_mbclen{"not implemented", "gen_localization", 1038};
inline constexpr Report no_time_format{"format != NULL", "gen_localization", 1131};
inline constexpr Report no_time_to_format{"time != NULL", "gen_localization", 1132};
inline constexpr Report no_tm_struct{"timeptr != NULL", "gen_localization", 1187};
inline constexpr Report not_a_character{
    "A wide-character code does not correspond to a valid character", "gen_localization", 1227};
inline constexpr Report no_wcsftime{"gen_local_wcsftime is not supported on Linux.",
                                    "gen_localization", 1233};
inline constexpr Report no_number_text{"text != NULL", "gen_localization", 1304};
inline constexpr Report no_wtoi{"not implemented", "gen_localization", 1602};
inline constexpr Report no_wtol{"not implemented", "gen_localization", 1630};

// The machine and its user
inline constexpr Report no_host_name{"gethostname(host_name_buf, buf_size) == 0", "gen_os_info",
                                     288};
inline constexpr Report no_user_name{"Failed to get username from os", "gen_username", 57};

// Installation, project, lookup and tool files
inline constexpr Report no_such_library{"type < GEN_LIB_SIZE", "gen_path", 474};
inline constexpr Report no_relative_path{"path != NULL", "gen_path", 1268};
inline constexpr Report no_temp_directory{
    "Both /var/tmp and /tmp temporary directories do not exist", "gen_path", 1893};
inline constexpr Report no_libraries{"korvane_libs != 0", "gen_path", 2601};
inline constexpr Report no_eda_libraries{"korvane_eda_libs != 0", "gen_path", 2749};
// The two of a source search, through all groups and through the shipped libraries alone.
inline constexpr Report no_libraries_for_sources{"korvane_libs != 0", "gen_path", 2932};
// MUTANT_EXCL_LINE: is never reported today
inline constexpr Report no_order_for_sources{"file_type_order != 0", "gen_path", 2933};
inline constexpr Report no_libraries_for_shipped{"korvane_libs != 0", "gen_path", 3042};
// MUTANT_EXCL_LINE: is never reported today
inline constexpr Report no_order_for_shipped{"file_type_order != 0", "gen_path", 3043};

// Strings: a number without digits, for either argument of the form for pointers, then of the form
// for positions in a STR
inline constexpr Report no_digit_at_1{"::gen_ascii_isdigit(**str1_iter)", "gen_string", 662};
inline constexpr Report no_digit_at_2{"::gen_ascii_isdigit(**str2_iter)", "gen_string", 672};
inline constexpr Report no_digit_in_1{"::gen_ascii_isdigit(**str1_iter)", "gen_string", 819};
inline constexpr Report no_digit_in_2{"::gen_ascii_isdigit(**str2_iter)", "gen_string", 829};
inline constexpr Report no_radix{"radix > 1", "gen_string", 1111};
inline constexpr Report no_wildcard{"wildcard != 0", "gen_string", 1681};
inline constexpr Report no_such_hash_size{"rval != 0", "gen_string", 2837};

// Messages: the flags that ask for what there is not
inline constexpr Report two_message_sources{"gen_formatmessage: FORMAT_MESSAGE_FROM_SYSTEM and "
                                            "FORMAT_MESSAGE_FROM_HMODULE are not supported",
                                            "gen_string", 2503};
inline constexpr Report string_and_source{two_message_sources.condition, "gen_string", 2511};
inline constexpr Report message_not_from_string{
    "gen_formatmessage: The FORMAT_MESSAGE_FROM_STRING flag must be used", "gen_string", 2517};
inline constexpr Report message_width{
    "gen_formatmessage: FORMAT_MESSAGE_MAX_WIDTH_MASK is not supported.\n", "gen_string", 2522};

// Time units
inline constexpr Report no_such_time_unit{"Could not find index for time unit enum.", "gen_time",
                                          164};
inline constexpr Report no_such_time_freq{"Could not find index for time freq enum.", "gen_time",
                                          331};

} // namespace reports
