#pragma once

/// Files that are written through a descriptor and not a stream. Private to gen.

#include "mem_alloc_sys.h"

#include <string_view>

/// A file opened for writing, in the old contents' place. After a failed write it takes nothing
/// more: a full device is not asked again for every buffer. A signal that interrupts a write is no
/// failure, which it would be to a stream of the C library.
class TextFile {
  public:
    explicit TextFile(STR const& path);
    /// Finishes a file that is open.
    ~TextFile();
    TextFile(TextFile const&) = delete;
    TextFile& operator=(TextFile const&) = delete;

    bool is_open() const { return m_file >= 0; }

    void put(std::string_view text);
    void put_line(std::string_view text) {
        put(text);
        put_line();
    }
    void put_line() { put("\n"); }

    /// Writes what is left and closes the file. Gives whether all was written; if not, errno says
    /// why.
    bool finish();

  private:
    void flush();
    void write_all(std::string_view text);

    int m_file;
    int m_fault = 0; ///< the errno of what failed
    std::size_t m_buffered = 0;
    char m_buffer[1 << 14]; // MUTANT_EXCL_LINE: no answer depends on room
};
