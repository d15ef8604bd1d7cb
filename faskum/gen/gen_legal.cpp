#include "gen_legal.h"

#include <span>
#include <string_view>

#include "ver.h"

namespace {

constexpr char const* do_not_edit_lines[] = {
    "WARNING: Do NOT edit the input and output ports in this file in a text",
    "editor if you plan to continue editing the block that represents it in",
    "the Block Editor! File corruption is VERY likely to occur.",
};

STR paragraph(std::span<char const* const> lines) {
    STR text;
    for (std::string_view const line : lines) {
        std::size_t const last = line.find_last_not_of(' ');
        // One character past the last that is not a blank: the one space that parts two lines.
        text += line.substr(0, last == std::string_view::npos ? 1 : last + 2);
    }
    return text;
}

void append_comment_line(STR& text, std::string_view prefix, std::string_view line) {
    text += prefix;
    text += line;
    text += '\n';
}

std::string_view text_or_empty(char const* text) {
    return text != nullptr ? std::string_view(text) : std::string_view();
}

} // namespace

STR gen_get_legal_banner() {
    return paragraph(GEN_LEGAL_BANNER_ARRAY);
}

STR gen_get_legal_trademark_text() {
    return paragraph(GEN_LEGAL_TRADEMARK_ARRAY);
}

STR gen_get_legal_warning_text() {
    return paragraph(GEN_COPYRIGHT_WARNING_ARRAY);
}

STR gen_get_bitstream_encryption_legal_text() {
    return paragraph(GEN_LEGAL_BSTRM_ENC_ARRAY);
}

STR gen_get_legal_text(char const* prefix) {
    std::string_view const leader = text_or_empty(prefix);
    STR text;
    append_comment_line(text, leader, ver_get_dravik_copyright_ascii());
    for (char const* const line : GEN_LEGAL_BANNER_ARRAY)
        append_comment_line(text, leader, line);
    return text;
}

STR gen_get_do_not_edit_text(char const* prefix) {
    std::string_view const leader = text_or_empty(prefix);
    STR text;
    for (char const* const line : do_not_edit_lines)
        append_comment_line(text, leader, line);
    return text;
}
