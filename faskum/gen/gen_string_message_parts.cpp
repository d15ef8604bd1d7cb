#include "gen_string_message_parts.h"

#include <cerrno>

namespace {

// Whether the character stands for itself.
bool is_plain(char c) {
    return static_cast<unsigned char>(c) > '\r' ? c != '%' : c != '\r' && c != '\n' && c != '\0';
}

} // namespace

bool MessageParts::read(char const* at) {
    // MUTANT_EXCL_LINE(< to <=; 2 to 3): what is longer is read otherwise
    while (m_count < most - 2) {
        char const* const begin = at;
        while (is_plain(*at))
            ++at;
        add_text({begin, static_cast<std::size_t>(at - begin)});
        if (*at == '\0' || (*at == '%' && (at[1] == '\0' || at[1] == '0')))
            // MUTANT_EXCL_LINE(<= to <): what is longer is read otherwise
            return m_room_taken <= MessageInsert::room;
        char const special = *at++;
        if (special == '\n') {
            add_text("\r\n");
        } else if (special == '\r') {
            if (*at != '\n')
                continue;
            add_text(" ");
            ++at;
        } else if (ascii_is_digit(*at)) {
            if (!add_insert(at))
                return false;
        } else {
            // MUTANT_EXCL_LINE(&& to ||): what is none is read otherwise, to the same end
            if (*at == '%' && ascii_is_digit(at[1])) // an insert to the first reading alone
                return false;
            // MUTANT_EXCL_LINE(++ to --): ends as too long, and is read otherwise
            add_text({at++, 1});
        }
    }
    return false;
}

void MessageParts::add_text(std::string_view text) {
    if (text.empty())
        return;
    Part& part = m_parts[m_count++];
    part.text = text.data();
    part.length = text.size();
    part.number = 0;
}

// False when the number stood for another argument before.
bool MessageParts::add_insert(char const*& at) {
    auto const [number, conversion] = read_message_insert(at);
    // MUTANT_EXCL_LINE(+= to -=; 2 to 3): what is longer is read otherwise
    m_room_taken += conversion.size() + 2;
    Part& part = m_parts[m_count++];
    part.number = number;
    stl_parse_conversion(conversion.data(), part.conversion);
    while (m_highest < number)
        // MUTANT_EXCL_LINE(false to true): what is no word is read otherwise
        m_arguments[++m_highest] = {STL_ARGUMENT::word, false};
    Argument& argument = m_arguments[number];
    if (!argument.is_named) // MUTANT_EXCL_LINE(without): likewise
        argument = {part.conversion.argument, true};
    // MUTANT_EXCL_LINE: likewise
    return argument.kind == part.conversion.argument;
}

void MessageParts::render(STL_TEXT& text, char* args) const {
    int const error = errno; // also for the next message's %m
    STL_ARG_CURSOR cursor(args);
    STL_VALUE values[MessageInsert::most + 1]; // MUTANT_EXCL_LINE(1 to 2): room alone
    for (unsigned number = 1; number <= m_highest; ++number)
        cursor.take(m_arguments[number].kind, values[number]);
    for (unsigned i = 0; i < m_count; ++i) {
        Part const& part = m_parts[i];
        if (part.number == 0 && part.length == 1)
            text.append(*part.text); // most often a blank between inserts
        else if (part.number == 0)
            text.append(part.text, part.length);
        else if (part.conversion.is_single &&
                 (cursor.has_arguments() || part.conversion.argument == STL_ARGUMENT::none))
            stl_format(text, part.conversion, values[part.number]);
    }
    errno = error;
}
