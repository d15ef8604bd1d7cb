#include "value.h"

#include <cstring>
#include <initializer_list>

namespace korvane {

namespace {

bool is_utf8_system() {
    return std::strcmp(Tcl_GetEncodingName(nullptr), "utf-8") == 0;
}

/// How many bytes of @p text are one character of UTF-8, or 0.
std::size_t character_size(std::string_view text) {
    auto const lead = static_cast<unsigned char>(text[0]);
    std::size_t const size = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
    if (size == 0 || text.size() < size)
        return 0;
    for (std::size_t i = 1; i < size; ++i)
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80)
            return 0;
    auto const second = size > 1 ? static_cast<unsigned char>(text[1]) : 0;
    bool const is_too_long = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    bool const is_none = (lead == 0xED && second >= 0xA0) || (lead == 0xF4 && second >= 0x90);
    return is_too_long || is_none ? 0 : size;
}

/// Whether the text begins with a character above U+FFFF, which Tcl may keep as a pair of
/// surrogates.
bool begins_with_pair(std::string_view text) {
    auto const is_surrogate = [text](std::size_t at, unsigned char half) {
        return text[at] == '\xED' && (static_cast<unsigned char>(text[at + 1]) & 0xF0) == half;
    };
    return text.size() >= 6 && is_surrogate(0, 0xA0) && is_surrogate(3, 0xB0);
}

/// The byte that the characters U+DC80 to U+DCFF stand for, at the beginning of the text; -1 for
/// others.
int escaped_byte(std::string_view text) {
    if (text.size() < 3 || text[0] != '\xED' || (text[1] != '\xB2' && text[1] != '\xB3'))
        return -1;
    int const code = ((text[1] & 0x3F) << 6 | (text[2] & 0x3F)) & 0xFF;
    return code >= 0x80 ? code : -1;
}

void append_decoded(std::string& out, std::string_view bytes) {
    Tcl_DString decoded;
    Tcl_ExternalToUtfDString(nullptr, bytes.data(), static_cast<int>(bytes.size()), &decoded);
    out.append(Tcl_DStringValue(&decoded), static_cast<std::size_t>(Tcl_DStringLength(&decoded)));
    Tcl_DStringFree(&decoded);
}

void append_encoded(std::string& out, std::string_view text) {
    Tcl_DString encoded;
    Tcl_UtfToExternalDString(nullptr, text.data(), static_cast<int>(text.size()), &encoded);
    out.append(Tcl_DStringValue(&encoded), static_cast<std::size_t>(Tcl_DStringLength(&encoded)));
    Tcl_DStringFree(&encoded);
}

/// The beginning of the text, up to the first place for which @p ends gives 0; elsewhere it gives
/// how many bytes to step over.
template <typename Ends>
std::string_view part_before(std::string_view text, Ends ends) {
    std::size_t size = 0;
    while (size < text.size()) {
        std::size_t const step = ends(text.substr(size));
        if (step == 0)
            break;
        size += step;
    }
    return text.substr(0, size);
}

Tcl_Obj* cell_of(gen_c_table const* table, std::size_t row, std::size_t column) {
    switch (gen_c_table_kind(table, row, column)) {
    case GEN_C_TEXT: {
        char const* const text = gen_c_table_text(table, row, column);
        return object_of(text, std::strlen(text));
    }
    case GEN_C_INTEGER:
    case GEN_C_TRUTH:
        return Tcl_NewWideIntObj(gen_c_table_integer(table, row, column));
    case GEN_C_REAL:
        return Tcl_NewDoubleObj(gen_c_table_real(table, row, column));
    case GEN_C_NOTHING:
        break;
    }
    return Tcl_NewObj();
}

int raise(Tcl_Interp* interp, char const* code, std::initializer_list<Tcl_Obj*> details,
          char const* message) {
    Tcl_Obj* const words[] = {Tcl_NewStringObj("KORVANE", -1), Tcl_NewStringObj(code, -1)};
    Tcl_Obj* const list = Tcl_NewListObj(2, words);
    for (Tcl_Obj* const detail : details)
        Tcl_ListObjAppendElement(nullptr, list, detail);
    Tcl_SetObjErrorCode(interp, list);
    Tcl_SetObjResult(interp, object_of(message, std::strlen(message)));
    return TCL_ERROR;
}

} // namespace

bool complain(Tcl_Interp* interp, std::string_view argument, std::string const& complaint) {
    std::string const message = "argument \"" + std::string(argument) + "\" " + complaint;
    raise(interp, "ARGUMENT", {object_of(argument.data(), argument.size())}, message.c_str());
    return false;
}

Tcl_Obj* reports() {
    Tcl_Obj* const list = Tcl_NewListObj(0, nullptr);
    for (std::size_t i = 0; i < gen_c_report_count(); ++i) {
        char const* condition = nullptr;
        char const* source = nullptr;
        int line = 0;
        gen_c_report(i, &condition, &source, &line);
        Tcl_Obj* const report = Tcl_NewDictObj();
        Tcl_DictObjPut(nullptr, report, Tcl_NewStringObj("condition", -1),
                       object_of(condition, std::strlen(condition)));
        Tcl_DictObjPut(nullptr, report, Tcl_NewStringObj("source", -1),
                       Tcl_NewStringObj(source, -1));
        Tcl_DictObjPut(nullptr, report, Tcl_NewStringObj("line", -1), Tcl_NewIntObj(line));
        Tcl_ListObjAppendElement(nullptr, list, report);
    }
    return list;
}

int raise_internal_error(Tcl_Interp* interp, Tcl_Obj* answer) {
    char const* condition = "";
    gen_c_report(0, &condition, nullptr, nullptr);
    return raise(interp, "INTERNAL", {reports(), answer}, condition);
}

int raise_status(Tcl_Interp* interp, gen_c_status status) {
    switch (status) {
    case GEN_C_NOT_STARTED:
        return raise(interp, "NOT_STARTED", {}, "this needs \"gen start\"");
    case GEN_C_FAILED:
        return raise(interp, "FAILED", {}, gen_c_reason());
    case GEN_C_BAD_ARGUMENT: {
        std::string_view const reason = gen_c_reason(); // begins with the argument's name
        std::string_view const name = reason.substr(0, reason.find_first_of(" :"));
        return raise(interp, "ARGUMENT",
                     {Tcl_NewStringObj(name.data(), static_cast<int>(name.size()))},
                     gen_c_reason());
    }
    default:
        return raise(interp, "NO_MEMORY", {}, "out of memory");
    }
}

Tcl_Obj* object_of(char const* bytes, std::size_t size) {
    std::string_view rest(bytes, size);
    if (is_ascii(rest))
        return Tcl_NewStringObj(bytes, static_cast<int>(size));
    std::string text;
    bool const is_utf8 = is_utf8_system();
    while (!rest.empty()) {
        std::string_view const valid = is_utf8 ? part_before(rest, character_size) : rest;
        append_decoded(text, valid);
        rest.remove_prefix(valid.size());
        if (rest.empty())
            break;
        auto const byte = static_cast<unsigned char>(rest[0]);
        text +=
            {'\xED', static_cast<char>(0xB0 | byte >> 6), static_cast<char>(0x80 | (byte & 0x3F))};
        rest.remove_prefix(1);
    }
    return Tcl_NewStringObj(text.data(), static_cast<int>(text.size()));
}

bool Text::take_any(Tcl_Interp* interp, std::string_view text, std::string_view argument) {
    while (!text.empty()) {
        std::string_view const plain = part_before(text, [](std::string_view rest) {
            return begins_with_pair(rest) ? 6U : escaped_byte(rest) < 0 ? 1U : 0U;
        });
        append_encoded(m_encoded, plain);
        text.remove_prefix(plain.size());
        if (text.empty())
            break;
        m_encoded += static_cast<char>(escaped_byte(text));
        text.remove_prefix(3);
    }
    m_bytes = m_encoded.c_str();
    return m_encoded.find('\0') == std::string::npos ||
           complain(interp, argument, "contains a null character");
}

Tcl_Obj* rows_of(gen_c_table const* table) {
    Tcl_Obj* const rows = Tcl_NewListObj(0, nullptr);
    for (std::size_t row = 0; row < gen_c_table_rows(table); ++row) {
        Tcl_Obj* const record = Tcl_NewDictObj();
        for (std::size_t column = 0; column < gen_c_table_columns(table); ++column)
            Tcl_DictObjPut(nullptr, record, Tcl_NewStringObj(gen_c_table_name(table, column), -1),
                           cell_of(table, row, column));
        Tcl_ListObjAppendElement(nullptr, rows, record);
    }
    return rows;
}

} // namespace korvane
