#pragma once

/// For functions of the C library that without memory go on and answer as if the files, zones or
/// locales that they have no room for did not exist.

#include <cerrno>

#include "mem_manager.h"

/// Ends the process, as every failed allocation does, where a function called in its scope found
/// the heap exhausted. Else leaves errno as it was.
class GEN_MEMORY_WATCH {
  public:
    GEN_MEMORY_WATCH() { errno = 0; }
    ~GEN_MEMORY_WATCH() {
        MEM_MANAGER::check_heap("GEN");
        errno = m_saved;
    }
    GEN_MEMORY_WATCH(GEN_MEMORY_WATCH const&) = delete;
    GEN_MEMORY_WATCH& operator=(GEN_MEMORY_WATCH const&) = delete;

  private:
    int m_saved = errno;
};
