#include "error_recorder.h"
#include "gen_localization_fixture.h"
#include "gen_string_fold.h"

#include <climits>
#include <ctype.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wctype.h>

using testing::ElementsAre;

namespace {

using LocalCharacter = LocalizationTest;

struct Narrow {
    char const* name;
    int (*twin)(int);
    int (*wrapped)(int);
};

Narrow const narrow_functions[] = {
    {"isalnum", gen_local_isalnum, isalnum},    {"isalpha", gen_local_isalpha, isalpha},
    {"isascii", gen_local_isascii, isascii},    {"iscntrl", gen_local_iscntrl, iscntrl},
    {"isgraph", gen_local_isgraph, isgraph},    {"islower", gen_local_islower, islower},
    {"isprint", gen_local_isprint, isprint},    {"ispunct", gen_local_ispunct, ispunct},
    {"isspace", gen_local_isspace, isspace},    {"isupper", gen_local_isupper, isupper},
    {"isxdigit", gen_local_isxdigit, isxdigit}, {"tolower", gen_local_tolower, tolower},
    {"toupper", gen_local_toupper, toupper},
};

struct Wide {
    char const* name;
    int (*twin)(unsigned);
    int (*wrapped)(wint_t);
};

Wide const wide_classes[] = {
    {"iswalnum", gen_local_iswalnum, iswalnum},    {"iswalpha", gen_local_iswalpha, iswalpha},
    {"iswcntrl", gen_local_iswcntrl, iswcntrl},    {"iswdigit", gen_local_iswdigit, iswdigit},
    {"iswgraph", gen_local_iswgraph, iswgraph},    {"iswlower", gen_local_iswlower, iswlower},
    {"iswprint", gen_local_iswprint, iswprint},    {"iswpunct", gen_local_iswpunct, iswpunct},
    {"iswspace", gen_local_iswspace, iswspace},    {"iswupper", gen_local_iswupper, iswupper},
    {"iswxdigit", gen_local_iswxdigit, iswxdigit},
};

// Latin, Greek and other letters, the wide blanks, a few beyond the basic plane, and no character.
std::vector<unsigned> wide_samples() {
    std::vector<unsigned> samples;
    for (unsigned c = 0; c < 0x500; ++c)
        samples.push_back(c);
    for (unsigned c = 0x2000; c < 0x2070; ++c)
        samples.push_back(c);
    samples.insert(samples.end(), {0x3000, 0x4E00, 0xFEFF, 0x10400, 0x10FFFF, 0x110000, WEOF});
    return samples;
}

TEST_F(LocalCharacter, NarrowFunctionsAnswerAsIfTheCategoryWereSwitched) {
    under_every_pair_of_locales([] {
        for (Narrow const& row : narrow_functions)
            for (int c = SCHAR_MIN; c <= UCHAR_MAX; ++c)
                ASSERT_EQ(row.twin(c), switched(LC_CTYPE, [&] { return row.wrapped(c); }))
                    << row.name << "(" << c << ")";
    });
}

TEST_F(LocalCharacter, WideFunctionsAnswerAsIfTheCategoryWereSwitched) {
    under_every_pair_of_locales([] {
        for (unsigned const c : wide_samples()) {
            for (Wide const& row : wide_classes)
                ASSERT_EQ(row.twin(c), switched(LC_CTYPE, [&] { return row.wrapped(c); }))
                    << row.name << "(" << c << ")";
            ASSERT_EQ(gen_local_towlower(c), switched(LC_CTYPE, [&] { return towlower(c); })) << c;
            ASSERT_EQ(gen_local_towupper(c), switched(LC_CTYPE, [&] { return towupper(c); })) << c;
        }
    });
}

TEST_F(LocalCharacter, WideClassByDescriptionAnswersAsIfTheCategoryWereSwitched) {
    under_every_pair_of_locales([] {
        for (char const* const property : {"alpha", "space", "upper", "no such class"}) {
            wctype_t const users = wctype(property);
            wctype_t const neutral = switched(LC_CTYPE, [&] { return wctype(property); });
            for (unsigned const c : wide_samples())
                for (wctype_t const description : {users, neutral})
                    ASSERT_EQ(gen_local_iswctype(c, description),
                              switched(LC_CTYPE, [&] { return iswctype(c, description); }))
                        << property << " " << c;
        }
    });
}

// The rows above compare; these two show that there is something to compare.
TEST_F(LocalCharacter, NeutralClassesApplyUnderAForeignLocale) {
    std::setlocale(LC_ALL, TestLocale::name);
    EXPECT_NE(isalpha(0xE4), 0);
    EXPECT_EQ(gen_local_isalpha(0xE4), 0);
    EXPECT_EQ(toupper('i'), 0xCC);
    EXPECT_EQ(gen_local_toupper('i'), 'I');
    EXPECT_NE(isspace(0xA0), 0);
    EXPECT_EQ(gen_local_isspace(0xA0), 0);
}

TEST_F(LocalCharacter, StringCaseFoldsAsIfTheCategoryWereSwitched) {
    under_every_pair_of_locales([] {
        std::string all;
        for (int c = 1; c <= UCHAR_MAX; ++c)
            all += static_cast<char>(c);
        struct {
            char* (*twin)(char*);
            char* (*wrapped)(char*);
        } const folds[] = {{gen_local_strlwr, gen_strlwr}, {gen_local_strupr, gen_strupr}};
        for (auto const& fold : folds) {
            std::string folded = all;
            std::string expected = all;
            EXPECT_EQ(fold.twin(folded.data()), folded.data());
            switched(LC_CTYPE, [&] { return fold.wrapped(expected.data()); });
            EXPECT_EQ(folded, expected);
        }
    });
}

} // namespace

TEST(LocalCharacterRange, ValuesOutsideTheTableAreInNoClassAndKeepTheirCase) {
    for (int const c : {INT_MIN, -65536, SCHAR_MIN - 1, UCHAR_MAX + 1, 0x141, 65536, INT_MAX}) {
        for (auto const& [name, twin, wrapped] : narrow_functions)
            if (std::string_view(name).starts_with("is")) {
                EXPECT_EQ(twin(c), 0) << name << "(" << c << ")";
            }
        EXPECT_EQ(gen_local_tolower(c), c);
        EXPECT_EQ(gen_local_toupper(c), c);
    }
}

TEST(LocalCharacterRange, WideAsciiIsTheNarrowOneOnTheWideValue) {
    EXPECT_NE(gen_local_iswascii(0), 0);
    EXPECT_NE(gen_local_iswascii(0x7F), 0);
    EXPECT_EQ(gen_local_iswascii(0x80), 0);
    EXPECT_EQ(gen_local_iswascii(0x141), 0);
    EXPECT_EQ(gen_local_iswascii(0xFFFFFFFF), 0);
}

TEST(LocalStringCase, NullAndEmptyComeBackAsTheyAre) {
    char empty[] = "";
    EXPECT_EQ(gen_local_strlwr(nullptr), nullptr);
    EXPECT_EQ(gen_local_strupr(nullptr), nullptr);
    EXPECT_EQ(gen_local_strlwr(empty), empty);
    EXPECT_EQ(gen_local_strupr(empty), empty);
}

TEST(LocalLeadByte, IsTheBit0x8000) {
    EXPECT_EQ(gen_local_isleadbyte(0x8123), 0x8000);
    EXPECT_EQ(gen_local_isleadbyte(0x81), 0);
    EXPECT_EQ(gen_local_isleadbyte(-1), 0x8000);
    EXPECT_EQ(gen_local_isleadbyte(0x18000), 0x8000);
    EXPECT_EQ(gen_local_isleadbyte(0), 0);
}

TEST(LocalSymbolCharacter, IsNotImplemented) {
    for (int const c : {-1, 0, 0x5F, 0x61, 0x8000}) {
        ErrorRecorder recorder;
        EXPECT_EQ(gen_local_iscsym(c), 0);
        EXPECT_EQ(gen_local_iscsymf(c), 0);
        EXPECT_THAT(recorder.errors(),
                    ElementsAre(ReportedError{"not implemented", "GEN", "gen_localization", 559},
                                ReportedError{"not implemented", "GEN", "gen_localization", 587}));
    }
}
