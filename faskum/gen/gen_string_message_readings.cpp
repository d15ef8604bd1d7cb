#include "gen_string_message_readings.h"

#include <cstring>

void MessageReadings::expand() {
    m_buffer[MessageInsert::conversion_capacity] =
        '\0'; // ends what the second reading has half written over
    read_inserts();
    m_end = 0;
    read_all();
}

void MessageReadings::read_inserts() {
    for (char const* at = strchrnul(m_format, '%'); *at != '\0'; at = strchrnul(at, '%')) {
        ++at;
        if (*at == '0')
            return;
        if (ascii_is_digit(*at))
            record(at);
    }
}

void MessageReadings::read_all() {
    for (char const* at = m_format; *at != '\0';) {
        if (*at != '%') {
            at = read_plain(at);
        } else if (at[1] == '\0' || at[1] == '0') {
            return;
        } else if (ascii_is_digit(*++at)) {
            append_argument(record(at));
        } else {
            m_text.append(*at++);
        }
    }
}

// Reads one character that is no "%", or a line end of two.
char const* MessageReadings::read_plain(char const* at) {
    if (*at == '\n') {
        m_text.append("\r\n", 2);
    } else if (*at != '\r') {
        m_text.append(*at);
    } else if (at[1] == '\n') {
        m_text.append(' ');
        ++at;
    }
    return at + 1;
}

unsigned MessageReadings::record(char const*& at) {
    auto const [number, conversion] = read_message_insert(at);
    m_is_used[number] = true;
    unsigned const begin = m_end;
    m_begin[number] = static_cast<unsigned short>(begin);
    put('%');
    for (char const c : conversion)
        put(c);
    if (!put('\0'))             // MUTANT_EXCL_LINE('\0' to '~'): no conversion has either
        m_buffer[begin] = '\0'; // the whole of it has no room
    return number;
}

bool MessageReadings::put(char c) {
    if (m_end == MessageInsert::conversion_capacity)
        return false;
    m_buffer[m_end++] = c;
    return true;
}

// What stands in the buffer now.
STL_CONVERSION MessageReadings::conversion(unsigned number) const {
    char const* const text = m_buffer + m_begin[number];
    STL_CONVERSION conversion;
    stl_parse_conversion(*text == '%' ? text + 1 : "", conversion);
    return conversion;
}

void MessageReadings::append_argument(unsigned number) {
    if (number <= m_counter) {
        m_cursor.reset();
        m_counter = 0;
    }
    STL_VALUE passed_over;
    while (++m_counter < number)
        m_cursor.take(m_is_used[m_counter] ? conversion(m_counter).argument : STL_ARGUMENT::word,
                      passed_over);
    m_cursor.output(m_text, conversion(number));
}
