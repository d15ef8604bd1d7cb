#include "stl_text.h"

#include <algorithm>
#include <cerrno>
#include <climits>

void STL_TEXT::replace(STR& out) {
    if (m_long.empty()) {
        out.assign(m_local, size());
        return;
    }
    m_long.resize(size());
    out.swap(m_long);
}

bool STL_TEXT::grow(std::size_t count) {
    std::size_t const longest = std::min<std::size_t>(INT_MAX, m_long.max_size());
    std::size_t const used = size();
    if (count > longest - used) {
        m_too_long = true;
        errno = EOVERFLOW;
        return false;
    }
    STR larger;
    larger.resize(std::min(longest, 2 * (used + count)));
    std::memcpy(larger.data(), begin(), used);
    m_long.swap(larger);
    m_at = m_long.data() + used;
    m_limit = m_long.data() + m_long.size();
    return true;
}
