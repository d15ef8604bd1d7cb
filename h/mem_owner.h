#pragma once

/// The owners of tracked memory.

#include "korvane_export.h"

/// Registers @p owner as an owner of tracked memory from construction to destruction. A library
/// has one such object for as long as it is loaded. The string is not copied: it must outlive the
/// object. A null owner registers nothing.
class KORVANE_API MEM_INITIALIZER {
  public:
    /// Registers the owner.
    explicit MEM_INITIALIZER(char const* owner);
    /// Takes it off the register.
    ~MEM_INITIALIZER();
    MEM_INITIALIZER(MEM_INITIALIZER const&) = delete;
    MEM_INITIALIZER& operator=(MEM_INITIALIZER const&) = delete;

  private:
    friend KORVANE_API bool mem_is_registered_owner(char const* owner);

    static MEM_INITIALIZER* s_newest;

    char const* m_owner;
    MEM_INITIALIZER* m_next; // the next older one
};

/// True while a MEM_INITIALIZER of that owner lives; false for null.
KORVANE_API bool mem_is_registered_owner(char const* owner);
