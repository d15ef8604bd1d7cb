#include "message_inserts.h"

#include "gen_string_message_insert.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <locale.h>
#include <utility>

namespace {

// Taken apart; the conversion must outlive it.
STL_CONVERSION parsed(std::string const& conversion) {
    STL_CONVERSION parsed;
    stl_parse_conversion(conversion.c_str() + 1, parsed);
    return parsed;
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

// A number that an integer of so many bits can be, decimal unless it begins with "0x". Negative
// ones fit an unsigned integer, as they do in C.
std::optional<unsigned long long> whole_number(std::string_view text, std::size_t size,
                                               bool is_signed) {
    bool const is_negative = text.starts_with('-');
    text.remove_prefix(is_negative || text.starts_with('+') ? 1 : 0);
    bool const is_hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    text.remove_prefix(is_hexadecimal ? 2 : 0);
    unsigned long long magnitude = 0;
    char const* const end = text.data() + text.size();
    auto const [behind, fault] =
        std::from_chars(text.data(), end, magnitude, is_hexadecimal ? 16 : 10);
    auto const sign_bit = 1ULL << (CHAR_BIT * size - 1);
    unsigned long long const most = is_negative ? sign_bit
                                    : is_signed ? sign_bit - 1
                                                : sign_bit + (sign_bit - 1);
    if (fault != std::errc() || behind != end || magnitude > most)
        return std::nullopt;
    return is_negative ? 0 - magnitude : magnitude;
}

// With a "." whatever the locale.
template <typename T>
std::optional<T> floating_number(std::string const& text,
                                 T (*read)(char const*, char**, locale_t)) {
    static locale_t const neutral = newlocale(LC_NUMERIC_MASK, "C", nullptr);
    char* end = nullptr;
    errno = 0;
    T const number = read(text.c_str(), &end, neutral);
    bool const is_too_large = errno == ERANGE && std::isinf(number);
    if (end == text.c_str() || *end != '\0' || is_too_large)
        return std::nullopt;
    return number;
}

std::optional<STL_VALUE> word(std::optional<unsigned long long> number) {
    if (!number)
        return std::nullopt;
    return STL_VALUE{.word = static_cast<std::uintptr_t>(*number)};
}

std::optional<STL_VALUE> character(std::string const& text) {
    if (text.size() != 1)
        return std::nullopt;
    return STL_VALUE{.word = static_cast<unsigned char>(text[0])};
}

std::optional<STL_VALUE> wide_character(std::string const& text) {
    std::optional<std::wstring> const wide = decoded(text);
    if (!wide || wide->size() != 1)
        return std::nullopt;
    return STL_VALUE{.word = static_cast<std::uintptr_t>(wide->front())};
}

// Of those kinds that a conversion's letter reads in more than one way.
bool is_same(STL_ARGUMENT argument, STL_VALUE const& one, STL_VALUE const& other) {
    return (argument != STL_ARGUMENT::integer && argument != STL_ARGUMENT::pointer) ||
           one.word == other.word;
}

} // namespace

std::string MessageInserts::read(char const* format) {
    for (char const* at = strchrnul(format, '%'); *at != '\0'; at = strchrnul(at, '%')) {
        std::size_t const percents = std::strspn(at, "%");
        at += percents;
        if (!ascii_is_digit(*at))
            continue;
        if (percents % 2 == 0)
            return "a digit behind \"%%\" is taken for an insert and printed all the same";
        if (*at == '0')
            break;
        auto const [number, conversion] = read_message_insert(at);
        if (std::string fault = add(number, "%" + std::string(conversion)); !fault.empty())
            return fault;
    }
    return "";
}

std::string MessageInserts::add(unsigned number, std::string conversion) {
    m_room_taken += conversion.size() + 1; // its terminator
    if (m_room_taken > MessageInsert::conversion_capacity)
        return "the conversions of the message are longer than gen has room for";
    Conversions& known = m_conversions[number];
    if (std::find(known.begin(), known.end(), conversion) != known.end())
        return "";
    if (!known.empty() && parsed(known.front()).argument != parsed(conversion).argument)
        return "insert " + std::to_string(number) + " is taken as \"" + known.front() +
               "\" and as \"" + conversion + "\", which are different kinds of argument";
    known.push_back(std::move(conversion));
    return "";
}

std::vector<std::string> MessageInserts::remarks() const {
    std::vector<std::string> remarks;
    for (auto const& [number, conversions] : m_conversions)
        for (std::string const& conversion : conversions) {
            STL_CONVERSION const known = parsed(conversion);
            std::string const insert = "insert " + std::to_string(number) + ": ";
            if (!known.is_single || known.letter == 'n')
                remarks.push_back(insert + "\"" + conversion + "\" prints nothing");
            else if (*known.end != '\0')
                remarks.push_back(insert + "\"" + known.end + "\" behind the conversion \"%" +
                                  std::string(known.begin, known.end) + "\" prints nothing");
        }
    return remarks;
}

std::optional<STL_VALUE> MessageArguments::value(STL_CONVERSION const& conversion,
                                                 std::string const& text) {
    bool const is_signed = conversion.letter == 'd' || conversion.letter == 'i';
    STL_VALUE value{};
    switch (conversion.argument) {
    case STL_ARGUMENT::none:
    case STL_ARGUMENT::word:
        break;
    case STL_ARGUMENT::integer:
        return conversion.letter == 'c' ? character(text)
                                        : word(whole_number(text, sizeof(int), is_signed));
    case STL_ARGUMENT::long_integer:
        return word(whole_number(text, sizeof(long), is_signed));
    case STL_ARGUMENT::long_long_integer:
        // %I64d and its like only step over the argument: any string will do.
        if (!conversion.is_single)
            break;
        if (auto const number = whole_number(text, sizeof(long long), is_signed)) {
            value.long_long_integer = static_cast<long long>(*number);
            break;
        }
        return std::nullopt;
    case STL_ARGUMENT::wide_character:
        return wide_character(text);
    case STL_ARGUMENT::floating:
        if (auto const number = floating_number(text, strtod_l)) {
            value.floating = *number;
            break;
        }
        return std::nullopt;
    case STL_ARGUMENT::long_floating:
        if (auto const number = floating_number(text, strtold_l)) {
            value.long_floating = *number;
            break;
        }
        return std::nullopt;
    case STL_ARGUMENT::text:
        value.word = reinterpret_cast<std::uintptr_t>(text.c_str());
        break;
    case STL_ARGUMENT::wide_text:
        return wide_text(text);
    case STL_ARGUMENT::pointer:
        if (conversion.letter != 'n')
            return word(whole_number(text, sizeof(void*), false));
        value.word = reinterpret_cast<std::uintptr_t>(&m_written);
    }
    return value;
}

std::optional<STL_VALUE> MessageArguments::wide_text(std::string const& text) {
    std::optional<std::wstring> wide = decoded(text);
    if (!wide)
        return std::nullopt;
    wchar_t const* const kept = m_wide_texts.emplace_back(*std::move(wide)).c_str();
    return STL_VALUE{.word = reinterpret_cast<std::uintptr_t>(kept)};
}

void MessageArguments::append(STL_ARGUMENT argument, STL_VALUE const& value) {
    switch (argument) {
    case STL_ARGUMENT::none:
        break;
    case STL_ARGUMENT::long_long_integer:
        return m_list.add(value.long_long_integer);
    case STL_ARGUMENT::floating:
        return m_list.add(value.floating);
    case STL_ARGUMENT::long_floating:
        return m_list.add(value.long_floating);
    default:
        m_list.add(value.word);
    }
}

std::string MessageArguments::make(MessageInserts const& inserts,
                                   std::vector<std::string> const& texts) {
    unsigned next = 1;
    for (auto const& [number, conversions] : inserts.conversions()) {
        for (; next < number; ++next)
            m_list.add(0);
        ++next;
        std::string const name = "argument " + std::to_string(number);
        if (number > texts.size())
            return name + " is missing";
        std::string const& text = texts[number - 1];
        if (std::string const unfit = add(conversions, text); !unfit.empty())
            return name + ", \"" + text + "\", is nothing that " + unfit + " can print" +
                   (conversions.size() > 1 ? " as its other conversions do" : "");
    }
    return "";
}

// What all the conversions, of one kind, make their texts of. Gives the conversion that the text is
// nothing for, or that would take another argument than the others; "" for none.
std::string MessageArguments::add(MessageInserts::Conversions const& conversions,
                                  std::string const& text) {
    STL_ARGUMENT const argument = parsed(conversions.front()).argument;
    std::optional<STL_VALUE> common;
    bool is_printed = false; // what only steps over the argument takes any
    for (std::string const& conversion : conversions) {
        bool const is_single = parsed(conversion).is_single;
        std::optional<STL_VALUE> const one = value(parsed(conversion), text);
        if (!one || (is_printed && is_single && !is_same(argument, *common, *one)))
            return conversion;
        if (!is_printed)
            common = one;
        is_printed = is_printed || is_single;
    }
    append(argument, *common);
    return "";
}
