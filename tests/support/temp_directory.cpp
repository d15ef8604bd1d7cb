#include "temp_directory.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdlib.h>

TempDirectory::TempDirectory() {
    // The real path: tests compare strings with what getcwd and the kernel answer.
    std::string name = std::filesystem::canonical(std::filesystem::temp_directory_path()).string();
    name += "/gen_test_XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
        std::perror("mkdtemp");
        std::abort();
    }
    m_path = name;
}

TempDirectory::~TempDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string TempDirectory::operator/(std::string_view relative) const {
    return m_path + "/" + std::string(relative);
}

std::string TempDirectory::write(std::string_view relative, std::string_view content) const {
    std::string path = *this / relative;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string TempDirectory::make_directory(std::string_view relative) const {
    std::string path = *this / relative;
    std::filesystem::create_directories(path);
    return path;
}

std::string read_file(std::string const& path) {
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}
