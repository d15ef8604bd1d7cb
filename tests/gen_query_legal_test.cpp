#include "gen_legal.h"
#include "gen_query.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <span>

using testing::HasSubstr;

namespace {

struct Notice {
    char const* name;
    STR (*paragraph)();
    std::span<char const* const> lines;
};

Notice const notices[] = {
    {"banner", gen_get_legal_banner, GEN_LEGAL_BANNER_ARRAY},
    {"trademark", gen_get_legal_trademark_text, GEN_LEGAL_TRADEMARK_ARRAY},
    {"warning", gen_get_legal_warning_text, GEN_COPYRIGHT_WARNING_ARRAY},
    {"bitstream", gen_get_bitstream_encryption_legal_text, GEN_LEGAL_BSTRM_ENC_ARRAY},
};

std::string output_of(std::vector<std::string> const& arguments) {
    ProgramResult const result = run_gen_query(arguments);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    return result.output;
}

/// The notice as the comment lines that gen or, where it has no such form, the host makes of it.
std::string comment(Notice const& notice, std::string const& prefix) {
    if (notice.name == std::string("banner"))
        return std::string(gen_get_legal_text(prefix.c_str()));
    std::string text;
    for (char const* const line : notice.lines)
        text += prefix + line + "\n";
    return text;
}

std::string joined(nlohmann::json const& lines) {
    std::string text;
    for (nlohmann::json const& line : lines)
        text += line.get<std::string>() + "\n";
    return text;
}

} // namespace

TEST(GenQueryLegal, NoticeAloneIsItsParagraph) {
    for (Notice const& notice : notices) {
        std::string const paragraph(notice.paragraph());
        EXPECT_EQ(output_of({"legal", "--notice", notice.name}), paragraph + "\n");
        EXPECT_EQ(nlohmann::json::parse(output_of({"legal", "--notice", notice.name, "--json"})),
                  nlohmann::json({{notice.name, paragraph}}));
    }
}

TEST(GenQueryLegal, PrefixMakesCommentLines) {
    for (Notice const& notice : notices)
        for (std::string const prefix : {"-- ", "#", ""}) {
            std::string const expected = comment(notice, prefix);
            std::vector<std::string> request = {"legal", "--notice", notice.name, "--prefix",
                                                prefix};
            EXPECT_EQ(output_of(request), expected);
            request.emplace_back("--json");
            EXPECT_EQ(joined(nlohmann::json::parse(output_of(request))[notice.name]), expected);
        }
}

TEST(GenQueryLegal, AllNoticesAreTheAnswerWhereNoneIsNamed) {
    std::string labelled;
    nlohmann::json paragraphs;
    for (Notice const& notice : notices) {
        std::string label = notice.name;
        label.resize(11, ' ');
        labelled += label + std::string(notice.paragraph()) + "\n";
        paragraphs[notice.name] = std::string(notice.paragraph());
    }
    EXPECT_EQ(output_of({"legal"}), labelled);
    EXPECT_EQ(nlohmann::json::parse(output_of({"legal", "--json"})), paragraphs);
    nlohmann::json const comments =
        nlohmann::json::parse(output_of({"legal", "--prefix", "// ", "--json"}));
    for (Notice const& notice : notices)
        EXPECT_EQ(joined(comments[notice.name]), comment(notice, "// "));
}

TEST(GenQueryLegal, UnknownNoticeIsRefused) {
    ProgramResult const result = run_gen_query({"legal", "--notice", "nonsense"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors,
                HasSubstr("legal: --notice: 'nonsense' is none of banner, trademark,"));
}

TEST(GenQueryLegal, DoNotEditIsTheWarningBehindThePrefix) {
    EXPECT_EQ(output_of({"do-not-edit"}), std::string(gen_get_do_not_edit_text(nullptr)));
    std::string const expected(gen_get_do_not_edit_text("# "));
    EXPECT_EQ(output_of({"do-not-edit", "--prefix", "# "}), expected);
    EXPECT_EQ(joined(nlohmann::json::parse(
                  output_of({"do-not-edit", "--prefix", "# ", "--json"}))["lines"]),
              expected);
}
