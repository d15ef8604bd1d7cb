#include "allocation_failure.h"

#include "allocation_ground.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <gmock/gmock.h>
#include <set>
#include <sstream>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// A pipe that one process writes and another reads.
class Pipe {
  public:
    Pipe() {
        if (pipe(m_ends) != 0)
            std::perror("pipe");
    }
    ~Pipe() {
        close_end(0);
        close_end(1);
    }
    Pipe(Pipe const&) = delete;
    Pipe& operator=(Pipe const&) = delete;

    void write_as(int descriptor) { dup2(m_ends[1], descriptor); }
    void write_text(std::string_view text) const {
        while (!text.empty()) {
            ssize_t const count = write(m_ends[1], text.data(), text.size());
            if (count <= 0)
                return;
            text.remove_prefix(static_cast<std::size_t>(count));
        }
    }
    void stop_writing() { close_end(1); }
    std::string read_all() const {
        std::string text;
        char buffer[4096];
        for (ssize_t count; (count = read(m_ends[0], buffer, sizeof buffer)) > 0;)
            text.append(buffer, static_cast<std::size_t>(count));
        return text;
    }

  private:
    void close_end(int end) {
        if (m_ends[end] >= 0)
            close(m_ends[end]);
        m_ends[end] = -1;
    }

    int m_ends[2] = {-1, -1};
};

/// What became of a call.
struct Outcome {
    int status = -1;          ///< exit status, or 128 plus the number of the signal that ended it
    std::string errors;       ///< on standard error
    std::string left;         ///< Call::left
    std::size_t requests = 0; ///< for memory; 0 where the process ended
    std::string answer;       ///< "" where the process ended
    std::string next_answer;  ///< of the same call once more, with memory
};

constexpr char answer_end = '\0';

/// The child's part.
std::string written_answers(Call const& call, std::size_t number, HeapFailure failure) {
    call.prepare();
    start_failing_heap(number, failure);
    STR const answer = call.ask();
    std::size_t const requests = stop_failing_heap();
    std::ostringstream text;
    text << requests << answer_end << answer << answer_end << call.left() << answer_end;
    call.prepare();
    text << call.ask() << answer_end;
    return text.str();
}

std::string next_part(std::string_view& text) {
    std::size_t const end = text.find(answer_end);
    std::string part(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return part;
}

Outcome in_copy(Call const& call, std::function<std::string()> const& body) {
    Pipe answers;
    Pipe errors;
    std::fflush(nullptr);
    pid_t const child = fork();
    if (child == 0) {
        errors.write_as(STDERR_FILENO);
        alarm(20); // rather than waiting for ever
        answers.write_text(body());
        _exit(0);
    }
    answers.stop_writing();
    errors.stop_writing();
    std::string const written = answers.read_all();
    Outcome outcome;
    outcome.errors = errors.read_all();
    int status = 0;
    waitpid(child, &status, 0);
    outcome.status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    std::string_view rest = written;
    outcome.requests = std::strtoul(next_part(rest).c_str(), nullptr, 10);
    outcome.answer = next_part(rest);
    outcome.left = written.empty() ? call.left() : next_part(rest);
    outcome.next_answer = next_part(rest);
    return outcome;
}

Outcome call_without_memory(Call const& call, std::size_t number, HeapFailure failure) {
    return in_copy(call, [&] { return written_answers(call, number, failure); });
}

/// What there is to be seen when the call does nothing.
std::string left_before(Call const& call) {
    return in_copy(call,
                   [&] {
                       call.prepare();
                       return std::string();
                   })
        .left;
}

constexpr char last_line[] =
    "(korvane: internal error: [^\n]*\n)*"
    "korvane: out of memory: [0-9]+ bytes for [A-Z]+ \\(tracker [0-9]+\\)\n";

} // namespace

void PrintTo(Call const& call, std::ostream* stream) {
    *stream << call.name;
}

std::string call_name(testing::TestParamInfo<Call> const& info) {
    return info.param.name;
}

TEST_P(AllocationFailure, DoesNotReturn) {
    Call const& call = GetParam();
    ground();
    std::string const trouble = call.once();
    if (!trouble.empty())
        GTEST_SKIP() << trouble;
    Outcome const whole = call_without_memory(call, 0, HeapFailure::one);
    ASSERT_EQ(whole.status, 0) << whole.errors;
    ASSERT_GT(whole.requests, 0U) << "nothing to fail";
    EXPECT_EQ(whole.next_answer, whole.answer);
    std::vector<std::string> answers = call.otherwise;
    answers.push_back(whole.answer);
    std::vector<std::string> const leavings = {left_before(call), whole.left};

    std::size_t ended = 0;
    std::set<std::string> met;
    for (HeapFailure const failure : {HeapFailure::one, HeapFailure::one_and_all_after})
        for (std::size_t number = 1; number <= whole.requests; ++number) {
            SCOPED_TRACE("request " + std::to_string(number) + " of " +
                         std::to_string(whole.requests) +
                         (failure == HeapFailure::one ? "" : " and all after it"));
            Outcome const outcome = call_without_memory(call, number, failure);
            if (outcome.status == 255) {
                ++ended;
                EXPECT_THAT(outcome.errors, testing::MatchesRegex(last_line));
                EXPECT_THAT(leavings, testing::Contains(outcome.left));
                continue;
            }
            EXPECT_EQ(outcome.status, 0) << outcome.errors;
            bool const lapsed = failure == HeapFailure::one && outcome.answer != whole.answer &&
                                outcome.answer == call.lapse;
            if (!lapsed || !call.lapse_stays) {
                EXPECT_EQ(outcome.next_answer, whole.answer);
            }
            if (lapsed)
                continue;
            EXPECT_THAT(answers, testing::Contains(outcome.answer));
            met.insert(outcome.answer);
            if (outcome.answer == whole.answer) {
                EXPECT_EQ(outcome.left, whole.left);
                EXPECT_EQ(outcome.errors, whole.errors);
            } else {
                EXPECT_THAT(leavings, testing::Contains(outcome.left));
                EXPECT_THAT(outcome.errors, testing::MatchesRegex(call.reported));
            }
        }
    for (std::string const& answer : call.otherwise)
        EXPECT_TRUE(met.contains(answer)) << "never the answer: " << answer;
    RecordProperty("requests", static_cast<int>(whole.requests));
    RecordProperty("ended", static_cast<int>(ended));
}
