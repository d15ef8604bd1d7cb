// Scripts of undo and redo commands: what is committed is what the script says.

#include "fuzz_input.h"
#include "input.h"
#include "scratch_directory.h"
#include "undo_script.h"

#include <fstream>
#include <iterator>

static std::string read_file(std::string const& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

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
        manager.commit_file();
        require(read_file(file) == expected, commit);
    }
    return 0;
}
