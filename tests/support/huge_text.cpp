#include "huge_text.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr std::size_t piece_size = 16 * 1024 * 1024;
constexpr std::size_t text_size = 130 * piece_size;

/// By number: on 32-bit the text is longer than the distance between two pointers may be.
void* place_of(std::size_t at, void* text) {
    return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(text) + at);
}

void fill(void* text) {
    std::string const piece(piece_size, 'x');
    int const file = memfd_create("text", MFD_CLOEXEC);
    if (write(file, piece.data(), piece.size()) != static_cast<ssize_t>(piece.size()))
        std::abort();
    for (std::size_t at = 0; at < text_size - piece_size; at += piece_size)
        if (mmap(place_of(at, text), piece_size, PROT_READ, MAP_SHARED | MAP_FIXED, file, 0) ==
            MAP_FAILED)
            std::abort();
    close(file);
}

} // namespace

HugeText::HugeText()
    : m_text(mmap(nullptr, text_size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
    if (m_text != MAP_FAILED)
        fill(m_text);
    else
        m_text = nullptr;
}

HugeText::~HugeText() {
    if (m_text != nullptr)
        munmap(m_text, text_size);
}
