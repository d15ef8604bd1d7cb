// Strings, but for wildcards and messages, which have sources of their own.

#include "gen_c_call.h"
#include "gen_localization.h"
#include "gen_string.h"
#include "integer_reading.h"

#include <cstring>

using namespace gen_c;

gen_c_status gen_c_compare_natural(char const* first, char const* second, int ignore_case,
                                   int* order) {
    if (lacks("first", first) || lacks("second", second) || lacks("order", order))
        return GEN_C_BAD_ARGUMENT;
    *order = ignore_case != 0 ? gen_ilexcmp(first, second) : gen_lexcmp(first, second);
    return GEN_C_OK;
}

gen_c_status gen_c_compare_bytes(char const* first, char const* second, int ignore_case,
                                 int* order) {
    if (lacks("first", first) || lacks("second", second) || lacks("order", order))
        return GEN_C_BAD_ARGUMENT;
    *order = ignore_case != 0 ? gen_stricmp(first, second) : gen_strcmp(first, second);
    return GEN_C_OK;
}

gen_c_status gen_c_fold(char const* text, int upper, gen_c_text* folded) {
    if (lacks("text", text) || lacks("folded", folded))
        return GEN_C_BAD_ARGUMENT;
    gen_c_status const status = put(folded, text);
    if (status == GEN_C_OK && upper != 0)
        gen_ascii_toupper(folded->bytes);
    else if (status == GEN_C_OK)
        gen_ascii_tolower(folded->bytes);
    return status;
}

gen_c_status gen_c_trim(char const* text, int white_space, gen_c_text* trimmed) {
    if (lacks("text", text) || lacks("trimmed", trimmed))
        return GEN_C_BAD_ARGUMENT;
    return put(trimmed, white_space != 0 ? gen_remove_leading_and_trailing_white_spaces(text)
                                         : gen_remove_leading_and_trailing_spaces(text));
}

gen_c_status gen_c_read_integer(char const* text, int32_t* number, size_t* used) {
    if (lacks("text", text) || lacks("number", number))
        return GEN_C_BAD_ARGUMENT;
    STR const digits(text);
    STR::const_iterator position = digits.begin();
    int const value = gen_atoi(digits, &position);
    if (!is_behind_integer(digits, position))
        return GEN_C_NOT_FOUND;
    *number = value;
    if (used != nullptr)
        *used = static_cast<size_t>(position - digits.begin());
    return GEN_C_OK;
}

gen_c_status gen_c_write_integer(int32_t number, int radix, gen_c_text* text) {
    if (lacks("text", text))
        return GEN_C_BAD_ARGUMENT;
    if (radix < 2 || radix > 36)
        return refuse(GEN_C_BAD_ARGUMENT, "radix", " is not from 2 to 36");
    return put(text, gen_itoa(number, radix));
}

gen_c_status gen_c_read_real(char const* text, double* number, size_t* used) {
    if (lacks("text", text) || lacks("number", number))
        return GEN_C_BAD_ARGUMENT;
    char* end = nullptr;
    double const value = gen_local_strtod(text, &end);
    if (end == text)
        return GEN_C_NOT_FOUND;
    *number = value;
    if (used != nullptr)
        *used = static_cast<size_t>(end - text);
    return GEN_C_OK;
}

gen_c_status gen_c_checksum(char const* text, uint32_t* checksum) {
    if (lacks("text", text) || lacks("checksum", checksum))
        return GEN_C_BAD_ARGUMENT;
    *checksum = static_cast<uint32_t>(gen_crc_generator(text));
    return GEN_C_OK;
}

gen_c_status gen_c_checksum_sanitised(char const* text, uint32_t* checksum) {
    if (lacks("text", text) || lacks("checksum", checksum))
        return GEN_C_BAD_ARGUMENT;
    STR copy(text);
    *checksum = static_cast<uint32_t>(gen_crc_string_to_dword(copy.data()));
    return GEN_C_OK;
}

gen_c_status gen_c_sanitise(char const* name, gen_c_text* sanitised) {
    if (lacks("name", name) || lacks("sanitised", sanitised))
        return GEN_C_BAD_ARGUMENT;
    gen_c_status const status = put(sanitised, name);
    if (status != GEN_C_OK)
        return status;
    gen_replace_invalid_chars(sanitised->bytes);
    sanitised->size = std::strlen(sanitised->bytes);
    return GEN_C_OK;
}

gen_c_status gen_c_hash_size(uint32_t number, uint32_t* size) {
    if (lacks("size", size))
        return GEN_C_BAD_ARGUMENT;
    Reports const reports;
    *size = gen_hash_next_size(number);
    return reports.status();
}
