#include "gen_os_info_paths.h"

#include "gen_exe.h"
#include "in_child.h"
#include "temp_directory.h"

#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <malloc.h>
#include <utility>
#include <vector>

namespace {

using Variables = std::vector<std::pair<char const*, char const*>>;

void set_all(Variables const& variables) {
    for (auto const& [name, value] : variables)
        if (value != nullptr)
            setenv(name, value, 1);
        else
            unsetenv(name);
}

std::string variable(char const* name) {
    char const* const value = std::getenv(name);
    return value != nullptr ? value : "(unset)";
}

// Everything here happens in children: the bitness is kept for the life of a process, and strings
// that went into the environment are never freed.

std::string bitness_for(char const* type) {
    return in_child([=] {
        set_all({{"KORVANE_BIT_TYPE", type}});
        return std::string(gen_is_system_64bit() ? "64" : "32");
    });
}

/// An installation with the running executable in linux/ and a tool in linux64/.
class Installation : public testing::Test {
  protected:
    /// Runs @p body as the executable of the installation. `{}` in expected strings is the root.
    std::string run(Variables const& variables, std::function<std::string()> const& body) const {
        return in_child([&] {
            gen_module_fullpath = strdup((m_root / "linux/tool").c_str());
            set_all(variables);
            return body();
        });
    }

    std::string twin() const { return m_root / "/linux64/"; }

    static std::string both_paths() { return variable("PATH") + "|" + variable("LD_LIBRARY_PATH"); }

    /// What was answered, what was given of the old values, and the new ones.
    static std::string set_for(char const* exe_name) {
        STR old_path = "-";
        STR old_library_path = "-";
        bool const changed = gen_set_paths_for_64bit(exe_name, old_path, old_library_path);
        return (changed ? "changed " : "kept ") + std::string(old_path) + "|" +
               std::string(old_library_path) + " to " + both_paths();
    }

    void SetUp() override {
        m_root.write("linux/tool");
        m_root.write("linux64/fitter");
    }

    TempDirectory m_root;
};

} // namespace

TEST(SystemBitness, IsTheFirstTwoCharactersOfTheVariable) {
    struct {
        char const* type;
        char const* bits;
    } const rows[] = {
        {"64", "64"},    {"64bit", "64"}, {"640", "64"}, {"32", "32"},  {"6", "32"},     {"", "32"},
        {nullptr, "32"}, {"46", "32"},    {" 64", "32"}, {"6 4", "32"}, {"bit64", "32"},
    };
    for (auto const& row : rows)
        EXPECT_EQ(bitness_for(row.type), row.bits) << (row.type != nullptr ? row.type : "unset");
}

TEST(SystemBitness, FirstAnswerIsKept) {
    for (char const* const first : {"32", "64", static_cast<char const*>(nullptr)}) {
        std::string const answers = in_child([=] {
            std::string seen;
            for (char const* const type : {first, "64", "32", static_cast<char const*>(nullptr)}) {
                set_all({{"KORVANE_BIT_TYPE", type}});
                seen += gen_is_system_64bit() ? "64 " : "32 ";
            }
            return seen;
        });
        bool const is_64bit = first != nullptr && std::strcmp(first, "64") == 0;
        EXPECT_EQ(answers, is_64bit ? "64 64 64 64 " : "32 32 32 32 ");
    }
}

TEST_F(Installation, TwinGoesInFrontOfBothPaths) {
    std::string const seen =
        run({{"KORVANE_PLATFORM", "linux"}, {"PATH", "/bin:/usr/bin"}, {"LD_LIBRARY_PATH", "/lib"}},
            [] { return set_for("fitter"); });
    EXPECT_EQ(seen,
              "changed /bin:/usr/bin|/lib to " + twin() + ":/bin:/usr/bin|" + twin() + ":/lib");
}

TEST_F(Installation, SeparatorBeforeThePlatformIsDoubled) {
    EXPECT_EQ(twin(), m_root.path() + "//linux64/");
}

TEST_F(Installation, RestoreBringsBothBackExactly) {
    std::string const seen =
        run({{"KORVANE_PLATFORM", "linux"}, {"PATH", ":/a::/b:"}, {"LD_LIBRARY_PATH", ""}}, [] {
            STR path;
            STR library_path;
            gen_set_paths_for_64bit("fitter", path, library_path);
            gen_restore_paths(path, library_path);
            return both_paths();
        });
    EXPECT_EQ(seen, ":/a::/b:|");
}

TEST_F(Installation, RestoreWritesWhatItIsGiven) {
    EXPECT_EQ(run({},
                  [] {
                      gen_restore_paths("/new=a", "");
                      return both_paths();
                  }),
              "/new=a|");
}

TEST_F(Installation, RestoredTextsAreTheEnvironmentsOwn) {
    EXPECT_EQ(run({},
                  [] {
                      STR path = "/first";
                      gen_restore_paths(path, path);
                      path = "/other";
                      return both_paths();
                  }),
              "/first|/first");
}

TEST_F(Installation, EnvironmentIsNoTrackedMemory) {
    std::string const seen =
        run({{"KORVANE_PLATFORM", "linux"}, {"PATH", "/bin"}, {"LD_LIBRARY_PATH", "/lib"}}, [] {
            STR path;
            STR library_path;
            path.reserve(1000);
            library_path.reserve(1000);
            std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
            gen_set_paths_for_64bit("fitter", path, library_path);
            gen_restore_paths(path, library_path);
            return std::to_string(MEM_MANAGER::s_system_memory_counter.current() - before);
        });
    EXPECT_EQ(seen, "0");
}

TEST_F(Installation, EnvironmentHasBlocksOfMallocOfTheExactSize) {
    std::string const seen =
        run({{"KORVANE_PLATFORM", "linux"}, {"PATH", "/bin"}, {"LD_LIBRARY_PATH", "/lib"}}, [] {
            std::string sizes;
            STR path;
            STR library_path;
            gen_set_paths_for_64bit("fitter", path, library_path);
            for (std::size_t const length : {0U, 20U, 21U, 300U, 5000U}) {
                gen_restore_paths(STR(length, 'p'), path);
                std::size_t const size = std::strlen("PATH=") + length + 1;
                char* const block = std::getenv("PATH") - std::strlen("PATH=");
                std::size_t const usable = malloc_usable_size(block);
                constexpr std::size_t most_rounding = 56; // with a rest too small to be split off
                if (usable < size || usable > size + most_rounding)
                    sizes += std::to_string(size) + ":" + std::to_string(usable) + " ";
            }
            return sizes;
        });
    EXPECT_EQ(seen, "");
}

TEST_F(Installation, UnsetPathsCountAsEmpty) {
    std::string const seen =
        run({{"KORVANE_PLATFORM", "linux"}, {"PATH", nullptr}, {"LD_LIBRARY_PATH", nullptr}},
            [] { return set_for("fitter"); });
    EXPECT_EQ(seen, "changed | to " + twin() + ":|" + twin() + ":");
}

TEST_F(Installation, SecondCallPutsTheTwinInFrontAgain) {
    std::string const seen =
        run({{"KORVANE_PLATFORM", "linux"}, {"PATH", "/bin"}, {"LD_LIBRARY_PATH", "/lib"}}, [] {
            (void)set_for("fitter");
            return set_for("fitter");
        });
    EXPECT_EQ(seen, "changed " + twin() + ":/bin|" + twin() + ":/lib to " + twin() + ":" + twin() +
                        ":/bin|" + twin() + ":" + twin() + ":/lib");
}

TEST_F(Installation, WithoutAPlatformNothingChanges) {
    EXPECT_EQ(run({{"KORVANE_PLATFORM", nullptr}, {"PATH", "/bin"}, {"LD_LIBRARY_PATH", "/lib"}},
                  [] { return set_for("fitter"); }),
              "kept -|- to /bin|/lib");
}

TEST_F(Installation, WithoutAPlatformTheModuleIsNotAskedFor) {
    EXPECT_EQ(run({{"KORVANE_PLATFORM", nullptr}, {"PATH", "/bin"}, {"LD_LIBRARY_PATH", nullptr}},
                  [] {
                      gen_module_fullpath = nullptr;
                      return set_for("fitter");
                  }),
              "kept -|- to /bin|(unset)");
}

TEST_F(Installation, WithoutTheToolNothingChanges) {
    for (char const* const platform : {"linux", "solaris", ""})
        EXPECT_EQ(run({{"KORVANE_PLATFORM", platform}, {"PATH", "/bin"}, {"LD_LIBRARY_PATH", ""}},
                      [] { return set_for("router"); }),
                  "kept -|- to /bin|")
            << platform;
}

TEST_F(Installation, EmptyPlatformIsOne) {
    m_root.write("64/fitter");
    std::string const seen =
        run({{"KORVANE_PLATFORM", ""}, {"PATH", "/bin"}, {"LD_LIBRARY_PATH", "/lib"}},
            [] { return set_for("fitter"); });
    EXPECT_EQ(seen, "changed /bin|/lib to " + m_root.path() + "//64/:/bin|" + m_root.path() +
                        "//64/:/lib");
}

TEST(WebBrowser, IsAlwaysValid) {
    EXPECT_TRUE(gen_is_valid_web_browser());
}
