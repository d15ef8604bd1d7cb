#include "mem.h"

#include <gtest/gtest.h>
#include <optional>

TEST(MemOwner, IsRegisteredWhileItsObjectLives) {
    EXPECT_FALSE(mem_is_registered_owner("OWNER"));
    {
        MEM_INITIALIZER const owner("OWNER");
        EXPECT_TRUE(mem_is_registered_owner("OWNER"));
        EXPECT_FALSE(mem_is_registered_owner("OWNE"));
        EXPECT_FALSE(mem_is_registered_owner("owner"));
    }
    EXPECT_FALSE(mem_is_registered_owner("OWNER"));
}

TEST(MemOwner, ObjectsMayEndInAnyOrder) {
    std::optional<MEM_INITIALIZER> first;
    std::optional<MEM_INITIALIZER> second;
    std::optional<MEM_INITIALIZER> third;
    first.emplace("ONE");
    second.emplace("TWO");
    third.emplace("THREE");
    second.reset();
    EXPECT_TRUE(mem_is_registered_owner("ONE"));
    EXPECT_FALSE(mem_is_registered_owner("TWO"));
    EXPECT_TRUE(mem_is_registered_owner("THREE"));
    first.reset();
    EXPECT_FALSE(mem_is_registered_owner("ONE"));
    EXPECT_TRUE(mem_is_registered_owner("THREE"));
    third.reset();
    EXPECT_FALSE(mem_is_registered_owner("THREE"));
}

TEST(MemOwner, RegisteredTwiceLastsUntilTheLaterEnd) {
    std::optional<MEM_INITIALIZER> first;
    first.emplace("TWICE");
    {
        MEM_INITIALIZER const second("TWICE");
        first.reset();
        EXPECT_TRUE(mem_is_registered_owner("TWICE"));
    }
    EXPECT_FALSE(mem_is_registered_owner("TWICE"));
}

TEST(MemOwner, NullRegistersNothing) {
    MEM_INITIALIZER const nobody(nullptr);
    MEM_INITIALIZER const somebody("SOMEBODY");
    EXPECT_FALSE(mem_is_registered_owner(nullptr));
    EXPECT_FALSE(mem_is_registered_owner(""));
    EXPECT_TRUE(mem_is_registered_owner("SOMEBODY"));
}
