// The one source that includes the library for command lines, whose header takes long to compile.
// That library reads files of settings as well: so they are read here, too.

#include "command_line.h"

#include "input.h"
#include "settings_file.h"
#include "suggestion.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstring>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace {

/// The library's parser of options. Arguments are left over, as they were typed: it would take one
/// in brackets for a list.
class Parser : public CLI::App {
  public:
    explicit Parser(Options& options) {
        // None of the library's: --help is declared like any other option.
        set_help_flag();
        allow_extras();
        for (Option& option : options.all()) {
            if (option.kind == Option::Kind::argument) {
                prefix_command(option.takes_rest || get_prefix_command());
                continue;
            }
            std::string names;
            for (std::string const& name : option.names)
                names += (names.empty() ? "" : ",") + name;
            CLI::Option* const parsed = option.kind == Option::Kind::flag
                                            ? add_flag(names)
                                            : add_option(names)->expected(1);
            // All values are kept, for Option::take to judge, each for one: neither are brackets a
            // list, nor does an option take the word behind its value.
            parsed->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
            parsed->allow_extra_args(false);
            m_options.emplace_back(&option, parsed);
        }
    }

    /// What the options are given.
    std::vector<std::pair<Option*, CLI::Option*>> const& options() const { return m_options; }

    /// The first option that nobody declared, or "".
    std::string unknown_option() const {
        for (auto const& [kind, word] : missing_)
            if (kind == CLI::detail::Classifier::LONG || kind == CLI::detail::Classifier::SHORT)
                return word.substr(0, word.find('='));
        return "";
    }

    /// What is left over, but for the "--" that ends the options.
    std::vector<std::string> arguments() const {
        std::vector<std::string> all;
        for (auto const& [kind, word] : missing_)
            if (kind == CLI::detail::Classifier::NONE)
                all.push_back(word);
        return all;
    }

  private:
    std::vector<std::pair<Option*, CLI::Option*>> m_options;
};

/// "--name=" as the two words that it stands for: the library would look for a value behind it.
/// Values of other options are left alone, and what the subcommand takes as it is.
void part_empty_values(Options const& options, std::vector<std::string>& words) {
    bool const has_rest = std::any_of(options.all().begin(), options.all().end(),
                                      [](Option const& option) { return option.takes_rest; });
    for (std::size_t i = 0; i < words.size() && words[i] != "--"; ++i) {
        std::string const word = words[i];
        if (has_rest && !word.starts_with('-'))
            return;
        bool const is_empty = word.starts_with("--") && word.find('=') + 1 == word.size();
        std::string const name = word.substr(0, word.size() - (is_empty ? 1 : 0));
        Option const* const option = options.find(name);
        if (option == nullptr || option->kind != Option::Kind::value)
            continue;
        ++i; // to the value
        if (is_empty) {
            words[i - 1] = name;
            words.insert(words.begin() + static_cast<std::ptrdiff_t>(i), "");
        }
    }
}

std::string with_name(Option const& option, std::string const& fault) {
    return fault.empty() ? "" : option.name() + ": " + fault;
}

/// Sets all that can be set: --help and --json apply even if another option is wrong.
std::string take_options(Parser const& parser) {
    std::string first_fault;
    for (auto const& [option, parsed] : parser.options())
        for (std::string const& text : parsed->results())
            if (std::string fault = with_name(*option, option->take(text)); first_fault.empty())
                first_fault = std::move(fault);
    return first_fault;
}

/// Hands the arguments out in the order of their declaration.
std::string take_arguments(Options& options, std::vector<std::string> const& arguments) {
    auto next = arguments.begin();
    for (Option& option : options.all()) {
        if (option.kind != Option::Kind::argument)
            continue;
        for (bool more = true; more && next != arguments.end(); more = option.is_list())
            if (std::string fault = with_name(option, option.take(*next++)); !fault.empty())
                return fault;
    }
    return next == arguments.end() ? "" : "'" + *next + "' is one argument too many";
}

std::string check_together(Options const& options) {
    for (Option const& option : options.all()) {
        if (option.is_required && !option.is_given)
            return "'" + option.name() + "' is missing";
        for (std::string const& name : option.excluded)
            if (option.is_given && options.find(name)->is_given)
                return "'" + option.name() + "' and '" + name + "' exclude each other";
    }
    return "";
}

std::string unknown_option_fault(Options const& options, std::string const& word) {
    std::vector<std::string> known;
    for (Option const& option : options.all())
        if (option.kind != Option::Kind::argument)
            known.insert(known.end(), option.names.begin(), option.names.end());
    return "unknown option '" + word + "'" + did_you_mean(word, known);
}

/// Settings as the library reads them: it takes no comment within a list, nor a "[" that ends its
/// line. What it would drop without a word is refused.
class SettingsText {
  public:
    SettingsText(std::string const& path, std::string_view text) : m_path(path) {
        // A "#" begins a comment even in quotes, which take then refuses.
        for (std::string_view const line : lines_of(text))
            take(trimmed(line.substr(0, line.find('#'))));
        if (m_in_list)
            fail("a list does not end");
    }

    std::string const& text() const { return m_text; }

  private:
    void take(std::string_view line) {
        ++m_number;
        if (std::count(line.begin(), line.end(), '"') % 2 != 0)
            fail("a name in quotes does not end, or has a \"#\" in it");
        std::string_view names = line;
        if (!m_in_list && !line.empty()) {
            std::size_t const equals = line.find('=');
            if (equals == line.npos || line.front() == '[')
                fail("a setting has the form: db = \"directory\"");
            names = trimmed(line.substr(equals + 1));
            m_in_list = names.starts_with('[');
        }
        if (!are_names(names))
            fail("a directory stands in quotes: db = \"directory\"");
        m_in_list = m_in_list && !line.ends_with(']');
        m_text += line;
        m_text += m_in_list ? ' ' : '\n';
    }

    /// Whether nothing stands there but names in quotes, and what makes a list of them.
    static bool are_names(std::string_view line) {
        while (!line.empty()) {
            char const first = line.front();
            bool const is_quote = first == '"' || first == '\'';
            std::size_t const last = is_quote ? line.find(first, 1) : 0;
            if (last == line.npos || (!is_quote && std::strchr("[], \t", first) == nullptr))
                return false;
            line.remove_prefix(last + 1);
        }
        return true;
    }

    [[noreturn]] void fail(std::string const& fault) const {
        throw std::runtime_error("'" + m_path + "', line " + std::to_string(m_number) + ": " +
                                 fault);
    }

    std::string const& m_path;
    std::string m_text;
    std::size_t m_number = 0;
    bool m_in_list = false;
};

} // namespace

std::string read_command_line(Options& options, std::vector<std::string> words) {
    part_empty_values(options, words);
    // The library takes words from the end of what it is given.
    std::reverse(words.begin(), words.end());
    Parser parser(options);
    std::string unfinished; // by an option at the end, without its value
    try {
        parser.parse(std::move(words));
    } catch (CLI::ParseError const& error) {
        std::string const message = error.what(); // begins with the name
        unfinished = message.substr(0, message.find(':')) + ": its value is missing";
    }
    std::string const unusable = take_options(parser);
    // First, since it causes other faults: its value is taken for an argument.
    if (std::string const word = parser.unknown_option(); !word.empty())
        return unknown_option_fault(options, word);
    if (!unfinished.empty() || !unusable.empty())
        return unfinished.empty() ? unusable : unfinished;
    if (std::string fault = take_arguments(options, parser.arguments()); !fault.empty())
        return fault;
    return check_together(options);
}

std::vector<std::pair<std::string, std::vector<std::string>>>
read_settings_file(std::string const& path) {
    std::string text;
    if (std::string const fault = read_input(path, text); !fault.empty())
        throw std::runtime_error(fault);
    std::istringstream stream(SettingsText(path, text).text());
    std::vector<std::pair<std::string, std::vector<std::string>>> settings;
    for (CLI::ConfigItem const& item : CLI::ConfigTOML().from_config(stream))
        settings.emplace_back(item.fullname(), item.inputs);
    return settings;
}
