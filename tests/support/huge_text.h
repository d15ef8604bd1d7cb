#pragma once

#include <cstddef>

/// A text of more than INT_MAX bytes that takes little memory: the same pages again and again.
class HugeText {
  public:
    HugeText();
    ~HugeText();
    HugeText(HugeText const&) = delete;
    HugeText& operator=(HugeText const&) = delete;

    /// Null where the address space has no room for it.
    char const* text() const { return static_cast<char const*>(m_text); }

  private:
    void* m_text;
};
