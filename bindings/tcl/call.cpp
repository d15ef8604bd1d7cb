#include "call.h"

#include <algorithm>

namespace korvane {

void Signature::declare(std::string_view parameters) {
    // Anew: a function that is a quick command as well is declared twice.
    *this = {};
    while (!parameters.empty()) {
        std::string_view name = parameters.substr(0, parameters.find(' '));
        parameters.remove_prefix(std::min(name.size() + 1, parameters.size()));
        bool const may_be_left_out = name.ends_with('?');
        name.remove_suffix(may_be_left_out ? 1 : 0);
        required += may_be_left_out ? 0 : 1;
        names.at(total++) = name;
        std::string const mark = may_be_left_out ? "?" : "";
        usage += (usage.empty() ? "" : " ") + mark + std::string(name) + mark;
    }
}

} // namespace korvane
