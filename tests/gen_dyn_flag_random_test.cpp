#include "effort.h"
#include "flag_recorder.h"
#include "gen_dyn_flag.h"
#include "plain_dyn_flag.h"

#include <array>
#include <gtest/gtest.h>
#include <random>
#include <string>

// Every answer, report and sweep of a long random life must be the plain model's.
TEST(DynFlagManager, AgreesWithThePlainModel) {
    for (bool const has_clearer : {true, false}) {
        SCOPED_TRACE(has_clearer ? "with a clearer" : "without a clearer");
        ErrorRecorder recorder;
        RecordingClearer clearer;
        GEN_DYN_FLAG_MANAGER manager(has_clearer ? &clearer : nullptr);
        PlainDynFlags model(has_clearer);
        std::mt19937 random(has_clearer ? 1 : 2);
        auto const below = [&](unsigned bound) { return static_cast<unsigned>(random() % bound); };

        std::size_t sweeps = 0;
        std::size_t full = 0;
        std::size_t duplicates = 0;
        std::size_t const rounds = effort(400000);
        for (std::size_t round = 0; round < rounds; ++round) {
            // Long stretches lean towards creating or destroying, so that all levels are visited.
            unsigned const lean = round / 1000 % 2 == 0 ? 6 : 2;
            unsigned const action = below(10);
            // More names than slots, few enough to meet again.
            std::string const name = "name" + std::to_string(below(64));
            if (action < lean) {
                ASSERT_EQ(manager.create_flag(name.c_str()).mask(), model.create(name));
            } else if (action < 8) {
                // Mostly single bits, sometimes several, sometimes none.
                unsigned mask = 1U << below(32);
                if (below(16) == 0)
                    mask = below(2) == 0 ? 0 : mask | 1U << below(32);
                manager.destroy_flag(GEN_DYN_FLAG(mask));
                model.destroy(mask);
            } else if (action == 8) {
                ASSERT_EQ(manager.get_named_flag(name.c_str()).mask(), model.find(name));
            } else {
                auto const mask = static_cast<unsigned>(random());
                ASSERT_EQ(manager.get_flag_name(GEN_DYN_FLAG(mask)).c_str(), model.text(mask));
            }
            std::array<int, 3> stats{};
            manager.get_usage_stats(&stats[0], &stats[1], &stats[2]);
            ASSERT_EQ(stats, model.stats());
            ASSERT_EQ(clearer.sweeps, model.sweeps);
            ASSERT_EQ(recorder.errors().size(), model.reports.size());
            for (std::size_t i = 0; i < model.reports.size(); ++i) {
                auto const& [line, condition] = model.reports[i];
                ASSERT_EQ(recorder.errors()[i], flag_error(condition, line));
                full += static_cast<std::size_t>(line == 355);
                duplicates += static_cast<std::size_t>(line == 344);
            }
            sweeps += model.sweeps.size();
            recorder.clear();
            clearer.sweeps.clear();
            model.reports.clear();
            model.sweeps.clear();
        }
        // The life was one that met every situation.
        if (rounds >= 100000) {
            EXPECT_EQ(sweeps > 1000, has_clearer);
            EXPECT_GT(full, 500U);
            EXPECT_GT(duplicates, 1000U);
        }
    }
}
