// The expansion of messages against its plain form, and what the front end stores of it.

#include "fuzz_input.h"
#include "gen_string_message.h"
#include "plain_message.h"

#include <string_view>
#include <sys/mman.h>

namespace {

/// As many words as 99 inserts can reach, each of them harmless as whatever it is taken for: the
/// address of a string, wide or not, which is a small number as well.
char* harmless_arguments() {
    static STL_ARG_LIST list;
    static bool made = false;
    if (!made) {
        constexpr std::size_t page_size = 4096;
        void* const page = mmap(reinterpret_cast<void*>(0x10000), page_size, PROT_READ | PROT_WRITE,
                                MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
        require(page != MAP_FAILED, "a page at a low address");
        std::strcpy(static_cast<char*>(page), "text");
        mprotect(page, page_size, PROT_READ); // nothing may write through an argument
        for (int i = 0; i < 600; ++i)
            list.add(page);
        made = true;
    }
    return list.args();
}

/// Widths of millions would only cost time.
bool has_long_number(std::string const& text) {
    unsigned digits = 0;
    for (char const c : text) {
        digits = c >= '0' && c <= '9' ? digits + 1 : 0;
        if (digits > 3)
            return true;
    }
    return false;
}

/// Into a buffer of exactly @p size characters.
void compare_stored(std::string_view text, unsigned long flags, char const* format,
                    unsigned long size) {
    FuzzText const buffer(std::string(size, '?'));
    unsigned long const stored =
        gen_formatmessage(flags, format, 0, 0, buffer.get(), size, harmless_arguments());
    std::size_t const expected = size == 0 ? 0 : std::min<std::size_t>(text.size(), size - 1U);
    require(stored == expected, "number stored");
    require(std::memcmp(buffer.get(), text.data(), stored) == 0, "characters stored");
    if (stored != 0)
        require(buffer.get()[stored] == '\0', "terminator stored");
}

/// Into a block of at least @p size characters, the rest of which are NULs.
void compare_allocated(std::string_view text, unsigned long flags, char const* format,
                       unsigned long size) {
    char* block = nullptr;
    unsigned long const length =
        gen_formatmessage(flags | FORMAT_MESSAGE_ALLOCATE_BUFFER, format, 0, 0,
                          reinterpret_cast<char*>(&block), size, harmless_arguments());
    std::string expected(text);
    expected.resize(text.empty() ? 0 : std::max<std::size_t>(text.size(), size));
    require(length == expected.size(), "size of the block");
    require((block == nullptr) == text.empty(), "block only for a text");
    if (block != nullptr)
        require(std::memcmp(block, expected.c_str(), expected.size() + 1) == 0, "block filled");
    std::free(block);
}

/// What of the format the front end stores.
void compare_front_end(STR const& expansion, char const* format, unsigned char size) {
    constexpr unsigned long expanded = FORMAT_MESSAGE_FROM_STRING;
    constexpr unsigned long as_it_is = expanded | FORMAT_MESSAGE_IGNORE_INSERTS;
    compare_stored(expansion, expanded, format, size);
    compare_allocated(expansion, expanded, format, size);
    compare_stored(format, as_it_is, format, size);
    compare_allocated(format, as_it_is, format, size);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzInput input(data, size);
    auto const buffer_size = input.take<unsigned char>();
    std::string const bytes = input.take_rest();
    if (has_long_number(bytes))
        return 0;
    FuzzText const format(bytes);

    STR text;
    gen_formatmessage(text, format.get(), harmless_arguments());
    STR expected;
    PlainMessage::expand(expected, format.get(), harmless_arguments());
    require(text == expected, "expansion");
    compare_front_end(text, format.get(), buffer_size);

    STR unfilled;
    gen_formatmessage(unfilled, format.get(), nullptr);
    STR expected_unfilled;
    PlainMessage::expand(expected_unfilled, format.get(), nullptr);
    require(unfilled == expected_unfilled, "expansion without arguments");
    return 0;
}
