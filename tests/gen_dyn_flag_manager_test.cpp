#include "flag_recorder.h"
#include "gen_dyn_flag.h"
#include "mem_alloc_sys.h"
#include "run_program.h"
#include "sanitizer.h"
#include "test_directories.h"

#include <cstdint>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(DynFlag, IsOneWordOfBits) {
    EXPECT_EQ(sizeof(GEN_DYN_FLAG), 4U);
    EXPECT_TRUE(std::is_trivially_copyable_v<GEN_DYN_FLAG>);
    EXPECT_EQ(GEN_DYN_FLAG().mask(), 0U);
    EXPECT_EQ(GEN_DYN_FLAG(0xFFFFFFFFU).mask(), 0xFFFFFFFFU);
}

TEST(DynFlag, CombinesAsAWordDoes) {
    GEN_DYN_FLAG const a(0x5);
    GEN_DYN_FLAG const b(0x6);
    EXPECT_EQ((a | b).mask(), 0x7U);
    EXPECT_EQ((a & b).mask(), 0x4U);
    EXPECT_EQ((~a).mask(), 0xFFFFFFFAU);
    GEN_DYN_FLAG c = a;
    EXPECT_EQ((c |= b).mask(), 0x7U);
    EXPECT_EQ((c &= ~b).mask(), 0x1U);
    EXPECT_TRUE(a == GEN_DYN_FLAG(5));
    EXPECT_TRUE(a != b);
    EXPECT_FALSE(a == b);
}

TEST(DynFlagManager, HasTheFieldsOfItsBinaryInterface) {
    EXPECT_EQ(sizeof(GEN_DYN_FLAG_MANAGER), 4 * sizeof(void*));
    EXPECT_FALSE(std::is_polymorphic_v<GEN_DYN_FLAG_MANAGER>);
    EXPECT_FALSE(std::is_copy_constructible_v<GEN_DYN_FLAG_MANAGER>);
    EXPECT_FALSE(std::is_copy_assignable_v<GEN_DYN_FLAG_MANAGER>);
    EXPECT_TRUE(std::has_virtual_destructor_v<GEN_DYN_FLAG_CLEARER>);
}

TEST(DynFlagManager, FieldsHaveTheirPlaces) {
    RecordingClearer clearer;
    GEN_DYN_FLAG_MANAGER manager(&clearer);
    manager.create_flag("zero");
    manager.destroy_flag(manager.create_flag("one"));
    auto const* const bytes = reinterpret_cast<unsigned char const*>(&manager);
    auto const pointer = [bytes](std::size_t index) {
        void const* value;
        std::memcpy(&value, bytes + index * sizeof value, sizeof value);
        return value;
    };
    std::uint32_t slots = 0;
    std::memcpy(&slots, bytes, sizeof slots);
    EXPECT_EQ(slots, 32U);
    auto const* const names = static_cast<char const* const*>(pointer(1));
    EXPECT_STREQ(names[0], "zero");
    EXPECT_EQ(names[1], nullptr);
    auto const* const dirty = static_cast<unsigned char const*>(pointer(2));
    EXPECT_EQ(dirty[0], 0);
    EXPECT_EQ(dirty[1], 1);
    EXPECT_EQ(pointer(3), static_cast<GEN_DYN_FLAG_CLEARER*>(&clearer));
}

TEST(DynFlagClearer, ClearingFollowsTheDestructor) {
    // A pointer to a virtual operation is one more than the place of its entry, in bytes; the
    // destructor has two entries.
    auto const operation = &GEN_DYN_FLAG_CLEARER::clear_flags;
    std::size_t place = 0;
    std::memcpy(&place, &operation, sizeof place);
    EXPECT_EQ(place, 1 + 2 * sizeof(void*));
}

TEST(DynFlagManager, ConstructionClearsTheWholeWord) {
    ErrorRecorder const recorder;
    RecordingClearer clearer;
    GEN_DYN_FLAG_MANAGER const manager(&clearer);
    EXPECT_THAT(clearer.sweeps, ElementsAre(0xFFFFFFFFU));
    EXPECT_THAT(recorder.errors(), IsEmpty());
    int used = -1;
    int dirty = -1;
    int clean = -1;
    manager.get_usage_stats(&used, &dirty, &clean);
    EXPECT_THAT((std::vector{used, dirty, clean}), ElementsAre(0, 0, 32));
}

TEST(DynFlagManager, DestructionCallsNoClearerAndFreesAll) {
    RecordingClearer clearer;
    std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
    {
        GEN_DYN_FLAG_MANAGER manager(&clearer);
        manager.create_flag("one");
        manager.destroy_flag(manager.create_flag("two"));
        EXPECT_GT(MEM_MANAGER::s_system_memory_counter.current(), before);
        clearer.sweeps.clear();
    }
    EXPECT_THAT(clearer.sweeps, IsEmpty());
    EXPECT_EQ(MEM_MANAGER::s_system_memory_counter.current(), before);
}

TEST(DynFlagManager, WithoutClearerReportsAndGoesOn) {
    ErrorRecorder recorder;
    GEN_DYN_FLAG_MANAGER manager(nullptr);
    EXPECT_THAT(recorder.errors(), ElementsAre(flag_error("m_clearer != 0", 256)));
    recorder.clear();
    for (unsigned i = 0; i < 32; ++i)
        manager.create_flag(std::to_string(i).c_str());
    manager.destroy_flag(GEN_DYN_FLAG(0x10));
    EXPECT_EQ(manager.create_flag("again").mask(), 0x10U);

    // Nobody swept the bit, and that is what "dirty" counts.
    int used = -1;
    int dirty = -1;
    int clean = -1;
    manager.get_usage_stats(&used, &dirty, &clean);
    EXPECT_THAT((std::vector{used, dirty, clean}), ElementsAre(31, 1, 0));
    EXPECT_STREQ(manager.get_flag_name(GEN_DYN_FLAG(0x10)).c_str(), "(0x10) again");
    EXPECT_THAT(recorder.errors(), IsEmpty());
}

TEST(DynFlagManager, CreatingAllocatesTheNameAloneAndLookingUpNothing) {
    if (address_sanitizer)
        GTEST_SKIP() << "the sanitizer's heap counts for itself";
    ProgramStart start;
    start.arguments = {TEST_BINARY_DIR "/flag_memory_probe"};
    EXPECT_EQ(run_program(start).output, "32 found with 0 blocks, 1 created with 1\n");
}
