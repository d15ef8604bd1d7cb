#include "input.h"
#include "json.h"
#include "lookup.h"
#include "query.h"

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

/// The requests, taken out of the reach of what they ask for: from now on standard input is empty,
/// for the programs that gen_query starts as well.
void set_requests_aside() {
    if (fileno(stdin) != STDIN_FILENO)
        return; // they are in memory
    // Above the standard descriptors, of which some may be closed.
    int const aside = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    std::FILE* const requests = aside >= 0 ? fdopen(aside, "r") : nullptr;
    if (requests == nullptr)
        return; // it is closed
    int const nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    close(nothing);
    stdin = requests;
}

/// A file without a name, whose descriptor is no standard one: where standard output is closed,
/// replies would be written into it.
std::FILE* temporary_file() {
    std::FILE* const file = std::tmpfile();
    if (file == nullptr || fileno(file) > STDERR_FILENO)
        return file;
    int const aside = fcntl(fileno(file), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    std::fclose(file);
    return aside >= 0 ? fdopen(aside, "w+") : nullptr;
}

/// Standard input that has this text, for the span of one request: the stream, for gen_query
/// itself, and the descriptor, for programs that the request starts. Where there is no text, the
/// descriptor is empty already.
class InputText {
  public:
    explicit InputText(std::string const& text)
        : m_previous(stdin),
          m_stream(text.empty() ? std::fopen("/dev/null", "re") : temporary_file()) {
        if (m_stream == nullptr)
            return;
        stdin = m_stream;
        if (text.empty()) {
            m_is_whole = true;
            return;
        }
        std::fwrite(text.data(), 1, text.size(), m_stream);
        m_is_whole = std::fflush(m_stream) == 0 && std::ferror(m_stream) == 0;
        std::rewind(m_stream);
        m_descriptor = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        if (m_descriptor >= 0)
            dup2(fileno(m_stream), STDIN_FILENO);
        m_is_whole = m_is_whole && m_descriptor >= 0;
    }
    ~InputText() {
        stdin = m_previous;
        if (m_descriptor >= 0) {
            dup2(m_descriptor, STDIN_FILENO);
            close(m_descriptor);
        }
        if (m_stream != nullptr)
            std::fclose(m_stream);
    }
    /// False where it could not be written to its end, or the descriptor could not be put aside;
    /// errno says why.
    bool is_whole() const { return m_is_whole; }
    InputText(InputText const&) = delete;
    InputText& operator=(InputText const&) = delete;

  private:
    std::FILE* m_previous;
    std::FILE* m_stream;
    int m_descriptor = -1;
    bool m_is_whole = false;
};

/// One line, written at once: whoever asked is waiting for it.
void write_reply(Request const& request, Status status, Answer const& answer) {
    std::fprintf(stdout, "{\"id\": %s, \"status\": %d, \"answer\": ", request.id.c_str(), status);
    print_json_inline(answer, status != STATUS_YES, stdout);
    if (status == STATUS_YES && !answer.remarks().empty()) { // else they are the "error"
        std::fputs(", \"remarks\": ", stdout);
        print_json_inline(Value::List(answer.remarks().begin(), answer.remarks().end()), stdout);
    }
    std::fputs("}\n", stdout);
    std::fflush(stdout);
}

/// One process for all requests: what gen keeps stays from one to the next.
class Serve : public Command {
  public:
    explicit Serve(Commands const& root) : m_root(root) {}

    Status run(Answer& answer) override {
        // The replies of a second one would get between those to the requests.
        static bool is_serving = false;
        if (is_serving) {
            answer.remark("serve is asked already");
            return STATUS_USAGE;
        }
        is_serving = true;
        set_requests_aside();
        // Every reply is printed by itself.
        answer.set_written();
        std::size_t number = 0;
        std::string fault = read_pieces('\n', [&](std::string const& line) {
            answer_line(line, ++number);
            return std::ferror(stdout) == 0;
        });
        is_serving = false;
        if (fault.empty())
            return STATUS_YES;
        answer.remark(std::move(fault));
        return STATUS_USAGE;
    }

  private:
    void answer_line(std::string_view line, std::size_t number) const {
        Request request;
        std::string fault;
        try {
            fault = read_request(line, request);
        } catch (std::bad_alloc const&) {
            fault = "there is not enough memory";
        }
        if (!fault.empty()) {
            Answer refusal;
            refusal.remark("line " + std::to_string(number) + ": " + fault);
            write_reply(request, STATUS_USAGE, refusal);
        } else if (request.args == std::vector<std::string>{"reset"}) {
            forget_project();
            write_reply(request, STATUS_YES, Answer());
        } else {
            ask(request);
        }
    }

    void ask(Request& request) const {
        std::string const locale = std::setlocale(LC_ALL, nullptr); // some subcommands change it
        {
            InputText const input(request.input);
            if (!input.is_whole()) {
                Answer refusal;
                refusal.remark(std::string("cannot keep the input: ") + std::strerror(errno));
                return write_reply(request, STATUS_USAGE, refusal);
            }
            // In front it applies whatever follows, a fault in the command line as well.
            request.args.insert(request.args.begin(), "--json");
            Reply reply = reply_to(m_root, request.args);
            if (reply.text)
                reply.answer.detail("text", *reply.text);
            write_reply(request, reply.status, reply.answer);
        }
        std::setlocale(LC_ALL, locale.c_str());
    }

    Commands const& m_root;
};

constexpr Help help = {
    .name = "serve",
    .summary = "Answers requests that come as lines of JSON, until the end of input",
    .example = "  $ echo '{\"id\": 1, \"args\": [\"text\", \"compare\", \"a10\", \"a9\"]}' | "
               "gen_query serve\n"
               "  ...\n"
               "One process answers thousands of requests, each in a line of its own, written\n"
               "at once: {\"id\": 1, \"status\": 0, \"answer\": {...}}, the status and the object\n"
               "that --json gives. A request may have \"input\", the text of its standard input;\n"
               "where there are remarks, the answer has them beside it as \"remarks\".\n"
               "A project once set stays set, and the cache of lookups stays filled, as in any\n"
               "tool; {\"args\": [\"reset\"]} forgets both. Bad lines are answered with status 2.",
};

} // namespace

void add_serve(Commands& commands) {
    commands.add(help, [&commands] { return std::make_unique<Serve>(commands); });
}
