// Arguments that are each other's objects, or exported ones: every function of strings answers as
// it does for copies.

#include "error_recorder.h"
#include "gen.h"

#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace {

/// A call that may change the target and only reads the source.
struct Row {
    char const* name;
    std::string (*call)(STR& target, STR const& source);
};

std::ostream& operator<<(std::ostream& stream, Row const& row) {
    return stream << row.name;
}

std::string row_name(testing::TestParamInfo<Row> const& info) {
    return info.param.name;
}

std::string answer_of(STR const& text) {
    return std::string(text.c_str()); // calls on its characters leave its length alone
}

template <typename... Numbers>
std::string answers_of(Numbers... numbers) {
    std::string text;
    ((text += std::to_string(numbers) + " "), ...);
    return text;
}

unsigned long message(unsigned long flags, char const* source, char* buffer, unsigned long size,
                      ...) {
    va_list args;
    va_start(args, size);
    unsigned long const stored =
        gen_formatmessage(flags, source, 0, 0, buffer, size, STL_ARGS(args));
    va_end(args);
    return stored;
}

unsigned append_message(STR& out, char const* format, ...) {
    va_list args;
    va_start(args, format);
    unsigned const length = gen_formatmessage(out, format, STL_ARGS(args));
    va_end(args);
    return length;
}

int print_into(STR* out, char const* format, ...) {
    va_list args;
    va_start(args, format);
    int const length = gen_vsprintf(out, format, STL_ARGS(args));
    va_end(args);
    return length;
}

Row const rows[] = {
    {"Compare",
     [](STR& target, STR const& source) {
         char const* const a = target.c_str();
         char const* const b = source.c_str();
         return answers_of(gen_strcmp(a, b), gen_stricmp(a, b), gen_ascii_stricmp(a, b),
                           gen_stricmp_mt(a, b), gen_strnicmp(a, b, 3), gen_strnicmp(a, b, 0),
                           gen_ascii_strnicmp(a, b + 1, 3), gen_strcmp(a + 1, b));
     }},
    {"Lex",
     [](STR& target, STR const& source) {
         char const* const a = target.c_str();
         char const* const b = source.c_str();
         auto const length = static_cast<unsigned>(source.size());
         return answers_of(gen_lexcmp(target, source), gen_ilexcmp(target, source),
                           gen_lexcmp(a, b + 1), gen_ilexcmp(a + 1, b),
                           gen_lexcmp(a, length, b, length - 1),
                           gen_ilexcmp(a, length - 1, b, length));
     }},
    {"IntegerStrings",
     [](STR& target, STR const& source) {
         ErrorRecorder const recorder;
         char const* p = target.c_str();
         char const* q = source.c_str();
         STR::const_iterator i = target.begin();
         STR::const_iterator j = source.begin();
         int const first = gen_compare_integer_strings(p + target.size(), &p, q + 3, &q);
         int const second = gen_compare_integer_strings(target.end(), &i, source.end(), &j);
         return answers_of(first, second, p - target.data(), q - source.data(), i - target.begin(),
                           j - source.begin());
     }},
    {"Look",
     [](STR& target, STR const& source) {
         STR::const_iterator at = source.begin();
         int const number = gen_atoi(source, &at);
         return answers_of(gen_strlen(target.c_str()), gen_has_wildcard_chars(target.c_str()),
                           number, gen_atoi(target), at - source.begin(),
                           gen_crc_generator(source.c_str()));
     }},
    {"FoldStrings",
     [](STR& target, STR const& source) {
         gen_tolower(target);
         STR const lower = target;
         gen_toupper(target);
         STR const upper = target;
         gen_ascii_tolower(target);
         return answer_of(lower + upper + target) + answers_of(source.size());
     }},
    {"FoldArrays",
     [](STR& target, STR const& source) {
         char* const text = target.data();
         gen_tolower(text);
         gen_toupper(text);
         STR const upper = gen_strlwr(text);
         gen_ascii_toupper(text);
         gen_ascii_tolower(gen_strupr(text));
         return answer_of(upper + gen_local_strupr(gen_local_strlwr(text))) +
                answers_of(source.size());
     }},
    {"Itoa",
     [](STR& target, STR const& source) {
         gen_itoa(gen_atoi(source), target, 16);
         return answer_of(gen_itoa(5, target.data(), 2));
     }},
    {"Strcpy",
     [](STR& target, STR const& source) {
         return std::string(gen_strcpy(target.data(), source.c_str() + 2));
     }},
    {"StrcpyItself",
     [](STR& target, STR const& source) {
         return std::string(gen_strcpy(target.data(), source.c_str()));
     }},
    {"Strncpy",
     [](STR& target, STR const& source) {
         return std::string(gen_strncpy(target.data(), source.c_str() + 2, 4));
     }},
    {"Strrev",
     [](STR& target, STR const& source) {
         return std::string(gen_strrev(target.data())) + answers_of(source.size());
     }},
    {"TrimSpaces",
     [](STR& target, STR const& source) {
         gen_remove_leading_and_trailing_spaces(source, &target);
         return answer_of(target);
     }},
    {"TrimWhiteSpaces",
     [](STR& target, STR const& source) {
         gen_remove_leading_and_trailing_white_spaces(source, &target);
         return answer_of(target);
     }},
    {"TrimIntoTheSource",
     [](STR& target, STR const& source) {
         target = gen_remove_leading_and_trailing_spaces(source);
         return answer_of(target);
     }},
    {"Wildcard",
     [](STR& target, STR const& source) {
         return answer_of(gen_wildcard_to_reg_expr(&target, true)) + answers_of(source.empty());
     }},
    {"ProfileString",
     [](STR& target, STR const& source) {
         char const* const text = source.c_str();
         return answers_of(gen_writeprivateprofilestring(text, target.c_str(), text, text));
     }},
    {"Sprintf",
     [](STR& target, STR const& source) {
         int const length = gen_sprintf(&target, "<%s|%5.3s|%s>", source.c_str(),
                                        source.c_str() + 1, source.c_str() + 2);
         return answer_of(target) + answers_of(length);
     }},
    {"VsprintfFormat",
     [](STR& target, STR const& source) {
         int const length = print_into(&target, source.c_str() + 2, 7, 8, 9);
         return answer_of(target) + answers_of(length);
     }},
    {"Message",
     [](STR& target, STR const& source) {
         unsigned const length =
             append_message(target, source.c_str(), source.c_str() + 3, source.c_str());
         return answer_of(target) + answers_of(length);
     }},
    {"MessageIntoItsSource",
     [](STR& target, STR const& source) {
         unsigned long const stored = message(FORMAT_MESSAGE_FROM_STRING, source.c_str(),
                                              target.data(), 9, source.c_str(), source.c_str());
         return answer_of(target) + answers_of(stored);
     }},
    {"MessageAsItIs",
     [](STR& target, STR const& source) {
         unsigned long const stored =
             message(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_IGNORE_INSERTS, source.c_str() + 2,
                     target.data(), 9);
         return answer_of(target) + answers_of(stored);
     }},
    {"ReplaceInvalidChars",
     [](STR& target, STR const& source) {
         gen_replace_invalid_chars(target.data());
         return answers_of(gen_crc_string_to_dword(target.data()), source.size());
     }},
    {"LocalNumbers",
     [](STR& target, STR const& source) {
         char* end = nullptr;
         double const number = gen_local_strtod(source.c_str(), &end);
         std::string const text = answers_of(number, end - source.c_str());
         long const whole = gen_local_strtol(target.c_str(), &end, 10);
         return text + answers_of(whole, end - target.c_str()) + gen_local_itoa(12, target.data());
     }},
    {"Date",
     [](STR& target, STR const& source) {
         bool const is_given =
             gen_format_current_date_and_time(&target, ("%%" + source).c_str() + 2);
         return answers_of(is_given) + answer_of(target);
     }},
    {"MachineNames",
     [](STR& target, STR const& source) {
         bool const known =
             GEN_MACHINE_INFO::get_os_name(&target) && GEN_MACHINE_INFO::get_hw_name(&target);
         return answers_of(known, source.empty()) + answer_of(target);
     }},
    {"Notices",
     [](STR& target, STR const& source) {
         target = gen_get_legal_text(source.c_str()).substr(0, 80) +
                  gen_get_do_not_edit_text(source.c_str());
         return answer_of(target);
     }},
    {"Executables",
     [](STR& target, STR const& source) {
         target = find_executable_in_path(source);
         return answers_of(gen_file_exists(source)) + answer_of(target);
     }},
    {"Condition",
     [](STR& target, STR const& source) {
         GEN_BP_PARSER parser;
         STR word = source;
         parser.process_token_contents(&word);
         parser.add_token_to_list(BP_TOKEN_BUS, &source);
         bool const has_errors = parser.parse_string(&target);
         return answers_of(has_errors) + answer_of(target + parser.error_text());
     }},
};

/// Strings that hosts may read, and write, themselves.
STR* const exported[] = {&gen_project_dir_path, &gen_user_library_paths};

class OwnObject : public testing::TestWithParam<Row> {};

} // namespace

TEST_P(OwnObject, IsTakenLikeACopy) {
    for (STR const& text : {STR("  -12%1!s! [Ab].v, %%2 ?*  "), STR("0042 a,%d%%%d\t\t"),
                            STR("\t 7 = a && (b) " + STR(600, 'x'))})
        for (STR* const object : exported) {
            STR target = text;
            STR const source = text;
            std::string const expected = GetParam().call(target, source);
            *object = text;
            EXPECT_EQ(GetParam().call(*object, *object), expected) << text;
            EXPECT_EQ(*object, target);
            object->clear();
        }
}

INSTANTIATE_TEST_SUITE_P(Strings, OwnObject, testing::ValuesIn(rows), row_name);

TEST(OwnIterator, OneForBothNumbersStaysWithinItsString) {
    struct {
        char const* text;
        int result;
    } const cases[] = {{"1", 0}, {"12", 0}, {"123x", 0}, {"0012345", 0}, {"-5", 1}, {"  -12", 1}};
    for (auto const& [text, result] : cases) {
        char const* at = text;
        char const* const end = text + std::strlen(text);
        EXPECT_EQ(gen_compare_integer_strings(end, &at, end, &at), result) << text;
        EXPECT_LE(at, end + 1) << text;
        STR const string = text;
        STR::const_iterator place = string.begin();
        EXPECT_EQ(gen_compare_integer_strings(string.end(), &place, string.end(), &place), result)
            << text;
    }
}
