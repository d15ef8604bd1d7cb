#include "batch.h"

#include "input.h"

#include <algorithm>

void Batch::declare(Options& options) {
    options.flag("-0,--null", m_nul, "Names on standard input end with a NUL, not with their line");
}

std::string Batch::expand(std::vector<std::string>& names) {
    auto const dash = std::find(names.begin(), names.end(), "-");
    m_on = dash != names.end();
    if (!m_on)
        return "";
    std::string input;
    if (std::string fault = read_input("-", input); !fault.empty())
        return fault;
    std::vector<std::string> all(names.begin(), dash);
    for (std::string_view const name : pieces_of(input, m_nul ? '\0' : '\n'))
        all.emplace_back(name);
    std::copy_if(dash, names.end(), std::back_inserter(all),
                 [](std::string const& name) { return name != "-"; });
    names = std::move(all);
    return "";
}
