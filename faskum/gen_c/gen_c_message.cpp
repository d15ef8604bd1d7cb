#include "gen_c_call.h"
#include "gen_c_table.h"
#include "message_inserts.h"

#include "gen_string_message.h"

#include <new>
#include <string>
#include <vector>

using namespace gen_c;

namespace {

/// Makes the arguments that the message asks for; they point into @p texts.
gen_c_status make_arguments(MessageInserts const& inserts, std::vector<std::string> const& texts,
                            MessageArguments& arguments) {
    unsigned next = 1;
    for (auto const& [number, conversions] : inserts.conversions()) {
        for (; next < number; ++next)
            arguments.add_unnamed();
        ++next;
        std::string const name = "argument " + std::to_string(number);
        if (number > texts.size())
            return refuse(GEN_C_BAD_ARGUMENT, name, " is missing");
        std::string const unfit = arguments.add(conversions, texts[number - 1]);
        if (!unfit.empty())
            return refuse(GEN_C_BAD_ARGUMENT, name, " is nothing that " + unfit + " can print");
    }
    return GEN_C_OK;
}

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
    gen_c_status const status = make_arguments(inserts, kept, arguments);
    if (status != GEN_C_OK)
        return status;
    STR expanded;
    gen_formatmessage(expanded, format, arguments.args());
    return put(text, expanded);
}

gen_c_status tell_inserts(char const* format, gen_c_table** answer) {
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
        return tell_inserts(format, inserts);
    } catch (std::bad_alloc const&) {
        return GEN_C_NO_MEMORY;
    }
}
