#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "mem_alloc_sys.h"

/// A vector of plain values whose first @p OWN need no allocation, and which leaves the room behind
/// the last one untouched, so that room for far more than is used costs nothing.
template <typename T, std::size_t OWN>
class BP_BUFFER {
    static_assert(std::is_trivially_copyable_v<T>);

  public:
    BP_BUFFER() = default;
    ~BP_BUFFER() { release(); }
    BP_BUFFER(BP_BUFFER const&) = delete;
    BP_BUFFER& operator=(BP_BUFFER const&) = delete;

    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    std::size_t room() const { return m_room - m_size; }
    T* data() { return m_data; }
    T const* data() const { return m_data; }
    T& operator[](std::size_t index) { return m_data[index]; }
    T const& operator[](std::size_t index) const { return m_data[index]; }

    /// Makes room for so many more.
    void make_room(std::size_t more) {
        if (room() < more) [[unlikely]]
            grow(std::max(m_size + more, 2 * m_size));
    }
    /// Appends where there is room.
    void add(T const& value) { m_data[m_size++] = value; }
    /// Appends a value that is to be set later.
    void add_untouched() { ++m_size; }
    void push(T const& value) {
        make_room(1);
        add(value);
    }
    void append(T const* values, std::size_t count) {
        make_room(count);
        if (count != 0)
            std::memcpy(m_data + m_size, values, count * sizeof(T));
        m_size += count;
    }
    void append(std::size_t count, T const& value) {
        make_room(count);
        std::fill_n(m_data + m_size, count, value);
        m_size += count;
    }
    void clear() { m_size = 0; }
    T pop() { return m_data[--m_size]; }

  private:
    void grow(std::size_t room) {
        T* const data = MEM_STL_ALLOCATOR<T>().allocate(room);
        std::memcpy(data, m_data, m_size * sizeof(T));
        release();
        m_data = data;
        m_room = room;
    }
    void release() {
        if (m_data != own())
            MEM_STL_ALLOCATOR<T>().deallocate(m_data, m_room);
    }
    T* own() { return reinterpret_cast<T*>(m_own); }

    alignas(T) unsigned char m_own[OWN * sizeof(T)];
    T* m_data = own();
    std::size_t m_size = 0;
    std::size_t m_room = OWN;
};
