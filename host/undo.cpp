#include "command.h"
#include "input.h"

#include "fio_path.h"
#include "gen_undo_redo.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string_view>

namespace {

/// One command of the script with the comment that follows it.
struct Entry {
    bool undo = true;
    STR command;
    STR comment;
};

/// One section of the script.
struct Section {
    STR title;
    STR description;
    std::vector<Entry> entries;

    bool is_recorded() const { return !title.empty() && !entries.empty(); }
    std::size_t count(bool undo) const {
        return static_cast<std::size_t>(
            std::count_if(entries.begin(), entries.end(),
                          [undo](Entry const& entry) { return entry.undo == undo; }));
    }
};

/// Reads a script line by line.
class Script {
  public:
    /// Takes one line in; gives what is wrong with it, or "".
    std::string take(std::string_view line) {
        auto const [word, rest] = first_word(line);
        if (word.empty() || word.front() == '#')
            return "";
        return take_word(word, STR(rest));
    }

    std::vector<Section> const& sections() const { return m_sections; }

  private:
    std::string take_word(std::string_view word, STR rest) {
        if (word == "section") {
            m_sections.push_back({std::move(rest), {}, {}});
            return "";
        }
        if (m_sections.empty())
            return "a section has to come first";
        Section& section = m_sections.back();
        if (word == "describe") {
            section.description = std::move(rest);
        } else if (word == "undo" || word == "redo") {
            if (rest.empty())
                return "\"" + std::string(word) + "\" without a command";
            section.entries.push_back({word == "undo", std::move(rest), {}});
        } else if (word == "comment") {
            if (section.entries.empty())
                return "a comment without a command above it";
            section.entries.back().comment = std::move(rest);
        } else {
            return "unknown word \"" + std::string(word) + "\"";
        }
        return "";
    }

    std::vector<Section> m_sections;
};

/// What a file that was written to its end holds. The manager is silent about faults, so this is
/// how they are told; what an earlier run left may be of the very same length.
class ExpectedText {
  public:
    explicit ExpectedText(std::vector<Section> const& sections) {
        for (Section const& section : sections) {
            if (!section.is_recorded())
                continue;
            add_line(section.title);
            if (!section.description.empty())
                add_line(section.description);
            add_commands("\tUndo Commands", section, true);
            add_commands("\tRedo Commands", section, false);
            m_text += "\n\n";
        }
    }

    std::string const& text() const { return m_text; }

  private:
    void add_line(std::string_view line) { (m_text += line) += '\n'; }

    void add_commands(std::string_view heading, Section const& section, bool undo) {
        std::size_t number = 0;
        for (Entry const& entry : section.entries) {
            if (entry.undo != undo)
                continue;
            if (++number == 1)
                add_line("\n" + std::string(heading));
            char prefix[32];
            std::snprintf(prefix, sizeof prefix, "\t%6zu.\t", number);
            // A command or comment ends at its first NUL.
            add_line(prefix + std::string(entry.command.c_str()));
            if (!entry.comment.empty())
                add_line("\t\t\t" + std::string(entry.comment.c_str()));
        }
    }

    std::string m_text;
};

// A device may be written without end, and read so too.
std::optional<std::string> read_regular_file(char const* path) {
    std::error_code fault;
    if (!std::filesystem::is_regular_file(path, fault))
        return std::nullopt;
    return read_input(path);
}

void record(GEN_UNDO_REDO_MGR& manager, Section const& section) {
    manager.begin_section(section.title);
    manager.add_description(section.description);
    for (Entry const& entry : section.entries) {
        if (entry.undo)
            manager.add_undo_command(entry.command, entry.comment);
        else
            manager.add_redo_command(entry.command, entry.comment);
    }
    manager.end_section();
}

class Undo : public Command {
  public:
    void declare(CLI::App& app) override {
        app.add_option("script", m_script, "The script; standard input if not given")
            ->type_name("FILE");
        app.add_option("-d,--directory", m_directory, "Where to write undo_redo.txt")
            ->type_name("DIR")
            ->capture_default_str();
        app.add_flag("-p,--print", m_print, "Show what was written");
    }

    Status run(Answer& answer) override {
        std::optional<std::string> const text = read_input(m_script);
        if (!text) {
            answer.remark("cannot read '" + m_script + "'");
            return STATUS_USAGE;
        }
        Script script;
        std::size_t number = 0;
        for (std::string_view const line : lines_of(*text)) {
            ++number;
            if (std::string const fault = script.take(line); !fault.empty()) {
                std::string const problem = "line " + std::to_string(number) + ": " + fault;
                answer.remark(problem);
                answer.detail("problem", problem);
                return STATUS_USAGE;
            }
        }
        return write(script.sections(), answer);
    }

  private:
    Status write(std::vector<Section> const& sections, Answer& answer) {
        GEN_UNDO_REDO_MGR manager;
        manager.start_new_file(STR(m_directory));
        for (Section const& section : sections)
            record(manager, section);
        manager.commit_file();

        FIO_PATH path;
        path.directory(STR(m_directory));
        path.filename("undo_redo.txt");
        std::optional<std::string> const text = read_regular_file(path.fullpath().c_str());
        bool const whole = text && *text == ExpectedText(sections).text();
        tell(sections, path, whole, answer);
        if (m_print && whole && !text->empty())
            answer.plain("text", std::string_view(*text).substr(0, text->size() - 1));
        return status_of(whole);
    }

    static void tell(std::vector<Section> const& sections, FIO_PATH const& path, bool whole,
                     Answer& answer) {
        std::size_t recorded = 0;
        std::size_t undo = 0;
        std::size_t redo = 0;
        Value::List dropped;
        for (Section const& section : sections) {
            if (!section.is_recorded()) {
                answer.remark("not recorded, for want of a title or a command: section '" +
                              std::string(section.title) + "'");
                dropped.emplace_back(section.title);
                continue;
            }
            ++recorded;
            undo += section.count(true);
            redo += section.count(false);
        }
        if (!whole)
            answer.remark("'" + std::string(path.fullpath()) + "' could not be written");
        answer.field("file", path.fullpath());
        answer.field("written", whole);
        answer.field("sections", recorded);
        answer.field("undo_commands", undo);
        answer.field("redo_commands", redo);
        answer.detail("sections_not_recorded", std::move(dropped));
    }

    std::string m_script;
    std::string m_directory = ".";
    bool m_print = false;
};

} // namespace

void add_undo(Commands& commands) {
    commands.add<Undo>({
        .name = "undo",
        .summary = "Writes a script of sections and commands as an undo/redo command file",
        .example =
            "  $ printf 'section Move node\\nundo move a\\nredo move b\\n' | "
            "gen_query undo -d db -p\n"
            "  file           db/undo_redo.txt\n"
            "  written        yes\n"
            "  sections       1\n"
            "  undo commands  1\n"
            "  redo commands  1\n"
            "  Move node\n"
            "  ...\n"
            "\n"
            "Lines: section TITLE, describe TEXT, undo COMMAND, redo COMMAND, comment TEXT.\n"
            "A comment belongs to the command above it. Empty lines and lines that begin\n"
            "with # are passed over. Status 1 tells that the file could not be written.",
    });
}
