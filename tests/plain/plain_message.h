#pragma once

/// The expansion of messages written down as it is defined: two passes over the format, and for
/// every insert all arguments from the cursor on formatted and thrown away again but for the wanted
/// one.

#include "stl.h"

#include <cstddef>
#include <string>

class PlainMessage {
  public:
    static void expand(STR& out, char const* format, char* args) {
        PlainMessage message(out, args);
        message.read(format, false);
        message.read(format, true);
    }

  private:
    PlainMessage(STR& out, char* args) : m_out(out), m_cursor(args) {}

    static bool is_digit(char c) { return c >= '0' && c <= '9'; }

    void read(char const* at, bool printing) {
        m_end = 0;
        m_counter = 0;
        m_cursor.reset();
        while (*at != '\0') {
            if (*at != '%') {
                at = read_plain(at, printing);
            } else if (at[1] == '0') {
                return;
            } else if (is_digit(at[1])) {
                at = read_insert(at + 1, printing);
            } else if (!printing) {
                ++at;
            } else if (at[1] == '\0') {
                return;
            } else {
                m_out += at[1];
                at += 2;
            }
        }
    }

    char const* read_plain(char const* at, bool printing) {
        if (!printing)
            return at + 1;
        if (*at == '\r' && at[1] == '\n') {
            m_out += ' ';
            return at + 2;
        }
        if (*at == '\n')
            m_out += "\r\n";
        else if (*at != '\r')
            m_out += *at;
        return at + 1;
    }

    char const* read_insert(char const* at, bool printing) {
        std::size_t number = static_cast<std::size_t>(*at++ - '0');
        if (is_digit(*at))
            number = 10 * number + static_cast<std::size_t>(*at++ - '0');
        if (number > m_highest) {
            for (std::size_t between = m_highest + 1; between < number; ++between)
                m_used[between] = false;
            m_highest = number;
        }
        m_used[number] = true;
        m_conversion[number] = m_end;
        at = read_conversion(at);
        if (!store('\0'))
            m_buffer[m_conversion[number]] = '\0';
        if (printing)
            print(number);
        return at;
    }

    char const* read_conversion(char const* at) {
        store('%');
        if (*at != '!') {
            store('s');
            return at;
        }
        for (++at; *at != '\0' && *at != '!'; ++at)
            store(*at);
        return *at == '!' ? at + 1 : at;
    }

    bool store(char c) {
        if (m_end == sizeof m_buffer - 1)
            return false;
        m_buffer[m_end++] = c;
        return true;
    }

    void print(std::size_t wanted) {
        if (wanted <= m_counter) {
            m_cursor.reset();
            m_counter = 0;
        }
        while (m_counter < wanted) {
            ++m_counter;
            if (!m_used[m_counter]) {
                STL_VALUE passed_over;
                m_cursor.take(STL_ARGUMENT::word, passed_over);
                continue;
            }
            std::size_t const before = m_out.size();
            append(m_buffer + m_conversion[m_counter]);
            if (m_counter != wanted)
                m_out.erase(before);
        }
    }

    // The argument at the cursor, as stl_output would append it.
    void append(char const* conversion) {
        STL_CONVERSION parsed;
        stl_parse_conversion(*conversion == '%' ? conversion + 1 : "", parsed);
        STL_TEXT text;
        m_cursor.output(text, parsed);
        text.append_to(m_out);
    }

    STR& m_out;
    STL_ARG_CURSOR m_cursor;
    std::size_t m_end = 0;
    std::size_t m_counter = 0;
    std::size_t m_highest = 0;
    bool m_used[100] = {};
    std::size_t m_conversion[100] = {};
    char m_buffer[4096] = {};
};
