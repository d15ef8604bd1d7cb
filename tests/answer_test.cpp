#include "effort.h"
#include "json.h"
#include "json_text.h"
#include "mem_alloc_sys.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

namespace {

std::string printed(Answer const& answer, void (*print)(Answer const&, std::FILE*)) {
    char* text = nullptr;
    std::size_t size = 0;
    std::FILE* const stream = open_memstream(&text, &size);
    print(answer, stream);
    std::fclose(stream);
    std::string const result(text, size);
    std::free(text);
    return result;
}

std::string text_of(Answer const& answer) {
    return printed(answer, print_text);
}

std::string json_of(Answer const& answer) {
    return printed(
        answer, [](Answer const& shown, std::FILE* stream) { print_json(shown, false, stream); });
}

} // namespace

TEST(Answer, FieldsAreAlignedUnderTheLongestLabel) {
    Answer answer;
    answer.field("name", "top");
    answer.field("found_in_group", 3);
    answer.field("empty", "");
    answer.field("unknown", {});
    answer.field("list", Value::List{"a", "b"});
    answer.field("no_list", Value::List{});
    EXPECT_EQ(text_of(answer), "name            top\n"
                               "found in group  3\n"
                               "empty           -\n"
                               "unknown         -\n"
                               "list            a\n"
                               "                b\n"
                               "no list         -\n");
}

TEST(Answer, RecordsStandBelowTheirLabel) {
    Answer answer;
    answer.field("host", "h");
    answer.field("memory", Value::Record{{"total", 5}, {"inner", Value::Record{{"deep", true}}}});
    EXPECT_EQ(text_of(answer), "host    h\n"
                               "memory\n"
                               "  total  5\n"
                               "  inner\n"
                               "    deep  yes\n");
}

TEST(Answer, PlainValuesStandAlone) {
    Answer answer;
    answer.plain("path", "/a b");
    answer.plain("all", Value::List{1, "two", Value::Record{{"three", 3}, {"four", 4.5}}});
    answer.plain("none", Value::List{});
    answer.plain("empty", "");
    EXPECT_EQ(text_of(answer), "/a b\n"
                               "1\n"
                               "two\n"
                               "three 3, four 4.5\n"
                               "\n");
}

TEST(Answer, TablesHaveTheKeysOfTheirRowsAsHeads) {
    Answer answer;
    answer.table("units", {Value::Record{{"name", "ns"}, {"in_seconds", 1e-9}},
                           Value::Record{{"name", "minutes"}, {"in_seconds", ""}}});
    answer.table("nothing", {});
    EXPECT_EQ(text_of(answer), "name     in seconds\n"
                               "ns       1e-09\n"
                               "minutes  -\n");
}

TEST(Answer, DetailsAndRemarksAreNotInTheText) {
    Answer answer;
    answer.detail("hidden", 1);
    answer.remark("not found");
    EXPECT_EQ(text_of(answer), "");
}

TEST(Answer, JsonHasEveryNamedValueInOrder) {
    Answer answer;
    answer.field("b", "text");
    answer.detail("a", Value::List{1, -2, 3.5, true, {}});
    answer.plain("lines", Value::Lines{"one", "two"});
    answer.table("rows", {Value::Record{{"key", STR("library text")}}});
    answer.field("nothing", Value::List{});
    answer.remark("for people alone");
    EXPECT_EQ(json_of(answer), "{\n"
                               "  \"b\": \"text\",\n"
                               "  \"a\": [\n"
                               "    1,\n"
                               "    -2,\n"
                               "    3.5,\n"
                               "    true,\n"
                               "    null\n"
                               "  ],\n"
                               "  \"lines\": [\n"
                               "    \"one\",\n"
                               "    \"two\"\n"
                               "  ],\n"
                               "  \"rows\": [\n"
                               "    {\n"
                               "      \"key\": \"library text\"\n"
                               "    }\n"
                               "  ],\n"
                               "  \"nothing\": []\n"
                               "}\n");
}

TEST(Answer, JsonEscapesWhatItCannotSay) {
    Answer answer;
    answer.field("escaped", "\"\\\n\t\x01");
    answer.field("utf8", "gr\xc3\xb6\xc3\x9f"
                         "e");
    answer.field("other_bytes", "a\xff\xc3");
    answer.field("nul", std::string_view("a\0b", 3));
    answer.field("largest", ~std::uint64_t{0});
    answer.field("smallest", std::int64_t{1} << 63);
    EXPECT_EQ(json_of(answer), "{\n"
                               "  \"escaped\": \"\\\"\\\\\\n\\t\\u0001\",\n"
                               "  \"utf8\": \"gr\xc3\xb6\xc3\x9f"
                               "e\",\n"
                               "  \"other_bytes\": \"a\xee\xbf\xbf\xee\xbf\x83\",\n"
                               "  \"nul\": \"a\\u0000b\",\n"
                               "  \"largest\": 18446744073709551615,\n"
                               "  \"smallest\": -9223372036854775808\n"
                               "}\n");
}

TEST(Answer, EmptyAnswerIsAnEmptyObject) {
    EXPECT_EQ(json_of({}), "{}\n");
    EXPECT_EQ(text_of({}), "");
}

TEST(Answer, ViewsAreForPeopleAlone) {
    Answer answer;
    answer.view("top.v:");
    answer.view(Value::List{Value::Record{{"there", true}, {"path", "/p"}}}, {Emphasis::good});
    answer.detail("path", "/p");
    EXPECT_EQ(text_of(answer), "top.v:\n"
                               "there  path\n"
                               "yes    /p\n");
    EXPECT_EQ(json_of(answer), "{\n  \"path\": \"/p\"\n}\n");
}

TEST(Answer, TablesAreAlignedByCharacters) {
    Answer answer;
    answer.table("rows", {Value::Record{{"name", "größe"}, {"on", true}},
                          Value::Record{{"name", "ascii"}, {"on", false}}});
    EXPECT_EQ(text_of(answer), "name   on\n"
                               "größe  yes\n"
                               "ascii  no\n");
}

TEST(Answer, RecordHasWhatTheObjectHas) {
    Answer answer(true);
    answer.field("name", "a");
    answer.view("for people");
    answer.detail("path", {});
    answer.remark("not found");
    auto const json = [&answer](bool is_error) {
        Answer whole(true);
        whole.detail("one", record_of(answer, is_error));
        return printed(whole, [](Answer const& shown, std::FILE* stream) {
            print_json_inline(shown, false, stream);
        });
    };
    EXPECT_EQ(json(false), R"({"one": {"name": "a", "path": null}})");
    EXPECT_EQ(json(true), R"({"one": {"name": "a", "path": null, "error": "not found"}})");
}

TEST(JsonText, AnyBytesGoThereAndBack) {
    struct {
        std::string bytes;
        std::string text;
    } const cases[] = {
        {"", ""},
        {"plain", "plain"},
        {"gr\xc3\xb6\xc3\x9f", "gr\xc3\xb6\xc3\x9f"},
        {"\xf0\x9f\x98\x80", "\xf0\x9f\x98\x80"},
        {"caf\xe9.v", "caf\xee\xbf\xa9.v"},
        {"\x80", "\xee\xbe\x80"},
        {"\xff", "\xee\xbf\xbf"},
        {"\xc0\x80", "\xee\xbf\x80\xee\xbe\x80"},                 // over-long
        {"\xed\xa0\x80", "\xee\xbf\xad\xee\xbe\xa0\xee\xbe\x80"}, // a surrogate
        {"\xee\xbe\x80", "\xee\xbf\xae\xee\xbe\xbe\xee\xbe\x80"}, // stands for a byte
    };
    for (auto const& [bytes, text] : cases) {
        EXPECT_EQ(to_json_text(bytes), text);
        EXPECT_EQ(from_json_text(text), bytes);
    }
    std::mt19937 random(8);
    for (std::size_t round = effort(20000); round > 0; --round) {
        std::string bytes;
        for (std::size_t size = random() % 8; size > 0; --size)
            bytes += "\xee\xbe\xbf\x80\xc3\xf4\xed\xe0\xff za"[random() % 12];
        EXPECT_EQ(from_json_text(to_json_text(bytes)), bytes);
    }
}
