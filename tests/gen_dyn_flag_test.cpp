#include "gen_dyn_flag.h"

#include "flag_recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A manager whose construction is over and recorded away.
class DynFlags : public testing::Test {
  protected:
    DynFlags() { clearer.sweeps.clear(); }

    /// Creates "n0" to "n<count - 1>".
    void fill(unsigned count) {
        for (unsigned i = 0; i < count; ++i)
            EXPECT_EQ(create("n" + std::to_string(i)), 1U << i);
    }
    unsigned create(std::string const& name) { return manager.create_flag(name.c_str()).mask(); }
    unsigned find(std::string const& name) const {
        return manager.get_named_flag(name.c_str()).mask();
    }
    void destroy(unsigned mask) { manager.destroy_flag(GEN_DYN_FLAG(mask)); }
    std::string text(unsigned mask) const {
        return manager.get_flag_name(GEN_DYN_FLAG(mask)).c_str();
    }
    /// used, dirty, clean
    std::vector<int> stats() const {
        std::vector<int> counts{-1, -1, -1};
        manager.get_usage_stats(&counts[0], &counts[1], &counts[2]);
        return counts;
    }

    RecordingClearer clearer;
    GEN_DYN_FLAG_MANAGER manager{&clearer};
    ErrorRecorder recorder;
};

} // namespace

TEST_F(DynFlags, SlotsAreGivenFromTheLowestUp) {
    fill(32);
    EXPECT_THAT(stats(), ElementsAre(32, 0, 0));
    EXPECT_THAT(recorder.errors(), IsEmpty());
    EXPECT_THAT(clearer.sweeps, IsEmpty());
}

TEST_F(DynFlags, NamesAreCopied) {
    std::string name = "gone";
    manager.create_flag(name.data());
    name = "else";
    EXPECT_EQ(find("gone"), 1U);
    EXPECT_EQ(text(1), "(0x1) gone");
}

TEST_F(DynFlags, NamesAreCaseSensitive) {
    EXPECT_EQ(create("name"), 1U);
    EXPECT_EQ(create("Name"), 2U);
    EXPECT_EQ(find("Name"), 2U);
    EXPECT_THAT(recorder.errors(), IsEmpty());
}

TEST_F(DynFlags, NamesMayBeOfAnyBytesAndLength) {
    std::string const longest(100000, 'x');
    EXPECT_EQ(create(longest), 1U);
    EXPECT_EQ(create("%s%n%d"), 2U);
    EXPECT_EQ(create("\xFF\x80\t"), 4U);
    EXPECT_EQ(find(longest), 1U);
    EXPECT_EQ(find("%s%n%d"), 2U);
    EXPECT_EQ(text(6), "(0x6) %s%n%d | \xFF\x80\t");
    EXPECT_EQ(create("%s%n%d"), 2U);
    EXPECT_EQ(create(longest), 1U);
    EXPECT_THAT(recorder.errors(),
                ElementsAre(flag_error("flag '%s%n%d' (0x2) already exists", 344),
                            flag_error("flag '" + longest + "' (0x1) already exists", 344)));
}

TEST_F(DynFlags, NullNameIsAnEmptyOne) {
    EXPECT_EQ(manager.create_flag(nullptr).mask(), 1U);
    EXPECT_EQ(find(""), 1U);
    EXPECT_EQ(manager.get_named_flag(nullptr).mask(), 1U);
    EXPECT_EQ(create(""), 1U);
    EXPECT_THAT(recorder.errors(), ElementsAre(flag_error("flag '' (0x1) already exists", 344)));
}

TEST_F(DynFlags, TakenNameGivesTheExistingFlagAndChangesNothing) {
    fill(12);
    destroy(1U << 3);
    EXPECT_EQ(create("n10"), 1U << 10);
    EXPECT_THAT(recorder.errors(),
                ElementsAre(flag_error("flag 'n10' (0x400) already exists", 344)));
    EXPECT_THAT(stats(), ElementsAre(11, 0, 21));
    EXPECT_EQ(text(1U << 12), "(0x1000) BAD_FLAG");
    EXPECT_THAT(clearer.sweeps, IsEmpty());
}

TEST_F(DynFlags, TakenNameOnAFullManagerSweepsNothing) {
    fill(32);
    destroy(1U << 3);
    EXPECT_EQ(create("n31"), 0x80000000U);
    EXPECT_THAT(recorder.conditions(), ElementsAre("flag 'n31' (0x80000000) already exists"));
    EXPECT_THAT(clearer.sweeps, IsEmpty());
    EXPECT_EQ(text(1U << 3), "(0x8) DIRTY");
}

TEST_F(DynFlags, NamesakeAboveTheFirstCleanSlotGoesUnseen) {
    // A slot below a named one is clean only after a sweep that named a higher one.
    fill(32);
    destroy(1U << 3);
    destroy(1U << 7);
    EXPECT_EQ(create("new"), 1U << 7);
    EXPECT_THAT(clearer.sweeps, ElementsAre(0x88U));

    EXPECT_EQ(create("n20"), 1U << 3); // slot 20 is n20, but slot 3 comes first
    EXPECT_THAT(recorder.errors(), IsEmpty());
    EXPECT_EQ(find("n20"), 1U << 20); // of two namesakes the higher

    // With both below the first clean slot, which is none, each is reported and the higher given.
    EXPECT_EQ(create("n20"), 1U << 20);
    EXPECT_THAT(recorder.errors(),
                ElementsAre(flag_error("flag 'n20' (0x8) already exists", 344),
                            flag_error("flag 'n20' (0x100000) already exists", 344)));
}

TEST_F(DynFlags, FullManagerReportsAndGivesNoFlag) {
    fill(32);
    EXPECT_EQ(create("one more"), 0U);
    EXPECT_THAT(recorder.errors(),
                ElementsAre(flag_error("too many flags, can't create 'one more'", 355)));
    EXPECT_THAT(stats(), ElementsAre(32, 0, 0));
    EXPECT_THAT(clearer.sweeps, IsEmpty());
}

TEST_F(DynFlags, FreedSlotIsReusedAfterASweepOfItsBitAlone) {
    fill(32);
    destroy(1U << 17);
    EXPECT_THAT(clearer.sweeps, IsEmpty()); // destroying sweeps nothing
    EXPECT_EQ(create("again"), 1U << 17);
    EXPECT_THAT(clearer.sweeps, ElementsAre(1U << 17));
    EXPECT_THAT(stats(), ElementsAre(32, 0, 0));
    EXPECT_EQ(text(1U << 17), "(0x20000) again");
    EXPECT_THAT(recorder.errors(), IsEmpty());
}

TEST_F(DynFlags, HighestDirtySlotIsReusedAndAllAreSweptAtOnce) {
    fill(32);
    destroy(1U << 3);
    destroy(1U << 7);
    EXPECT_EQ(create("again"), 1U << 7);
    EXPECT_THAT(clearer.sweeps, ElementsAre(0x88U));
    EXPECT_EQ(text(0x88), "(0x88) BAD_FLAG | again"); // slot 3 is clean now
    EXPECT_EQ(create("next"), 1U << 3);
    EXPECT_THAT(clearer.sweeps, ElementsAre(0x88U)); // and so needs no other sweep
}

TEST_F(DynFlags, SweepSeesTheNewNameAndTheSlotsStillDirty) {
    /// A host that asks while it clears.
    struct AskingClearer : GEN_DYN_FLAG_CLEARER {
        void clear_flags(GEN_DYN_FLAG const& mask) override {
            if (manager == nullptr)
                return;
            seen = manager->get_flag_name(mask).c_str();
            manager->get_usage_stats(&counts[0], &counts[1], &counts[2]);
        }

        GEN_DYN_FLAG_MANAGER const* manager = nullptr;
        std::string seen;
        std::vector<int> counts{-1, -1, -1};
    };
    AskingClearer asking;
    GEN_DYN_FLAG_MANAGER asked(&asking);
    for (unsigned i = 0; i < 32; ++i)
        asked.create_flag(std::to_string(i).c_str());
    asked.destroy_flag(GEN_DYN_FLAG(1U << 5));
    asked.destroy_flag(GEN_DYN_FLAG(1U << 9));
    asking.manager = &asked;
    EXPECT_EQ(asked.create_flag("x").mask(), 1U << 9);
    EXPECT_EQ(asking.seen, "(0x220) DIRTY | x");
    EXPECT_THAT(asking.counts, ElementsAre(30, 1, 1));
    EXPECT_STREQ(asked.get_flag_name(GEN_DYN_FLAG(0x220)).c_str(), "(0x220) BAD_FLAG | x");
}

TEST_F(DynFlags, DirtySlotWaitsWhileACleanOneIsLeft) {
    fill(31);
    destroy(1U << 5);
    EXPECT_EQ(create("last clean"), 1U << 31);
    EXPECT_THAT(clearer.sweeps, IsEmpty());
    EXPECT_EQ(text(1U << 5), "(0x20) DIRTY");
    EXPECT_EQ(create("dirty"), 1U << 5);
    EXPECT_THAT(clearer.sweeps, ElementsAre(0x20U));
}

TEST_F(DynFlags, SweepOfEverySlot) {
    fill(32);
    for (unsigned i = 0; i < 32; ++i)
        destroy(1U << i);
    EXPECT_EQ(create("top"), 0x80000000U);
    EXPECT_THAT(clearer.sweeps, ElementsAre(0xFFFFFFFFU));
    EXPECT_THAT(stats(), ElementsAre(1, 0, 31));
    EXPECT_EQ(create("bottom"), 1U);
}

TEST_F(DynFlags, DestroyingNoFlagIsIgnored) {
    fill(2);
    destroy(0);
    EXPECT_THAT(recorder.errors(), IsEmpty());
    EXPECT_THAT(stats(), ElementsAre(2, 0, 30));
}

TEST_F(DynFlags, DestroyingWhatIsNotOneFlagInUseReportsAndChangesNothing) {
    struct Row {
        unsigned mask;
        char const* condition;
        int line;
    };
    Row const rows[] = {
        {0x6, "flag 0x6: not a single bit", 514},
        {0x3, "flag 0x3: not a single bit", 514},
        {0x80000001U, "flag 0x80000001: not a single bit", 514},
        {0xFFFFFFFFU, "flag 0xffffffff: not a single bit", 514},
        {0xC0000000U, "flag 0xc0000000: not a single bit", 514},
        {0x8, "flag 0x8 not found to delete", 521},
        {0x80000000U, "flag 0x80000000 not found to delete", 521},
    };
    fill(3);
    for (Row const& row : rows) {
        SCOPED_TRACE(row.condition);
        recorder.clear();
        destroy(row.mask);
        EXPECT_THAT(recorder.errors(), ElementsAre(flag_error(row.condition, row.line)));
        EXPECT_THAT(stats(), ElementsAre(3, 0, 29));
    }
}

TEST_F(DynFlags, DestroyingTwiceIsReportedTheSecondTime) {
    fill(3);
    destroy(2);
    EXPECT_THAT(recorder.errors(), IsEmpty());
    destroy(2);
    EXPECT_THAT(recorder.errors(), ElementsAre(flag_error("flag 0x2 not found to delete", 521)));
}

TEST_F(DynFlags, DestroyedNameIsForgotten) {
    fill(3);
    destroy(2);
    EXPECT_EQ(find("n1"), 0U);
    EXPECT_THAT(recorder.errors(), ElementsAre(flag_error("couldn't find flag 'n1'", 425)));
    EXPECT_EQ(create("n1"), 8U);
}

TEST_F(DynFlags, UnknownNameIsReportedAndGivesNoFlag) {
    EXPECT_EQ(find("nobody"), 0U);
    EXPECT_THAT(recorder.errors(), ElementsAre(flag_error("couldn't find flag 'nobody'", 425)));
}

TEST_F(DynFlags, FreeDirtySlotsCountAsClean) {
    fill(5);
    destroy(1);
    destroy(4);
    EXPECT_THAT(stats(), ElementsAre(3, 0, 29));
}

TEST_F(DynFlags, OneCounterForSeveralCountsThemTogether) {
    fill(5);
    int counter = -1;
    manager.get_usage_stats(&counter, &counter, &counter);
    EXPECT_EQ(counter, 32);
    manager.get_usage_stats(&counter, &counter, nullptr);
    EXPECT_EQ(counter, 5);
}

TEST_F(DynFlags, StatisticsSkipNullCounters) {
    fill(5);
    int one = -1;
    manager.get_usage_stats(&one, nullptr, nullptr);
    EXPECT_EQ(one, 5);
    manager.get_usage_stats(nullptr, &one, nullptr);
    EXPECT_EQ(one, 0);
    manager.get_usage_stats(nullptr, nullptr, &one);
    EXPECT_EQ(one, 27);
    manager.get_usage_stats(nullptr, nullptr, nullptr);
}

TEST_F(DynFlags, NameOfAMaskListsEveryBit) {
    EXPECT_EQ(create("alpha"), 1U);
    EXPECT_EQ(create("beta"), 2U);
    EXPECT_EQ(create("gamma"), 4U);
    destroy(2);
    struct Row {
        unsigned mask;
        char const* text;
    };
    Row const rows[] = {
        {0x0, "(0x0) "},
        {0x1, "(0x1) alpha"},
        {0x2, "(0x2) DIRTY"},
        {0x3, "(0x3) alpha | DIRTY"},
        {0x8, "(0x8) BAD_FLAG"},
        {0xF, "(0xf) alpha | DIRTY | gamma | BAD_FLAG"},
        {0x80000004U, "(0x80000004) gamma | BAD_FLAG"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(text(row.mask), row.text);
    EXPECT_THAT(recorder.errors(), IsEmpty());
}
