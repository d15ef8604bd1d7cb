#include "gen_legal.h"

#include "ver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <span>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

struct Notice {
    char const* name;
    std::span<char const* const> lines;
    std::int32_t count;
    std::int32_t agreed_count;
    std::size_t width;
    STR (*paragraph)();
    std::uint32_t checksum; ///< FNV-1a of the lines, a "\n" behind each
};

std::ostream& operator<<(std::ostream& stream, Notice const& notice) {
    return stream << notice.name;
}

Notice const notices[] = {
    {"banner", GEN_LEGAL_BANNER_ARRAY, GEN_LEGAL_BANNER_ARRAY_SIZE, 12, 63, gen_get_legal_banner,
     0x44b18045},
    {"trademark", GEN_LEGAL_TRADEMARK_ARRAY, GEN_LEGAL_TRADEMARK_ARRAY_SIZE, 7, 63,
     gen_get_legal_trademark_text, 0xa5682cea},
    {"warning", GEN_COPYRIGHT_WARNING_ARRAY, GEN_COPYRIGHT_WARNING_ARRAY_SIZE, 5, 63,
     gen_get_legal_warning_text, 0x7b239bc3},
    {"bitstream", GEN_LEGAL_BSTRM_ENC_ARRAY, GEN_LEGAL_BSTRM_ENC_ARRAY_SIZE, 33, 62,
     gen_get_bitstream_encryption_legal_text, 0x54c2c450},
};

// The rule for one line, written with its blanks counted: all but one of those at its end go.
std::string joined_piece(std::string line) {
    while (line.ends_with("  "))
        line.pop_back();
    return line;
}

class LegalNotice : public testing::TestWithParam<Notice> {};

INSTANTIATE_TEST_SUITE_P(All, LegalNotice, testing::ValuesIn(notices),
                         [](auto const& row) { return std::string(row.param.name); });

TEST_P(LegalNotice, HasTheAgreedNumberOfLines) {
    EXPECT_EQ(GetParam().count, GetParam().agreed_count);
    EXPECT_EQ(GetParam().lines.size(), static_cast<std::size_t>(GetParam().agreed_count));
}

// Who rewords a notice has the new words agreed, and changes the number.
TEST_P(LegalNotice, IsWordForWordAsAgreed) {
    std::uint32_t checksum = 0x811c9dc5;
    for (std::string const line : GetParam().lines)
        for (char const c : line + "\n")
            checksum = (checksum ^ static_cast<unsigned char>(c)) * 0x01000193;
    EXPECT_EQ(checksum, GetParam().checksum);
}

TEST_P(LegalNotice, LinesFitTheirWidthAndContainNoLineEnd) {
    for (std::string const line : GetParam().lines) {
        EXPECT_LE(line.size(), GetParam().width) << line;
        EXPECT_THAT(line, Not(HasSubstr("\n")));
        EXPECT_FALSE(line.empty() || line.front() == ' ') << line;
    }
}

TEST_P(LegalNotice, LineThatEndsItsSentenceEndsInTwoBlanks) {
    for (std::string const line : GetParam().lines.first(GetParam().lines.size() - 1))
        EXPECT_EQ(line.find_last_not_of(' ') == line.rfind('.'), line.ends_with("  ")) << line;
}

TEST_P(LegalNotice, ParagraphKeepsOneBlankBehindALineAtMost) {
    std::string expected;
    for (std::string const line : GetParam().lines)
        expected += joined_piece(line);
    EXPECT_EQ(std::string(GetParam().paragraph()), expected);
}

TEST_P(LegalNotice, ParagraphReadsAsText) {
    std::string const text(GetParam().paragraph());
    EXPECT_THAT(text, Not(HasSubstr("\n")));
    EXPECT_THAT(text, Not(HasSubstr("  ")));
    EXPECT_THAT(text, EndsWith("."));
    EXPECT_THAT(text, HasSubstr("Dravik Corporation"));
    for (std::size_t at = 0; at + 1 < text.size(); ++at)
        if (std::string_view(",;.:").find(text[at]) != std::string_view::npos) {
            EXPECT_EQ(text[at + 1], ' ') << text.substr(at);
        }
}

} // namespace

TEST(LegalBanner, LineWithoutBlankIsJoinedDirectly) {
    EXPECT_THAT(std::string(gen_get_legal_banner()), HasSubstr("partners and of third-party dev"));
}

TEST(LegalBanner, LineWithTwoBlanksIsJoinedWithOne) {
    EXPECT_THAT(std::string(GEN_LEGAL_BANNER_ARRAY[6]), EndsWith("Dravik Corporation.  "));
    EXPECT_THAT(std::string(gen_get_legal_banner()), HasSubstr("Dravik Corporation. Some"));
}

namespace {

std::string commented_legal_text(std::string const& prefix) {
    std::string text = prefix + ver_get_dravik_copyright_ascii() + "\n";
    for (char const* const line : GEN_LEGAL_BANNER_ARRAY)
        text += prefix + line + "\n";
    return text;
}

} // namespace

TEST(LegalText, IsTheCopyrightLineAndTheBannerBehindThePrefix) {
    std::string const text(gen_get_legal_text("-- "));
    EXPECT_EQ(text, commented_legal_text("-- "));
    EXPECT_THAT(text, StartsWith(std::string("-- ") + ver_get_dravik_copyright_ascii() + "\n"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 13);
}

TEST(LegalText, KeepsTheBlanksOfTheLines) {
    EXPECT_THAT(std::string(gen_get_legal_text("# ")), HasSubstr("Dravik Corporation.  \n# Some"));
}

TEST(LegalText, NullAndEmptyPrefixAreNone) {
    EXPECT_EQ(std::string(gen_get_legal_text(nullptr)), commented_legal_text(""));
    EXPECT_EQ(gen_get_legal_text(""), gen_get_legal_text(nullptr));
}

TEST(DoNotEditText, PutsThePrefixBeforeEachLine) {
    EXPECT_EQ(gen_get_do_not_edit_text("# "),
              "# WARNING: Do NOT edit the input and output ports in this file in a text\n"
              "# editor if you plan to continue editing the block that represents it in\n"
              "# the Block Editor! File corruption is VERY likely to occur.\n");
}

TEST(DoNotEditText, NullAndEmptyPrefixAreNone) {
    char const* const bare =
        "WARNING: Do NOT edit the input and output ports in this file in a text\n"
        "editor if you plan to continue editing the block that represents it in\n"
        "the Block Editor! File corruption is VERY likely to occur.\n";
    EXPECT_EQ(gen_get_do_not_edit_text(nullptr), bare);
    EXPECT_EQ(gen_get_do_not_edit_text(""), bare);
}
