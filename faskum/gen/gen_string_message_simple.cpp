#include "gen_string_message_simple.h"

#include "gen_string_message_format.h"

#include <charconv>
#include <climits>
#include <cstdint>
#include <cstring>

namespace {

// Most pieces are shorter than what a call for their copy would cost.
char* copy_piece(char* to, char const* piece, std::size_t length) {
    constexpr std::size_t half = 8;
    if (length > 2 * half) {
        std::memcpy(to, piece, length);
    } else if (length >= half) {
        std::memcpy(to, piece, half);
        std::memcpy(to + length - half, piece + length - half, half);
    } else {
        for (std::size_t i = 0; i < length; ++i)
            to[i] = piece[i];
    }
    return to + length;
}

} // namespace

bool SIMPLE_MESSAGE::expand(STR& out) {
    if (m_args == nullptr || !scan())
        return false;
    render();
    std::uint64_t const room = gather_pieces();
    std::size_t const before = out.size();
    if (room > out.max_size() - before)
        return false;
    out.resize(before + static_cast<std::size_t>(room));
    char const* const end = write(out.data() + before);
    out.resize(static_cast<std::size_t>(end - out.data()));
    return true;
}

bool SIMPLE_MESSAGE::scan() {
    for (char const* at = m_format;;) {
        while (is_message_plain(*at))
            ++at;
        if (*at == '\r' || *at == '\n') {
            m_line_feeds += *at++ == '\n' ? 1U : 0U;
        } else if (*at == '\0' || at[1] == '\0' || at[1] == '0') {
            m_end = at;
            return static_cast<std::size_t>(at - m_format) <= longest;
        } else if (is_message_digit(at[1])) {
            if (!scan_insert(++at))
                return false;
        } else {
            at += 2;
            if (at[-1] == '%' && is_message_digit(*at)) // an insert to the first reading alone
                return false;
        }
    }
}

// False when the conversion is not what this number had before.
bool SIMPLE_MESSAGE::scan_insert(char const*& at) {
    unsigned const number = read_message_number(at);
    char const* conversion = "s";
    char const* end = conversion + 1;
    if (*at == '!') {
        conversion = ++at;
        while (*at != '\0' && *at != '!')
            ++at;
        end = at;
        if (*at == '!')
            ++at;
    }
    auto const length = static_cast<std::size_t>(end - conversion);

    while (m_highest < number)
        m_inserts[++m_highest].uses = 0;
    INSERT& insert = m_inserts[number];
    if (insert.uses++ == 0) {
        insert.conversion = conversion;
        insert.conversion_length = length;
        return true;
    }
    return length == insert.conversion_length &&
           std::memcmp(conversion, insert.conversion, length) == 0;
}

void SIMPLE_MESSAGE::render() {
    STL_ARG_CURSOR cursor(m_args);
    for (unsigned number = 1; number <= m_highest; ++number) {
        if (m_inserts[number].uses != 0)
            render(m_inserts[number], cursor);
        else
            cursor.skip_word();
    }
}

void SIMPLE_MESSAGE::render(INSERT& insert, STL_ARG_CURSOR& cursor) {
    switch (insert.conversion_length == 1 ? *insert.conversion : '\0') {
    case 's': {
        char const* const text = cursor.take<char const*>();
        insert.piece = text != nullptr ? text : "(null)";
        insert.piece_length = std::strlen(insert.piece);
        if (insert.piece_length > INT_MAX) // printf has no longer ones
            insert.piece_length = 0;
        break;
    }
    case 'd':
        render_digits(insert, cursor.take<int>());
        break;
    case 'u':
        render_digits(insert, cursor.take<unsigned>());
        break;
    default:
        render_other(insert, cursor);
    }
}

template <typename INTEGER>
void SIMPLE_MESSAGE::render_digits(INSERT& insert, INTEGER value) {
    insert.piece = m_digits_end;
    m_digits_end = std::to_chars(m_digits_end, m_digits_end + most_digits, value).ptr;
    insert.piece_length = static_cast<std::size_t>(m_digits_end - insert.piece);
}

void SIMPLE_MESSAGE::render_other(INSERT& insert, STL_ARG_CURSOR& cursor) {
    STR conversion(1, '%');
    conversion.append(insert.conversion, insert.conversion_length);
    std::size_t const before = m_others.size();
    cursor.output(&m_others, conversion.c_str());
    insert.piece = nullptr;
    insert.piece_length = m_others.size() - before;
}

// Gives what the text takes at most, the inserts themselves counted in.
std::uint64_t SIMPLE_MESSAGE::gather_pieces() {
    std::uint64_t room = static_cast<std::size_t>(m_end - m_format) + m_line_feeds;
    char const* other = m_others.data(); // which stays where it is from now on
    for (unsigned number = 1; number <= m_highest; ++number) {
        INSERT& insert = m_inserts[number];
        if (insert.uses == 0)
            continue;
        if (insert.piece == nullptr) {
            insert.piece = other;
            other += insert.piece_length;
        }
        room += std::uint64_t{insert.piece_length} * insert.uses;
    }
    return room;
}

char* SIMPLE_MESSAGE::write(char* to) const {
    for (char const* at = m_format;;) {
        while (is_message_plain(*at))
            *to++ = *at++;
        if (at == m_end)
            return to;
        char const c = *at++;
        if (c == '\n') {
            *to++ = '\r';
            *to++ = '\n';
        } else if (c == '\r') {
            if (*at == '\n') {
                *to++ = ' ';
                ++at;
            }
        } else if (is_message_digit(*at)) {
            to = write_insert(to, at);
        } else {
            *to++ = *at++;
        }
    }
}

char* SIMPLE_MESSAGE::write_insert(char* to, char const*& at) const {
    INSERT const& insert = m_inserts[read_message_number(at)];
    if (*at == '!') {
        at += 1 + insert.conversion_length;
        if (*at == '!')
            ++at;
    }
    return copy_piece(to, insert.piece, insert.piece_length);
}
