#include "command.h"
#include "fio_path.h"
#include "input.h"
#include "lookup.h"
#include "undo_script.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string_view>

namespace {

class Undo : public Command {
  public:
    void declare(Options& options) override {
        options.argument("script", &m_script, "The script; standard input if not given").file();
        options.value("-d,--directory", &m_directory, "Where to write undo_redo.txt").directory();
        options.flag("-p,--print", m_print, "Show what was written");
    }

    Status run(Answer& answer) override {
        std::string text;
        if (std::string unread = read_input(m_script, text); !unread.empty()) {
            answer.remark(std::move(unread));
            return STATUS_USAGE;
        }
        UndoScript script;
        std::size_t number = 0;
        for (std::string_view const line : lines_of(text)) {
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

        FIO_PATH path;
        path.directory(STR(m_directory));
        path.filename("undo_redo.txt");
        std::string const file = host_text(path.fullpath());
        bool const any = std::any_of(sections.begin(), sections.end(),
                                     [](UndoSection const& one) { return one.is_recorded(); });
        // Without a section the file would be emptied.
        bool const written = any && manager.try_commit_file();
        if (!any)
            answer.remark("there is nothing to write: '" + file + "' is left as it is");
        else if (!written)
            answer.remark("cannot write '" + file + "': " + std::strerror(errno));
        describe(sections, file, written, answer);
        if (m_print && written)
            print(file, answer);
        return status_of(written);
    }

    static void print(std::string const& file, Answer& answer) {
        std::error_code fault; // a device may be written without end, and read so too
        if (!std::filesystem::is_regular_file(file, fault))
            return;
        std::string text;
        if (read_input(file, text).empty() && !text.empty())
            // The answer writes the last line end itself.
            answer.plain("text", std::string_view(text).substr(0, text.size() - 1));
    }

    static void describe(std::vector<UndoSection> const& sections, std::string const& file,
                         bool written, Answer& answer) {
        std::size_t recorded = 0;
        std::size_t undo = 0;
        std::size_t redo = 0;
        Value::List dropped;
        for (UndoSection const& section : sections) {
            if (!section.is_recorded()) {
                answer.remark("not recorded, for want of a title or a command: section '" +
                              host_text(section.title) + "'");
                dropped.emplace_back(section.title);
                continue;
            }
            ++recorded;
            undo += section.count(true);
            redo += section.count(false);
        }
        answer.field("file", file);
        answer.field("written", written);
        answer.field("sections", recorded);
        answer.field("undo_commands", undo);
        answer.field("redo_commands", redo);
        answer.detail("sections_not_recorded", std::move(dropped));
    }

    std::string m_script = "-";
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
            "with # are passed over. Status 1 says that the file could not be written.",
    });
}
