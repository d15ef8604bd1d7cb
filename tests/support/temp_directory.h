#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// A fresh directory of this test alone, removed with all that is in it at the end of the scope.
class TempDirectory {
  public:
    TempDirectory();
    ~TempDirectory();
    TempDirectory(TempDirectory const&) = delete;
    TempDirectory& operator=(TempDirectory const&) = delete;

    /// The directory without a trailing "/".
    std::string const& path() const { return m_path; }
    /// The directory, "/" and @p relative.
    std::string operator/(std::string_view relative) const;
    /// Writes a file, makes its parents; gives its path.
    std::string write(std::string_view relative, std::string_view content = "") const;
    /// Makes a directory with its parents; gives its path.
    std::string make_directory(std::string_view relative) const;

  private:
    std::string m_path;
};

/// The whole content of a file; "" when it cannot be read.
std::string read_file(std::string const& path);
