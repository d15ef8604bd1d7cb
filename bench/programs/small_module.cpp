// About the least that a C++ library with a state of its own can be.

#include <string>

extern "C" __attribute__((visibility("default"))) std::string small_module_state;
std::string small_module_state;
