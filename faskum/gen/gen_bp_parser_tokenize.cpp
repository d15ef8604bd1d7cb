#include "gen_bp_parser.h"

#include "gen_bp_parser_scan.h"
#include "gen_string_compare.h"

namespace {

/// Makes a record of each token.
struct ADD_RECORDS {
    GEN_BP_PARSER& parser;

    void word(std::string_view characters) {
        STR word(characters);
        parser.process_token_contents(&word);
    }
    void joined_word(std::string_view characters) { word(characters); }
    void symbol(BP_KIND kind) { parser.add_token_to_list(bp_token_type(kind), nullptr); }
    void paren(BP_KIND kind) { symbol(kind); }
    void expect(std::size_t, std::size_t) {}
};

BP_KIND kind_of_word(STR const& word) {
    if (word == "&&")
        return BP_KIND::logical_and;
    if (word == "||")
        return BP_KIND::logical_or;
    if (gen_stricmp(word.c_str(), "time") == 0)
        return BP_KIND::time;
    return bp_word_kind(word);
}

} // namespace

void GEN_BP_PARSER::process_token_contents(STR* word) {
    if (word == nullptr || word->empty())
        return;
    BP_KIND const kind = kind_of_word(*word);
    add_token_to_list(bp_token_type(kind), bp_is_word(kind) ? word : nullptr);
    word->clear();
}

void GEN_BP_PARSER::tokenize_string() {
    ADD_RECORDS records{*this};
    BP_SCANNER(m_working_string, records).scan();
}
