// Feeds files, or all files of directories, to a fuzz target once each.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace {

int replayed = 0;

void replay(std::filesystem::path const& file) {
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);
    // A block of exactly the file's size, so that a sanitizer sees a step over either end.
    std::vector<char> bytes(static_cast<std::size_t>(std::filesystem::file_size(file)));
    std::ifstream stream(file, std::ios::binary);
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size());
    ++replayed;
}

} // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i])) {
            replay(argv[i]);
            continue;
        }
        for (auto const& entry : std::filesystem::directory_iterator(argv[i]))
            replay(entry.path());
    }
    if (replayed == 0) {
        std::fprintf(stderr, "%s: nothing to replay\n", argv[0]);
        return 1;
    }
    return 0;
}
