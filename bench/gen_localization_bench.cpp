#include "gen_localization.h"

#include "contest.h"

#include <array>
#include <cctype>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <locale.h>
#include <stdlib.h>
#include <string_view>

namespace {

/// The user's locale of a work, compiled into a directory of this run when it is first asked for.
/// A machine without localedef measures the works of locale "C" twice and says so.
class UserLocale {
  public:
    UserLocale() = default;
    UserLocale(UserLocale const&) = delete;
    UserLocale& operator=(UserLocale const&) = delete;
    ~UserLocale() {
        std::error_code ignored;
        if (!m_directory.empty())
            std::filesystem::remove_all(m_directory, ignored);
    }

    void use(char const* name) {
        if (std::string_view(name) != "C" && m_directory.empty())
            make(name);
        if (std::setlocale(LC_ALL, name) == nullptr)
            std::fprintf(stderr, "locale %s is missing\n", name);
    }

  private:
    void make(std::string const& name) {
        m_directory = (std::filesystem::temp_directory_path() / "gen_bench_XXXXXX").string();
        if (mkdtemp(m_directory.data()) == nullptr)
            return;
        std::string const language = name.substr(0, name.find('.'));
        std::string const command =
            "localedef -i " + language + " -f UTF-8 " + m_directory + "/" + name;
        if (std::system(command.c_str()) != 0)
            std::fprintf(stderr, "localedef failed\n");
        setenv("LOCPATH", m_directory.c_str(), 1);
    }

    std::string m_directory;
};

UserLocale user_locale;

/// Enters a contestant that runs under the user's locale, which is set up before the clock starts
/// and put back behind it: the next repetition may be one of any other work.
template <typename Round>
void enter_under(char const* locale, std::string const& work, std::string const& contestant,
                 Round round) {
    benchmark::RegisterBenchmark((work + ", locale " + locale + "/" + contestant).c_str(),
                                 [locale, round](benchmark::State& state) {
                                     user_locale.use(locale);
                                     std::size_t turn = 0;
                                     for (auto _ : state)
                                         benchmark::DoNotOptimize(round(turn++ % input_count));
                                     user_locale.use("C");
                                 });
}

locale_t kept_locale() {
    static locale_t const kept = newlocale(LC_ALL_MASK, "C", nullptr);
    return kept;
}

/// What the twins are defined by, done word by word.
template <typename Call>
auto switched(int category, Call call) {
    std::string const users = std::setlocale(category, nullptr);
    std::setlocale(category, "C");
    auto const result = call();
    std::setlocale(category, users.c_str());
    return result;
}

/// A function that is called, as a twin has to be, and only knows the letters of "C".
[[gnu::noinline]] int limit_isalpha(unsigned char c) {
    static constexpr auto is_letter = [] {
        std::array<bool, 256> table{};
        for (int letter = 'a'; letter <= 'z'; ++letter)
            table[static_cast<std::size_t>(letter)] = table[static_cast<std::size_t>(letter - 32)] =
                true;
        return table;
    }();
    return is_letter[c];
}

void enter_isalpha(char const* locale) {
    std::vector<int> characters;
    for (std::size_t i = 0; i < input_count; ++i)
        characters.push_back(static_cast<int>(random_below(256)));
    std::string const work = "gen_local_isalpha";
    enter_under(locale, work, "gen",
                [characters](std::size_t i) { return gen_local_isalpha(characters[i]); });
    enter_under(locale, work, "isalpha_l, kept locale",
                [characters](std::size_t i) { return isalpha_l(characters[i], kept_locale()); });
    enter_under(locale, work, "setlocale, isalpha", [characters](std::size_t i) {
        return switched(LC_CTYPE, [&] { return std::isalpha(characters[i]); });
    });
    enter_under(locale, work, "limit", [characters](std::size_t i) {
        return limit_isalpha(static_cast<unsigned char>(characters[i]));
    });
}

/// Numbers as reports and constraint files write them: a few digits, now and then all of them.
std::vector<std::string> decimal_texts() {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < input_count; ++i) {
        double const value =
            std::ldexp(static_cast<double>(bench_random()()), -static_cast<int>(random_below(48)));
        int const digits = random_below(8) == 0 ? 17 : 1 + static_cast<int>(random_below(9));
        char text[40];
        std::snprintf(text, sizeof text, "%.*g", digits, random_below(4) == 0 ? -value : value);
        texts.emplace_back(text);
    }
    return texts;
}

template <typename Number>
constexpr Number powers_of_ten[] = {1e0L,  1e1L,  1e2L,  1e3L,  1e4L,  1e5L,  1e6L,  1e7L,
                                    1e8L,  1e9L,  1e10L, 1e11L, 1e12L, 1e13L, 1e14L, 1e15L,
                                    1e16L, 1e17L, 1e18L, 1e19L, 1e20L, 1e21L, 1e22L};

template <typename Number>
Number scaled(std::int64_t digits, int power) {
    auto const number = static_cast<Number>(digits);
    return power < 0 ? number / powers_of_ten<Number>[-power]
                     : number * powers_of_ten<Number>[power];
}

/// digits * 10^power for at most 18 digits and a power within 22, exactly rounded. Long numbers go
/// through extended precision, where both factors are exact, and to strtod if that ends in the
/// middle between two doubles, which may be the true value or one beside it.
double limit_scaled(std::int64_t digits, int power, char const* text) {
    if (digits >> 53 == 0)
        return scaled<double>(digits, power);
    auto const extended = scaled<long double>(digits, power);
    std::uint64_t mantissa = 0;
    std::memcpy(&mantissa, &extended, sizeof mantissa);
    return (mantissa & 0x7FF) != 0x400 ? static_cast<double>(extended)
                                       : strtod_l(text, nullptr, kept_locale());
}

/// Reads [-]digits[.digits][e[+-]digits] exactly, by itself where it is short, and knows nothing
/// else: no blanks, no locales, no other kinds of number.
double limit_decimal(char const* text, char const** end) {
    char const* const begin = text;
    bool const negative = *text == '-';
    text += negative;
    char const* first = text;
    std::int64_t digits = 0;
    unsigned digit = 0;
    for (; (digit = static_cast<unsigned>(*text) - '0') <= 9; ++text)
        digits = digits * 10 + digit;
    int power = 0;
    if (*text == '.') {
        char const* const fraction = ++text;
        for (; (digit = static_cast<unsigned>(*text) - '0') <= 9; ++text)
            digits = digits * 10 + digit;
        power = static_cast<int>(fraction - text);
        ++first;
    }
    auto const count = text - first;
    if (*text == 'e') {
        ++text;
        bool const down = *text == '-';
        text += down || *text == '+';
        int exponent = 0;
        for (; (digit = static_cast<unsigned>(*text) - '0') <= 9; ++text)
            exponent = exponent * 10 + static_cast<int>(digit);
        power += down ? -exponent : exponent;
    }
    if (count > 18 || power < -22 || power > 22)
        return strtod_l(begin, const_cast<char**>(end), kept_locale());
    *end = text;
    double const value = limit_scaled(digits, power, begin + negative);
    return negative ? -value : value;
}

void enter_decimals(char const* locale, std::string const& work, double (*twin)(char const*)) {
    // The same for every row: how well they are predicted is half of what reading them costs.
    static std::vector<std::string> const texts = decimal_texts();
    enter_under(locale, work, "gen", [twin](std::size_t i) { return twin(texts[i].c_str()); });
    enter_under(locale, work, "std::from_chars", [](std::size_t i) {
        double value = 0;
        std::from_chars(texts[i].data(), texts[i].data() + texts[i].size(), value);
        return value;
    });
    enter_under(locale, work, "strtod_l, kept locale",
                [](std::size_t i) { return strtod_l(texts[i].c_str(), nullptr, kept_locale()); });
    enter_under(locale, work, "setlocale, strtod", [](std::size_t i) {
        return switched(LC_NUMERIC, [&] { return std::strtod(texts[i].c_str(), nullptr); });
    });
    enter_under(locale, work, "limit", [](std::size_t i) {
        char const* end = nullptr;
        double const value = limit_decimal(texts[i].c_str(), &end);
        benchmark::DoNotOptimize(end);
        return value;
    });
}

double read_with_end(char const* text) {
    char* end = nullptr;
    double const value = gen_local_strtod(text, &end);
    benchmark::DoNotOptimize(end);
    return value;
}

Family const twins{[] {
    for (char const* const locale : {"C", "de_DE.UTF-8"}) {
        enter_isalpha(locale);
        enter_decimals(locale, "gen_local_atof", gen_local_atof);
        enter_decimals(locale, "gen_local_strtod", read_with_end);
    }
}};

} // namespace
