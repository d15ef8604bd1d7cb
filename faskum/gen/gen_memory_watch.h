#pragma once

/// For functions of the C library that without memory go on and answer as if the files, zones or
/// locales that they have no room for did not exist.

#include "mem_manager.h"

#include <cerrno>

/// Ends the process, as every failed allocation does, where a function called in its scope found
/// the heap exhausted. Else leaves errno as it was.
class MemoryWatch {
  public:
    // MUTANT_EXCL_LINE: a stale ENOMEM has the heap checked once more, and no other has a say
    MemoryWatch() { errno = 0; }
    ~MemoryWatch() {
        MEM_MANAGER::check_heap("GEN");
        errno = m_saved;
    }
    MemoryWatch(MemoryWatch const&) = delete;
    MemoryWatch& operator=(MemoryWatch const&) = delete;

  private:
    // Taken before the body of the constructor clears it.
    int m_saved = errno;
};
