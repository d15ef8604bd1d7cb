#include "gen_string_number.h"

#include "contest.h"

#include <charconv>
#include <cstdint>
#include <limits>

namespace {

/// So many that no branch predictor learns them by heart.
constexpr std::size_t number_count = 256 * 1024;

/// How many digits numbers have: of the 264 that stand by themselves in examples/suite, 222 have
/// one, 20 two, 19 three and 3 four; ids, times and sizes in reports bring longer ones.
unsigned digit_count(unsigned most) {
    unsigned const percent = random_below(100);
    if (percent < 90)
        return percent < 70 ? 1 : percent < 83 ? 2 : 3;
    return percent < 95 ? 4 : 5 + random_below(most - 4);
}

template <typename Number>
std::vector<Number> random_numbers() {
    constexpr auto digits = static_cast<unsigned>(std::numeric_limits<Number>::digits10 + 1);
    std::vector<Number> numbers;
    for (std::size_t i = 0; i < number_count; ++i) {
        std::uint64_t number = 0;
        for (unsigned left = digit_count(digits); left != 0; --left)
            number = number * 10 + random_below(10);
        numbers.push_back(static_cast<Number>(number));
    }
    return numbers;
}

template <typename Number, typename Write>
void enter_write(std::string const& work, std::string const& contestant,
                 std::vector<Number> const& numbers, Write write) {
    enter(work, contestant, [numbers, write](std::size_t turn) {
        char buf[24];
        write(numbers[turn % number_count], buf);
        benchmark::DoNotOptimize(buf);
        return buf[0];
    });
}

template <typename Number>
void write_by_to_chars(Number value, char* buf, int radix) {
    *std::to_chars(buf, buf + 23, value, radix).ptr = '\0';
}

void enter_writes() {
    std::vector<int> const ints = random_numbers<int>();
    for (int const radix : {10, 16}) {
        std::string const work = "gen_itoa into buffer, radix " + std::to_string(radix);
        enter_write(work, "gen", ints,
                    [radix](int value, char* buf) { gen_itoa(value, buf, radix); });
        enter_write(work, "std::to_chars", ints, [radix](int value, char* buf) {
            write_by_to_chars(static_cast<unsigned>(value), buf, radix);
        });
    }

    std::vector<unsigned long> const longs = random_numbers<unsigned long>();
    std::string const work = "gen_ultoa into buffer, radix 10";
    enter_write(work, "gen", longs,
                [](unsigned long value, char* buf) { gen_ultoa(value, buf, 10); });
    enter_write(work, "std::to_chars", longs,
                [](unsigned long value, char* buf) { write_by_to_chars(value, buf, 10); });

    std::string const string_work = "gen_itoa returning a string, radix 10";
    enter(string_work, "gen",
          [ints](std::size_t turn) { return gen_itoa(ints[turn % number_count], 10).size(); });
    enter(string_work, "std::to_string",
          [ints](std::size_t turn) { return std::to_string(ints[turn % number_count]).size(); });
}

void enter_read() {
    std::vector<STR> texts;
    for (int const number : random_numbers<int>())
        texts.push_back(gen_itoa(number, 10));
    enter("gen_atoi", "gen",
          [texts](std::size_t turn) { return gen_atoi(texts[turn % number_count]); });
    enter("gen_atoi", "std::from_chars", [texts](std::size_t turn) {
        STR const& text = texts[turn % number_count];
        int value = 0;
        std::from_chars(text.data(), text.data() + text.size(), value);
        return value;
    });
    enter("gen_atoi", "glibc atoi",
          [texts](std::size_t turn) { return std::atoi(texts[turn % number_count].c_str()); });
}

Family const numbers{[] {
    enter_writes();
    enter_read();
}};

} // namespace
