// How a path list is taken apart.

#include "environment.h"
#include "fio_find.h"
#include "library_texts.h"
#include "temp_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<std::string> entries(FIO_FIND const& find) {
    return texts(find.directories());
}

std::vector<std::string> entries(std::string const& path_list) {
    return entries(FIO_FIND(library_string(path_list)));
}

TEST(FioPathList, IsSplitAtSemicolons) {
    EXPECT_THAT(entries("/a;lib;/c/d/"), ElementsAre("/a", "lib", "/c/d/"));
    EXPECT_THAT(entries("/a"), ElementsAre("/a"));
}

TEST(FioPathList, DropsBlanksAroundAnEntryAndEmptyEntries) {
    EXPECT_THAT(entries(" /a ;\t/b c\t;; ;"), ElementsAre("/a", "/b c"));
    EXPECT_THAT(entries(""), IsEmpty());
    EXPECT_THAT(entries(" ; ;; \t"), IsEmpty());
    EXPECT_THAT(entries("\"\";\" \""), ElementsAre(" "));
}

TEST(FioPathList, KeepsAQuotedEntryWhole) {
    EXPECT_THAT(entries("\"/a;b\";/c"), ElementsAre("/a;b", "/c"));
    EXPECT_THAT(entries(" \" /a \" ; \"b\""), ElementsAre(" /a ", "b"));
    EXPECT_THAT(entries("\"/a\"b;c\""), ElementsAre("/a\"b;c"));
}

TEST(FioPathList, QuoteThatNothingClosesIsPartOfTheName) {
    EXPECT_THAT(entries("\"/a;/b"), ElementsAre("\"/a", "/b"));
    EXPECT_THAT(entries("/a\"b;/c\"d"), ElementsAre("/a\"b", "/c\"d"));
    EXPECT_THAT(entries("\""), ElementsAre("\""));
}

TEST(FioPathList, ManyUnclosedQuotesAreSplitInLinearTime) {
    std::string list;
    for (int i = 0; i < 200'000; ++i)
        list += "\"a;";
    EXPECT_EQ(entries(list).size(), 200'000U);
}

TEST(FioPathList, TextThatNamesADirectoryIsOneEntry) {
    TempDirectory const directory;
    std::string const odd = directory.make_directory(" one; \"two\";");
    EXPECT_THAT(entries(odd), ElementsAre(odd));
    EXPECT_THAT(entries(odd + "/"), ElementsAre(odd + "/"));
    ScopedCurrentDirectory const here(directory.path());
    EXPECT_THAT(entries(" one; \"two\";"), ElementsAre(" one; \"two\";"));
    // A file is no directory to look in.
    directory.write("f;g");
    EXPECT_THAT(entries(directory / "f;g"), ElementsAre(directory / "f", "g"));
}

TEST(FioPathList, TextWithANulNamesNoDirectory) {
    TempDirectory const directory;
    std::string const list = directory.path() + std::string("\0;lib", 5);
    EXPECT_THAT(entries(list), ElementsAre(directory.path() + std::string("\0", 1), "lib"));
}

TEST(FioPathList, OfPathsKeepsThemAndDropsEmptyOnes) {
    FIO_FIND const find(MEM_LIST<FIO_PATH>{FIO_PATH("/a;b"), FIO_PATH(), FIO_PATH(" c ")});
    EXPECT_THAT(entries(find), ElementsAre("/a;b", " c "));
}

} // namespace
