#include "gen_c_call.h"
#include "gen_c_table.h"
#include "gen_string_message.h"
#include "message_inserts.h"

#include <new>
#include <string>
#include <vector>

using namespace gen_c;

namespace {

gen_c_status expand(char const* format, char const* const* texts, std::size_t count,
                    gen_c_text* text) {
    MessageInserts inserts;
    if (std::string const fault = inserts.read(format); !fault.empty())
        return refuse(GEN_C_BAD_ARGUMENT, "format: ", fault);
    for (std::size_t i = 0; i < count; ++i)
        if (lacks("argument", texts[i]))
            return GEN_C_BAD_ARGUMENT;
    std::vector<std::string> const kept(texts, texts + count);
    MessageArguments arguments;
    if (std::string const fault = arguments.make(inserts, kept); !fault.empty())
        return refuse(GEN_C_BAD_ARGUMENT, fault, "");
    STR expanded;
    gen_formatmessage(expanded, format, arguments.args());
    return put(text, expanded);
}

gen_c_status give_inserts(char const* format, gen_c_table** answer) {
    MessageInserts inserts;
    if (std::string const fault = inserts.read(format); !fault.empty())
        return refuse(GEN_C_BAD_ARGUMENT, "format: ", fault);
    gen_c_table table{"insert", "conversion"};
    for (auto const& [number, conversions] : inserts.conversions())
        for (std::string const& conversion : conversions)
            table.row({number, std::string_view(conversion)});
    return give(std::move(table), answer);
}

} // namespace

gen_c_status gen_c_message(char const* format, char const* const* arguments, size_t count,
                           gen_c_text* text) {
    if (lacks("format", format) || lacks("text", text) ||
        (count != 0 && lacks("arguments", arguments)))
        return GEN_C_BAD_ARGUMENT;
    try {
        return expand(format, arguments, count, text);
    } catch (std::bad_alloc const&) {
        return GEN_C_NO_MEMORY;
    }
}

gen_c_status gen_c_message_inserts(char const* format, gen_c_table** inserts) {
    if (lacks("format", format) || lacks("inserts", inserts))
        return GEN_C_BAD_ARGUMENT;
    try {
        return give_inserts(format, inserts);
    } catch (std::bad_alloc const&) {
        return GEN_C_NO_MEMORY;
    }
}
