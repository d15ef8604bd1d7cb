#include "mem_alloc_sys.h"

#include "effort.h"
#include "sanitizer.h"

#include <gtest/gtest.h>
#include <numeric>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

namespace {

std::size_t in_use() {
    return MEM_MANAGER::s_system_memory_counter.current();
}

// Runs `body`, which gets where the counter stands, and gives how far it is off afterwards.
template <typename Body>
std::size_t left_over(Body body) {
    std::size_t const before = in_use();
    body(before);
    return in_use() - before;
}

STR const long_text(100, 'x');

// Allocates one block of each of `sizes` through the allocator's own way.
std::vector<void*> allocate_all(std::vector<unsigned> const& sizes) {
    std::vector<void*> blocks;
    MEM_TRACKER_THUNK tracker{1255};
    for (unsigned const size : sizes)
        blocks.push_back(MEM_MANAGER::new_wrapper(size, &tracker, "TEST"));
    return blocks;
}

void release_all(std::vector<void*> const& blocks) {
    for (void* const block : blocks)
        MEM_MANAGER::delete_wrapper(block, "TEST");
}

std::size_t usable_bytes(std::vector<void*> const& blocks) {
    return std::accumulate(
        blocks.begin(), blocks.end(), std::size_t{0},
        [](std::size_t sum, void* block) { return sum + malloc_usable_size(block); });
}

} // namespace

TEST(MemAlloc, EveryContainerGivesBackWhatItTook) {
    EXPECT_EQ(left_over([](std::size_t before) {
                  STR text = long_text;
                  text += text;
                  EXPECT_GT(in_use(), before + 200);
              }),
              0U);
    EXPECT_EQ(left_over([](std::size_t before) {
                  MEM_LIST<STR> list(20, long_text);
                  list.splice(list.begin(), MEM_LIST<STR>(20, long_text));
                  EXPECT_GT(in_use(), before + 40 * 100);
              }),
              0U);
    EXPECT_EQ(left_over([](std::size_t before) {
                  MEM_VECTOR<STR> vector;
                  for (int i = 0; i < 100; ++i)
                      vector.push_back(long_text);
                  vector.erase(vector.begin(), vector.begin() + 50);
                  EXPECT_GT(in_use(), before + 50 * 100);
              }),
              0U);
    EXPECT_EQ(left_over([](std::size_t before) {
                  MEM_HASH_MAP<int, STR> map;
                  for (int i = 0; i < 1000; ++i)
                      map[i] = long_text;
                  map.rehash(5000);
                  EXPECT_GT(in_use(), before + 1000 * 100);
              }),
              0U);
}

TEST(MemAlloc, ShortTextsTakeNothing) {
    std::size_t const before = in_use();
    STR const text("short");
    EXPECT_EQ(in_use(), before);
}

TEST(MemAlloc, MovingAndSwappingKeepTheCount) {
    EXPECT_EQ(left_over([](std::size_t) {
                  MEM_VECTOR<STR> first(10, long_text);
                  MEM_VECTOR<STR> second(20, long_text);
                  std::size_t const held = in_use();
                  first.swap(second);
                  MEM_VECTOR<STR> const third = std::move(first);
                  EXPECT_EQ(in_use(), held);
                  first = std::move(second);
                  EXPECT_EQ(in_use(), held);
              }),
              0U);
}

TEST(MemAlloc, BlockCountsWithItsUsableSize) {
    std::vector<unsigned> sizes(200);
    std::iota(sizes.begin(), sizes.end(), 0U);
    sizes.push_back(10'000'000); // one with pages of its own
    EXPECT_EQ(left_over([&](std::size_t before) {
                  std::vector<void*> const blocks = allocate_all(sizes);
                  EXPECT_EQ(in_use() - before, usable_bytes(blocks));
                  release_all(blocks);
              }),
              0U);
}

TEST(MemAlloc, BlocksAreAlignedForEveryFundamentalType) {
    std::vector<void*> const blocks = allocate_all({1, 2, 8, 16, 24, 100, 4096});
    for (void* const block : blocks)
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t), 0U);
    release_all(blocks);
}

TEST(MemAlloc, ReleasingNullIsNothing) {
    EXPECT_EQ(left_over([](std::size_t) { MEM_MANAGER::delete_wrapper(nullptr, "TEST"); }), 0U);
}

TEST(MemAlloc, CounterIsExactFromManyThreads) {
    std::size_t const before = in_use();
    std::size_t const rounds = effort(20'000);
    // Taken while the process has one thread, given back by another: crosses over to counting from
    // many threads. With ctest every test is a process of its own.
    std::vector<void*> const early = allocate_all(std::vector<unsigned>(1000, 40));

    std::vector<std::vector<void*>> kept(4);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kept.size(); ++i)
        threads.emplace_back([&, i] {
            for (std::size_t round = 0; round < rounds; ++round)
                MEM_LIST<STR> const churn(3, STR(round % 200, 'x'));
            kept[i] = allocate_all(std::vector<unsigned>(1000, static_cast<unsigned>(100 * i + 1)));
            if (i == 0)
                release_all(early);
        });
    for (std::size_t round = 0; round < rounds; ++round)
        MEM_VECTOR<STR> const churn(3, STR(round % 200, 'x'));
    for (std::thread& thread : threads)
        thread.join();

    std::size_t expected = 0;
    for (std::vector<void*> const& blocks : kept)
        expected += usable_bytes(blocks);
    EXPECT_EQ(in_use() - before, expected);
    for (std::vector<void*> const& blocks : kept)
        release_all(blocks);
    EXPECT_EQ(in_use(), before);
    EXPECT_EQ(left_over([](std::size_t) { MEM_LIST<STR> const alone(10, long_text); }), 0U);
}

TEST(MemAllocDeathTest, FailureSaysOneLineAndEndsWith255) {
    MEM_TRACKER_THUNK const tracker{1255};
    EXPECT_EXIT(MEM_MANAGER::fail(4096, &tracker, "GEN"), testing::ExitedWithCode(255),
                "^korvane: out of memory: 4096 bytes for GEN \\(tracker 1255\\)\n$");
    EXPECT_EXIT(MEM_MANAGER::fail(1, nullptr, nullptr), testing::ExitedWithCode(255),
                "^korvane: out of memory: 1 bytes for  \\(tracker 0\\)\n$");
    EXPECT_EXIT(MEM_MANAGER::fail(1, nullptr, std::string(1000, 'x').c_str()),
                testing::ExitedWithCode(255), "^korvane: out of memory: 1 bytes for x{122}\n$");
}

TEST(MemAllocDeathTest, CountPastTheSizeTypeFails) {
    std::size_t const count = std::numeric_limits<unsigned>::max() / sizeof(double) + 1;
    EXPECT_EXIT(MEM_STL_ALLOCATOR<double>().allocate(count), testing::ExitedWithCode(255),
                "^korvane: out of memory: [0-9]+ bytes for GEN \\(tracker 1255\\)\n$");
}

TEST(MemAllocDeathTest, FullHeapFails) {
    if (address_sanitizer)
        GTEST_SKIP() << "the sanitizer's heap ends the process itself";
    auto const fill = [] {
        rlimit const eight_gigabytes{8ULL << 30, 8ULL << 30};
        setrlimit(RLIMIT_AS, &eight_gigabytes);
        MEM_VECTOR<STR> texts;
        for (;;)
            texts.emplace_back().reserve(1U << 30);
    };
    EXPECT_EXIT(fill(), testing::ExitedWithCode(255),
                "^korvane: out of memory: [0-9]+ bytes for GEN \\(tracker 1255\\)\n$");
}
