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
    Commands& text = commands.family(help);
    add_text_checksum(text);
    add_text_class(text);
    add_text_compare(text);
    add_text_fold(text);
    add_text_hash_size(text);
    add_text_number(text);
    add_text_real(text);
    add_text_sanitise(text);
    add_text_sort(text);
    add_text_trim(text);
    add_text_wildcard(text);
}
