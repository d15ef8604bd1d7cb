#include "in_child.h"
#include "mem.h"
#include "private_mounts.h"
#include "system_trouble.h"
#include "temp_directory.h"

#include <cstring>
#include <gtest/gtest.h>
#include <sys/mman.h>

namespace {

constexpr std::size_t megabyte = 1024 * 1024;

// Memory of its own pages, all of them touched.
class TouchedPages {
  public:
    explicit TouchedPages(std::size_t size)
        : m_size(size),
          m_block(mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
        std::memset(m_block, 1, m_size);
    }
    ~TouchedPages() { munmap(m_block, m_size); }
    TouchedPages(TouchedPages const&) = delete;
    TouchedPages& operator=(TouchedPages const&) = delete;

  private:
    std::size_t m_size;
    void* m_block;
};

/// Working set and its peak, asked where "/proc/self/status" has this content.
std::string sizes_for(std::string const& status) {
    TempDirectory const proc;
    proc.write("self/status", status);
    return in_child([&]() -> std::string {
        if (!enter_private_mounts() || !mount_over(proc.path(), "/proc"))
            return "refused";
        return std::to_string(mem_info_get_working_set_size()) + " " +
               std::to_string(mem_info_get_working_set_peak_size());
    });
}

} // namespace

TEST(MemInfo, FiguresAreThoseOfTheProcessesStatus) {
    std::string const figures = sizes_for("Name:\tVmRSS\nVmHWM:\t   12 kB\nVmRSS:\t    7 kB\n");
    if (figures == "refused")
        GTEST_SKIP() << "no mounts of one's own here";
    EXPECT_EQ(figures, "7168 12288");
    EXPECT_EQ(sizes_for("VmHWMark:\t5 kB\nVmHWM:\t6 kB\n"), "0 6144");
    EXPECT_EQ(sizes_for(""), "0 0");
    std::string const long_one(9000, 'x');
    EXPECT_EQ(sizes_for("VmRSS:\t1 kB\n" + long_one + "\nVmHWM:\t2 kB\n"), "1024 0")
        << "what stands far behind is not looked for";
}

TEST(MemInfo, WithoutProcNothingIsKnown) {
    TempDirectory const empty;
    std::string const sizes = in_child([&]() -> std::string {
        if (!enter_private_mounts() || !mount_over(empty.path(), "/proc"))
            return "refused";
        return std::to_string(mem_info_get_working_set_size()) + " " +
               std::to_string(mem_info_get_working_set_peak_size());
    });
    if (sizes == "refused")
        GTEST_SKIP() << "no mounts of one's own here";
    EXPECT_EQ(sizes, "0 0");
}

TEST(MemInfo, WorkingSetFollowsTouchedMemoryAndThePeakStays) {
    if (!proc_trouble().empty())
        GTEST_SKIP() << proc_trouble();
    unsigned long const before = mem_info_get_working_set_size();
    EXPECT_GT(before, 100'000U);
    {
        TouchedPages const pages(64 * megabyte);
        EXPECT_GT(mem_info_get_working_set_size(), before + 48 * megabyte);
    }
    EXPECT_LT(mem_info_get_working_set_size(), before + 48 * megabyte);
    EXPECT_GT(mem_info_get_working_set_peak_size(), before + 48 * megabyte);
}

TEST(MemInfo, PeakIsNeverBelowTheCurrentSize) {
    unsigned long const now = mem_info_get_working_set_size();
    EXPECT_GE(mem_info_get_working_set_peak_size(), now);
}
