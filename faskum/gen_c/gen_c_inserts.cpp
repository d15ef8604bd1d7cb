#include "gen_c_inserts.h"

#include "gen_string_number.h"

#include <algorithm>
#include <utility>

static bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

namespace gen_c {

STR Inserts::read(std::string_view format) {
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
        STR conversion = "%s";
        if (at < format.size() && format[at] == '!') {
            std::size_t const end = std::min(format.find('!', at + 1), format.size());
            conversion = "%" + STR(format.substr(at + 1, end - at - 1));
            at = std::min(end + 1, format.size());
        }
        if (STR fault = add(number, std::move(conversion)); !fault.empty())
            return fault;
    }
    return {};
}

STR Inserts::add(unsigned number, STR conversion) {
    constexpr std::size_t room = 4095; // for all conversions and their terminators
    m_room_taken += conversion.size() + 1;
    if (m_room_taken > room)
        return "the conversions are longer than gen has room for";
    STR& known = m_conversions[number];
    if (known.empty())
        known = std::move(conversion);
    else if (parsed(known).argument != parsed(conversion).argument)
        return "insert " + gen_itoa(static_cast<int>(number), 10) + " is taken as \"" + known +
               "\" and as \"" + conversion + "\", which are different kinds of argument";
    return {};
}

} // namespace gen_c
