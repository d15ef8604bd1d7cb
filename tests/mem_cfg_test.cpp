#include "environment.h"
#include "mem.h"

#include <gtest/gtest.h>

namespace {

struct ListCase {
    char const* list;
    char const* name;
    bool by_default;
    bool on;
};

constexpr ListCase list_cases[] = {
    {"flow", "flow", false, true},
    {"flow=on", "flow", false, true},
    {"flow=off", "flow", true, false},
    {"a,flow,b", "flow", false, true},
    {"a,b,flow", "flow", false, true},
    // the last mention counts
    {"flow,flow=off", "flow", true, false},
    {"flow=off,flow", "flow", false, true},
    {"flow=off,flow=on,a", "flow", false, true},
    // a name is a whole name
    {"flows", "flow", false, false},
    {"flo", "flow", false, false},
    {"Flow", "flow", false, false},
    {"overflow", "flow", false, false},
    // blanks around a mention, empty mentions
    {" flow ,\tother=off\t", "flow", false, true},
    {"a, flow=off", "flow", true, false},
    {",,flow,,", "flow", false, true},
    {"", "flow", true, true},
    {"  ", "flow", true, true},
    {",", "flow", false, false},
    // what is neither on nor off says nothing
    {"flow=yes", "flow", false, false},
    {"flow=yes", "flow", true, true},
    {"flow=", "flow", true, true},
    {"flow=off,flow=maybe", "flow", true, false},
    {"other", "flow", true, true},
    // a comma parts mentions, whatever is asked for
    {"low,flow", "low,flow", false, false},
    {"flow ", "flow ", false, false},
};

} // namespace

TEST(MemCfg, EnvironmentListsSwitches) {
    for (ListCase const& row : list_cases) {
        ScopedVariable const list("KORVANE_CFG", row.list);
        EXPECT_EQ(mem_cfg_is_on(row.name, row.by_default), row.on)
            << '"' << row.list << "\", default " << row.by_default;
    }
}

TEST(MemCfg, WithoutEnvironmentTheDefaultApplies) {
    ScopedVariable const list("KORVANE_CFG", nullptr);
    EXPECT_FALSE(mem_cfg_is_on("flow", false));
    EXPECT_TRUE(mem_cfg_is_on("flow", true));
}

TEST(MemCfg, EnvironmentIsReadByEveryCall) {
    ScopedVariable const list("KORVANE_CFG", "flow");
    EXPECT_TRUE(mem_cfg_is_on("flow", false));
    ScopedVariable const changed("KORVANE_CFG", "flow=off");
    EXPECT_FALSE(mem_cfg_is_on("flow", true));
}

TEST(MemCfg, CallOutranksEnvironmentUntilUnset) {
    ScopedVariable const list("KORVANE_CFG", "first,second=off");
    mem_cfg_set("first", false);
    mem_cfg_set("second", true);
    EXPECT_FALSE(mem_cfg_is_on("first", true));
    EXPECT_TRUE(mem_cfg_is_on("second", false));
    EXPECT_TRUE(mem_cfg_is_on("third", true));
    mem_cfg_set("first", true);
    EXPECT_TRUE(mem_cfg_is_on("first", false));
    mem_cfg_set("first", false);
    mem_cfg_unset("first");
    EXPECT_TRUE(mem_cfg_is_on("first", false));
    EXPECT_TRUE(mem_cfg_is_on("second", false));
    mem_cfg_unset("second");
    EXPECT_FALSE(mem_cfg_is_on("second", true));
    mem_cfg_unset("second");
}

TEST(MemCfg, NameIsCopied) {
    ScopedVariable const list("KORVANE_CFG", nullptr);
    char name[] = "flow";
    mem_cfg_set(name, true);
    name[0] = 'g';
    EXPECT_TRUE(mem_cfg_is_on("flow", false));
    EXPECT_FALSE(mem_cfg_is_on("glow", false));
    mem_cfg_unset("flow");
}

TEST(MemCfg, NullAndEmptyNamesAreNoSwitches) {
    ScopedVariable const list("KORVANE_CFG", ",=on");
    for (char const* const name : {static_cast<char const*>(nullptr), ""}) {
        mem_cfg_set(name, true);
        EXPECT_FALSE(mem_cfg_is_on(name, false));
        EXPECT_TRUE(mem_cfg_is_on(name, true));
        mem_cfg_unset(name);
    }
}

TEST(MemCfg, UnsettingGivesTheMemoryBack) {
    std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
    mem_cfg_set("a name too long to live inside a string object", true);
    EXPECT_GT(MEM_MANAGER::s_system_memory_counter.current(), before);
    mem_cfg_unset("a name too long to live inside a string object");
    EXPECT_EQ(MEM_MANAGER::s_system_memory_counter.current(), before);
}
