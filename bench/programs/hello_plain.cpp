// What every C++ program costs: the runtime alone.

#include <cstdio>
#include <string>

int main(int argc, char** argv) {
    std::string const name = argv[0];
    std::printf("hello from %s of %d\n", name.c_str(), argc);
    return 0;
}
