#include "option.h"

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstdlib>
#include <limits>
#include <type_traits>

namespace {

std::vector<std::string> split_names(std::string_view names) {
    std::vector<std::string> all;
    while (!names.empty()) {
        all.emplace_back(names.substr(0, names.find(',')));
        names.remove_prefix(std::min(all.back().size() + 1, names.size()));
    }
    return all;
}

/// A whole number; nothing for other texts. One that is too large for the type becomes the largest
/// that is not: so it is refused for its size, and not for its form.
std::optional<std::int64_t> whole_number(std::string_view text) {
    bool const is_negative = text.starts_with('-');
    if (is_negative || text.starts_with('+'))
        text.remove_prefix(1);
    bool const is_hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (is_hexadecimal)
        text.remove_prefix(2);
    std::uint64_t number = 0;
    auto const [end, fault] =
        std::from_chars(text.data(), text.data() + text.size(), number, is_hexadecimal ? 16 : 10);
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();
    if (text.empty() || end != text.data() + text.size() || fault == std::errc::invalid_argument)
        return std::nullopt;
    if (fault != std::errc() || number > std::uint64_t{largest})
        return is_negative ? -largest : largest;
    auto const magnitude = static_cast<std::int64_t>(number);
    return is_negative ? -magnitude : magnitude;
}

/// Puts a value where its option says.
class Setter {
  public:
    Setter(Option const& option, std::string const& text) : m_option(option), m_text(text) {}

    std::string operator()(bool* target) const {
        // What the parser gives for a flag without a value.
        if (m_text != "true")
            return "it takes no value";
        *target = true;
        return "";
    }
    std::string operator()(std::string* target) const {
        *target = m_text;
        return "";
    }
    std::string operator()(std::optional<std::string>* target) const {
        *target = m_text;
        return "";
    }
    std::string operator()(std::vector<std::string>* target) const {
        target->push_back(m_text);
        return "";
    }
    std::string operator()(std::optional<double>* target) const {
        char* end = nullptr;
        *target = std::strtod(m_text.c_str(), &end);
        bool const is_number = !m_text.empty() && end == m_text.c_str() + m_text.size();
        return is_number ? "" : "'" + m_text + "' is not a number";
    }
    template <std::integral Number>
    std::string operator()(Number* target) const {
        auto const [least, most] = m_option.range.value_or(std::pair<std::int64_t, std::int64_t>(
            std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max()));
        std::optional<std::int64_t> const number = whole_number(m_text);
        if (!number)
            return "'" + m_text + "' is not a whole number";
        if (*number < least || *number > most)
            return m_text + " is not between " + std::to_string(least) + " and " +
                   std::to_string(most);
        *target = static_cast<Number>(*number);
        return "";
    }
    template <std::integral Number>
    std::string operator()(std::vector<Number>* target) const {
        return (*this)(&target->emplace_back());
    }

  private:
    Option const& m_option;
    std::string const& m_text;
};

/// The kind of value, unless file, directory or program says another.
struct TypeName {
    std::string operator()(bool*) const { return ""; }
    std::string operator()(std::string*) const { return "TEXT"; }
    std::string operator()(std::optional<std::string>*) const { return "TEXT"; }
    std::string operator()(std::vector<std::string>*) const { return "TEXT"; }
    std::string operator()(auto*) const { return "NUMBER"; }
};

/// What --help shows for an option that is not given: what its variable has until then.
struct InitialText {
    std::string operator()(bool*) const { return ""; }
    std::string operator()(std::string* target) const { return *target; }
    std::string operator()(std::integral auto* target) const { return std::to_string(*target); }
    std::string operator()(auto*) const { return ""; }
};

} // namespace

Option& Option::required() {
    is_required = true;
    return *this;
}

Option& Option::file() {
    value_type = "FILE";
    return *this;
}

Option& Option::directory() {
    value_type = "DIR";
    return *this;
}

Option& Option::program() {
    value_type = "COMMAND";
    return *this;
}

Option& Option::one_of(std::vector<std::string> words) {
    choices = std::move(words);
    return *this;
}

Option& Option::between(std::int64_t least, std::int64_t most) {
    range.emplace(least, most);
    return *this;
}

Option& Option::excludes(std::string name) {
    excluded.push_back(std::move(name));
    return *this;
}

Option& Option::rest() {
    takes_rest = true;
    return *this;
}

Option& Option::hidden() {
    is_hidden = true;
    return *this;
}

bool Option::is_list() const {
    return std::holds_alternative<std::vector<std::string>*>(target) ||
           std::holds_alternative<std::vector<std::int32_t>*>(target) ||
           std::holds_alternative<std::vector<std::uint32_t>*>(target);
}

bool Option::has_name(std::string_view name) const {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string Option::take(std::string const& text) {
    // A flag may be repeated: serve puts --json in front of whatever it is asked.
    if (is_given && !is_list() && kind != Kind::flag)
        return "it is given more than once";
    is_given = true;
    if (!choices.empty() && std::find(choices.begin(), choices.end(), text) == choices.end()) {
        std::string known;
        for (std::string const& word : choices)
            known += (known.empty() ? "" : ", ") + word;
        return "'" + text + "' is none of " + known;
    }
    return std::visit(Setter(*this, text), target);
}

Option& Options::flag(std::string_view names, bool& target, std::string summary) {
    return m_all.emplace_back(
        Option{Option::Kind::flag, split_names(names), &target, std::move(summary)});
}

Option& Options::value(std::string_view names, Option::Target target, std::string summary) {
    Option& option = m_all.emplace_back(
        Option{Option::Kind::value, split_names(names), target, std::move(summary)});
    option.value_type = std::visit(TypeName{}, target);
    option.initial = std::visit(InitialText{}, target);
    return option;
}

Option& Options::argument(std::string name, Option::Target target, std::string summary) {
    Option& option = m_all.emplace_back(
        Option{Option::Kind::argument, {std::move(name)}, target, std::move(summary)});
    option.value_type = std::visit(TypeName{}, target);
    return option;
}

Option const* Options::find(std::string_view name) const {
    auto const found = std::find_if(m_all.begin(), m_all.end(),
                                    [name](Option const& option) { return option.has_name(name); });
    return found != m_all.end() ? &*found : nullptr;
}
