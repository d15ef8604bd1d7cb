// What lookups ask of the system, seen from outside, and what becomes of them when it refuses.

#include "lookup_order.h"
#include "run_program.h"
#include "sanitizer.h"
#include "temp_directory.h"
#include "test_directories.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Texts = std::vector<std::string>;

class GenLookupSystem : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_symlink(TEST_BINARY_DIR "/lookup_probe",
                                        m_directory.make_directory("korvane/linux") + "/probe");
        m_directory.make_directory("here");
        ProgramStart trial;
        trial.arguments = {"/usr/bin/strace", "-o", at("trial"), "/bin/true"};
        if (run_program(trial).status != 0)
            GTEST_SKIP() << "strace cannot trace here";
    }

    std::string at(std::string const& relative) const { return m_directory / relative; }

    /// The probe's options for a project with every group set.
    Texts everything() const {
        return {at("project"), at("project/db"), "lib;" + at("team"), at("user")};
    }
    /// The directories that a lookup then asks.
    Texts directories() const {
        Texts all{at("project/"), at("project/db/"), at("project/lib/"),
                  at("team/"),    at("user/"),       at("project/parablocks/")};
        for (std::string const& directory : shipped_directories(at("korvane/")))
            all.push_back(directory);
        return all;
    }

    /// Runs the probe under strace with these options of it.
    ProgramResult trace(Texts const& strace_options, int rounds, std::string const& kind,
                        std::string const& name, Texts const& options) const {
        ProgramStart start;
        start.arguments = {"/usr/bin/strace", "-o", at("trace"), "-s", "9999", "-e", "signal=none"};
        for (Texts const& more :
             {strace_options, Texts{at("korvane/linux/probe"), std::to_string(rounds), kind, name},
              options})
            start.arguments.insert(start.arguments.end(), more.begin(), more.end());
        start.directory = at("here");
        // The leak check would itself want to trace the process.
        start.set = {{"ASAN_OPTIONS", "detect_leaks=0"}};
        return run_program(start);
    }

    /// The system calls between the marks, memory management aside, as "call text" where text is
    /// the call's first string, if it has one.
    Texts calls() const {
        std::istringstream lines(read_file(at("trace")));
        Texts between;
        int marks = 0;
        for (std::string line; std::getline(lines, line);) {
            if (line.find("\"/mark\"") != std::string::npos) {
                ++marks;
                continue;
            }
            std::string name = line.substr(0, line.find('('));
            if (name == "newfstatat" || name == "statx" || name == "stat64")
                name = "stat"; // by width and kernel
            static Texts const memory{"brk", "mmap", "mmap2", "munmap", "madvise", "mprotect"};
            if (marks != 1 || std::count(memory.begin(), memory.end(), name) != 0)
                continue;
            std::size_t const quote = line.find('"');
            between.push_back(
                quote == std::string::npos
                    ? name
                    : name + " " + line.substr(quote + 1, line.find('"', quote + 1) - quote - 1));
        }
        EXPECT_EQ(marks, 2) << "the probe did not run to its end";
        return between;
    }

    /// What a lookup finds and asks, in its second round.
    struct Lookup {
        std::string found;
        Texts calls;
        int allocations;
    };
    Lookup lookup(std::string const& kind, std::string const& name, Texts const& options) const {
        ProgramResult const result = trace({}, 2, kind, name, options);
        EXPECT_EQ(result.status, 0) << result.errors;
        return {result.output, calls(), std::atoi(result.errors.c_str())};
    }

    /// What a lookup finds in a process whose calls are tampered with.
    std::string found_despite(std::string const& injection, std::string const& kind,
                              std::string const& name, Texts const& options) const {
        ProgramResult const result = trace({"-e", "inject=" + injection}, 1, kind, name, options);
        EXPECT_EQ(result.status, 0) << injection << ": " << result.errors;
        return result.output;
    }

    TempDirectory m_directory;
};

Texts checks(Texts const& paths, std::string const& call = "faccessat2") {
    Texts all;
    for (std::string const& path : paths)
        all.push_back(call + " " + path);
    return all;
}

Texts with(Texts directories, std::string const& name) {
    for (std::string& directory : directories)
        directory += name;
    return directories;
}

} // namespace

// One existence check a directory tried

TEST_F(GenLookupSystem, HitInTheProjectAsksOnce) {
    std::string const path = m_directory.write("project/top.v");
    Lookup const top = lookup("find", "top.v", everything());
    EXPECT_EQ(top.found, path);
    EXPECT_EQ(top.calls, checks({path}));
}

TEST_F(GenLookupSystem, MissAsksEachDirectoryOnceInOrder) {
    Lookup const top = lookup("find", "sub/top.v", everything());
    EXPECT_EQ(top.found, "");
    EXPECT_EQ(top.calls, checks(with(directories(), "sub/top.v")));
}

TEST_F(GenLookupSystem, NothingIsAskedBehindTheHit) {
    std::string const path = m_directory.write("user/top.v");
    Texts expected = with(directories(), "top.v");
    expected.resize(5);
    EXPECT_EQ(lookup("find", "top.v", everything()).calls, checks(expected));
}

TEST_F(GenLookupSystem, AbsoluteNameAsksOnce) {
    std::string const path = m_directory.write("elsewhere/top.v");
    EXPECT_EQ(lookup("find", path, everything()).calls, checks({path}));
    EXPECT_EQ(lookup("find", path + "x", everything()).calls, checks({path + "x"}));
}

TEST_F(GenLookupSystem, EdaLookupAsksItsLibrariesAlone) {
    EXPECT_EQ(lookup("eda", "cell.v", {}).calls,
              checks(with(eda_directories(at("korvane/")), "cell.v")));
}

TEST_F(GenLookupSystem, CachedAnswerAsksNothing) {
    std::string const path = m_directory.write("project/top.v");
    Lookup const top = lookup("cached", "top.v", everything());
    EXPECT_EQ(top.found, path);
    EXPECT_THAT(top.calls, IsEmpty());
    EXPECT_THAT(lookup("cached", "missing.v", everything()).calls, IsEmpty());
}

TEST_F(GenLookupSystem, IncludeAsksOnceMoreBesideTheIncludingFile) {
    Texts expected = with(directories(), "x.h");
    expected.emplace_back("/including/x.h");
    EXPECT_EQ(lookup("include", "x.h", everything()).calls, checks(expected));
}

TEST_F(GenLookupSystem, SourceSearchAsksOnceForEachTypeStillWanted) {
    std::string const vhdl = m_directory.write("project/top.vhd");
    std::string const verilog = m_directory.write("user/top.v");
    Texts expected;
    Texts wanted(std::begin(source_extensions), std::end(source_extensions));
    for (std::string const& directory : directories()) {
        for (std::string const& extension : wanted)
            expected.push_back(directory + "top" + extension);
        if (directory == at("project/"))
            std::erase(wanted, ".vhd");
        if (directory == at("user/"))
            std::erase(wanted, ".v");
    }
    Lookup const top = lookup("sources", "top", everything());
    EXPECT_EQ(top.found, vhdl + "\n" + verilog + "\n");
    EXPECT_EQ(top.calls, checks(expected, "stat"));
}

TEST_F(GenLookupSystem, RelativeProjectAsksForTheCurrentDirectoryOncePerLibraryGroup) {
    std::string const path = m_directory.write("user/top.v");
    Lookup const top = lookup("find", "top.v", {"p", "p/db", "lib", at("user")});
    EXPECT_EQ(top.found, path);
    EXPECT_THAT(top.calls,
                ElementsAre("faccessat2 p/top.v", "faccessat2 p/db/top.v", "getcwd " + at("here"),
                            "faccessat2 " + at("here/p/lib/top.v"), "getcwd " + at("here"),
                            "faccessat2 " + path));
}

TEST_F(GenLookupSystem, OutputDirectoryIsAskedForOnceAndSeenOnce) {
    std::string const out = m_directory.make_directory("out");
    Texts const asked = lookup("output", out, {at("project")}).calls;
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[0], "faccessat2 " + out + "/");
    EXPECT_EQ(asked[1], "stat " + out);
}

// No memory but that of the result

TEST_F(GenLookupSystem, MissTakesNoMemoryAndAHitThatOfItsPath) {
    if (address_sanitizer)
        GTEST_SKIP() << "the sanitizer's heap cannot be counted";
    m_directory.write("user/top.v");
    EXPECT_EQ(lookup("find", "missing.v", everything()).allocations, 0);
    EXPECT_EQ(lookup("eda", "missing.v", everything()).allocations, 0);
    EXPECT_EQ(lookup("cached", "missing.v", everything()).allocations, 0);
    // The path, and the probe's copy of its string.
    EXPECT_EQ(lookup("find", "top.v", everything()).allocations, 2);
    EXPECT_EQ(lookup("cached", "top.v", everything()).allocations, 2);
}

TEST_F(GenLookupSystem, DirectoriesTriedTakeNoMemory) {
    if (address_sanitizer)
        GTEST_SKIP() << "the sanitizer's heap cannot be counted";
    Texts const few = everything();
    Texts many = few;
    for (int i = 0; i < 100; ++i)
        many.back() += ";" + at("none/") + std::to_string(i);
    for (char const* kind : {"find", "include", "sources"}) {
        Lookup const with_few = lookup(kind, "missing", few);
        Lookup const with_many = lookup(kind, "missing", many);
        EXPECT_GE(with_many.calls.size(), with_few.calls.size() + 100) << kind;
        EXPECT_EQ(with_many.allocations, with_few.allocations) << kind;
    }
}

// Refusals

TEST_F(GenLookupSystem, RefusedChecksFindNothingAndHarmNothing) {
    m_directory.write("project/top.v");
    m_directory.write("user/top.v");
    for (char const* error : {"EACCES", "EIO", "ENAMETOOLONG", "ELOOP", "ENOMEM", "ENOTDIR"}) {
        std::string const always = std::string("faccessat2:error=") + error;
        for (char const* kind : {"find", "cached", "include"})
            EXPECT_EQ(found_despite(always, kind, "top.v", everything()), "") << error;
        EXPECT_EQ(found_despite(always, "find", at("user/top.v"), everything()), "") << error;
        EXPECT_EQ(found_despite(always + ":when=1", "find", "top.v", everything()),
                  at("user/top.v"))
            << error << ": the search goes on";
    }
}

TEST_F(GenLookupSystem, SourcesThatCannotBeSeenAreNotThere) {
    std::string const path = m_directory.write("project/top.v");
    for (char const* error : {"EACCES", "EIO", "ELOOP", "ENOMEM", "EOVERFLOW"}) {
        // Of that path alone: the loader itself needs the call.
        ProgramResult const result =
            trace({"-P", path, "-e",
                   std::string("inject=?newfstatat,?statx,?stat64,?stat:error=") + error},
                  1, "sources", "top", everything());
        EXPECT_EQ(result.output, "") << error << ": " << result.errors;
    }
}

TEST_F(GenLookupSystem, SandboxThatDoesNotKnowTheCallIsAskedAnotherWay) {
    std::string const path = m_directory.write("user/top.v");
    EXPECT_EQ(found_despite("faccessat2:error=EPERM", "find", "top.v", everything()), path);
    EXPECT_EQ(found_despite("faccessat2:error=ENOSYS", "find", "top.v", everything()), path);
}

TEST_F(GenLookupSystem, CurrentDirectoryThatCannotBeHadIsNoProject) {
    m_directory.write("here/top.v");
    for (char const* error : {"ENOENT", "EACCES", "ENOMEM"}) {
        std::string const injection = std::string("getcwd:error=") + error;
        EXPECT_EQ(found_despite(injection, "find", "top.v", {}), "") << error;
        EXPECT_EQ(found_despite(injection, "find", "/", {}), "/") << error;
        EXPECT_EQ(found_despite(injection, "output", "", {}), "") << error;
    }
}

TEST_F(GenLookupSystem, OutputDirectoryThatCannotBeMadeOrSeenFallsBackToTheProject) {
    for (char const* injection : {"mkdir:error=EACCES", "mkdir:error=ENOSPC", "mkdir:error=EROFS",
                                  "mkdir:retval=0", "faccessat2:error=EIO"})
        EXPECT_EQ(found_despite(injection, "output", at("out"), {at("project")}), at("project/"))
            << injection;
    EXPECT_EQ(found_despite("getdents64:error=EIO", "output", at("out"), {at("project")}),
              at("out/"));
}

TEST_F(GenLookupSystem, UnreadableDirectoryHasNoDeviceFiles) {
    m_directory.write("korvane/linux/a.ddb");
    EXPECT_EQ(found_despite("sync:error=EIO", "devices", "", {}), "a.ddb\n");
    EXPECT_EQ(found_despite("getdents64:error=EIO", "devices", "", {}), "");
}
