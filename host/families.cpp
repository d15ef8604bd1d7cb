#include "command.h"

void add_all(Commands& commands) {
    add_condition(commands);
    add_describe(commands);
    add_env(commands);
    add_find(commands);
    add_flags(commands);
    add_histogram(commands);
    add_include(commands);
    add_installation(commands);
    add_legal(commands);
    add_machine(commands);
    add_message(commands);
    add_modules(commands);
    add_names(commands);
    add_project(commands);
    add_sources(commands);
    add_text(commands);
    add_time(commands);
    add_undo(commands);
    add_units(commands);
    add_where(commands);
}
