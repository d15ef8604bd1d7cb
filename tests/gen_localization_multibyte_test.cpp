#include "error_recorder.h"
#include "gen_localization_fixture.h"

#include <cerrno>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

using testing::ElementsAre;

namespace {

using LocalMultibyte = LocalizationTest;

// ASCII, ISO-8859-1, UTF-8 of one to four bytes, cut short and broken.
char const* const narrow_texts[] = {
    "",
    "a",
    "plain text",
    "M\xE4rz",
    "M\xC3\xA4rz",
    "\xE2\x82\xAC uro",
    "\xF0\x9F\x98\x80",
    "\xC3",
    "\xE2\x82",
    "ab\377cd",
    "\x80",
    "\xC0\x80",
};

wchar_t const* const wide_texts[] = {
    L"", L"a", L"plain text", L"M\u00E4rz", L"\u20AC uro", L"\U0001F600", L"ab\x7FFFFFFF",
};

unsigned const counts[] = {0, 1, 2, 3, 4, 100};

/// All that a conversion gives.
template <typename Buffer>
struct Outcome {
    long long result;
    int error;
    Buffer buffer;

    bool operator==(Outcome const&) const = default;
};

template <typename Buffer, typename Call>
Outcome<Buffer> outcome(Call&& call) {
    Buffer buffer(128, typename Buffer::value_type('#'));
    // A character cut short leaves the platform waiting for its rest.
    static_cast<void>(std::mblen(nullptr, 0));
    static_cast<void>(std::mbtowc(nullptr, nullptr, 0));
    errno = 0;
    auto const result = static_cast<long long>(static_cast<int>(call(buffer.data())));
    return {result, errno, buffer};
}

template <typename Buffer, typename Twin, typename Wrapped>
void expect_same(Twin&& twin, Wrapped&& wrapped) {
    auto const expected =
        switched(LC_CTYPE, [&] { return outcome<Buffer>(std::forward<Wrapped>(wrapped)); });
    auto const actual = outcome<Buffer>(std::forward<Twin>(twin));
    EXPECT_EQ(actual.result, expected.result);
    EXPECT_EQ(actual.error, expected.error);
    EXPECT_EQ(actual.buffer, expected.buffer);
}

TEST_F(LocalMultibyte, NarrowToWideAnswersAsIfTheCategoryWereSwitched) {
    under_every_pair_of_locales([] {
        for (char const* const text : narrow_texts)
            for (unsigned const count : counts) {
                SCOPED_TRACE(testing::Message() << testing::PrintToString(text) << ", " << count);
                expect_same<std::wstring>([&](wchar_t*) { return gen_local_mblen(text, count); },
                                          [&](wchar_t*) { return std::mblen(text, count); });
                expect_same<std::wstring>(
                    [&](wchar_t* wide) { return gen_local_mbtowc(wide, text, count); },
                    [&](wchar_t* wide) { return std::mbtowc(wide, text, count); });
                expect_same<std::wstring>(
                    [&](wchar_t* wide) { return gen_local_mbstowcs(wide, text, count); },
                    [&](wchar_t* wide) { return std::mbstowcs(wide, text, count); });
            }
    });
}

TEST_F(LocalMultibyte, WideToNarrowAnswersAsIfTheCategoryWereSwitched) {
    under_every_pair_of_locales([] {
        for (wchar_t const* const text : wide_texts) {
            SCOPED_TRACE(testing::PrintToString(text));
            for (unsigned const count : counts)
                expect_same<std::string>(
                    [&](char* narrow) { return gen_local_wcstombs(narrow, text, count); },
                    [&](char* narrow) { return std::wcstombs(narrow, text, count); });
            expect_same<std::string>([&](char* narrow) { return gen_local_wctomb(narrow, *text); },
                                     [&](char* narrow) { return std::wctomb(narrow, *text); });
        }
    });
}

TEST_F(LocalMultibyte, NeutralCharacterSetAppliesUnderUtf8) {
    std::setlocale(LC_ALL, "C.UTF-8");
    EXPECT_EQ(std::mblen("\xC3\xA4", 2), 2);
    EXPECT_EQ(gen_local_mblen("\xC3\xA4", 2), -1);
    EXPECT_EQ(gen_local_mblen("a", 1), 1);
}

TEST_F(LocalMultibyte, NullBuffersOnlyMeasure) {
    LOCALIZATION_BASE_STRING = "C.UTF-8";
    EXPECT_EQ(gen_local_mbstowcs(nullptr, "M\xC3\xA4rz", 0), 4U);
    EXPECT_EQ(gen_local_wcstombs(nullptr, L"M\u00E4rz", 0), 5U);
    EXPECT_EQ(gen_local_mbtowc(nullptr, "\xC3\xA4", 2), 2);
}

TEST_F(LocalMultibyte, NullTextAsksForShiftStates) {
    EXPECT_EQ(gen_local_mblen(nullptr, 1), 0);
    EXPECT_EQ(gen_local_mbtowc(nullptr, nullptr, 1), 0);
    EXPECT_EQ(gen_local_wctomb(nullptr, L'a'), 0);
}

} // namespace

TEST(LocalMultibyteFailure, IsAllBitsSetOnBothWidths) {
    wchar_t wide[8];
    char narrow[8];
    EXPECT_EQ(gen_local_mbstowcs(wide, "\xFF", 8), 0xFFFFFFFFU);
    EXPECT_EQ(gen_local_wcstombs(narrow, L"\u20AC", 8), 0xFFFFFFFFU);
}

TEST(LocalMultibyteFailure, NullTextIsReported) {
    ErrorRecorder recorder;
    wchar_t wide[8];
    char narrow[8];
    EXPECT_EQ(gen_local_mbstowcs(wide, nullptr, 8), 0xFFFFFFFFU);
    EXPECT_EQ(gen_local_wcstombs(narrow, nullptr, 8), 0xFFFFFFFFU);
    EXPECT_THAT(recorder.conditions(), ElementsAre("string != NULL", "wide != NULL"));
}

TEST(LocalMultibyteCopy, IsNotImplemented) {
    ErrorRecorder recorder;
    unsigned char to[] = "to";
    unsigned char const from[] = "fr";
    gen_local_mbccpy(to, from);
    EXPECT_STREQ(reinterpret_cast<char const*>(to), "to");
    EXPECT_EQ(gen_local_mbclen(from), 0U);
    EXPECT_THAT(recorder.errors(),
                ElementsAre(ReportedError{"not implemented", "GEN", "gen_localization", 1011},
                            ReportedError{"not implemented", "GEN", "gen_localization", 1038}));
}
