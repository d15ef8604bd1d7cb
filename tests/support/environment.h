#pragma once

#include <optional>
#include <string>

/// Sets an environment variable, or unsets it with a null value, until the end of the scope.
class ScopedVariable {
  public:
    ScopedVariable(char const* name, char const* value);
    ~ScopedVariable();
    ScopedVariable(ScopedVariable const&) = delete;
    ScopedVariable& operator=(ScopedVariable const&) = delete;

  private:
    std::string m_name;
    std::optional<std::string> m_previous;
};

/// Makes a directory the current one until the end of the scope.
class ScopedCurrentDirectory {
  public:
    explicit ScopedCurrentDirectory(std::string const& directory);
    ~ScopedCurrentDirectory();
    ScopedCurrentDirectory(ScopedCurrentDirectory const&) = delete;
    ScopedCurrentDirectory& operator=(ScopedCurrentDirectory const&) = delete;

  private:
    std::string m_previous;
};
