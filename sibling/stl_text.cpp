#include "stl_text.h"

#include <algorithm>
#include <cerrno>
#include <climits>

void STL_TEXT::move_to(STR& out) {
    if (m_begin == m_local) {
        out.assign(m_local, m_size);
    } else {
        m_long.resize(m_size);
        out.swap(m_long);
    }
    m_begin = m_local;
    m_size = 0;
    m_capacity = sizeof m_local;
}

bool STL_TEXT::grow(std::size_t count) {
    std::size_t const longest = std::min<std::size_t>(INT_MAX, m_long.max_size());
    if (count > longest - m_size) {
        m_too_long = true;
        errno = EOVERFLOW;
        return false;
    }
    STR larger;
    larger.resize(std::min(longest, 2 * (m_size + count)));
    std::memcpy(larger.data(), m_begin, m_size);
    m_long.swap(larger);
    m_begin = m_long.data();
    m_capacity = m_long.size();
    return true;
}
