#pragma once

/// Private to gen.

#include <cerrno>

/// What the system call @p call returns once no signal has interrupted it: hosts have handlers.
template <typename Call>
auto gen_retry(Call const& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) // GCOVR_EXCL_BR_LINE: gcov counts none
        result = call();
    return result;
}
