// Names that match a pattern, as a search object delivers them.

#include "environment.h"
#include "fio_find.h"
#include "library_texts.h"
#include "temp_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Texts = std::vector<std::string>;

Texts names(FIO_FIND& find) {
    Texts texts;
    for (STR name = find.find_first(); !name.empty(); name = find.find_next())
        texts.emplace_back(name);
    return texts;
}

class FioWildcard : public testing::Test {
  protected:
    void SetUp() override {
        for (char const* name : {"b.ddb", "a.ddb", "B.ddb", "ab.ddb", ".ddb", "a.ddbx", "a b.ddb",
                                 "[a].ddb", "sub/c.ddb"})
            m_directory.write(name);
    }
    Texts names_of(std::string_view pattern) {
        FIO_FIND search(library_string(m_directory / pattern));
        return names(search);
    }

    TempDirectory m_directory;
};

TEST_F(FioWildcard, NamesComeBareAndSortedByByteValue) {
    EXPECT_THAT(names_of("*.ddb"),
                ElementsAre(".ddb", "B.ddb", "[a].ddb", "a b.ddb", "a.ddb", "ab.ddb", "b.ddb"));
}

TEST_F(FioWildcard, OnlyStarAndQuestionMarkAreSpecial) {
    EXPECT_THAT(names_of("?.ddb"), ElementsAre("B.ddb", "a.ddb", "b.ddb"));
    EXPECT_THAT(names_of("[a].ddb"), ElementsAre("[a].ddb"));
    EXPECT_THAT(names_of("a*b*"), ElementsAre("a b.ddb", "a.ddb", "a.ddbx", "ab.ddb"));
    EXPECT_THAT(names_of("a.ddb"), ElementsAre("a.ddb"));
    EXPECT_THAT(names_of("\\a.ddb"), IsEmpty());
}

TEST_F(FioWildcard, StarNeverDeliversTheDirectoryItselfOrItsParent) {
    EXPECT_EQ(names_of("*").size(), 9U);
    EXPECT_THAT(names_of(".*"), ElementsAre(".ddb"));
    EXPECT_THAT(names_of("."), IsEmpty());
    EXPECT_THAT(names_of(".."), IsEmpty());
}

TEST_F(FioWildcard, DirectoryIsTakenLiterally) {
    EXPECT_THAT(names_of("sub/*.ddb"), ElementsAre("c.ddb"));
    EXPECT_THAT(names_of("su?/*.ddb"), IsEmpty());
    std::string const odd = m_directory.make_directory("x;* y");
    m_directory.write("x;* y/d.ddb");
    EXPECT_THAT(names_of("x;* y/*.ddb"), ElementsAre("d.ddb"));
}

TEST_F(FioWildcard, PatternWithANulOrWithoutANameMatchesNothing) {
    EXPECT_THAT(names_of(std::string_view("*.ddb\0", 6)), IsEmpty());
    EXPECT_THAT(names_of(std::string_view("\0*", 2)), IsEmpty());
    EXPECT_THAT(names_of("sub/"), IsEmpty());
}

TEST_F(FioWildcard, WithoutADirectoryMeansTheCurrentOne) {
    ScopedCurrentDirectory const here(m_directory / "sub");
    FIO_FIND search("*.ddb");
    EXPECT_THAT(names(search), ElementsAre("c.ddb"));
}

TEST_F(FioWildcard, NothingToDeliverIsEmpty) {
    EXPECT_THAT(names_of("*.none"), IsEmpty());
    EXPECT_THAT(names_of("missing/*"), IsEmpty());
    EXPECT_THAT(names_of("a.ddb/*"), IsEmpty());
    EXPECT_THAT(names_of("sub/"), IsEmpty());
    FIO_FIND search("");
    EXPECT_EQ(search.find_next(), "");
    EXPECT_EQ(search.find_first(), "");
}

TEST_F(FioWildcard, FindFirstBeginsAgain) {
    FIO_FIND search(library_string(m_directory / "?.ddb"));
    EXPECT_EQ(search.find_first(), "B.ddb");
    EXPECT_EQ(search.find_next(), "a.ddb");
    EXPECT_EQ(search.find_first(), "B.ddb");
    EXPECT_THAT(names(search), ElementsAre("B.ddb", "a.ddb", "b.ddb"));
    EXPECT_EQ(search.find_next(), "");
    EXPECT_EQ(search.find_next(), "");
}

} // namespace
