#include "effort.h"
#include "gen_string_message.h"
#include "low_text.h"
#include "plain_message.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace {

class RandomMessages {
  public:
    explicit RandomMessages(std::uint32_t seed) : m_engine(seed) {}

    unsigned below(unsigned bound) {
        return std::uniform_int_distribution<unsigned>(0, bound - 1)(m_engine);
    }
    bool one_in(unsigned count) { return below(count) == 0; }

    template <std::size_t Count>
    char const* pick(char const* const (&some)[Count]) {
        return some[below(Count)];
    }

    std::string characters(char const* some, unsigned most) {
        std::string text;
        for (unsigned left = below(most + 1); left != 0; --left)
            text += some[below(static_cast<unsigned>(std::strlen(some)))];
        return text;
    }

    // What stands between inserts.
    std::string filling() {
        static char const* const some[] = {" ", ", ", "some text", "\n", "\r\n", "\r", "%% ", ""};
        return pick(some);
    }

  private:
    std::mt19937 m_engine;
};

std::string expanded(char const* format, char* args) {
    STR text("before ");
    unsigned const length = gen_formatmessage(text, format, args);
    EXPECT_EQ(length, text.size());
    return std::string(text.begin(), text.end());
}

std::string plainly_expanded(char const* format, char* args) {
    STR text("before ");
    PlainMessage::expand(text, format, args);
    return std::string(text.begin(), text.end());
}

// Twelve arguments of known types, each with the conversions that fit it.
std::string typed_insert(RandomMessages& random, unsigned number) {
    static char const* const texts[] = {"", "!s!", "!8s!", "!-5.3s!", "!.0s!"};
    static char const* const integers[] = {"!d!", "!5u!", "!x!", "!-6i!", "!hhd!", "!03d!"};
    static char const* const longs[] = {"!lld!", "!llx!", "!20lld!"};
    static char const* const doubles[] = {"!f!", "!5.2f!", "!g!", "!a!"};
    std::string conversion;
    switch (number % 4) {
    case 0:
        conversion = random.pick(doubles);
        break;
    case 1:
        conversion = random.pick(texts);
        break;
    case 2:
        conversion = random.pick(integers);
        break;
    default:
        conversion = random.pick(longs);
    }
    return "%" + std::to_string(number) + conversion;
}

} // namespace

namespace {

// The twelve arguments of typed_insert.
class TypedArguments {
  public:
    TypedArguments() {
        for (int i = 0; i < 3; ++i) {
            m_list.add("a text");
            m_list.add(100 * i - 7);
            m_list.add(-1234567890123LL * i);
            m_list.add(3.14159 * i);
        }
    }
    char* args() { return m_list.args(); }

  private:
    STL_ARG_LIST m_list;
};

} // namespace

TEST(FormatMessageRandom, WellFormedAsPlainly) {
    RandomMessages random(1);
    TypedArguments arguments;
    char* const args = arguments.args();
    for (std::size_t round = effort(60'000); round != 0; --round) {
        std::string format;
        for (unsigned left = random.below(8); left != 0; --left)
            format += random.filling() + typed_insert(random, 1 + random.below(12));
        // What no insert names is stepped over as a word, which these need not be: name them all.
        for (unsigned number = 1; number <= 12; ++number)
            format += typed_insert(random, number);
        ASSERT_EQ(expanded(format.c_str(), args), plainly_expanded(format.c_str(), args)) << format;
    }
}

TEST(FormatMessageRandom, OneConversionForEveryNumberAsPlainly) {
    RandomMessages random(4);
    TypedArguments arguments;
    char* const args = arguments.args();
    for (std::size_t round = effort(60'000); round != 0; --round) {
        std::string inserts[12];
        for (unsigned number = 1; number <= 12; ++number)
            inserts[number - 1] = typed_insert(random, number);
        std::string format;
        for (unsigned left = random.below(random.one_in(1000) ? 600 : 20); left != 0; --left)
            format += random.filling() + inserts[random.below(12)];
        for (std::string const& insert : inserts)
            format += insert;
        ASSERT_EQ(expanded(format.c_str(), args), plainly_expanded(format.c_str(), args)) << format;
    }
}

namespace {

// As many words as 99 numbers can reach, each of them harmless as whatever it is taken for.
class HarmlessArguments {
  public:
    HarmlessArguments() {
        for (int i = 0; i < 600; ++i)
            m_list.add(static_cast<char const*>(m_low.text()));
    }
    char* args() { return m_low.text() != nullptr ? m_list.args() : nullptr; }

  private:
    LowText m_low;
    STL_ARG_LIST m_list;
};

std::string any_filling(RandomMessages& random) {
    return random.one_in(10) ? random.characters("%%%%!!019a \r\n", 6) : random.filling();
}

std::string any_insert(RandomMessages& random) {
    static char const* const conversions[] = {
        "",    "",    "",     "!s!", "!d!", "!lld!", "!f!",   "!La!", "!5.2s!", "!!",
        "!%!", "!n!", "!*d!", "!y!", "!c!", "!ls!",  "!d%1!", "!-5d", "!.0La!"};
    unsigned const number = random.one_in(8) ? 1 + random.below(99) : 1 + random.below(9);
    std::string conversion = random.pick(conversions);
    if (random.one_in(20))
        conversion =
            "!" + random.characters("ddsfxlhL.5-+# 0*$n%1", 6) + (random.one_in(9) ? "" : "!");
    if (random.one_in(150)) // enough of these fill the room for conversions
        conversion = "!" + std::string(random.below(4200), '-') + "d!";
    return (random.one_in(10) ? "%%" : "%") + std::to_string(number) + conversion;
}

} // namespace

TEST(FormatMessageRandom, AnyFormatAsPlainly) {
    RandomMessages random(2);
    HarmlessArguments arguments;
    char* const args = arguments.args();
    if (args == nullptr)
        GTEST_SKIP() << "no page at a low address";
    for (std::size_t round = effort(120'000); round != 0; --round) {
        std::string format;
        for (unsigned left = random.below(12); left != 0; --left)
            format += any_filling(random) + any_insert(random);
        format += any_filling(random);
        ASSERT_EQ(expanded(format.c_str(), args), plainly_expanded(format.c_str(), args)) << format;
    }
}

TEST(FormatMessageRandom, AnyCharactersAsPlainly) {
    RandomMessages random(3);
    HarmlessArguments arguments;
    char* const args = arguments.args();
    if (args == nullptr)
        GTEST_SKIP() << "no page at a low address";
    for (std::size_t round = effort(120'000); round != 0; --round) {
        std::string const format = random.characters("%%%%%%1234!!!!dsLf0\r\n ", 20);
        ASSERT_EQ(expanded(format.c_str(), args), plainly_expanded(format.c_str(), args)) << format;
    }
}
