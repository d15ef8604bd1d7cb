// The leak checker asks the program that it watches what to forgive: what tests/valgrind.supp says
// for it. Nothing is forgiven to programs without this source.

extern "C" __attribute__((visibility("default"))) char const* __lsan_default_suppressions();
extern "C" __attribute__((visibility("default"))) char const* __lsan_default_options();

char const* __lsan_default_suppressions() {
    return TEST_FORGIVEN_LEAKS;
}

/// Standard error is what tests look at: it has no list of what was forgiven.
char const* __lsan_default_options() {
    return "print_suppressions=0";
}
