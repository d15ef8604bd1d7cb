// Copying and trimming against the rules that define them.

#include "fuzz_input.h"
#include "gen_string_text.h"

static void copy(std::string const& text, unsigned count) {
    FuzzText const source(text);
    std::size_t const length = std::strlen(source.get());
    std::size_t const copied = std::min<std::size_t>(length, count);
    constexpr char old_byte = '\x7E';
    FuzzText const target(std::string(std::max<std::size_t>(count, 1), old_byte));
    char* const buffer = target.get(); // count + 1 bytes, all that may be written

    require(gen_strncpy(buffer, source.get(), count) == buffer, "gen_strncpy's result");
    require(std::memcmp(buffer, source.get(), copied) == 0, "what gen_strncpy copies");
    for (std::size_t i = copied; i < std::max<std::size_t>(count, 1); ++i) {
        bool const cleared = i == copied || i + 1 < count;
        require(buffer[i] == (cleared ? '\0' : old_byte), "what gen_strncpy clears");
    }

    if (count != 0 && count <= length) {
        FuzzBlock const cut(text.substr(0, count));
        gen_strncpy(buffer, cut.get(), count);
        require(std::memcmp(buffer, cut.get(), count) == 0 && buffer[count] == '\0',
                "gen_strncpy without a terminator");
    }

    FuzzText const whole(std::string(2 * length, old_byte));
    require(std::strcmp(gen_strcpy(whole.get(), source.get()), source.get()) == 0, "gen_strcpy");
    gen_strcat(whole.get(), source.get());
    require(std::string(whole.get()) == std::string(source.get()) + source.get(), "gen_strcat");
    std::string reversed(source.get());
    std::reverse(reversed.begin(), reversed.end());
    require(gen_strrev(source.get()) == reversed, "gen_strrev");
}

static void trim(STR const& text, char const* characters, STR const& trimmed) {
    std::size_t const begin = text.find_first_not_of(characters);
    std::size_t const end = text.find_last_not_of(characters);
    STR const expected = begin == STR::npos ? STR() : text.substr(begin, end + 1 - begin);
    require(trimmed == expected, "trimming");
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzInput input(data, size);
    auto const count = input.take<std::uint8_t>();
    std::string const text = input.take_rest();
    copy(text, count);

    STR string(text.data(), text.size());
    trim(string, " ", gen_remove_leading_and_trailing_spaces(string));
    trim(string, " \t\n\r", gen_remove_leading_and_trailing_white_spaces(string));
    STR own = string;
    gen_remove_leading_and_trailing_white_spaces(own, &own);
    trim(string, " \t\n\r", own);
    return 0;
}
