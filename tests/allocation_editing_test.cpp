/// Conditions, undo files, flags and histograms without memory.

#include "allocation_failure.h"
#include "allocation_ground.h"
#include "gen_bindata.h"
#include "gen_bp_parser.h"
#include "gen_dyn_flag.h"
#include "gen_undo_redo.h"

#include <fstream>

namespace {

struct NoObjects : GEN_DYN_FLAG_CLEARER {
    void clear_flags(GEN_DYN_FLAG const&) override {}
};
NoObjects no_objects;

// What calls are made of lives as long as the process, which ends in the middle of them.
GEN_BP_PARSER* parser = nullptr;
GEN_UNDO_REDO_MGR* undo = nullptr;
GEN_DYN_FLAG_MANAGER* flags = nullptr;

void new_parser() {
    parser = new GEN_BP_PARSER;
}

void new_tokens() {
    new_parser();
    parser->working_string() =
        "(|top|some_instance|a_signal_of_it = 1) && !(time > 10ns || |top|another > 5) && x || )";
    parser->tokenize_string();
    parser->working_string().clear();
}

STR number_of_tokens() {
    return shown(static_cast<long>(parser->token_list().size()));
}

void new_undo() {
    clear_written();
    std::ofstream(at("written/undo_redo.txt").c_str()) << "what was committed before";
    undo = new GEN_UNDO_REDO_MGR;
    undo->start_new_file(at("written"));
    undo->begin_section("a section with a title of its own");
    undo->add_description("and a description that no string keeps within itself");
    undo->add_undo_command(STR(5000, 'u'), "a comment that is long enough");
    undo->end_section();
}

STR committed() {
    undo->commit_file();
    return "committed";
}

void new_flags() {
    clear_written();
    start();
    flags = new GEN_DYN_FLAG_MANAGER(&no_objects);
    flags->create_flag("a flag that was there before");
}

STR name_of(GEN_DYN_FLAG const& flag) {
    return flags->get_flag_name(flag);
}

std::vector<Call> const calls = {
    {.name = "parse_condition",
     .ask =
         [] {
             STR condition = "(|top|some_instance|a_signal_of_it = 1) && !(time > 10ns) && x || )";
             parser->parse_string(&condition);
             return condition + parser->error_text();
         },
     .prepare = new_parser},
    {.name = "parse_long_condition",
     .ask =
         [] {
             STR condition;
             for (int i = 0; i < 30; ++i)
                 condition += "(|top|some_instance|a_signal_of_it = 1) && ";
             condition += "last";
             parser->parse_string(&condition);
             return number_of_tokens() + condition;
         },
     .prepare = new_parser},
    {.name = "parse_token_list",
     .ask =
         [] {
             MEM_LIST<BP_TOKEN*>& tokens = parser->token_list();
             parser->parse_token_list(tokens.begin(), tokens.end());
             return parser->working_string() + parser->error_text();
         },
     .prepare = new_tokens},
    {.name = "tokenize",
     .ask =
         [] {
             parser->working_string() = "a_signal_of_some_length > another_signal";
             parser->tokenize_string();
             return number_of_tokens();
         },
     .prepare = new_parser,
     .otherwise = {"2", "1", "0"},
     .reported = "(korvane: internal error: new_token != 0 \\(GEN, gen_bp_parser:[0-9]+\\)\n)+"},
    {.name = "find_subexpression",
     .ask =
         [] {
             MEM_LIST<BP_TOKEN*>& tokens = parser->token_list();
             GEN_BP_PARSER::iterator op;
             parser->get_first_subexpression(tokens.begin(), tokens.end(), nullptr, &op);
             return parser->error_text() + shown(static_cast<long>((*op)->type));
         },
     .prepare = new_tokens},
    {.name = "add_token",
     .ask =
         [] {
             STR const text = "a_path_that_no_string_keeps_within_itself";
             parser->add_token_to_list(BP_TOKEN_HPATH, &text);
             return number_of_tokens();
         },
     .prepare = new_parser,
     .otherwise = {"0"},
     .reported = "korvane: internal error: new_token != 0 \\(GEN, gen_bp_parser:[0-9]+\\)\n"},
    {.name = "process_token",
     .ask =
         [] {
             STR word = "a_path_that_no_string_keeps_within_itself";
             parser->process_token_contents(&word);
             return number_of_tokens();
         },
     .prepare = new_parser,
     .otherwise = {"0"},
     .reported = "korvane: internal error: new_token != 0 \\(GEN, gen_bp_parser:[0-9]+\\)\n"},

    {.name = "undo_commands",
     .ask =
         [] {
             undo->begin_section("a section with another title of its own");
             undo->add_description("another description that no string keeps within itself");
             undo->add_undo_command("a command of some length, to be undone", "");
             undo->add_redo_command("a command of some length, to be redone", "with a comment");
             undo->end_section();
             return committed();
         },
     .prepare = new_undo,
     .left = written},
    {.name = "undo_new_file",
     .ask =
         [] {
             undo->start_new_file(at("written"));
             return committed();
         },
     .prepare = new_undo,
     .left = written},
    {.name = "undo_commit", .ask = committed, .prepare = new_undo, .left = written},

    {.name = "new_flags",
     .ask =
         [] {
             GEN_DYN_FLAG_MANAGER manager(&no_objects);
             manager.create_flag("a flag with a name of some length");
             return manager.get_flag_name(GEN_DYN_FLAG(3));
         }},
    {.name = "create_flag",
     .ask = [] { return name_of(flags->create_flag("a flag with a name of some length")); },
     .prepare = new_flags},
    {.name = "look_up_flag",
     .ask = [] { return name_of(flags->get_named_flag("a flag that was there before")); },
     .prepare = new_flags},
    {.name = "flag_that_is_not_there",
     .ask =
         [] {
             flags->get_named_flag("a flag that was never there");
             flags->destroy_flag(GEN_DYN_FLAG(0x100));
             return name_of(GEN_DYN_FLAG(0xFFFF));
         },
     .prepare = new_flags,
     .reported =
         "korvane: internal error: couldn't find flag 'a flag that was never there' \\(GEN, "
         "gen_dyn_flag:425\\)\n"
         "korvane: internal error: flag 0x100 not found to delete \\(GEN, gen_dyn_flag:521\\)\n"},
    {.name = "flag_self_test",
     .ask =
         [] {
             GEN_DYN_FLAG::test_myself_out(flags);
             return name_of(GEN_DYN_FLAG(0xFFFF));
         },
     .prepare = new_flags},

    {.name = "histogram",
     .ask =
         [] {
             GEN_BINDATA bins(0, 100, 1000);
             bins.add_item(50);
             return shown(static_cast<long>(bins.item_count(500)));
         }},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Editing, AllocationFailure, testing::ValuesIn(calls), call_name);
