#pragma once

/// A directory for targets that write files: in memory where there is one, and gone afterwards.

#include <cstdlib>
#include <filesystem>
#include <string>

class ScratchDirectory {
  public:
    ScratchDirectory() {
        std::filesystem::path const memory = "/dev/shm";
        std::string name =
            (std::filesystem::is_directory(memory) ? memory
                                                   : std::filesystem::temp_directory_path()) /
            "gen_fuzz_XXXXXX";
        if (mkdtemp(name.data()) == nullptr)
            std::abort();
        m_path = name;
    }
    ~ScratchDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    ScratchDirectory(ScratchDirectory const&) = delete;
    ScratchDirectory& operator=(ScratchDirectory const&) = delete;

    std::filesystem::path const& path() const { return m_path; }

  private:
    std::filesystem::path m_path;
};
