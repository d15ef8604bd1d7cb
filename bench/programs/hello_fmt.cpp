// A hello that is linked to another library.

#include <cstdio>
#include <fmt/format.h>

int main(int argc, char** argv) {
    std::puts(fmt::format("hello from {} of {}", argv[0], argc).c_str());
    return 0;
}
