#include "gen_c_call.h"
#include "gen_c_inserts.h"
#include "gen_c_table.h"

#include "gen_string_message.h"
#include "gen_string_number.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <limits>
#include <type_traits>

using namespace gen_c;

namespace {

/// The arguments of a message in their order, each made from a text.
class Arguments {
  public:
    /// Appends what the conversion takes. False when the text is no such thing.
    bool add(STR const& conversion, char const* text);
    /// Appends one that no insert names.
    void add_unnamed() { m_list.add(0); }

    char* args() { return m_list.args(); }

  private:
    template <typename T>
    bool add_integer(char const* text, bool is_signed);
    template <typename T>
    bool add_floating(char const* text, T (*read)(char const*, char**));
    bool add_character(char const* text);
    bool add_wide_character(char const* text);
    bool add_wide_text(char const* text);

    STL_ARG_LIST m_list;
    MEM_LIST<MEM_VECTOR<wchar_t>> m_wide_texts;
    long long m_written = 0; // what a %n would write to, if it wrote
};

/// The wide characters of a text in the locale's characters, and a NUL; none where it has others.
MEM_VECTOR<wchar_t> decoded(char const* text) {
    std::size_t const count = std::mbstowcs(nullptr, text, 0);
    if (count == static_cast<std::size_t>(-1))
        return {};
    MEM_VECTOR<wchar_t> wide(count + 1);
    std::mbstowcs(wide.data(), text, wide.size());
    return wide;
}

template <typename T>
bool Arguments::add_integer(char const* text, bool is_signed) {
    using Unsigned = std::make_unsigned_t<T>;
    char* end = nullptr;
    errno = 0;
    int const radix = std::strpbrk(text, "xX") != nullptr ? 16 : 10;
    if (is_signed || std::strchr(text, '-') != nullptr) {
        long long const value = std::strtoll(text, &end, radix);
        if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max())
            return false;
        m_list.add(static_cast<T>(value));
    } else {
        unsigned long long const value = std::strtoull(text, &end, radix);
        if (value > std::numeric_limits<Unsigned>::max())
            return false;
        m_list.add(static_cast<Unsigned>(value));
    }
    return errno == 0 && end != text && *end == '\0';
}

template <typename T>
bool Arguments::add_floating(char const* text, T (*read)(char const*, char**)) {
    char* end = nullptr;
    errno = 0;
    T const value = read(text, &end);
    m_list.add(value);
    bool const is_too_large = errno == ERANGE && std::isinf(value);
    return end != text && *end == '\0' && !is_too_large;
}

bool Arguments::add_character(char const* text) {
    m_list.add(static_cast<int>(static_cast<unsigned char>(*text)));
    return *text != '\0' && text[1] == '\0';
}

bool Arguments::add_wide_character(char const* text) {
    MEM_VECTOR<wchar_t> const wide = decoded(text);
    m_list.add(wide.empty() ? 0 : static_cast<int>(wide.front()));
    return wide.size() == 2;
}

bool Arguments::add_wide_text(char const* text) {
    m_wide_texts.push_back(decoded(text));
    m_list.add(static_cast<wchar_t const*>(m_wide_texts.back().data()));
    return !m_wide_texts.back().empty();
}

bool Arguments::add(STR const& conversion, char const* text) {
    STL_CONVERSION const asked = parsed(conversion);
    char const letter = asked.letter;
    bool const is_signed = letter == 'd' || letter == 'i';
    if (!asked.is_single) // prints nothing, whatever it is
        text = "0";
    switch (asked.argument) {
    case STL_ARGUMENT::none:
        break;
    case STL_ARGUMENT::word:
        add_unnamed();
        break;
    case STL_ARGUMENT::integer:
        return letter == 'c' ? add_character(text) : add_integer<int>(text, is_signed);
    case STL_ARGUMENT::wide_character:
        return add_wide_character(text);
    case STL_ARGUMENT::long_integer:
        return add_integer<long>(text, is_signed);
    case STL_ARGUMENT::long_long_integer:
        return add_integer<long long>(text, is_signed);
    case STL_ARGUMENT::floating:
        return add_floating(text, std::strtod);
    case STL_ARGUMENT::long_floating:
        return add_floating(text, std::strtold);
    case STL_ARGUMENT::text:
        m_list.add(text);
        break;
    case STL_ARGUMENT::wide_text:
        return add_wide_text(text);
    case STL_ARGUMENT::pointer:
        if (letter != 'n')
            return add_integer<std::intptr_t>(text, false);
        m_list.add(&m_written);
        break;
    }
    return true;
}

/// Makes the arguments that the message asks for.
gen_c_status make_arguments(char const* format, char const* const* texts, std::size_t count,
                            Arguments& arguments) {
    Inserts inserts;
    if (STR const fault = inserts.read(format); !fault.empty())
        return refuse(GEN_C_BAD_ARGUMENT, "format: ", fault);
    for (unsigned number = 1; number <= Inserts::most; ++number) {
        STR const& conversion = inserts.conversion(number);
        if (conversion.empty()) {
            arguments.add_unnamed();
            continue;
        }
        STR const name = "argument " + gen_itoa(static_cast<int>(number), 10);
        if (number > count || texts[number - 1] == nullptr)
            return refuse(GEN_C_BAD_ARGUMENT, name, " is missing");
        if (!arguments.add(conversion, texts[number - 1]))
            return refuse(GEN_C_BAD_ARGUMENT, name,
                          " is nothing that " + conversion + " can print");
    }
    return GEN_C_OK;
}

} // namespace

gen_c_status gen_c_message(char const* format, char const* const* arguments, size_t count,
                           gen_c_text* text) {
    if (lacks("format", format) || lacks("text", text) ||
        (count != 0 && lacks("arguments", arguments)))
        return GEN_C_BAD_ARGUMENT;
    Arguments made;
    gen_c_status const status = make_arguments(format, arguments, count, made);
    if (status != GEN_C_OK)
        return status;
    STR expanded;
    gen_formatmessage(expanded, format, made.args());
    return put(text, expanded);
}

gen_c_status gen_c_message_inserts(char const* format, gen_c_table** inserts) {
    if (lacks("format", format) || lacks("inserts", inserts))
        return GEN_C_BAD_ARGUMENT;
    Inserts found;
    if (STR const fault = found.read(format); !fault.empty())
        return refuse(GEN_C_BAD_ARGUMENT, "format: ", fault);
    gen_c_table table{"insert", "conversion"};
    for (unsigned number = 1; number <= Inserts::most; ++number)
        if (STR const& conversion = found.conversion(number); !conversion.empty())
            table.row({number, conversion});
    return give(std::move(table), inserts);
}
