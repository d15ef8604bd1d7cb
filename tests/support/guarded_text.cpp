#include "guarded_text.h"

#include <cstdlib>
#include <cstring>
#include <sys/mman.h>

static constexpr std::size_t page_size = 4096;

static void check(bool done) {
    if (!done)
        std::abort();
}

GuardedText::GuardedText(std::size_t pages) : m_size(pages * page_size) {
    void* const mapping =
        mmap(nullptr, m_size + 2 * page_size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    check(mapping != MAP_FAILED);
    m_mapping = static_cast<char*>(mapping);
    m_start = m_mapping + page_size;
    check(mprotect(m_start, m_size, PROT_READ | PROT_WRITE) == 0);
}

GuardedText::~GuardedText() {
    munmap(m_mapping, m_size + 2 * page_size);
}

char* GuardedText::before_end(std::string_view text, std::size_t gap) {
    check(text.size() + 1 + gap <= m_size);
    char* const copy = place(text, m_size - gap - text.size() - 1);
    copy[text.size()] = '\0';
    return copy;
}

char* GuardedText::at_start(std::string_view text) {
    check(text.size() + 1 <= m_size);
    char* const copy = place(text, 0);
    copy[text.size()] = '\0';
    return copy;
}

char* GuardedText::unterminated(std::string_view text, std::size_t gap) {
    check(text.size() + gap <= m_size);
    return place(text, m_size - gap - text.size());
}

char* GuardedText::unterminated_at_start(std::string_view text) {
    check(text.size() <= m_size);
    return place(text, 0);
}

char* GuardedText::place(std::string_view text, std::size_t offset) {
    char* const copy = m_start + offset;
    if (!text.empty())
        std::memcpy(copy, text.data(), text.size());
    return copy;
}
