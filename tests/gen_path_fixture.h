#pragma once

/// The ground that path tests stand on: an installation and a project of their own, and the
/// library's path state put back afterwards.

#include "environment.h"
#include "gen_exe.h"
#include "gen_path.h"
#include "library_texts.h"
#include "temp_directory.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

/// All path state as it is when the library has just been loaded.
inline void forget_path_state() {
    gen_clear_all_library_paths();
    gen_destroy_find_file_cache();
    for (STR* text : {&gen_project_dir_path, &gen_korvane_library_paths, &gen_project_library_paths,
                      &gen_user_library_paths, &gen_project_output_directory})
        text->clear();
}

/// A fresh directory with the executable of this process placed in "korvane/linux/", so that the
/// installation root is "korvane/". The current directory is "here/".
class GenPathTest : public testing::Test {
  public:
    GenPathTest()
        : m_module(m_directory / "korvane/linux/tool"),
          m_previous_module(std::exchange(gen_module_fullpath, m_module.data())),
          m_current(m_directory.make_directory("here")) {
        forget_path_state();
    }
    ~GenPathTest() override {
        forget_path_state();
        gen_module_fullpath = m_previous_module;
    }

  protected:
    /// The path of something in the test's directory.
    std::string at(std::string const& relative) const { return m_directory / relative; }
    STR text_at(std::string const& relative) const { return library_string(at(relative)); }
    /// Writes a file and gives its path.
    std::string write(std::string const& relative) const { return m_directory.write(relative); }

    TempDirectory m_directory;

  private:
    std::string m_module;
    char* m_previous_module;
    ScopedCurrentDirectory m_current;
};

/// What a lookup found, as a string that gtest prints.
inline std::string found(FIO_PATH const& path) {
    return std::string(path.fullpath());
}

inline std::string found_file(std::string const& name) {
    return found(gen_find_file(library_string(name)));
}
