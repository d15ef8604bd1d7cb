#include "number_stream.h"

#include <charconv>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t block_size = 1 << 16;

bool is_separator(char byte) {
    return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r' || byte == ',' ||
           byte == ';';
}

std::optional<double> number_of(std::string_view text) {
    // std::from_chars takes no plus sign.
    std::string_view const digits =
        text.front() == '+' && text.size() > 1 && text[1] != '-' ? text.substr(1) : text;
    double number = 0;
    auto const [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (end != digits.data() + digits.size() || fault == std::errc::invalid_argument)
        return std::nullopt;
    if (fault == std::errc::result_out_of_range)
        return std::strtod(std::string(digits).c_str(), nullptr); // infinite, or next to nothing
    return number;
}

/// Parts what it is given into numbers.
class Parser {
  public:
    explicit Parser(std::function<void(double)> const& take) : m_take(take) {}

    /// Takes the next piece of the stream; gives false once the text is no number.
    bool feed(std::string_view text) {
        std::size_t start = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (!is_separator(text[i]))
                continue;
            if (!finish(text.substr(start, i - start)))
                return false;
            start = i + 1;
            m_line += text[i] == '\n' ? 1U : 0U;
        }
        m_begun += text.substr(start);
        // No number is that long; without a bound, neither would the memory be.
        return m_begun.size() < block_size || complain(m_begun);
    }

    /// Takes a number that ends here, with what is begun of it.
    bool finish(std::string_view end) {
        if (!m_begun.empty()) {
            m_begun += end;
            std::string const whole = std::exchange(m_begun, {});
            return finish(whole);
        }
        if (end.empty())
            return true;
        std::optional<double> const number = number_of(end);
        if (!number)
            return complain(end);
        m_take(*number);
        return true;
    }

    std::string const& problem() const { return m_problem; }

  private:
    bool complain(std::string_view text) {
        std::string const shown(text.substr(0, 40));
        m_problem = "line " + std::to_string(m_line) + ": '" + shown +
                    (text.size() > shown.size() ? "...' is not a number" : "' is not a number");
        return false;
    }

    std::function<void(double)> const& m_take;
    std::string m_begun; ///< the beginning of a number that the last piece broke off
    std::string m_problem;
    std::size_t m_line = 1;
};

} // namespace

std::string read_numbers(std::FILE* stream, std::function<void(double)> const& take) {
    Parser parser(take);
    std::vector<char> block(block_size);
    while (std::size_t const size = std::fread(block.data(), 1, block.size(), stream))
        if (!parser.feed({block.data(), size}))
            return parser.problem();
    if (std::ferror(stream) != 0)
        return "";
    parser.finish("");
    return parser.problem();
}
