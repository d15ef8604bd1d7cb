// Feeds files, or all files of directories, to a fuzz target once each:
//   fuzz_replay TARGET PATH...

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>

// Each target's function has a name of its own here.
#define TARGET(name) extern "C" int fuzz_##name(std::uint8_t const* data, std::size_t size);
#include "fuzz_targets.inc"
#undef TARGET

namespace {

using Target = int (*)(std::uint8_t const* data, std::size_t size);

struct NamedTarget {
    char const* name;
    Target run;
};

NamedTarget const targets[] = {
#define TARGET(name) {#name, fuzz_##name},
#include "fuzz_targets.inc"
#undef TARGET
};

int replayed = 0;

Target target_named(char const* name) {
    for (NamedTarget const& target : targets) {
        if (std::strcmp(target.name, name) == 0)
            return target.run;
    }
    return nullptr;
}

void replay(Target target, std::filesystem::path const& file) {
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);
    // A block of exactly the file's size, so that a sanitizer sees an access beyond either end.
    std::vector<char> bytes(static_cast<std::size_t>(std::filesystem::file_size(file)));
    std::ifstream stream(file, std::ios::binary);
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    target(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size());
    ++replayed;
}

} // namespace

int main(int argc, char** argv) {
    Target const target = argc > 1 ? target_named(argv[1]) : nullptr;
    if (target == nullptr) {
        std::fprintf(stderr, "usage: %s TARGET PATH...\n", argv[0]);
        return 2;
    }
    for (int i = 2; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i])) {
            replay(target, argv[i]);
            continue;
        }
        for (auto const& entry : std::filesystem::directory_iterator(argv[i]))
            replay(target, entry.path());
    }
    if (replayed == 0) {
        std::fprintf(stderr, "%s: nothing to replay\n", argv[0]);
        return 1;
    }
    return 0;
}
