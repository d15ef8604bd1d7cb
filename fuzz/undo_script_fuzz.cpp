// Scripts of undo and redo commands: what is committed is what the script says.

#include "undo_script.h"

#include "fuzz_input.h"
#include "input.h"
#include "scratch_directory.h"

#include <cstdio>
#include <fstream>
#include <iterator>

namespace {

std::string read_file(std::string const& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The file that the sections make, written plainly.
class FileText {
  public:
    void add_line(std::string_view line) { (m_text += line) += '\n'; }

    void add_commands(std::string_view heading, UndoSection const& section, bool undo) {
        std::size_t number = 0;
        for (UndoSection::Entry const& entry : section.entries) {
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

    std::string& text() { return m_text; }

  private:
    std::string m_text;
};

std::string undo_file_text(std::vector<UndoSection> const& sections) {
    FileText file;
    for (UndoSection const& section : sections) {
        if (!section.is_recorded())
            continue;
        file.add_line(section.title);
        if (!section.description.empty())
            file.add_line(section.description);
        file.add_commands("\tUndo Commands", section, true);
        file.add_commands("\tRedo Commands", section, false);
        file.text() += "\n\n";
    }
    return std::move(file.text());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static ScratchDirectory const scratch;
    static std::string const file = scratch.path() / "undo_redo.txt";

    std::string const text(reinterpret_cast<char const*>(data), size);
    UndoScript script;
    std::size_t refused = 0;
    for (std::string_view const line : lines_of(text)) {
        FuzzText const copy{std::string(line)};
        refused += script.take({copy.get(), copy.size()}).empty() ? 0U : 1U;
    }
    require(script.sections().size() + refused <= lines_of(text).size(), "a line is one thing");

    GEN_UNDO_REDO_MGR manager;
    manager.start_new_file(STR(scratch.path().c_str()));
    for (UndoSection const& section : script.sections())
        record(manager, section);
    std::string const expected = undo_file_text(script.sections());
    for (char const* commit : {"first commit", "second commit"}) {
        require(manager.try_commit_file(), commit);
        require(read_file(file) == expected, commit);
    }
    return 0;
}
