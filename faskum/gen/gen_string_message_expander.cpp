#include "gen_string_message_expander.h"

#include "gen_string_message_format.h"

#include <algorithm>
#include <cstring>

namespace {

char const* end_of_run(char const* at) {
    while (is_message_plain(*at))
        ++at;
    return at;
}

} // namespace

std::size_t MESSAGE_INSERTS::scan(char const* format) {
    char const* const begin = format;
    char const* literal = format; // what stands before it, the second reading prints as it is
    char const* at;
    while (*(at = strchrnul(format, '%')) != '\0') {
        format = at + 1;
        if (!is_message_digit(*format)) {
            if (at >= literal)
                literal = at + 2;
            continue;
        }
        m_readings_agree &= at >= literal;
        if (*format == '0')
            break;
        record(format);
    }
    m_end = 0;
    return static_cast<std::size_t>(at - begin);
}

void MESSAGE_INSERTS::mark_used(unsigned number) {
    for (; m_highest < number; ++m_highest)
        m_used[m_highest + 1] = false;
    m_used[number] = true;
}

void MESSAGE_INSERTS::put(char c) {
    if (m_end < capacity - 1)
        m_buffer[m_end++] = c;
}

void MESSAGE_INSERTS::put_conversion(char const*& at) {
    put('%');
    for (char const c : read_message_conversion(at))
        put(c);
}

MESSAGE_INSERTS::RECORDED MESSAGE_INSERTS::record(char const*& at) {
    unsigned const number = read_message_number(at);
    bool const was_used = is_used(number);
    unsigned const begin = m_end;
    unsigned const old_begin = was_used ? m_begin[number] : begin;

    mark_used(number);
    m_begin[number] = static_cast<unsigned short>(begin);
    put_conversion(at);
    if (m_end < capacity - 1)
        m_buffer[m_end++] = '\0';
    else
        m_buffer[begin] = '\0'; // the whole of it has no room

    if (!m_readings_agree)
        return {number, 1};
    bool const same =
        begin == old_begin || std::strcmp(m_buffer + begin, m_buffer + old_begin) == 0;
    return {number, same ? most + 1 : number};
}

void MESSAGE_EXPANDER::expand() {
    // Arguments are of any length; this much spares most texts all growing but once.
    constexpr std::size_t usual_length = 12;
    std::size_t const length = m_inserts.scan(m_format);
    m_out.reserve(m_out.size() + length + usual_length * m_inserts.highest());
    std::fill_n(m_in_text, m_inserts.highest() + 1, false);
    m_places[1] = m_cursor.place();
    for (char const* at = m_format;;) {
        at = append_plain(at);
        if (at[0] == '\0' || at[1] == '\0' || at[1] == '0')
            return;
        ++at;
        if (is_message_digit(*at))
            insert(at);
        else
            m_out += *at++;
    }
}

// Gives the place of the next "%", or of the end.
char const* MESSAGE_EXPANDER::append_plain(char const* at) {
    for (;;) {
        char const* const end = end_of_run(at);
        m_out.append(at, end);
        at = end + 1;
        if (*end == '\n') {
            m_out += "\r\n";
        } else if (*end != '\r') {
            return end;
        } else if (*at == '\n') {
            m_out += ' ';
            ++at;
        }
    }
}

void MESSAGE_EXPANDER::insert(char const*& at) {
    auto const [number, changed_from] = m_inserts.record(at);
    if (changed_from <= MESSAGE_INSERTS::most)
        forget(changed_from);
    go_before(number);
    append_argument(number);
}

void MESSAGE_EXPANDER::forget(unsigned changed_from) {
    m_known = std::min(m_known, changed_from);
    if (changed_from <= m_inserts.highest())
        std::fill(m_in_text + changed_from, m_in_text + m_inserts.highest() + 1, false);
}

void MESSAGE_EXPANDER::go_before(unsigned number) {
    if (number == m_counter + 1)
        return;
    unsigned const nearest = std::min(number, m_known);
    if (number <= m_counter || nearest > m_counter + 1) {
        m_cursor.go_to(m_places[nearest]);
        m_counter = nearest - 1;
    }
    while (m_counter + 1 < number)
        step_over(m_counter + 1);
}

void MESSAGE_EXPANDER::append_argument(unsigned number) {
    PIECE& piece = m_pieces[number];
    if (m_in_text[number]) {
        m_out.append(m_out, piece.begin, piece.length);
        m_cursor.go_to(m_places[number + 1]);
        m_counter = number;
        return;
    }
    piece.begin = m_out.size();
    m_cursor.output(&m_out, m_inserts.conversion(number));
    piece.length = m_out.size() - piece.begin;
    stepped(number);
    m_in_text[number] = m_known > number;
}

void MESSAGE_EXPANDER::step_over(unsigned number) {
    if (m_inserts.is_used(number))
        m_cursor.skip(m_inserts.conversion(number));
    else
        m_cursor.skip_word();
    stepped(number);
}

void MESSAGE_EXPANDER::stepped(unsigned number) {
    m_counter = number;
    m_places[number + 1] = m_cursor.place();
    if (m_known == number)
        m_known = number + 1;
}
