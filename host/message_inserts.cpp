#include "message_inserts.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>

namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

char letter_of(std::string const& conversion) {
    return conversion[conversion.find_first_not_of("%0123456789.-+ #'IhlLqjzZt")];
}

bool is_wide_character(std::string const& conversion) {
    return letter_of(conversion) == 'C' || conversion.find('l') != conversion.npos;
}

// Nothing when the text is none in the characters of the locale.
std::optional<std::wstring> decoded(std::string const& text) {
    std::wstring wide(text.size(), L'\0');
    std::size_t const count = std::mbstowcs(wide.data(), text.c_str(), wide.size());
    if (count == static_cast<std::size_t>(-1))
        return std::nullopt;
    wide.resize(count);
    return wide;
}

} // namespace

std::string MessageInserts::read(std::string_view format) {
    for (std::size_t at = 0; (at = format.find('%', at)) != format.npos;) {
        std::size_t const first_percent = at;
        at = std::min(format.find_first_not_of('%', at), format.size());
        bool const even = (at - first_percent) % 2 == 0;
        if (at == format.size() || !is_digit(format[at]))
            continue;
        if (even)
            return "a digit behind \"%%\" is taken for an insert and printed all the same";
        if (format[at] == '0')
            break;
        unsigned number = static_cast<unsigned>(format[at++] - '0');
        if (at < format.size() && is_digit(format[at]))
            number = 10 * number + static_cast<unsigned>(format[at++] - '0');
        std::string conversion = "%s";
        if (at < format.size() && format[at] == '!') {
            std::size_t const end = std::min(format.find('!', at + 1), format.size());
            conversion = "%" + std::string(format.substr(at + 1, end - at - 1));
            at = std::min(end + 1, format.size());
        }
        if (std::string fault = add(number, std::move(conversion)); !fault.empty())
            return fault;
    }
    return "";
}

std::string MessageInserts::add(unsigned number, std::string conversion) {
    constexpr std::size_t room = 4095; // for all conversions and their terminators
    m_room_taken += conversion.size() + 1;
    if (m_room_taken > room)
        return "the conversions of the message are longer than gen has room for";
    auto const [known, added] = m_conversions.try_emplace(number, conversion);
    if (!added && stl_argument_of(known->second.c_str()) != stl_argument_of(conversion.c_str()))
        return "insert " + std::to_string(number) + " is taken as \"" + known->second +
               "\" and as \"" + conversion + "\", which are different kinds of argument";
    return "";
}

template <typename T>
bool MessageArguments::add_integer(std::string const& text, bool is_signed) {
    using Unsigned = std::make_unsigned_t<T>;
    char* end = nullptr;
    errno = 0;
    if (is_signed || text.find('-') != text.npos) {
        long long const value = std::strtoll(text.c_str(), &end, 0);
        if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max())
            return false;
        m_list.add(static_cast<T>(value));
    } else {
        unsigned long long const value = std::strtoull(text.c_str(), &end, 0);
        if (value > std::numeric_limits<Unsigned>::max())
            return false;
        m_list.add(static_cast<Unsigned>(value));
    }
    return errno == 0 && end != text.c_str() && *end == '\0';
}

template <typename T>
bool MessageArguments::add_floating(std::string const& text, T (*read)(char const*, char**)) {
    char* end = nullptr;
    errno = 0;
    T const value = read(text.c_str(), &end);
    m_list.add(value);
    bool const is_too_large = errno == ERANGE && std::isinf(value);
    return end != text.c_str() && *end == '\0' && !is_too_large;
}

bool MessageArguments::add_character(std::string const& text) {
    m_list.add(static_cast<int>(static_cast<unsigned char>(text[0])));
    return text.size() == 1;
}

bool MessageArguments::add_wide_character(std::string const& text) {
    std::optional<std::wstring> const wide = decoded(text);
    if (!wide || wide->size() != 1)
        return false;
    m_list.add(static_cast<int>(wide->front()));
    return true;
}

bool MessageArguments::add_wide_text(std::string const& text) {
    std::optional<std::wstring> wide = decoded(text);
    if (!wide)
        return false;
    m_list.add(m_wide_texts.emplace_back(*std::move(wide)).c_str());
    return true;
}

bool MessageArguments::add_pointer(char letter, std::string const& text) {
    if (letter == 'n') {
        m_list.add(&m_written);
        return true;
    }
    return add_integer<std::intptr_t>(text, false);
}

bool MessageArguments::add(std::string const& conversion, std::string const& text) {
    STL_ARGUMENT const argument = stl_argument_of(conversion.c_str());
    if (argument == STL_ARGUMENT::none)
        return true;
    char const letter = letter_of(conversion);
    bool const is_signed = letter == 'd' || letter == 'i';
    switch (argument) {
    case STL_ARGUMENT::none:
        break;
    case STL_ARGUMENT::integer:
        if (letter == 'c' || letter == 'C')
            return is_wide_character(conversion) ? add_wide_character(text) : add_character(text);
        return add_integer<int>(text, is_signed);
    case STL_ARGUMENT::long_integer:
        return add_integer<long>(text, is_signed);
    case STL_ARGUMENT::long_long_integer:
        return add_integer<long long>(text, is_signed);
    case STL_ARGUMENT::floating:
        return add_floating(text, std::strtod);
    case STL_ARGUMENT::long_floating:
        return add_floating(text, std::strtold);
    case STL_ARGUMENT::text:
        m_list.add(m_texts.emplace_back(text).c_str());
        break;
    case STL_ARGUMENT::wide_text:
        return add_wide_text(text);
    case STL_ARGUMENT::pointer:
        return add_pointer(letter, text);
    }
    return true;
}
