#pragma once

/// Asking gen_query: from a command line to the answer.

#include "command.h"

/// What a command line comes to. The answer may borrow its texts from the subcommand.
struct Reply {
    Status status = STATUS_USAGE;
    bool json = false;
    std::optional<std::string> text = {}; ///< a help text, in place of an answer
    std::unique_ptr<Command> command = {};
    Answer answer = {};
    std::string hint = {}; ///< for people, where they learn more
};

/// Asks what @p words ask, gen_query's own name left out. Running out of memory is an answer, too.
/// @param stream where the answers of a batch are written as they come; null keeps them
Reply reply_to(Commands const& root, std::vector<std::string> words, std::FILE* stream = nullptr);

/// Prints the remarks to standard error, for people.
void print_remarks(Answer const& answer);

/// Prints it to standard output, and its remarks to standard error.
/// @return the exit status: the reply's own, or STATUS_USAGE where it cannot be printed
Status print_reply(Reply const& reply);

/// Does both for a command line, and gives the exit status.
int run_gen_query(Commands const& root, int argc, char const* const* argv);
