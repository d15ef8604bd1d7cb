#pragma once

#include <cstring>
#include <sys/mman.h>

/// A string at so low an address that the address is a tolerable width and a small number as well:
/// whatever a malformed format takes it for, it does no harm. It is also the end of a wide string.
class LowText {
  public:
    LowText()
        : m_page(mmap(reinterpret_cast<void*>(0x10000), 4096, PROT_READ | PROT_WRITE,
                      MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0)) {
        if (m_page != MAP_FAILED)
            std::strcpy(static_cast<char*>(m_page), content);
    }
    ~LowText() {
        if (m_page != MAP_FAILED)
            munmap(m_page, 4096);
    }
    LowText(LowText const&) = delete;
    LowText& operator=(LowText const&) = delete;

    /// Null where the system keeps such addresses to itself.
    char* text() const { return m_page != MAP_FAILED ? static_cast<char*>(m_page) : nullptr; }
    bool is_untouched() const {
        return std::memcmp(m_page, content, sizeof content) == 0 && text()[4095] == '\0';
    }

  private:
    static constexpr char content[] = "low text";
    void* m_page;
};
