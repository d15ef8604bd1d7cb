#pragma once

/// What fault_probe asks the library for.

#include <functional>
#include <memory>
#include <string>

/// What the library is asked for, and what is found to have come of it once nothing fails any more.
struct Thing {
    std::function<void()> ask;
    std::function<std::string()> tell;
};

/// A thing that is told by what a function returns.
template <typename FUNCTION>
Thing answer_of(FUNCTION function) {
    auto const answer = std::make_shared<std::string>();
    return {[=] { *answer = function(); }, [=] { return *answer; }};
}

// Those that write files.
Thing commit();
Thing flags();
Thing output();
Thing profile();
/// The lines of the default handlers on standard error, which is a file for the purpose.
Thing standard_error();
Thing temp_file();
