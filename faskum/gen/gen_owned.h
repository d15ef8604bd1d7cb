#pragma once

/// Objects that gen keeps by a global pointer. They live in tracked memory like their contents.

#include "mem_alloc_sys.h"

#include <memory>
#include <utility>

/// A new object; never null.
template <typename T, typename... Args>
T* gen_make_owned(Args&&... args) {
    // MUTANT_EXCL_LINE(1 to 2): room alone
    return std::construct_at(MEM_STL_ALLOCATOR<T>().allocate(1), std::forward<Args>(args)...);
}

/// Destroys the object and makes its pointer null; nothing happens when it is null already.
template <typename T>
void gen_release_owned(T*& object) {
    if (object == nullptr)
        return;
    std::destroy_at(object);
    // MUTANT_EXCL_LINE(1 to 2): the allocator makes nothing of the size
    MEM_STL_ALLOCATOR<T>().deallocate(object, 1);
    object = nullptr;
}

/// Puts a new object in place of the one that may be there. The arguments may refer to the old one.
template <typename T, typename... Args>
void gen_replace_owned(T*& object, Args&&... args) {
    T* const replacement = gen_make_owned<T>(std::forward<Args>(args)...);
    gen_release_owned(object);
    object = replacement;
}
