#pragma once

/// Private to gen.

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

#include "gen_retry.h"
#include "mem_alloc_sys.h"

/// A file opened for writing, in the old contents' place. After a failed write it takes nothing
/// more: a full device is not asked again for every buffer. A signal that interrupts a write is no
/// failure, which it would be to a stream of the C library.
class GEN_TEXT_FILE {
  public:
    explicit GEN_TEXT_FILE(STR const& path) {
        // Cut short at a NUL, the path would name, and empty, some other file.
        if (path.find('\0') != STR::npos)
            return;
        // A FIFO that nobody reads must not block the host for ever: like any other file that
        // cannot be opened it is passed over. A file that another process has a lease on is
        // waited for, for as long as the system lets it.
        m_file = open_file(path.c_str(), O_NONBLOCK);
        if (m_file < 0 && errno == EWOULDBLOCK)
            m_file = open_file(path.c_str(), 0);
        if (is_open())
            fcntl(m_file, F_SETFL, 0);
    }
    ~GEN_TEXT_FILE() {
        if (!is_open())
            return;
        flush();
        close(m_file);
    }
    GEN_TEXT_FILE(GEN_TEXT_FILE const&) = delete;
    GEN_TEXT_FILE& operator=(GEN_TEXT_FILE const&) = delete;

    bool is_open() const { return m_file >= 0; }

    void put(std::string_view text) {
        if (text.size() > sizeof m_buffer - m_buffered)
            flush();
        if (text.size() > sizeof m_buffer) {
            write_all(text);
            return;
        }
        text.copy(m_buffer + m_buffered, text.size());
        m_buffered += text.size();
    }
    void put_line(std::string_view text) {
        put(text);
        put_line();
    }
    void put_line() { put("\n"); }

  private:
    static int open_file(char const* path, int flag) {
        constexpr mode_t permissions = 0666;
        return gen_retry([=] {
            return open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | flag, permissions);
        });
    }
    void flush() {
        write_all({m_buffer, m_buffered});
        m_buffered = 0;
    }
    void write_all(std::string_view text) {
        while (!text.empty() && !m_failed) {
            ssize_t const written =
                gen_retry([&] { return write(m_file, text.data(), text.size()); });
            m_failed = written <= 0;
            if (!m_failed)
                text.remove_prefix(static_cast<std::size_t>(written));
        }
    }

    int m_file = -1;
    bool m_failed = false;
    std::size_t m_buffered = 0;
    char m_buffer[1 << 14];
};
