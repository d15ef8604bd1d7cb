#include "gen_c_call.h"
#include "gen_undo_redo.h"

#include <cerrno>
#include <cstring>
#include <new>

using namespace gen_c;

/// The manager passes over what it does not record in silence, so what a section has is noted here
/// once more.
struct gen_c_undo {
    GEN_UNDO_REDO_MGR manager;
    STR directory;
    bool is_in_section = false;
    bool has_title = false;
    bool has_commands = false;
};

namespace {

bool is_outside_section(gen_c_undo const& undo) {
    if (undo.is_in_section)
        return false;
    refuse(GEN_C_BAD_ARGUMENT, "section", " has not begun or is over");
    return true;
}

} // namespace

gen_c_status gen_c_undo_create(char const* directory, gen_c_undo** undo) {
    if (lacks("directory", directory) || lacks("undo", undo))
        return GEN_C_BAD_ARGUMENT;
    auto* const made = new (std::nothrow) gen_c_undo;
    if (made == nullptr)
        return GEN_C_NO_MEMORY;
    made->directory = directory;
    made->manager.start_new_file(directory);
    *undo = made;
    return GEN_C_OK;
}

void gen_c_undo_free(gen_c_undo* undo) {
    delete undo;
}

gen_c_status gen_c_undo_begin(gen_c_undo* undo, char const* title) {
    if (lacks("undo", undo) || lacks("title", title))
        return GEN_C_BAD_ARGUMENT;
    undo->manager.begin_section(title);
    undo->is_in_section = true;
    undo->has_title = *title != '\0';
    undo->has_commands = false;
    return GEN_C_OK;
}

gen_c_status gen_c_undo_describe(gen_c_undo* undo, char const* description) {
    if (lacks("undo", undo) || lacks("description", description) || is_outside_section(*undo))
        return GEN_C_BAD_ARGUMENT;
    undo->manager.add_description(description);
    return GEN_C_OK;
}

gen_c_status gen_c_undo_add(gen_c_undo* undo, int redo, char const* command, char const* comment) {
    if (lacks("undo", undo) || lacks("command", command) || lacks("comment", comment))
        return GEN_C_BAD_ARGUMENT;
    if (*command == '\0')
        return refuse(GEN_C_BAD_ARGUMENT, "command", " is empty");
    if (is_outside_section(*undo))
        return GEN_C_BAD_ARGUMENT;
    if (redo != 0)
        undo->manager.add_redo_command(command, comment);
    else
        undo->manager.add_undo_command(command, comment);
    undo->has_commands = true;
    return GEN_C_OK;
}

gen_c_status gen_c_undo_end(gen_c_undo* undo) {
    if (lacks("undo", undo) || is_outside_section(*undo))
        return GEN_C_BAD_ARGUMENT;
    undo->manager.end_section();
    undo->is_in_section = false;
    return undo->has_title && undo->has_commands ? GEN_C_OK : GEN_C_NOT_FOUND;
}

gen_c_status gen_c_undo_commit(gen_c_undo* undo, gen_c_text* path) {
    if (lacks("undo", undo) || lacks("path", path))
        return GEN_C_BAD_ARGUMENT;
    FIO_PATH file;
    file.directory(undo->directory);
    file.filename("undo_redo.txt");
    undo->is_in_section = false; // the manager makes the last recorded one current
    if (!undo->manager.try_commit_file())
        return refuse(GEN_C_FAILED, file.fullpath() + ": ", std::strerror(errno));
    return put(path, file.fullpath());
}
