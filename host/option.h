#pragma once

/// What a subcommand takes from the command line, said once in a small table: command lines are
/// read by it, and --help, the manual page and the shells' completion are made from it.

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

/// One option or argument, and the variable that it sets, which has to outlive it.
struct Option {
    enum class Kind { flag, value, argument };
    /// A list takes every value that is given, anything else one.
    using Target =
        std::variant<bool*, std::string*, std::optional<std::string>*, std::vector<std::string>*,
                     std::uint16_t*, std::int32_t*, std::uint32_t*, std::optional<double>*,
                     std::vector<std::int32_t>*, std::vector<std::uint32_t>*>;

    Kind kind;
    std::vector<std::string> names; ///< "-i" and "--ignore-case"; of an argument its name alone
    Target target;
    std::string summary;
    std::string value_type = {};           ///< TEXT, NUMBER, FILE, DIR or COMMAND; "" for a flag
    std::string initial = {};              ///< the value without the option; "" if not to be shown
    std::vector<std::string> choices = {}; ///< the only words that a value may be; none: all
    std::optional<std::pair<std::int64_t, std::int64_t>> range = {};
    std::vector<std::string> excluded = {}; ///< options that cannot be given together with it
    bool is_required = false;
    bool takes_rest = false;
    bool is_hidden = false;
    bool is_given = false; ///< set when a command line is read

    Option& required();
    /// This and the next two are for completion: whether it is such a one is not checked.
    Option& file();
    Option& directory();
    Option& program();
    Option& one_of(std::vector<std::string> words);
    Option& between(std::int64_t least, std::int64_t most);
    /// @param name of one that is declared as well; to say it of either of the two is enough
    Option& excludes(std::string name);
    /// Takes all that follows on the command line, whatever it looks like.
    Option& rest();
    /// Neither --help nor completion lists it.
    Option& hidden();

    bool is_list() const;
    bool has_name(std::string_view name) const;
    /// The longest name, by which messages call it.
    std::string const& name() const { return names.back(); }
    /// Sets the variable. Gives what is wrong with the value, or "".
    std::string take(std::string const& text);
};

/// All options and arguments of a subcommand. Numbers are decimal unless they begin with "0x".
class Options {
  public:
    /// @param names as "-i,--ignore-case"
    Option& flag(std::string_view names, bool& target, std::string summary);
    Option& value(std::string_view names, Option::Target target, std::string summary);
    /// Arguments take their values in the order in which they are declared.
    Option& argument(std::string name, Option::Target target, std::string summary);

    std::deque<Option>& all() { return m_all; }
    std::deque<Option> const& all() const { return m_all; }
    /// The option of that name, or null.
    Option const* find(std::string_view name) const;

  private:
    std::deque<Option> m_all; ///< of fixed addresses: what is declared is refined afterwards
};
