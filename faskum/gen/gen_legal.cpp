#include "gen_legal.h"

#include <algorithm>
#include <iterator>
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
        text += line.substr(0, last + 2); // npos + 2 is 1
    }
    return text;
}

STR comment(char const* prefix, std::span<char const* const> lines) {
    std::string_view const leader = prefix != nullptr ? prefix : "";
    STR text;
    for (std::string_view const line : lines) {
        text += leader;
        text += line;
        text += '\n';
    }
    return text;
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
    char const* lines[1 + std::size(GEN_LEGAL_BANNER_ARRAY)] = {ver_get_dravik_copyright_ascii()};
    std::copy(std::begin(GEN_LEGAL_BANNER_ARRAY), std::end(GEN_LEGAL_BANNER_ARRAY), lines + 1);
    return comment(prefix, lines);
}

STR gen_get_do_not_edit_text(char const* prefix) {
    return comment(prefix, do_not_edit_lines);
}
