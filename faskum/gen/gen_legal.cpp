#include "gen_legal.h"

#include "ver.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string_view>

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

// The wording of the notices. A line ends in a blank where its sentence goes on, in two where the
// sentence ends with it, and in none where a word goes on after its hyphen.

char const* const GEN_LEGAL_BANNER_ARRAY[12] = {
    "This file was written by the korvane design suite of Dravik ",
    "Corporation. The suite, the library functions that come with ",
    "it and the files that they write (netlists, programming and ",
    "simulation files, reports and documentation among them) may be ",
    "used only as the licence agreement for the suite allows, or ",
    "another agreement in writing with Dravik Corporation, and only ",
    "for designs that run in devices of Dravik Corporation.  ",
    "Some library functions are the work of partners and of third-",
    "party developers in one of the Dravik programmes, and carry ",
    "terms of their own beside those of the suite.  ",
    "Read the agreement before you pass this file on; where it and ",
    "this notice differ, the agreement decides.",
};
std::int32_t const GEN_LEGAL_BANNER_ARRAY_SIZE = std::size(GEN_LEGAL_BANNER_ARRAY);

char const* const GEN_LEGAL_TRADEMARK_ARRAY[7] = {
    "Dravik, the Dravik logo, korvane, the korvane logo and the ",
    "names of Dravik device families, programmes and field-",
    "programmable products are trademarks of Dravik Corporation and ",
    "are registered in some countries.  ",
    "Every other brand, company or product name in this file is its ",
    "owner's and is used only to tell which product is meant; ",
    "Dravik Corporation claims no right in it.",
};
std::int32_t const GEN_LEGAL_TRADEMARK_ARRAY_SIZE = std::size(GEN_LEGAL_TRADEMARK_ARRAY);

char const* const GEN_COPYRIGHT_WARNING_ARRAY[5] = {
    "This file is protected by copyright. Nobody may copy, change ",
    "or pass on this file or any part of it, printed, in source ",
    "form or in machine-readable form, unless Dravik Corporation ",
    "has agreed to it in writing or the law permits it.  ",
    "Dravik Corporation will defend its rights where it has to.",
};
std::int32_t const GEN_COPYRIGHT_WARNING_ARRAY_SIZE = std::size(GEN_COPYRIGHT_WARNING_ARRAY);

char const* const GEN_LEGAL_BSTRM_ENC_ARRAY[33] = {
    "This file carries a bitstream that is encrypted, or a key ",
    "that such a bitstream is encrypted with. Bitstream encryption ",
    "protects a design against being read out of its configuration ",
    "memory and against being copied into other devices.  ",
    "By creating, loading or passing on this file you agree to the ",
    "following. You alone are responsible for choosing the key, ",
    "for keeping it secret and for programming it into a device.  ",
    "Dravik Corporation does not keep a copy of any key, cannot ",
    "recover a key that has been lost, and cannot decrypt a ",
    "bitstream for you or for anyone else.  ",
    "A key that has been programmed into one-time-programmable ",
    "fuses cannot be changed or erased; a device with a wrong key ",
    "does not accept the bitstream and may become unusable.  ",
    "Try your key in a device with volatile key storage before you ",
    "program fuses. No method of encryption is proof against every ",
    "attack. Dravik Corporation does not warrant that an encrypted ",
    "bitstream cannot be decrypted, copied, altered or reverse-",
    "engineered, and is not liable for any loss of designs, keys, ",
    "devices, data or profit that follows from the use of this ",
    "feature or from its failure, as far as the law permits such ",
    "an exclusion. The export, import and use of encryption ",
    "technology are regulated by law in many countries. You agree ",
    "to comply with every law that applies where you create this ",
    "file, where you send it and where it is used, and to obtain ",
    "each licence or approval that is needed. You may not use this ",
    "feature to hide a design, a library function or a part of ",
    "either from its rightful owner, nor to get around the terms ",
    "under which Dravik Corporation or a third party has licensed ",
    "it to you. If you do not accept these terms, delete this file ",
    "and switch off bitstream encryption in the settings of your ",
    "project.  ",
    "Your Dravik sales office answers questions about this notice ",
    "and about the protection of designs.",
};
std::int32_t const GEN_LEGAL_BSTRM_ENC_ARRAY_SIZE = std::size(GEN_LEGAL_BSTRM_ENC_ARRAY);
