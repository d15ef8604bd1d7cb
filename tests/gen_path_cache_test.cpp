#include "gen_path_cache.h"

#include "err_report.h"
#include "gen_path_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <utility>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

class GenFindFileCache : public GenPathTest {
  protected:
    void SetUp() override {
        gen_set_project_dir_path(text_at("project"));
        gen_set_user_library_paths(text_at("user"));
    }

    static std::string found_cached(std::string const& name) {
        return found(gen_find_file_cache_assisted(library_string(name)));
    }
};

} // namespace

TEST_F(GenFindFileCache, AnswersAsTheFirstLookupDid) {
    EXPECT_EQ(gen_find_file_cache, nullptr);
    std::string const path = write("user/top.v");
    EXPECT_EQ(found_cached("top.v"), path);
    ASSERT_NE(gen_find_file_cache, nullptr);
    write("project/top.v");
    EXPECT_EQ(found_cached("top.v"), path);
    std::filesystem::remove(path);
    EXPECT_EQ(found_cached("top.v"), path);
    EXPECT_EQ(found_file("top.v"), at("project/top.v"));
}

TEST_F(GenFindFileCache, KeepsNegativeAnswers) {
    EXPECT_EQ(found_cached("top.v"), "");
    std::string const path = write("project/top.v");
    EXPECT_EQ(found_cached("top.v"), "");
    gen_destroy_find_file_cache();
    EXPECT_EQ(gen_find_file_cache, nullptr);
    EXPECT_EQ(found_cached("top.v"), path);
}

TEST_F(GenFindFileCache, IsInvalidatedByNothing) {
    std::string const path = write("project/top.v");
    EXPECT_EQ(found_cached("top.v"), path);
    gen_set_project_dir_path(text_at("other"));
    gen_set_db_dir_path(text_at("other/db"));
    gen_set_project_library_paths("");
    gen_set_user_library_paths("");
    gen_clear_all_library_paths();
    EXPECT_EQ(found_cached("top.v"), path);
}

TEST_F(GenFindFileCache, KeysAreTheNamesAsGiven) {
    std::string const path = write("project/A.v");
    EXPECT_EQ(found_cached("a.v"), "");
    EXPECT_EQ(found_cached("A.v"), path);
    EXPECT_EQ(found_cached("./A.v"), at("project/./A.v"));
    EXPECT_EQ(found_cached(""), "");
    EXPECT_EQ(gen_find_file_cache->size(), 4U);
    // A key ends at its terminator.
    EXPECT_EQ(found(gen_find_file_cache_assisted(STR("A.v\0b", 5))), path);
    EXPECT_EQ(gen_find_file_cache->size(), 4U);
}

TEST_F(GenFindFileCache, IsMadeAndFreedOnRequest) {
    std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
    gen_destroy_find_file_cache();
    gen_create_find_file_cache();
    ASSERT_NE(gen_find_file_cache, nullptr);
    EXPECT_THAT(*gen_find_file_cache, IsEmpty());
    gen_find_file_cache->emplace("a rather long name, kept on the heap", FIO_PATH("/x"));
    gen_create_find_file_cache();
    EXPECT_THAT(*gen_find_file_cache, IsEmpty());
    gen_destroy_find_file_cache();
    EXPECT_EQ(gen_find_file_cache, nullptr);
    EXPECT_EQ(MEM_MANAGER::s_system_memory_counter.current(), before);
}

namespace {

/// The hash as it is defined: h = h * 17 + c in 32 bits, each byte a signed number.
std::uint32_t plain_hash(char const* text) {
    std::uint32_t h = 0;
    for (; *text != '\0'; ++text)
        h = h * 17 + static_cast<std::uint32_t>(static_cast<signed char>(*text));
    return h;
}

std::size_t hash(STR const& key) {
    return STL_CASE_SENSITIVE_HASH_COMPARE()(key);
}

bool equal(STR const& a, STR const& b) {
    return STL_CASE_SENSITIVE_HASH_COMPARE()(a, b);
}

} // namespace

TEST(FindFileCacheKey, HashHasKnownValues) {
    struct {
        char const* key;
        std::uint32_t hash;
    } const rows[] = {
        {"", 0},
        {"a", 97},
        {"ab", 97 * 17 + 98},
        {"abc", (97 * 17 + 98) * 17 + 99},
        {"\xff", 0xffffffff},
        {"\x80", 0xffffff80},
        {"\x80\xff", 0U - 128 * 17 - 1},
        {"a\xe4", 97 * 17 - 28},
    };
    for (auto const& row : rows)
        EXPECT_EQ(hash(row.key), row.hash) << row.key;
}

TEST(FindFileCacheKey, HashIsThePlainOneForRandomBytes) {
    std::mt19937 random(7);
    for (int round = 0; round < 20'000; ++round) {
        STR key(random() % 70, '\0');
        for (char& c : key)
            c = static_cast<char>(random() % 255 + 1);
        if (round % 2 == 0 && !key.empty())
            key[random() % key.size()] = '\0';
        ASSERT_EQ(hash(key), plain_hash(key.c_str()));
    }
}

TEST(FindFileCacheKey, EndsAtItsTerminator) {
    STR const longer("top.v\0x", 7);
    EXPECT_EQ(hash(longer), hash("top.v"));
    EXPECT_TRUE(equal(longer, "top.v"));
    EXPECT_TRUE(equal("", STR(1, '\0')));
}

TEST_F(GenFindFileCache, MayBeDestroyedByTheHandlerOfAnError) {
    gen_init_korvane_lib_paths();
    delete std::exchange(gen_korvane_libraries, nullptr);
    auto const destroy = [](char const*, char const*, char const*, int) {
        gen_destroy_find_file_cache();
    };
    auto const previous = err_set_internal_error_handler(destroy);
    std::string const path = write("user/top.v");
    EXPECT_EQ(found_cached("top.v"), path);
    EXPECT_EQ(gen_find_file_cache, nullptr);
    err_set_internal_error_handler(previous);
}

TEST(FindFileCacheKey, LetterCaseMakesAnotherKey) {
    EXPECT_FALSE(equal("A.v", "a.v"));
    EXPECT_FALSE(equal("a.v", "a.vh"));
    EXPECT_TRUE(equal("a.v", "a.v"));
}

TEST_F(GenFindFileCache, IsAMapToLookAtAndToFill) {
    write("project/A.v");
    gen_find_file_cache_assisted("A.v");
    gen_find_file_cache_assisted("missing.v");
    std::map<std::string, std::string> kept;
    for (auto const& [name, path] : *gen_find_file_cache)
        kept.emplace(name, found(path));
    EXPECT_THAT(kept, ElementsAre(Pair("A.v", at("project/A.v")), Pair("missing.v", "")));

    gen_find_file_cache->emplace("given.v", FIO_PATH("/by/the/host.v"));
    EXPECT_EQ(found_cached("given.v"), "/by/the/host.v");
    gen_find_file_cache->erase("missing.v");
    std::string const path = write("project/missing.v");
    EXPECT_EQ(found_cached("missing.v"), path);
    EXPECT_TRUE(gen_find_file_cache->contains("missing.v"));
    EXPECT_EQ(gen_find_file_cache->size(), 3U);
}

TEST_F(GenFindFileCache, DistinguishesNamesOfOneHash) {
    // 'b' is one less in front and 17 more behind.
    char const* const names[] = {"bA", "aR", "cA", "bR", "aA", "", "\x01\xEF"};
    ASSERT_EQ(hash("bA"), hash("aR"));
    ASSERT_EQ(hash("cA"), hash("bR"));
    ASSERT_EQ(hash(""), hash("\x01\xEF"));
    gen_create_find_file_cache();
    for (char const* name : names)
        gen_find_file_cache->emplace(name, FIO_PATH(STR("/") + name));
    for (char const* name : names)
        EXPECT_EQ(found_cached(name), std::string("/") + name);
    EXPECT_EQ(gen_find_file_cache->size(), std::size(names));
}

TEST_F(GenFindFileCache, GivesTheKeptPathBackWhole) {
    FIO_PATH path("/p/src/a.tar.gz");
    path.path_separator('\\');
    path.extension("", "");
    path.base("b.c"); // taken whole, where a parsed string would have an extension
    gen_create_find_file_cache();
    gen_find_file_cache->emplace("name", path);
    FIO_PATH const kept = gen_find_file_cache_assisted("name");
    EXPECT_EQ(kept.fullpath(), "/p/src/b.c");
    EXPECT_EQ(kept.base(), "b.c");
    EXPECT_STREQ(kept, "\\p\\src\\b.c");
}
