#include "standard_input.h"

#include <algorithm>
#include <array>
#include <cstdio>

bool read_standard_input(std::string& text) {
    std::array<char, 1 << 16> block;
    while (std::size_t const size = std::fread(block.data(), 1, block.size(), stdin))
        text.append(block.data(), size);
    return std::ferror(stdin) == 0;
}

Value::Lines lines_of(std::string_view text) {
    Value::Lines lines;
    lines.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1);
    while (!text.empty()) {
        std::string_view const line = text.substr(0, text.find('\n'));
        lines.push_back(line);
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return lines;
}
