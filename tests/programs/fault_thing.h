#pragma once

/// What fault_probe asks the library for.

#include <functional>
#include <memory>
#include <string>

/// What the library is asked for, and what is found to have come of it once nothing fails any more.
struct Thing {
    std::function<void()> ask;
    std::function<std::string()> result;
};

/// A thing whose result is what a function returns.
template <typename Function>
Thing answer_of(Function function) {
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
Thing try_commit();
