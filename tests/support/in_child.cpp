#include "in_child.h"

#include <sys/wait.h>
#include <unistd.h>

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

std::string in_child(std::function<std::string()> const& body) {
    int ends[2];
    if (pipe(ends) != 0)
        return "<no pipe>";
    pid_t const child = fork();
    if (child == 0) {
        close(ends[0]);
        write_all(ends[1], body());
        _exit(0);
    }
    close(ends[1]);
    std::string const text = read_all(ends[0]);
    close(ends[0]);
    int status = 0;
    bool const ended = child > 0 && waitpid(child, &status, 0) == child && status == 0;
    return ended ? text : "<died>";
}
