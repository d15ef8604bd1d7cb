#pragma once

/// How benchmark cases are entered, so that scripts/bench finds them by name alone.
///
/// A case is called "<work>/<contestant>". The contestant "gen" is the library, "limit" a
/// hand-written routine that does only that one thing, anything else a peer. The figures that gen
/// has to reach stand in targets.txt under the work's name.

#include <benchmark/benchmark.h>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

/// Enters one contestant. @p round does the work once and returns something of its result; its
/// argument counts up from 0, to choose among prepared inputs. A round that handles many items
/// gives their number, and the table then shows the time of one. The very first round is not
/// measured: it may prepare what all need.
template <typename Round>
void enter(std::string const& work, std::string const& contestant, Round round, double items = 1) {
    benchmark::RegisterBenchmark((work + "/" + contestant).c_str(),
                                 [round, items, first = true](benchmark::State& state) mutable {
                                     if (std::exchange(first, false))
                                         benchmark::DoNotOptimize(round(std::size_t{0}));
                                     std::size_t turn = 0;
                                     for (auto _ : state)
                                         benchmark::DoNotOptimize(round(turn++));
                                     state.counters["items"] = items;
                                 });
}

/// A family of works, entered when the program starts:
///     static Family const numbers{[] { enter(...); }};
struct Family {
    template <typename EnterAll>
    explicit Family(EnterAll enter_all) {
        enter_all();
    }
};

/// How many prepared inputs a work goes through: enough that no branch predictor learns them by
/// heart, few enough to stay in the nearest cache. A power of two.
inline constexpr std::size_t input_count = 256;

/// The same random numbers in every run.
inline std::mt19937& bench_random() {
    static std::mt19937 generator{20240229};
    return generator;
}

inline unsigned random_below(unsigned bound) {
    return std::uniform_int_distribution<unsigned>(0, bound - 1)(bench_random());
}

/// @p length random small letters.
inline std::string random_letters(std::size_t length) {
    std::string text(length, 'a');
    for (char& letter : text)
        letter = static_cast<char>('a' + random_below(26));
    return text;
}
