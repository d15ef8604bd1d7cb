#include "query.h"

#include "command_line.h"
#include "help.h"
#include "installation_root.h"
#include "json.h"
#include "suggestion.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <new>
#include <stdexcept>

namespace {

constexpr char const* no_memory = "there is not enough memory";

constexpr int width = 8 * sizeof(void*);

std::string version_text() {
    return "gen_query " GEN_QUERY_VERSION " (korvane_gen, " + std::to_string(width) + " bits)\n";
}

/// Takes a command line apart, from the root of the subcommands down to the one that is asked.
class Reader {
  public:
    Reader(Commands const& root, Reply& reply, std::FILE* stream)
        : m_commands(&root), m_reply(reply), m_stream(stream) {}

    void read(std::vector<std::string> words) {
        while (m_commands->is_family())
            if (!enter(words))
                return;
        m_reply.command = m_commands->make();
        CommonOptions common;
        Options options = options_of(m_reply.command.get(), common, false);
        std::string const fault = read_command_line(options, std::move(words));
        take(common);
        if (common.help || m_wants_help)
            give(help_of(*m_commands, m_path));
        else if (!fault.empty())
            refuse(fault);
        else
            run();
    }

  private:
    /// They may stand before and behind each word that leads to the subcommand.
    void take(CommonOptions const& common) {
        m_reply.json = m_reply.json || common.json;
        if (common.root)
            m_root = common.root;
        if (common.color != "auto")
            choose_colour(common.color == "always" ? Colour::always : Colour::never);
    }

    void run() {
        m_reply.answer = Answer(m_reply.json, m_stream);
        // An empty --root hides the variable, and asks for the own installation.
        if (char const* const variable = std::getenv("GEN_QUERY_ROOT"); variable && !m_root)
            m_root = variable;
        if (m_root && !m_root->empty())
            if (std::string remark = enter_installation(*m_root); !remark.empty())
                m_reply.answer.remark(std::move(remark));
        m_reply.status = m_reply.command->run(m_reply.answer);
    }

    /// Reads the options before a subcommand and goes on to that. False when the reply is there.
    bool enter(std::vector<std::string>& words) {
        bool const is_root = m_commands->is_root();
        CommonOptions common;
        Options options = options_of(nullptr, common, is_root);
        std::vector<std::string> rest;
        options.argument("subcommand", &rest, "").rest();
        std::string const fault = read_command_line(options, std::move(words));
        take(common);
        if (common.version)
            return give_version();
        if (common.help_all)
            return give(help_of_all(*m_commands, m_path));
        if (common.help || (m_wants_help && rest.empty()))
            return give(help_of(*m_commands, m_path));
        if (!fault.empty())
            return refuse(fault);
        if (rest.empty())
            return refuse("a subcommand is missing");
        if (is_root && rest.front() == "help") {
            m_wants_help = true;
            words.assign(rest.begin() + 1, rest.end()); // lead to the subcommand that is meant
            return true;
        }
        // Of a subcommand that nobody knows, this option at least is meant as it always is.
        bool const wants_json = std::find(rest.begin(), rest.end(), "--json") != rest.end();
        if (!go_to(rest.front())) {
            m_reply.json = m_reply.json || wants_json;
            return false;
        }
        words.assign(rest.begin() + 1, rest.end());
        return true;
    }

    /// Goes down to the one of that name. False where there is none, which is the reply then.
    bool go_to(std::string const& name) {
        if (Commands const* const below = m_commands->find(name)) {
            m_commands = below;
            m_path += " " + name;
            return true;
        }
        std::vector<std::string> known;
        for (Commands const& below : m_commands->below())
            if (!below.is_hidden())
                known.emplace_back(below.help().name);
        return refuse("unknown subcommand '" + name + "'" + did_you_mean(name, known));
    }

    /// This and the next two make the reply, and give false for enter to return.
    bool give_version() {
        if (!m_reply.json)
            return give(version_text());
        m_reply.answer.field("version", GEN_QUERY_VERSION);
        m_reply.answer.field("bits", width);
        m_reply.status = STATUS_YES;
        return false;
    }

    bool give(std::string text) {
        m_reply.status = STATUS_YES;
        m_reply.text = std::move(text);
        return false;
    }

    /// The name of the subcommand goes in front. That of gen_query is left to print_remarks.
    bool refuse(std::string const& fault) {
        std::string const place = m_path.substr(std::min(m_path.find(' '), m_path.size()));
        m_reply.answer.remark(place.empty() ? fault : place.substr(1) + ": " + fault);
        m_reply.hint = "See " + m_path + " --help";
        return false;
    }

    Commands const* m_commands;
    std::string m_path = "gen_query";
    bool m_wants_help = false;         ///< by "help" in front
    std::optional<std::string> m_root; ///< of the installation, where another one is asked for
    Reply& m_reply;
    std::FILE* m_stream;
};

/// Why the lines that are written already are not all of them, as a last line of JSON. Without
/// --json the remarks on standard error are all that says it.
void print_fault_line(Reply const& reply) {
    if (!reply.json || !reply.answer.is_cut_short())
        return;
    print_json_inline(reply.answer, true, stdout);
    std::fputc('\n', stdout);
}

void print(Reply const& reply) {
    if (reply.text)
        std::fwrite(reply.text->data(), 1, reply.text->size(), stdout);
    else if (reply.answer.is_written())
        print_fault_line(reply);
    else if (reply.json)
        print_json(reply.answer, reply.status != STATUS_YES, stdout);
    else
        print_text(reply.answer, stdout);
}

} // namespace

Reply reply_to(Commands const& root, std::vector<std::string> words, std::FILE* stream) {
    Reply reply;
    std::string fault;
    try {
        Reader(root, reply, stream).read(std::move(words));
        return reply;
    } catch (std::bad_alloc const&) {
        fault = no_memory;
    } catch (std::length_error const&) { // longer than any string
        fault = no_memory;
    } catch (std::exception const& error) {
        fault = error.what();
    }
    // Of a reply that is half there only its form counts, and whether lines are out already.
    Reply failed;
    failed.json = reply.json;
    if (reply.answer.is_written())
        failed.answer.set_written();
    failed.answer.remark(fault);
    return failed;
}

void print_remarks(Answer const& answer) {
    for (std::string const& remark : answer.remarks())
        std::fprintf(stderr, "gen_query: %s\n", printable(remark).c_str());
}

Status print_reply(Reply const& reply) {
    bool printed = false;
    try {
        print(reply);
        // Before the remarks, which a terminal then shows below the answer.
        printed = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
        print_remarks(reply.answer);
    } catch (std::bad_alloc const&) {
        std::fprintf(stderr, "gen_query: %s\n", no_memory);
        return STATUS_USAGE;
    }
    if (!reply.hint.empty())
        std::fprintf(stderr, "%s\n", reply.hint.c_str());
    if (!printed) {
        std::fputs("gen_query: cannot write to standard output\n", stderr);
        return STATUS_USAGE;
    }
    return reply.status;
}

int run_gen_query(Commands const& root, int argc, char const* const* argv) {
    // A process may be started without even a name of its own.
    return print_reply(reply_to(root, {argv + std::min(argc, 1), argv + argc}, stdout));
}
