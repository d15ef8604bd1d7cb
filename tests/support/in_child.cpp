#include "in_child.h"

#include "coverage_counts.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

/// Behind the text of a body that came to its end.
static constexpr char end_mark = '\4';

static void write_all(int descriptor, std::string const& text) {
    std::size_t written = 0;
    while (written < text.size()) {
        ssize_t const count = write(descriptor, text.data() + written, text.size() - written);
        if (count <= 0)
            return;
        written += static_cast<std::size_t>(count);
    }
}

static std::string read_all(int descriptor) {
    std::string text;
    char buffer[4096];
    for (ssize_t count; (count = read(descriptor, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(count));
    return text;
}

std::string in_child(std::function<std::string()> const& body,
                     std::function<void()> const& meanwhile) {
    int ends[2];
    if (pipe(ends) != 0)
        return "<no pipe>";
    pid_t const child = fork();
    if (child == 0) {
        close(ends[0]);
        write_all(ends[1], body() + end_mark);
        write_coverage_counts();
        // Tools that look for leaks at the end of a process do not make one fail that ends so: what
        // the copy inherited, or gave to its environment, is no leak.
        kill(getpid(), SIGKILL);
    }
    close(ends[1]);
    if (meanwhile)
        meanwhile();
    std::string text = read_all(ends[0]);
    close(ends[0]);
    if (child > 0)
        waitpid(child, nullptr, 0);
    if (text.empty() || text.back() != end_mark)
        return "<died>";
    text.pop_back();
    return text;
}
