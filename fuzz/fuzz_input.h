#pragma once

/// What the fuzz targets share: cutting the input into values, and complaining.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <unistd.h>

/// A NUL-terminated string in a block of exactly its size, so that a sanitizer sees every step over
/// its ends.
class FuzzText {
  public:
    explicit FuzzText(std::string const& text)
        : m_size(text.size()), m_bytes(std::make_unique<char[]>(text.size() + 1)) {
        std::memcpy(m_bytes.get(), text.c_str(), text.size() + 1);
    }

    char* get() const { return m_bytes.get(); }
    /// All bytes before the terminator, embedded NULs included.
    std::size_t size() const { return m_size; }

  private:
    std::size_t m_size;
    std::unique_ptr<char[]> m_bytes;
};

/// The same without a terminator, for what is given with its length.
class FuzzBlock {
  public:
    explicit FuzzBlock(std::string const& text) : m_bytes(std::make_unique<char[]>(text.size())) {
        std::copy(text.begin(), text.end(), m_bytes.get());
    }

    char const* get() const { return m_bytes.get(); }

  private:
    std::unique_ptr<char[]> m_bytes;
};

/// The input as a source of values. When it has run dry it gives zeros and empty strings.
class FuzzInput {
  public:
    FuzzInput(std::uint8_t const* data, std::size_t size) : m_data(data), m_left(size) {}

    template <typename Number>
    Number take() {
        Number number{};
        std::size_t const size = std::min(sizeof number, m_left);
        if (size != 0)
            std::memcpy(&number, m_data, size);
        skip(size);
        return number;
    }

    /// At most @p limit bytes, their count given by a byte of the input.
    std::string take_text(std::size_t limit = 255) {
        std::size_t const wanted = take<std::uint8_t>();
        return take_bytes(std::min(wanted, limit));
    }

    std::string take_rest() { return take_bytes(m_left); }

    bool is_dry() const { return m_left == 0; }

  private:
    std::string take_bytes(std::size_t count) {
        count = std::min(count, m_left);
        std::string text(reinterpret_cast<char const*>(m_data), count);
        skip(count);
        return text;
    }
    void skip(std::size_t count) {
        m_data += count;
        m_left -= count;
    }

    std::uint8_t const* m_data;
    std::size_t m_left;
};

/// Stops the fuzzer when a rule is broken.
inline void require(bool is_kept, char const* rule) {
    if (is_kept)
        return;
    dprintf(STDERR_FILENO, "broken rule: %s\n", rule); // a target may have taken the stream away
    std::abort();
}
