#include "text.h"

namespace {

constexpr Help help = {
    .name = "text",
    .summary = "Compares, sorts and converts texts",
    .example = "  $ printf 'file10\\nfile9\\n' | gen_query text sort\n"
               "  file9\n"
               "  file10",
};

} // namespace

void add_text(Commands& commands) {
    CLI::App& text = commands.family(help);
    add_text_checksum(commands, text);
    add_text_compare(commands, text);
    add_text_fold(commands, text);
    add_text_hash_size(commands, text);
    add_text_number(commands, text);
    add_text_sanitise(commands, text);
    add_text_sort(commands, text);
    add_text_trim(commands, text);
    add_text_wildcard(commands, text);
}
