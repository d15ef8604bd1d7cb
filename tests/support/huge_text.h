#pragma once

#include <cstddef>

/// A string of more than INT_MAX bytes that takes little memory: the same pages again and again.
class HugeText {
  public:
    HugeText();
    ~HugeText();
    HugeText(HugeText const&) = delete;
    HugeText& operator=(HugeText const&) = delete;

    /// Null on 32-bit, and where the address space has no room for it.
    char const* text() const { return m_text; }

  private:
    char* m_text = nullptr;
};
