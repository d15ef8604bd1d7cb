#include "mem_owner.h"

#include <cstring>

MEM_INITIALIZER* MEM_INITIALIZER::s_newest = nullptr;

MEM_INITIALIZER::MEM_INITIALIZER(char const* owner) : m_owner(owner), m_next(s_newest) {
    s_newest = this;
}

MEM_INITIALIZER::~MEM_INITIALIZER() {
    // Libraries need not be unloaded in the reverse order of their loading.
    MEM_INITIALIZER** link = &s_newest;
    while (*link != this)
        link = &(*link)->m_next;
    *link = m_next;
}

bool mem_is_registered_owner(char const* owner) {
    if (owner == nullptr)
        return false;
    for (MEM_INITIALIZER const* at = MEM_INITIALIZER::s_newest; at != nullptr; at = at->m_next)
        if (at->m_owner != nullptr && std::strcmp(at->m_owner, owner) == 0)
            return true;
    return false;
}
