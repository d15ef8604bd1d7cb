#include "gen_string_message_parts.h"

#include <cerrno>

namespace {

// Whether the character stands for itself.
bool is_plain(char c) {
    return static_cast<unsigned char>(c) > '\r' ? c != '%' : c != '\r' && c != '\n' && c != '\0';
}

} // namespace

bool MessageParts::read(char const* at) {
    // A round adds two parts at most.
    // MUTANT_EXCL_LINE(< to <=; 2 to 3): what is longer is read otherwise
    while (m_count + 2 < max_parts) {
        char const* const begin = at;
        while (is_plain(*at))
            ++at;
        add_text({begin, static_cast<std::size_t>(at - begin)});
        if (*at == '\0' || (*at == '%' && (at[1] == '\0' || at[1] == '0')))
            // MUTANT_EXCL_LINE(<= to <): what is longer is read otherwise
            return m_conversions_size <= MessageInsert::conversion_capacity;
        char const special = *at++;
        if (special == '\n') {
            add_text("\r\n");
        } else if (special == '\r') {
            if (*at != '\n')
                continue;
            add_text(" ");
            ++at;
        } else if (ascii_is_digit(*at)) {
            at = add_insert(at);
            if (at == nullptr)
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
    part.number = 0;
    part.conversion.begin = text.data();
    part.conversion.end = text.data() + text.size();
}

// Gives what follows the insert; null when the number stood for another argument before.
inline char const* MessageParts::add_insert(char const* at) {
    auto const [number, conversion] = read_message_insert(at);
    // MUTANT_EXCL_LINE(+= to -=; 2 to 3): what is longer is read otherwise
    m_conversions_size += conversion.size() + 2;
    Part& part = m_parts[m_count++];
    part.number = number;
    // No NUL ends it here, but the "!" behind it, of which no conversion has one.
    stl_parse_conversion(conversion.data(), part.conversion);
    while (m_highest < number)
        // MUTANT_EXCL_LINE(false to true): what is no word is read otherwise
        m_arguments[++m_highest] = {STL_ARGUMENT::word, false};
    Argument& argument = m_arguments[number];
    if (!argument.is_named) // MUTANT_EXCL_LINE(without): likewise
        argument = {part.conversion.argument, true};
    // MUTANT_EXCL_LINE: likewise
    return argument.kind == part.conversion.argument ? at : nullptr;
}

void MessageParts::render(STL_TEXT& text, char* args) const {
    int const error = errno; // also for the next message's %m
    STL_ARG_CURSOR cursor(args);
    STL_VALUE values[MessageInsert::max_number + 1]; // MUTANT_EXCL_LINE(1 to 2): room alone
    for (unsigned number = 1; number <= m_highest; ++number)
        cursor.take(m_arguments[number].kind, values[number]);
    for (unsigned i = 0; i < m_count; ++i) {
        auto const& [number, conversion] = m_parts[i];
        auto const length = static_cast<std::size_t>(conversion.end - conversion.begin);
        if (number == 0 && length == 1)
            text.append(*conversion.begin); // most often a blank between inserts
        else if (number == 0)
            text.append(conversion.begin, length);
        else if (conversion.is_single &&
                 (cursor.has_arguments() || conversion.argument == STL_ARGUMENT::none))
            stl_format(text, conversion, values[number]);
    }
    errno = error;
}
