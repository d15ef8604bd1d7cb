#include "fio_find.h"

#include "environment.h"
#include "library_texts.h"
#include "temp_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Texts = std::vector<std::string>;

std::string find(FIO_FIND& find, char const* name) {
    return std::string(find.find_first_relative_path(FIO_PATH(name)).fullpath());
}

Texts find_all(FIO_FIND& find, char const* base, std::vector<char const*> const& extensions,
               bool all_directories = true, bool absolute = true) {
    MEM_VECTOR<STR> wanted(extensions.begin(), extensions.end());
    MEM_LIST<FIO_PATH> results;
    find.find_all(base, wanted, &results, all_directories, absolute);
    return texts(results);
}

TEST(FioFind, IsRebuiltInPlace) {
    TempDirectory const directory;
    std::string const first = directory.write("one/top.v");
    std::string const second = directory.write("two/top.v");
    FIO_FIND list(library_string(directory / "one"));
    EXPECT_EQ(find(list, "top.v"), first);
    list.init(library_string(directory / "two"));
    EXPECT_EQ(find(list, "top.v"), second);
    EXPECT_THAT(texts(list.directories()), ElementsAre(directory / "two"));
    list.init("");
    EXPECT_EQ(find(list, "top.v"), "");
}

TEST(FioFind, RebuildingEndsAnEnumeration) {
    TempDirectory const directory;
    directory.write("a.v");
    directory.write("b.v");
    FIO_FIND names(library_string(directory / "*.v"));
    EXPECT_EQ(names.find_first(), "a.v");
    names.init(library_string(directory / "*.v"));
    EXPECT_EQ(names.find_next(), "");
}

TEST(FioFind, LivesInTrackedMemory) {
    std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
    auto* const find = new FIO_FIND(STR("/a;/b"));
    EXPECT_GE(MEM_MANAGER::s_system_memory_counter.current(), before + sizeof(FIO_FIND));
    delete find;
    EXPECT_EQ(MEM_MANAGER::s_system_memory_counter.current(), before);
}

// One file

class FioFindFirst : public testing::Test {
  protected:
    TempDirectory m_directory;
    FIO_FIND m_find{library_string(m_directory / "one" + ";" + (m_directory / "missing/") + ";" +
                                   (m_directory / "two/"))};
};

TEST_F(FioFindFirst, IsTheOneOfTheEarliestDirectory) {
    std::string const second = m_directory.write("two/top.v");
    EXPECT_EQ(find(m_find, "top.v"), second);
    std::string const first = m_directory.write("one/top.v");
    EXPECT_EQ(find(m_find, "top.v"), first);
}

TEST_F(FioFindFirst, NamesMayHaveDirectoriesBlanksAndDots) {
    for (char const* name : {"sub/ram.mif", "my dir/a b.v", ".hidden", "sub/..v", "trailing."}) {
        std::string const path = m_directory.write(std::string("two/") + name);
        EXPECT_EQ(find(m_find, name), path);
    }
}

TEST_F(FioFindFirst, IsExactlyThePathThatWasAsked) {
    m_directory.write("two/sub/top.v");
    EXPECT_EQ(find(m_find, "./sub//top.v"), m_directory / "two/./sub//top.v");
    EXPECT_EQ(find(m_find, "sub/../sub/top.v"), m_directory / "two/sub/../sub/top.v");
}

TEST_F(FioFindFirst, MayBeADirectory) {
    m_directory.make_directory("two/ip");
    EXPECT_EQ(find(m_find, "ip"), m_directory / "two/ip");
    EXPECT_EQ(find(m_find, "ip/"), m_directory / "two/ip/");
    EXPECT_EQ(find(m_find, ".."), m_directory / "two/..");
}

TEST_F(FioFindFirst, FileIsNoDirectory) {
    m_directory.write("two/top.v");
    EXPECT_EQ(find(m_find, "top.v/"), "");
    EXPECT_EQ(find(m_find, "top.v/x"), "");
    m_directory.write("one", "a file where a directory is expected");
    EXPECT_EQ(find(m_find, "top.v"), m_directory / "two/top.v");
}

TEST_F(FioFindFirst, EmptyAndAbsoluteNamesAreNeverFound) {
    std::string const path = m_directory.write("two/top.v");
    EXPECT_EQ(find(m_find, ""), "");
    EXPECT_EQ(find(m_find, path.c_str()), "");
    EXPECT_EQ(find(m_find, "/"), "");
}

TEST_F(FioFindFirst, NameWithAnEmbeddedNulIsNeverFound) {
    m_directory.write("two/top.v");
    EXPECT_EQ(m_find.find_first_relative_path(FIO_PATH(STR("top.v\0x", 7))).fullpath(), "");
    FIO_FIND list(library_string(m_directory / "two") + STR("/\0x", 3));
    EXPECT_EQ(find(list, "top.v"), "");
    MEM_LIST<FIO_PATH> results;
    m_find.find_all("top", {STR("v\0x", 3)}, &results, true, true);
    EXPECT_THAT(results, IsEmpty());
}

TEST_F(FioFindFirst, LinksCountWhereTheyLead) {
    std::string const target = m_directory.write("elsewhere/top.v");
    m_directory.make_directory("two");
    std::filesystem::create_symlink(target, m_directory / "two/good.v");
    std::filesystem::create_symlink(m_directory / "nowhere", m_directory / "two/dangling.v");
    std::filesystem::create_symlink("loop.v", m_directory / "two/loop.v");
    EXPECT_EQ(find(m_find, "good.v"), m_directory / "two/good.v");
    EXPECT_EQ(find(m_find, "dangling.v"), "");
    EXPECT_EQ(find(m_find, "loop.v"), "");
}

TEST_F(FioFindFirst, OverlongNamesAreNotFound) {
    m_directory.make_directory("two");
    EXPECT_EQ(find(m_find, std::string(300, 'a').c_str()), "");
    std::string deep;
    while (deep.size() < 10'000)
        deep += "part/";
    EXPECT_EQ(find(m_find, deep.c_str()), "");
}

TEST_F(FioFindFirst, DirectoriesMayComeAndGoBetweenCalls) {
    m_directory.write("two/top.v");
    EXPECT_EQ(find(m_find, "top.v"), m_directory / "two/top.v");
    std::filesystem::remove_all(m_directory / "two");
    EXPECT_EQ(find(m_find, "top.v"), "");
    m_directory.write("missing/top.v");
    EXPECT_EQ(find(m_find, "top.v"), m_directory / "missing/top.v");
}

// Relative entries

TEST(FioFindBase, RelativeEntriesStayRelativeWithoutOne) {
    TempDirectory const directory;
    directory.write("lib/top.v");
    ScopedCurrentDirectory const here(directory.path());
    FIO_FIND list("lib");
    EXPECT_EQ(find(list, "top.v"), "lib/top.v");
    list.set_directory_for_results_to_become_absolute_to(nullptr);
    EXPECT_EQ(find(list, "top.v"), "lib/top.v");
    list.set_directory_for_results_to_become_absolute_to("");
    EXPECT_EQ(find(list, "top.v"), "lib/top.v");
}

TEST(FioFindBase, RelativeEntriesStartAtIt) {
    TempDirectory const directory;
    directory.write("p/lib/top.v");
    directory.write("q/lib/top.v");
    directory.write("abs/only.v");
    FIO_FIND list(library_string("lib;" + directory / "abs"));
    for (char const* project : {"p", "p/", "q"}) {
        list.set_directory_for_results_to_become_absolute_to((directory / project).c_str());
        std::string const expected = FIO_PATH(project).full_directory().empty()
                                         ? directory / (std::string(project) + "/lib/top.v")
                                         : directory / "p/lib/top.v";
        EXPECT_EQ(find(list, "top.v"), expected);
        EXPECT_EQ(find(list, "only.v"), directory / "abs/only.v");
        EXPECT_THAT(texts(list.directories()), ElementsAre("lib", directory / "abs"));
    }
}

TEST(FioFindBase, IsKeptWhenTheListIsRebuilt) {
    TempDirectory const directory;
    directory.write("p/lib/top.v");
    FIO_FIND list("other");
    list.set_directory_for_results_to_become_absolute_to((directory / "p").c_str());
    list.init("lib");
    EXPECT_EQ(find(list, "top.v"), directory / "p/lib/top.v");
}

TEST(FioFindBase, RelativeOneIsTakenFromTheCurrentDirectoryEachTime) {
    TempDirectory const directory;
    directory.write("here/p/lib/top.v");
    directory.write("there/p/lib/top.v");
    FIO_FIND list("lib");
    for (char const* place : {"here", "there", "here"}) {
        ScopedCurrentDirectory const current(directory / place);
        list.set_directory_for_results_to_become_absolute_to("p/");
        EXPECT_EQ(find(list, "top.v"), directory / (std::string(place) + "/p/lib/top.v"));
    }
}

TEST(FioFindBase, CanBeTakenBack) {
    TempDirectory const directory;
    directory.write("lib/top.v");
    ScopedCurrentDirectory const here(directory.path());
    FIO_FIND list("lib");
    list.set_directory_for_results_to_become_absolute_to("/nowhere");
    EXPECT_EQ(find(list, "top.v"), "");
    list.set_directory_for_results_to_become_absolute_to("");
    EXPECT_EQ(find(list, "top.v"), "lib/top.v");
}

// All files of a base name

class FioFindAll : public testing::Test {
  protected:
    void SetUp() override {
        for (char const* name : {"one/top.v", "one/top.vhd", "two/top.v", "two/top.sv", "two/top"})
            m_directory.write(name);
    }
    std::string operator/(char const* name) const { return m_directory / name; }

    TempDirectory m_directory;
    FIO_FIND m_find{library_string(m_directory / "one;" + (m_directory / "two"))};
};

TEST_F(FioFindAll, GoesByDirectoryThenByExtension) {
    EXPECT_THAT(find_all(m_find, "top", {".sv", "vhd", ".v"}),
                ElementsAre(*this / "one/top.vhd", *this / "one/top.v", *this / "two/top.sv",
                            *this / "two/top.v"));
}

TEST_F(FioFindAll, StopsAfterTheFirstDirectoryWithAMatchWhenAsked) {
    EXPECT_THAT(find_all(m_find, "top", {".sv", ".v"}, /*all_directories=*/false),
                ElementsAre(*this / "one/top.v"));
    EXPECT_THAT(find_all(m_find, "top", {".sv"}, /*all_directories=*/false),
                ElementsAre(*this / "two/top.sv"));
}

TEST_F(FioFindAll, EmptyExtensionStandsForTheBaseNameAlone) {
    EXPECT_THAT(find_all(m_find, "top", {""}), ElementsAre(*this / "two/top"));
}

TEST_F(FioFindAll, TakesABaseNameWithDotsAndDirectoriesWhole) {
    m_directory.write("two/sub/a.b.v");
    EXPECT_THAT(find_all(m_find, "sub/a.b", {".v"}), ElementsAre(*this / "two/sub/a.b.v"));
    EXPECT_THAT(find_all(m_find, "sub/a", {".v"}), IsEmpty());
}

TEST_F(FioFindAll, FindsNothingForNothing) {
    EXPECT_THAT(find_all(m_find, "", {".v"}), IsEmpty());
    EXPECT_THAT(find_all(m_find, "top", {}), IsEmpty());
    EXPECT_THAT(find_all(m_find, (*this / "one/top").c_str(), {".v"}), IsEmpty());
    m_find.find_all("top", {".v"}, nullptr, true, true);
}

TEST_F(FioFindAll, AppendsToTheResults) {
    MEM_LIST<FIO_PATH> results{FIO_PATH("kept")};
    m_find.find_all("top", {".v"}, &results, true, true);
    ASSERT_EQ(results.size(), 3U);
    EXPECT_EQ(results.front().fullpath(), "kept");
}

TEST_F(FioFindAll, MakesRelativeResultsAbsoluteWhenAsked) {
    ScopedCurrentDirectory const here(m_directory.path());
    FIO_FIND list("one");
    EXPECT_THAT(find_all(list, "top", {".v"}, true, /*absolute=*/true),
                ElementsAre(*this / "one/top.v"));
    EXPECT_THAT(find_all(list, "top", {".v"}, true, /*absolute=*/false), ElementsAre("one/top.v"));
    list.set_directory_for_results_to_become_absolute_to(m_directory.path().c_str());
    EXPECT_THAT(find_all(list, "top", {".v"}, true, /*absolute=*/false),
                ElementsAre(*this / "one/top.v"));
}

} // namespace
