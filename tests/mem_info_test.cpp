#include "mem.h"

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

} // namespace

TEST(MemInfo, WorkingSetFollowsTouchedMemoryAndThePeakStays) {
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
