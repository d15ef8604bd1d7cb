#pragma once

/// Private to gen.

#include "gen_open.h"
#include "gen_retry.h"
#include "mem_alloc_sys.h"

#include <string_view>
#include <unistd.h>

/// A file opened for writing, in the old contents' place. After a failed write it takes nothing
/// more: a full device is not asked again for every buffer. A signal that interrupts a write is no
/// failure, which it would be to a stream of the C library.
class TextFile {
  public:
    explicit TextFile(STR const& path) : m_file(gen_open_for_writing(path)) {}
    ~TextFile() {
        if (!is_open())
            return;
        flush();
        close(m_file);
    }
    TextFile(TextFile const&) = delete;
    TextFile& operator=(TextFile const&) = delete;

    bool is_open() const { return m_file >= 0; }

    void put(std::string_view text) {
        if (text.size() > sizeof m_buffer - m_buffered) // MUTANT_EXCL_LINE(> to >=): when to write
            flush();
        if (text.size() > sizeof m_buffer) { // MUTANT_EXCL_LINE(> to >=): likewise
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

    /// Writes what is left, and gives whether all was written; if not, errno says why.
    bool finish() {
        flush();
        if (m_fault != 0)
            errno = m_fault;
        return m_fault == 0;
    }

  private:
    void flush() {
        write_all({m_buffer, m_buffered});
        m_buffered = 0;
    }
    void write_all(std::string_view text) {
        while (!text.empty() && m_fault == 0) {
            ssize_t const written =
                gen_retry([&] { return write(m_file, text.data(), text.size()); });
            if (written <= 0) // MUTANT_EXCL_LINE(<= to <): no device answers 0
                // MUTANT_EXCL_LINE(< to <=; 0 to 1): likewise
                m_fault = written < 0 ? errno : EIO; // GCOVR_EXCL_BR_LINE: no device answers 0
            else
                text.remove_prefix(static_cast<std::size_t>(written));
        }
    }

    int m_file;
    int m_fault = 0; ///< the errno of the write that failed
    std::size_t m_buffered = 0;
    char m_buffer[1 << 14]; // MUTANT_EXCL_LINE: no answer depends on room
};
