#include "huge_text.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr std::size_t piece_size = 16 * 1024 * 1024;
constexpr std::size_t text_size = 130 * piece_size;

void fill(char* text) {
    std::string const piece(piece_size, 'x');
    int const file = memfd_create("text", MFD_CLOEXEC);
    if (write(file, piece.data(), piece.size()) != static_cast<ssize_t>(piece.size()))
        std::abort();
    for (std::size_t at = 0; at < text_size - piece_size; at += piece_size)
        if (mmap(text + at, piece_size, PROT_READ, MAP_SHARED | MAP_FIXED, file, 0) == MAP_FAILED)
            std::abort();
    close(file);
}

} // namespace

HugeText::HugeText() {
    // On 32-bit it would be larger than the compiler takes any object to be.
    if constexpr (text_size <= PTRDIFF_MAX) {
        void* const room = mmap(nullptr, text_size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (room != MAP_FAILED) {
            m_text = static_cast<char*>(room);
            fill(m_text);
        }
    }
}

HugeText::~HugeText() {
    if (m_text != nullptr)
        munmap(m_text, text_size);
}
