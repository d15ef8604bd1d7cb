#pragma once

/// A failed allocation does not return. Asks the library the same again and again, each time with
/// another of its requests for memory failing: either the process ends with one line on standard
/// error and status 255, or the C library could do without and the answer is the right one, or one
/// that the call's declaration has for that case.

#include "failing_heap.h"
#include "mem_alloc_sys.h"

#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

/// A call that needs memory.
struct Call {
    char const* name;
    /// What is asked while memory fails; its answer as a string.
    std::function<STR()> ask;
    /// The state before it, made while there is memory.
    std::function<void()> prepare = [] {};
    /// What the call leaves to be seen from outside of its process: what was there before, or all
    /// of it.
    std::function<std::string()> left = [] { return std::string(); };
    /// The answers, besides the right one, that its declaration has for want of memory; each has to
    /// be met.
    std::vector<std::string> otherwise = {};
    /// The answer that it may have where one request alone was in vain, with the heap able again at
    /// once: then it may as well have been the kernel, or the C library does not say.
    std::optional<std::string> lapse = {};
    /// The lapse stays: the C library remembers it.
    bool lapse_stays = false;
    /// What every call of this kind needs, made once; gives what the system lacks for that, or "".
    std::function<std::string()> once = [] { return std::string(); };
    /// What may be on standard error of a process that goes on, as a regular expression.
    std::string reported = {};
};

void PrintTo(Call const& call, std::ostream* stream);

/// The call's name, for the name of its test.
std::string call_name(testing::TestParamInfo<Call> const& info);

class AllocationFailure : public testing::TestWithParam<Call> {};
