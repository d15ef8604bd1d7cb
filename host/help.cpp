#include "help.h"

#include <algorithm>

namespace {

constexpr std::size_t columns = 80;
constexpr std::size_t widest_label = 26;

/// Words in lines that fit, each line @p indent columns in. The first begins behind what
/// @p text has already.
void append_wrapped(std::string& text, std::string_view words, std::size_t indent) {
    std::size_t column = text.size() - (text.rfind('\n') + 1);
    for (bool first = true; !words.empty(); first = false) {
        std::string_view const word = words.substr(0, words.find(' '));
        words.remove_prefix(std::min(word.size() + 1, words.size()));
        if (!first && column + 1 + word.size() > columns) {
            text.append("\n").append(indent, ' ');
            column = indent;
        } else if (!first) {
            text += ' ';
            ++column;
        }
        text += word;
        column += word.size();
    }
    text += '\n';
}

struct Row {
    std::string label;
    std::string summary;
};

/// Labels with their summaries beside them, or below labels that are too long for that.
void append_rows(std::string& text, char const* heading, std::vector<Row> const& rows) {
    if (rows.empty())
        return;
    std::size_t width = 0;
    for (Row const& row : rows)
        width = std::max(width, std::min(row.label.size(), widest_label));
    text.append("\n").append(heading).append(":\n");
    for (auto const& [label, summary] : rows) {
        std::string line = "  " + label;
        if (label.size() > width)
            line += '\n' + std::string(width + 4, ' ');
        else
            line.resize(width + 4, ' ');
        append_wrapped(line, summary, width + 4);
        text += line;
    }
}

std::string label_of(Option const& option) {
    if (option.kind == Option::Kind::argument)
        return option.name() + (option.is_list() ? " ..." : "");
    std::string label;
    for (std::string const& name : option.names)
        label += (label.empty() ? "" : ", ") + name;
    return option.value_type.empty() ? label : label + " " + option.value_type;
}

std::string summary_of(Option const& option) {
    std::string text = option.summary;
    for (std::size_t i = 0; i < option.choices.size(); ++i)
        text += (i == 0 ? ": " : i + 1 < option.choices.size() ? ", " : " or ") + option.choices[i];
    if (option.range)
        text += ", " + std::to_string(option.range->first) + " to " +
                std::to_string(option.range->second);
    return option.initial.empty() ? text : text + " (" + option.initial + " if not given)";
}

std::vector<Row> rows_of(Options const& options, bool arguments) {
    std::vector<Row> rows;
    for (Option const& option : options.all())
        if ((option.kind == Option::Kind::argument) == arguments && !option.is_hidden)
            rows.push_back({label_of(option), summary_of(option)});
    return rows;
}

std::string usage(Options const& options, std::string const& path) {
    std::string line = "Usage: " + path + " [option ...]";
    for (Option const& option : options.all())
        if (option.kind == Option::Kind::argument)
            line += option.is_required ? " " + label_of(option) : " [" + label_of(option) + "]";
    return line;
}

/// Those of one heading were added in a row. Those without one are left out.
void append_subcommands(std::string& text, Commands const& commands) {
    std::string heading;
    std::vector<Row> rows;
    for (Commands const& below : commands.below()) {
        if (below.heading() != heading)
            append_rows(text, heading.c_str(), std::exchange(rows, {}));
        heading = below.heading();
        if (!heading.empty())
            rows.push_back({below.help().name, below.help().summary});
    }
    append_rows(text, heading.c_str(), rows);
}

} // namespace

Options options_of(Command* command, CommonOptions& common, bool is_root) {
    Options options;
    if (command != nullptr)
        command->declare(options);
    common.declare(options, is_root);
    return options;
}

std::string help_of(Commands const& commands, std::string const& path) {
    bool const is_root = commands.is_root();
    std::unique_ptr<Command> const command = commands.is_family() ? nullptr : commands.make();
    CommonOptions common;
    Options const options = options_of(command.get(), common, is_root);
    std::string text;
    append_wrapped(text, std::string(commands.help().summary) + (is_root ? "" : "."), 0);
    text += '\n';
    // Its further lines begin below the path, behind "Usage: ".
    append_wrapped(text, usage(options, path) + (commands.is_family() ? " subcommand ..." : ""), 7);
    append_rows(text, "Arguments", rows_of(options, true));
    append_rows(text, "Options", rows_of(options, false));
    append_subcommands(text, commands);
    return text + "\n" + (is_root ? "" : "Example:\n") + commands.help().example + "\n";
}

std::string help_of_all(Commands const& commands, std::string const& path) {
    std::string text = help_of(commands, path);
    for (Commands const& below : commands.below())
        if (!below.is_hidden())
            text += "\n" + std::string(columns, '-') + "\n\n" +
                    help_of_all(below, path + " " + below.help().name);
    return text;
}
