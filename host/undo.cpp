#include "command.h"
#include "input.h"
#include "undo_script.h"

#include "fio_path.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace {

// A device may be written without end, and read so too.
std::optional<std::string> read_regular_file(char const* path) {
    std::error_code fault;
    if (!std::filesystem::is_regular_file(path, fault))
        return std::nullopt;
    return read_input(path);
}

class Undo : public Command {
  public:
    void declare(Options& options) override {
        options.argument("script", &m_script, "The script; standard input if not given").file();
        options.value("-d,--directory", &m_directory, "Where to write undo_redo.txt").directory();
        options.flag("-p,--print", m_print, "Show what was written");
    }

    Status run(Answer& answer) override {
        std::optional<std::string> const text = read_input(m_script);
        if (!text) {
            answer.remark("cannot read '" + m_script + "'");
            return STATUS_USAGE;
        }
        UndoScript script;
        std::size_t number = 0;
        for (std::string_view const line : lines_of(*text)) {
            ++number;
            if (std::string const fault = script.take(line); !fault.empty()) {
                std::string const problem = "line " + std::to_string(number) + ": " + fault;
                answer.remark(problem);
                return STATUS_USAGE;
            }
        }
        return write(script.sections(), answer);
    }

  private:
    Status write(std::vector<UndoSection> const& sections, Answer& answer) {
        GEN_UNDO_REDO_MGR manager;
        manager.start_new_file(STR(m_directory));
        for (UndoSection const& section : sections)
            record(manager, section);
        manager.commit_file();

        FIO_PATH path;
        path.directory(STR(m_directory));
        path.filename("undo_redo.txt");
        std::optional<std::string> const text = read_regular_file(path.fullpath().c_str());
        bool const whole = text && *text == undo_file_text(sections);
        tell(sections, path, whole, answer);
        if (m_print && whole && !text->empty())
            answer.plain("text", std::string_view(*text).substr(0, text->size() - 1));
        return status_of(whole);
    }

    static void tell(std::vector<UndoSection> const& sections, FIO_PATH const& path, bool whole,
                     Answer& answer) {
        std::size_t recorded = 0;
        std::size_t undo = 0;
        std::size_t redo = 0;
        Value::List dropped;
        for (UndoSection const& section : sections) {
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
            "  $ printf 'section Move\\nundo move a\\nredo move b\\n' | gen_query undo -d db -p\n"
            "  file           db/undo_redo.txt\n"
            "  written        yes\n"
            "  sections       1\n"
            "  undo commands  1\n"
            "  redo commands  1\n"
            "  Move\n"
            "  ...\n"
            "\n"
            "Lines: section TITLE, describe TEXT, undo COMMAND, redo COMMAND, comment TEXT.\n"
            "A comment belongs to the command above it. Empty lines and lines that begin\n"
            "with # are passed over. Status 1 tells that the file could not be written.",
    });
}
