#include "gen_string_message_simple.h"

#include "gen_string_block.h"
#include "gen_string_digits.h"
#include "gen_string_message_format.h"

#include <array>
#include <climits>
#include <cstdint>
#include <cstring>

namespace {

constexpr auto plain_table = [] {
    std::array<bool, 256> table{};
    for (unsigned c = 0; c < table.size(); ++c)
        table[c] = is_message_plain(static_cast<char>(c));
    return table;
}();

// Where the plain characters end.
char const* end_of_run(char const* at) {
    while (plain_table[static_cast<unsigned char>(*at)])
        ++at;
    return at;
}

// Copies a piece to where there is room for a head more. Nothing branches on how short it is, which
// is as good as random.
BLOCK_READS_PAGE char* copy_piece(char* to, char const* piece, std::size_t length) {
    if (length <= block_head_size && block_head_fits(piece)) [[likely]] {
        block_store16(to, block_load16(piece));
        block_store16(to + 16, block_load16(piece + 16));
    } else {
        std::memcpy(to, piece, length);
    }
    return to + length;
}

BLOCK_READS_PAGE std::size_t text_length(char const* text) {
    std::size_t const length = block_head_fits(text) ? block_head_length(text) : block_head_size;
    return length < block_head_size ? length : std::strlen(text);
}

} // namespace

// The functions that handle a single insert come before their callers, and are in line there: to
// call them took a third of the time.

// False when the conversion is not what this number had before.
inline bool SIMPLE_MESSAGE::scan_insert(char const*& at, unsigned& number) {
    number = read_message_number(at);
    std::string_view const conversion = read_message_conversion(at);
    while (m_highest < number)
        m_conversions[++m_highest].text = nullptr;
    SLICE& known = m_conversions[number];
    if (known.text == nullptr) {
        known = {conversion.data(), conversion.size()};
        return true;
    }
    return conversion == std::string_view(known.text, known.length);
}

inline void SIMPLE_MESSAGE::render_number(unsigned number, long long value) {
    auto const magnitude = static_cast<std::uint32_t>(value < 0 ? -value : value);
    auto const digits = digits_of_decimal(magnitude / 100'000'000, magnitude % 100'000'000);
    __m128i text = digits.from_begin();
    if (value < 0)
        text = _mm_or_si128(_mm_slli_si128(text, 1), _mm_cvtsi32_si128('-'));
    block_store16(m_digits[number], text);
    m_pieces[number] = {m_digits[number], digits.length() + (value < 0 ? 1 : 0)};
}

inline void SIMPLE_MESSAGE::render(unsigned number, STL_ARG_CURSOR& cursor) {
    SLICE const& conversion = m_conversions[number];
    switch (conversion.length == 1 ? *conversion.text : '\0') {
    case 's': {
        char const* const argument = cursor.take<char const*>();
        char const* const text = argument != nullptr ? argument : "(null)";
        std::size_t const length = text_length(text);
        m_pieces[number] = {text, length <= INT_MAX ? length : 0}; // printf has no longer ones
        break;
    }
    case 'd':
        render_number(number, cursor.take<int>());
        break;
    case 'u':
        render_number(number, cursor.take<unsigned>());
        break;
    default:
        render_other(number, cursor);
    }
}

bool SIMPLE_MESSAGE::expand(STR& out) {
    if (m_args == nullptr || !scan())
        return false;
    render();
    std::uint64_t const count = length();
    if (count + block_head_size > out.max_size() - out.size())
        return false;
    // Nothing is done to the result before all is written: the pieces may lie in it.
    auto const end = static_cast<std::size_t>(count);
    char block[512];
    if (end + block_head_size <= sizeof block) {
        write(block);
        out.append(block, end);
    } else {
        STR text;
        text.resize(end + block_head_size);
        write(text.data());
        out.append(text, 0, end);
    }
    return true;
}

// False when the format takes MESSAGE_EXPANDER.
bool SIMPLE_MESSAGE::scan() {
    char const* run = m_format;
    for (char const* at = run; m_part_count < most_parts;) {
        at = end_of_run(at);
        PART& part = m_parts[m_part_count++];
        part = {{run, static_cast<std::size_t>(at - run)}, nothing};
        if (*at == '\n') {
            part.behind = line_end;
            run = ++at;
        } else if (*at == '\r') {
            part.behind = at[1] == '\n' ? blank : nothing;
            at += at[1] == '\n' ? 2 : 1;
            run = at;
        } else if (*at == '\0' || at[1] == '\0' || at[1] == '0') {
            return static_cast<std::size_t>(at - m_format) <= longest;
        } else if (is_message_digit(at[1])) {
            if (!scan_insert(++at, part.behind))
                return false;
            run = at;
        } else {
            run = at + 1; // the character behind "%" stands for itself, whatever it is
            at += 2;
            if (*run == '%' && is_message_digit(*at)) // an insert to the first reading alone
                return false;
        }
    }
    return false;
}

void SIMPLE_MESSAGE::render() {
    m_pieces[nothing] = {"", 0};
    m_pieces[line_end] = {"\r\n", 2};
    m_pieces[blank] = {" ", 1};
    STL_ARG_CURSOR cursor(m_args);
    for (unsigned number = 1; number <= m_highest; ++number) {
        if (m_conversions[number].text != nullptr)
            render(number, cursor);
        else
            cursor.skip_word();
    }
    char const* other = m_others.data(); // which stays where it is from now on
    for (unsigned number = 1; number <= m_highest; ++number) {
        SLICE& piece = m_pieces[number];
        if (m_conversions[number].text != nullptr && piece.text == nullptr) {
            piece.text = other;
            other += piece.length;
        }
    }
}

void SIMPLE_MESSAGE::render_other(unsigned number, STL_ARG_CURSOR& cursor) {
    STR conversion(1, '%');
    conversion.append(m_conversions[number].text, m_conversions[number].length);
    std::size_t const before = m_others.size();
    cursor.output(&m_others, conversion.c_str());
    m_pieces[number] = {nullptr, m_others.size() - before};
}

std::uint64_t SIMPLE_MESSAGE::length() const {
    std::uint64_t length = 0;
    for (unsigned i = 0; i < m_part_count; ++i)
        length += std::uint64_t{m_parts[i].run.length} + m_pieces[m_parts[i].behind].length;
    return length;
}

void SIMPLE_MESSAGE::write(char* to) const {
    for (unsigned i = 0; i < m_part_count; ++i) {
        SLICE const& run = m_parts[i].run;
        SLICE const& piece = m_pieces[m_parts[i].behind];
        to = copy_piece(to, run.text, run.length);
        to = copy_piece(to, piece.text, piece.length);
    }
}
