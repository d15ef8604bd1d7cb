#include "environment.h"

#include <cstdlib>
#include <filesystem>
#include <stdlib.h>

static void set_variable(char const* name, char const* value) {
    if (value != nullptr)
        setenv(name, value, 1);
    else
        unsetenv(name);
}

ScopedVariable::ScopedVariable(char const* name, char const* value) : m_name(name) {
    if (char const* const previous = std::getenv(name))
        m_previous = previous;
    set_variable(name, value);
}

ScopedVariable::~ScopedVariable() {
    set_variable(m_name.c_str(), m_previous ? m_previous->c_str() : nullptr);
}

ScopedCurrentDirectory::ScopedCurrentDirectory(std::string const& directory)
    : m_previous(std::filesystem::current_path().string()) {
    std::filesystem::current_path(directory);
}

ScopedCurrentDirectory::~ScopedCurrentDirectory() {
    std::error_code ignored;
    std::filesystem::current_path(m_previous, ignored);
}
