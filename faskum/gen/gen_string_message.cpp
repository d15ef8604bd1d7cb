#include "gen_string_message.h"

#include "gen_report.h"
#include "gen_string_message_parts.h"
#include "gen_string_message_readings.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

// Reports what the flags ask for in vain. False when nothing can be done for them.
bool check_flags(unsigned long flags) {
    bool const from_system = (flags & FORMAT_MESSAGE_FROM_SYSTEM) != 0;
    bool const from_module = (flags & FORMAT_MESSAGE_FROM_HMODULE) != 0;
    bool const from_string = (flags & FORMAT_MESSAGE_FROM_STRING) != 0;
    if (from_system && from_module) {
        report(reports::two_message_sources);
        return false;
    }
    if (from_string && (from_system || from_module)) {
        report(reports::string_and_source);
        return false;
    }
    if (!from_string)
        report(reports::message_not_from_string);
    if ((flags & FORMAT_MESSAGE_MAX_WIDTH_MASK) != 0)
        report(reports::message_width);
    return true;
}

unsigned long store_in_buffer(STR const& text, char* buffer, unsigned long size) {
    if (text.empty() || buffer == nullptr || size == 0)
        return 0;
    std::size_t const count = text.size() < size ? text.size() : size - 1;
    std::memcpy(buffer, text.data(), count);
    buffer[count] = '\0';
    return count;
}

unsigned long store_in_new_block(STR const& text, char** block, unsigned long size) {
    if (block == nullptr)
        return 0;
    *block = nullptr;
    std::size_t const count = std::max<std::size_t>(text.size(), size);
    if (text.empty() || count + 1 == 0)
        return 0;
    // MUTANT_EXCL_LINE(1 to 2): room alone
    *block = static_cast<char*>(std::calloc(count + 1, 1));
    if (*block == nullptr)
        return 0;
    std::memcpy(*block, text.data(), text.size());
    return count;
}

} // namespace

int gen_sprintf(STR* out, char const* format, ...) {
    va_list args;
    va_start(args, format);
    int const length = stl_vsprintf(out, format, STL_ARGS(args));
    va_end(args);
    return length;
}

int gen_vsprintf(STR* out, char const* format, char* args) {
    return stl_vsprintf(out, format, args);
}

unsigned gen_formatmessage(STR& out, char const* format, char* args) {
    if (format != nullptr) {
        STL_TEXT text; // format and arguments may lie in the result
        if (MessageParts parts; parts.read(format))
            parts.render(text, args);
        else
            MessageReadings(text, format, args).expand();
        text.append_to(out);
    }
    return static_cast<unsigned>(out.size());
}

unsigned long gen_formatmessage(unsigned long flags, void const* source, unsigned long,
                                unsigned long, char* buffer, unsigned long size, char* args) {
    if (!check_flags(flags))
        return 0;
    STR text;
    auto const* const format = static_cast<char const*>(source);
    if ((flags & FORMAT_MESSAGE_IGNORE_INSERTS) == 0)
        gen_formatmessage(text, format, args);
    else if (format != nullptr)
        text = format;
    if ((flags & FORMAT_MESSAGE_ALLOCATE_BUFFER) != 0)
        return store_in_new_block(text, static_cast<char**>(static_cast<void*>(buffer)), size);
    return store_in_buffer(text, buffer, size);
}
