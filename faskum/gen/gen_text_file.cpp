#include "gen_text_file.h"

#include "gen_open.h"
#include "gen_retry.h"

#include <cerrno>
#include <unistd.h>
#include <utility>

TextFile::TextFile(STR const& path) : m_file(gen_open_for_writing(path)) {}

TextFile::~TextFile() {
    if (is_open())
        finish();
}

void TextFile::put(std::string_view text) {
    if (text.size() > sizeof m_buffer - m_buffered) // MUTANT_EXCL_LINE(> to >=): when to write
        flush();
    if (text.size() > sizeof m_buffer) { // MUTANT_EXCL_LINE(> to >=): likewise
        write_all(text);
        return;
    }
    text.copy(m_buffer + m_buffered, text.size());
    m_buffered += text.size();
}

bool TextFile::finish() {
    flush();
    // Some file systems find out only now that there is no room. One that is interrupted has closed
    // the file all the same.
    if (close(std::exchange(m_file, -1)) != 0 && errno != EINTR && m_fault == 0)
        m_fault = errno;
    if (m_fault != 0)
        errno = m_fault;
    return m_fault == 0;
}

void TextFile::flush() {
    write_all({m_buffer, m_buffered});
    m_buffered = 0;
}

void TextFile::write_all(std::string_view text) {
    while (!text.empty() && m_fault == 0) {
        ssize_t const written = gen_retry([&] { return write(m_file, text.data(), text.size()); });
        if (written <= 0) // MUTANT_EXCL_LINE(<= to <): no device answers 0
            // MUTANT_EXCL_LINE(< to <=; 0 to 1): likewise
            m_fault = written < 0 ? errno : EIO; // GCOVR_EXCL_BR_LINE: no device answers 0
        else
            text.remove_prefix(static_cast<std::size_t>(written));
    }
}
