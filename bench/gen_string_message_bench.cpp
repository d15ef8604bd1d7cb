#include "gen_string_message.h"

#include "contest.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <fmt/format.h>
#include <initializer_list>
#ifdef BENCH_LIBRARY_PEERS
#include <absl/strings/str_format.h>
#include <absl/strings/substitute.h>
#endif

namespace {

/// What the formats are filled with; everything of random length.
struct Inputs {
    Inputs() {
        for (std::size_t i = 0; i < input_count + 12; ++i) {
            texts.push_back(random_letters(4 + random_below(24)));
            numbers.push_back(static_cast<int>(bench_random()() >> random_below(31)));
            decimals.push_back(random_below(1'000'000) / 9973.0);
        }
    }
    char const* text(std::size_t turn) const { return texts[turn % input_count].c_str(); }
    int number(std::size_t turn) const { return numbers[turn % input_count]; }
    double decimal(std::size_t turn) const { return decimals[turn % input_count]; }

    std::vector<std::string> texts;
    std::vector<int> numbers;
    std::vector<double> decimals;
};

Inputs const& inputs() {
    static Inputs const made;
    return made;
}

template <typename... Arguments>
STR gen_text(char const* format, Arguments... arguments) {
    STR text;
    gen_sprintf(&text, format, arguments...);
    return text;
}

template <typename... Arguments>
std::string plain_text(char const* format, Arguments... arguments) {
    char buffer[512];
    int const length = std::snprintf(buffer, sizeof buffer, format, arguments...);
    return std::string(buffer, static_cast<std::size_t>(length));
}

STR message(char const* format, ...) {
    va_list args;
    va_start(args, format);
    STR text;
    gen_formatmessage(text, format, STL_ARGS(args));
    va_end(args);
    return text;
}

template <typename... Arguments>
std::string fmt_message(fmt::string_view format, Arguments const&... arguments) {
    return fmt::vformat(format, fmt::make_format_args(arguments...));
}

/// A string put together from pieces known beforehand, without a format.
class Pieces {
  public:
    Pieces& operator<<(char const* text) {
        std::size_t const length = std::strlen(text);
        std::memcpy(m_at, text, length);
        m_at += length;
        return *this;
    }
    Pieces& operator<<(int number) {
        m_at = std::to_chars(m_at, m_at + 12, number).ptr;
        return *this;
    }
    /// With two decimals, and without a care for how the last one is rounded.
    Pieces& operator<<(double number) {
        auto const hundredths = static_cast<int>(number * 100 + 0.5);
        *this << hundredths / 100;
        *m_at++ = '.';
        *m_at++ = static_cast<char>('0' + hundredths / 10 % 10);
        *m_at++ = static_cast<char>('0' + hundredths % 10);
        return *this;
    }
    std::string text() const {
        return std::string(m_buffer, static_cast<std::size_t>(m_at - m_buffer));
    }

  private:
    char m_buffer[1024];
    char* m_at = m_buffer;
};

struct MessageArgument {
    MessageArgument(char const* its_text) : text(its_text) {}
    MessageArgument(int its_number) : number(its_number) {}

    union {
        char const* text;
        int number;
    };
};

/// Expands a message whose inserts are %1 to %99, as they stand or with !d!, and knows nothing
/// else: no line ends, no other conversions, no list of arguments to walk through.
std::string limit_message(char const* at, std::initializer_list<MessageArgument> arguments) {
    char buffer[1024];
    char* to = buffer;
    for (;;) {
        while (*at != '\0' && *at != '%')
            *to++ = *at++;
        if (*at == '\0')
            return std::string(buffer, static_cast<std::size_t>(to - buffer));
        auto number = static_cast<std::size_t>(*++at - '0');
        if (*++at >= '0' && *at <= '9')
            number = 10 * number + static_cast<std::size_t>(*at++ - '0');
        MessageArgument const& argument = arguments.begin()[number - 1];
        if (*at == '!') {
            at += std::strlen("!d!");
            to = std::to_chars(to, to + 12, argument.number).ptr;
        } else {
            std::size_t const length = std::strlen(argument.text);
            std::memcpy(to, argument.text, length);
            to += length;
        }
    }
}

Family const printf_style{[] {
    Inputs const& in = inputs();

    std::string const progress = "gen_sprintf %s: %d of %d (%5.2f%%)";
    enter(progress, "gen", [&](std::size_t i) {
        return gen_text("%s: %d of %d (%5.2f%%)", in.text(i), in.number(i), in.number(i + 1),
                        in.decimal(i));
    });
    enter(progress, "snprintf, std::string", [&](std::size_t i) {
        return plain_text("%s: %d of %d (%5.2f%%)", in.text(i), in.number(i), in.number(i + 1),
                          in.decimal(i));
    });
    enter(progress, "fmt::format", [&](std::size_t i) {
        return fmt::format("{}: {} of {} ({:5.2f}%)", in.text(i), in.number(i), in.number(i + 1),
                           in.decimal(i));
    });
    enter(progress, "limit", [&](std::size_t i) {
        return (Pieces() << in.text(i) << ": " << in.number(i) << " of " << in.number(i + 1) << " ("
                         << in.decimal(i) << "%)")
            .text();
    });

    std::string const count = "gen_sprintf %s: %d of %d";
    enter(count, "gen", [&](std::size_t i) {
        return gen_text("%s: %d of %d", in.text(i), in.number(i), in.number(i + 1));
    });
    enter(count, "snprintf, std::string", [&](std::size_t i) {
        return plain_text("%s: %d of %d", in.text(i), in.number(i), in.number(i + 1));
    });
    enter(count, "fmt::format", [&](std::size_t i) {
        return fmt::format("{}: {} of {}", in.text(i), in.number(i), in.number(i + 1));
    });
    enter(count, "limit", [&](std::size_t i) {
        return (Pieces() << in.text(i) << ": " << in.number(i) << " of " << in.number(i + 1))
            .text();
    });

    std::string const shortest = "gen_sprintf %g, %e";
    enter(shortest, "gen",
          [&](std::size_t i) { return gen_text("%g, %e", in.decimal(i), in.decimal(i + 1)); });
    enter(shortest, "snprintf, std::string",
          [&](std::size_t i) { return plain_text("%g, %e", in.decimal(i), in.decimal(i + 1)); });
    enter(shortest, "fmt::format", [&](std::size_t i) {
        return fmt::format("{:g}, {:e}", in.decimal(i), in.decimal(i + 1));
    });
#ifdef BENCH_LIBRARY_PEERS
    enter(shortest, "absl::StrFormat", [&](std::size_t i) {
        return absl::StrFormat("%g, %e", in.decimal(i), in.decimal(i + 1));
    });
    enter(progress, "absl::StrFormat", [&](std::size_t i) {
        return absl::StrFormat("%s: %d of %d (%5.2f%%)", in.text(i), in.number(i), in.number(i + 1),
                               in.decimal(i));
    });
    enter(count, "absl::StrFormat", [&](std::size_t i) {
        return absl::StrFormat("%s: %d of %d", in.text(i), in.number(i), in.number(i + 1));
    });
#endif
}};

Family const one_insert{[] {
    Inputs const& in = inputs();
    std::string const work = "gen_formatmessage, 1 insert";
    enter(work, "gen",
          [&](std::size_t i) { return message("Can't open file %1 for reading", in.text(i)); });
    enter(work, "snprintf, std::string",
          [&](std::size_t i) { return plain_text("Can't open file %s for reading", in.text(i)); });
    enter(work, "fmt::vformat", [&](std::size_t i) {
        return fmt_message("Can't open file {0} for reading", in.text(i));
    });
    enter(work, "limit", [&](std::size_t i) {
        return limit_message("Can't open file %1 for reading", {in.text(i)});
    });
#ifdef BENCH_LIBRARY_PEERS
    enter(work, "absl::Substitute", [&](std::size_t i) {
        return absl::Substitute("Can't open file $0 for reading", in.text(i));
    });
#endif
}};

Family const four_inserts{[] {
    Inputs const& in = inputs();
    std::string const work = "gen_formatmessage, 4 inserts out of order";
    enter(work, "gen", [&](std::size_t i) {
        return message("%3: %2!d! errors, %4!d! warnings in %1", in.text(i), in.number(i),
                       in.text(i + 1), in.number(i + 1));
    });
    enter(work, "snprintf, std::string", [&](std::size_t i) {
        return plain_text("%3$s: %2$d errors, %4$d warnings in %1$s", in.text(i), in.number(i),
                          in.text(i + 1), in.number(i + 1));
    });
    enter(work, "fmt::vformat", [&](std::size_t i) {
        return fmt_message("{2}: {1} errors, {3} warnings in {0}", in.text(i), in.number(i),
                           in.text(i + 1), in.number(i + 1));
    });
    enter(work, "limit", [&](std::size_t i) {
        return limit_message("%3: %2!d! errors, %4!d! warnings in %1",
                             {in.text(i), in.number(i), in.text(i + 1), in.number(i + 1)});
    });
#ifdef BENCH_LIBRARY_PEERS
    enter(work, "absl::Substitute", [&](std::size_t i) {
        return absl::Substitute("$2: $1 errors, $3 warnings in $0", in.text(i), in.number(i),
                                in.text(i + 1), in.number(i + 1));
    });
#endif
}};

/// Six strings and six numbers, in turns.
#define TWELVE(i)                                                                                  \
    in.text(i), in.number(i), in.text(i + 1), in.number(i + 1), in.text(i + 2), in.number(i + 2),  \
        in.text(i + 3), in.number(i + 3), in.text(i + 4), in.number(i + 4), in.text(i + 5),        \
        in.number(i + 5)

Family const twelve_inserts{[] {
    Inputs const& in = inputs();
    std::string const work = "gen_formatmessage, 12 inserts backwards";
    enter(work, "gen", [&](std::size_t i) {
        return message("%12!d! %11 %10!d! %9 %8!d! %7 %6!d! %5 %4!d! %3 %2!d! %1", TWELVE(i));
    });
    enter(work, "snprintf, std::string", [&](std::size_t i) {
        return plain_text("%12$d %11$s %10$d %9$s %8$d %7$s %6$d %5$s %4$d %3$s %2$d %1$s",
                          TWELVE(i));
    });
    enter(work, "fmt::vformat", [&](std::size_t i) {
        return fmt_message("{11} {10} {9} {8} {7} {6} {5} {4} {3} {2} {1} {0}", TWELVE(i));
    });
    enter(work, "limit", [&](std::size_t i) {
        return limit_message("%12!d! %11 %10!d! %9 %8!d! %7 %6!d! %5 %4!d! %3 %2!d! %1",
                             {TWELVE(i)});
    });
#ifdef BENCH_LIBRARY_PEERS
    enter(work, "absl::StrFormat %12$s", [&](std::size_t i) {
        return absl::StrFormat("%12$d %11$s %10$d %9$s %8$d %7$s %6$d %5$s %4$d %3$s %2$d %1$s",
                               TWELVE(i));
    });
#endif
}};

} // namespace
