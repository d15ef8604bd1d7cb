#include "gen_os_info_machine.h"

#include "in_child.h"
#include "private_mounts.h"
#include "probe.h"
#include "system_trouble.h"
#include "temp_directory.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/sysinfo.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace {

using Machine = GEN_MACHINE_INFO;

constexpr unsigned long long untouched = 77;

unsigned long long physical_ram() {
    unsigned long long bytes = 0;
    Machine::get_physical_ram(&bytes);
    return bytes;
}

void show(std::ostream& text, char const* name, bool (*request)(unsigned long long*)) {
    unsigned long long bytes = untouched;
    bool const answered = request(&bytes);
    text << name << (answered ? " " : " failed ") << bytes;
}

/// What the memory requests answer; total less the physical memory, which is the machine's own.
std::string memory_answers() {
    std::ostringstream text;
    show(text, "virtual", Machine::get_virtual_ram);
    show(text, ", available", Machine::get_available_ram);
    unsigned long long total = untouched;
    unsigned long long usage = untouched;
    bool const answered = Machine::get_total_ram(&total) && Machine::get_total_usage_ram(&usage);
    text << ", total +" << total - physical_ram() << ", usage -" << total - usage;
    return text.str() + (answered ? "" : ", failed");
}

/// The same where "/proc/meminfo" has another content.
std::string memory_answers_for(std::string const& meminfo) {
    TempDirectory const directory;
    std::string const file = directory.write("meminfo", meminfo);
    return in_child([&]() -> std::string {
        if (!enter_private_mounts() || !mount_over(file, "/proc/meminfo"))
            return "refused";
        return memory_answers();
    });
}

struct Meminfo {
    char const* rule;
    std::string content;
    char const* answers;
};

std::ostream& operator<<(std::ostream& stream, Meminfo const& meminfo) {
    return stream << meminfo.rule;
}

class MemoryFigures : public testing::TestWithParam<Meminfo> {};

} // namespace

TEST(SystemNames, AreThoseOfUnameWithTheVersionsCrossed) {
    utsname names;
    ASSERT_EQ(uname(&names), 0);
    STR text;
    EXPECT_TRUE(Machine::get_os_name(&text));
    EXPECT_EQ(text, names.sysname);
    EXPECT_TRUE(Machine::get_os_version(&text));
    EXPECT_EQ(text, names.release);
    EXPECT_TRUE(Machine::get_kernel_version(&text));
    EXPECT_EQ(text, names.version);
    EXPECT_TRUE(Machine::get_hw_name(&text));
    EXPECT_EQ(text, names.machine);
}

TEST(SystemNames, NullIsAFailure) {
    EXPECT_FALSE(Machine::get_os_name(nullptr));
    EXPECT_FALSE(Machine::get_os_version(nullptr));
    EXPECT_FALSE(Machine::get_kernel_version(nullptr));
    EXPECT_FALSE(Machine::get_hw_name(nullptr));
}

TEST(SystemNames, FailureLeavesTheTextAlone) {
    ProgramResult const result = run_probe({"system_names"}, {{"FAKED_UNAME", "fails"}});
    EXPECT_EQ(result.output, "0 answered, untouched\n");
    EXPECT_EQ(run_probe({"system_names"}, {}).output.substr(0, 11), "4 answered,");
}

TEST(Processors, CountIsThatOfTheConfiguredOnes) {
    int count = 0;
    EXPECT_TRUE(Machine::get_cpu_count(&count));
    EXPECT_EQ(count, sysconf(_SC_NPROCESSORS_CONF));
    EXPECT_GE(count, 1);
    // Elsewhere some may be off line.
    EXPECT_EQ(run_probe({"processors"}, {{"FAKED_CONFIGURED", "8"}}).output, "8\n");
    EXPECT_EQ(run_probe({"processors"}, {{"FAKED_CONFIGURED", "1"}}).output, "1\n");
}

TEST(Processors, FrequencyIsTheClockTick) {
    int ticks = 0;
    EXPECT_TRUE(Machine::get_cpu_frequency(&ticks));
    EXPECT_EQ(ticks, sysconf(_SC_CLK_TCK));
    EXPECT_EQ(ticks, 100) << "on every Linux of these widths";
    EXPECT_EQ(run_probe({"frequency"}, {{"FAKED_TICKS_PER_SECOND", "250"}}).output, "250\n");
}

TEST(Memory, PhysicalIsWhatTheKernelReports) {
    unsigned long long bytes = 0;
    EXPECT_TRUE(Machine::get_physical_ram(&bytes));
    struct sysinfo system {};
    ASSERT_EQ(sysinfo(&system), 0);
    // More than fits 32 bits, on most machines of today.
    EXPECT_EQ(bytes, static_cast<unsigned long long>(system.totalram) * system.mem_unit);
    std::string const page = std::to_string(sysconf(_SC_PAGESIZE)) + "\n";
    EXPECT_EQ(run_probe({"memory"}, {{"FAKED_PAGES", "1"}}).output, page);
    EXPECT_EQ(run_probe({"memory"}, {{"FAKED_PAGES", "-1"}}).output, "0\n");
}

TEST(Memory, SignalOfEarlierHasNothingReadAgain) {
    if (!proc_trouble().empty())
        GTEST_SKIP() << proc_trouble();
    unsigned long long bytes = 0;
    errno = EINTR;
    alarm(20); // what never ends would do so for ever
    EXPECT_TRUE(Machine::get_available_ram(&bytes));
    alarm(0);
    EXPECT_GT(bytes, 0U);
}

TEST(Memory, IsAlsoKnownWhereTheFileGetsTheLowestDescriptor) {
    if (!proc_trouble().empty())
        GTEST_SKIP() << proc_trouble();
    EXPECT_EQ(in_child([]() -> std::string {
                  close(STDIN_FILENO);
                  return Machine::get_available_ram(nullptr) ? "known" : "not known";
              }),
              "known");
}

TEST(Memory, AnswersLeaveNoFileOpen) {
    auto const next_descriptor = [] {
        int const file = dup(STDERR_FILENO);
        close(file);
        return file;
    };
    int const before = next_descriptor();
    Machine::get_available_ram(nullptr);
    Machine::get_virtual_ram(nullptr);
    EXPECT_EQ(next_descriptor(), before);
}

TEST(Memory, NullDropsTheAnswer) {
    if (!proc_trouble().empty())
        GTEST_SKIP() << proc_trouble();
    EXPECT_TRUE(Machine::get_cpu_count(nullptr));
    EXPECT_TRUE(Machine::get_cpu_frequency(nullptr));
    EXPECT_TRUE(Machine::get_physical_ram(nullptr));
    EXPECT_TRUE(Machine::get_virtual_ram(nullptr));
    EXPECT_TRUE(Machine::get_total_ram(nullptr));
    EXPECT_TRUE(Machine::get_available_ram(nullptr));
    EXPECT_TRUE(Machine::get_total_usage_ram(nullptr));
}

TEST_P(MemoryFigures, FollowMeminfo) {
    std::string const answers = memory_answers_for(GetParam().content);
    if (answers == "refused")
        GTEST_SKIP() << "the system gives no private view of the file system";
    EXPECT_EQ(answers, GetParam().answers);
}

INSTANTIATE_TEST_SUITE_P(
    Memory, MemoryFigures,
    testing::Values(
        Meminfo{"kilobytes become bytes",
                "MemTotal:  4000 kB\nMemFree:  1000 kB\nSwapTotal:  2000 kB\nSwapFree:  24 kB\n",
                "virtual 2048000, available 1048576, total +2048000, usage -1048576"},
        Meminfo{"no swap space", "MemFree: 1000 kB\nSwapTotal: 0 kB\nSwapFree: 0 kB\n",
                "virtual 0, available 1024000, total +0, usage -1024000"},
        Meminfo{"an empty file leaves the answers alone", "",
                "virtual 77, available 77, total +0, usage -0"},
        Meminfo{"missing keys count as 0", "MemTotal: 5 kB\n",
                "virtual 77, available 0, total +0, usage -0"},
        Meminfo{"a missing MemFree counts as 0", "SwapFree: 3 kB\n",
                "virtual 77, available 3072, total +0, usage -3072"},
        Meminfo{"a missing SwapFree counts as 0", "MemFree: 3 kB\n",
                "virtual 77, available 3072, total +0, usage -3072"},
        Meminfo{"the last line may lack its end", "SwapTotal: 2 kB\nMemFree: 3 kB",
                "virtual 2048, available 3072, total +2048, usage -3072"},
        Meminfo{"the first SwapTotal and the last free figures count",
                "SwapTotal: 1 kB\nSwapTotal: 2 kB\nMemFree: 1 kB\nMemFree: 5 kB\n"
                "SwapFree: 1 kB\nSwapFree: 7 kB\n",
                "virtual 1024, available 12288, total +1024, usage -12288"},
        Meminfo{"keys are prefixes", "SwapTotalFormer: 4 kB\nMemFreeable: 2 kB\nSwapFreed: 1 kB\n",
                "virtual 4096, available 3072, total +4096, usage -3072"},
        Meminfo{"keys are compared letter for letter", "swaptotal: 4 kB\n memFree: 2 kB\n",
                "virtual 77, available 0, total +0, usage -0"},
        Meminfo{"a key in the middle of a line is none", "HugeMemFree: 4 kB\n SwapFree: 2 kB\n",
                "virtual 77, available 0, total +0, usage -0"},
        Meminfo{"colons and blanks of any number part the words",
                "SwapTotal::: : 4 kB\nMemFree 2\nSwapFree:1:9\n",
                "virtual 4096, available 3072, total +4096, usage -3072"},
        Meminfo{"the second word counts, not the first number", "MemFree: kB 4\n",
                "virtual 77, available 0, total +0, usage -0"},
        Meminfo{"no number is 0", "SwapTotal\nMemFree:\nSwapFree: none\n",
                "virtual 0, available 0, total +0, usage -0"},
        Meminfo{"a key without a number takes back what was known", "MemFree: 4 kB\nMemFree\n",
                "virtual 77, available 0, total +0, usage -0"},
        Meminfo{"nothing of an earlier line counts", "MemFreeLonger:  4 kB\nMemFree\n",
                "virtual 77, available 0, total +0, usage -0"},
        Meminfo{"digits end at the first other character", "SwapTotal: 12abc kB\nMemFree: 0x10\n",
                "virtual 12288, available 0, total +12288, usage -0"},
        Meminfo{"no other character parts words", "SwapTotal~4: 8 kB\nMemFree: ~1 kB\n",
                "virtual 8192, available 0, total +8192, usage -0"},
        Meminfo{"a tab is part of the number's word", "SwapTotal:\t8 kB\nMemFree: \t1 kB\n",
                "virtual 8192, available 1024, total +8192, usage -1024"}));

INSTANTIATE_TEST_SUITE_P(
    MemoryAt32Bits, MemoryFigures,
    testing::Values(
        Meminfo{"the largest figure", "SwapTotal: 2147483647 kB\nMemFree: 2147483647 kB\n",
                "virtual 2199023254528, available 2199023254528, total +2199023254528, "
                "usage -2199023254528"},
        Meminfo{"a larger figure sticks",
                "SwapTotal: 2147483648 kB\nMemFree: 99999999999999999999\n",
                "virtual 2199023254528, available 2199023254528, total +2199023254528, "
                "usage -2199023254528"},
        Meminfo{"the sum of kilobytes wraps", "MemFree: 2147483647 kB\nSwapFree: 1 kB\n",
                "virtual 77, available 18446741874686296064, total +0, "
                "usage -18446741874686296064"},
        Meminfo{"a figure below 0 stays one", "SwapTotal: -1 kB\nMemFree: -99999999999 kB\n",
                "virtual 18446744073709550592, available 18446741874686296064, "
                "total +18446744073709550592, usage -18446741874686296064"}));

// A line of more than 49 bytes comes in pieces, and each piece may begin with a key.
INSTANTIATE_TEST_SUITE_P(
    MemoryInPieces, MemoryFigures,
    testing::Values(Meminfo{"a piece that begins with a key counts",
                            std::string(49, 'x') + "SwapTotal: 4 kB\n" + std::string(98, 'x') +
                                "MemFree: 2 kB\n",
                            "virtual 4096, available 2048, total +4096, usage -2048"},
                    Meminfo{"a byte earlier the key is divided",
                            std::string(48, 'x') + "SwapTotal: 4 kB\n",
                            "virtual 77, available 0, total +0, usage -0"},
                    Meminfo{"a number is cut where the piece ends",
                            "MemFree:" + std::string(38, ' ') + "12345 kB\n",
                            "virtual 77, available 125952, total +0, usage -125952"},
                    Meminfo{"a number beyond the piece is 0",
                            "MemFree:" + std::string(41, ' ') + "12345 kB\n",
                            "virtual 77, available 0, total +0, usage -0"}));

TEST(Memory, WithoutMeminfoSwapAndFreeMemoryAreNotKnown) {
    TempDirectory const empty;
    std::string const answers = in_child([&]() -> std::string {
        if (!enter_private_mounts() || !mount_over(empty.path(), "/proc"))
            return "refused";
        return memory_answers();
    });
    if (answers == "refused")
        GTEST_SKIP() << "the system gives no private view of the file system";
    EXPECT_EQ(answers, "virtual failed 77, available failed 77, total +0, usage -0");
}
