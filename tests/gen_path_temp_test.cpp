#include "gen_path_temp.h"

#include "environment.h"
#include "error_recorder.h"
#include "in_child.h"
#include "mem.h"
#include "private_mounts.h"
#include "temp_directory.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <sys/mount.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// The file name of a new temporary file in @p directory.
std::string new_name(std::string const& directory, char const* prefix, unsigned short number) {
    STR const path = gen_get_temp_filename(STR(directory), prefix, number);
    EXPECT_TRUE(fs::is_regular_file(std::string(path))) << path;
    EXPECT_EQ(fs::file_size(std::string(path)), 0U) << path;
    EXPECT_EQ(fs::path(std::string(path)).parent_path(), directory);
    return fs::path(std::string(path)).filename();
}

unsigned number_of(std::string const& name) {
    return static_cast<unsigned>(std::stoul(name.substr(name.size() - 12, 8), nullptr, 16));
}

} // namespace

TEST(TempFilename, IsThreeCharactersOfThePrefixAndEightDigits) {
    struct {
        char const* prefix;
        unsigned short number;
        char const* name;
    } const rows[] = {
        {"report", 42, "rep0000002a.tmp"},
        {"rep", 43, "rep0000002b.tmp"},
        {"r", 1, "r00000001.tmp"},
        {"", 1, "00000001.tmp"},
        {"tab", 0xBEEF, "tab0000beef.tmp"},
        {"tab", 65535, "tab0000ffff.tmp"},
        // A dot is a character like any other: all eight digits stay.
        {"a.b", 7, "a.b00000007.tmp"},
        {".", 7, ".00000007.tmp"},
        {"...", 7, "...00000007.tmp"},
        {"x.", 7, "x.00000007.tmp"},
        {" %s", 7, " %s00000007.tmp"},
    };
    for (auto const& [prefix, number, name] : rows) {
        TempDirectory const directory;
        EXPECT_EQ(new_name(directory.path(), prefix, number), name);
    }
}

TEST(TempFilename, PrefixMayLeadToAnotherDirectory) {
    TempDirectory const directory;
    directory.make_directory("sub");
    EXPECT_EQ(gen_get_temp_filename(STR(directory / "sub"), "../", 1),
              STR(directory / "sub/../00000001.tmp"));
    EXPECT_TRUE(fs::exists(directory / "00000001.tmp"));
}

TEST(TempFilename, EmbeddedNulEndsDirectoryAndPrefix) {
    using namespace std::literals;
    TempDirectory const directory;
    EXPECT_EQ(gen_get_temp_filename(STR(directory.path() + "\0/elsewhere"s), STR("a\0bc"sv), 1),
              STR(directory / "a00000001.tmp"));
    EXPECT_TRUE(fs::exists(directory / "a00000001.tmp"));
}

TEST(TempFilename, GivesTheFullPathWhetherTheDirectoryEndsInASlashOrNot) {
    TempDirectory const directory;
    EXPECT_EQ(gen_get_temp_filename(STR(directory.path()), "ab", 1),
              STR(directory / "ab00000001.tmp"));
    EXPECT_EQ(gen_get_temp_filename(STR(directory.path() + "/"), "ab", 2),
              STR(directory / "ab00000002.tmp"));
}

TEST(TempFilename, EmptyDirectoryIsTheCurrentOne) {
    TempDirectory const directory;
    ScopedCurrentDirectory const current(directory.path());
    EXPECT_EQ(gen_get_temp_filename("", "ab", 1), "ab00000001.tmp");
    EXPECT_TRUE(fs::exists(directory / "ab00000001.tmp"));
}

TEST(TempFilename, TakenNamesAreSteppedOverAndLeftAlone) {
    TempDirectory const directory;
    directory.write("rep0000002a.tmp", "somebody's");
    directory.make_directory("rep0000002b.tmp");
    EXPECT_EQ(new_name(directory.path(), "report", 42), "rep0000002c.tmp");
    EXPECT_EQ(new_name(directory.path(), "report", 42), "rep0000002d.tmp");
    EXPECT_EQ(read_file(directory / "rep0000002a.tmp"), "somebody's");
}

TEST(TempFilename, NumberAfterTheLargestIsZero) {
    TempDirectory const directory;
    directory.write("rep0000ffff.tmp");
    EXPECT_EQ(new_name(directory.path(), "report", 65535), "rep00000000.tmp");
}

TEST(TempFilename, NumberZeroStartsFromTheClock) {
    TempDirectory const directory;
    auto const now = [] { return static_cast<unsigned>(std::time(nullptr) & 0xFFFF); };
    unsigned const before = now();
    unsigned const number = number_of(new_name(directory.path(), "clk", 0));
    EXPECT_LE((number - before) & 0xFFFF, (now() - before) & 0xFFFF);
}

TEST(TempFilename, TakenNumbersOfTheClockAreSteppedOverToo) {
    TempDirectory const directory;
    auto const start = static_cast<unsigned>(std::time(nullptr));
    char name[24];
    for (unsigned ahead = 0; ahead < 600; ++ahead) {
        std::snprintf(name, sizeof name, "clk%.8x.tmp", (start + ahead) & 0xFFFF);
        directory.write(name);
    }
    unsigned const number = number_of(new_name(directory.path(), "clk", 0));
    EXPECT_EQ(number, (start + 600) & 0xFFFF);
}

TEST(TempFilename, PlantedLinksAreNotFollowed) {
    TempDirectory const directory;
    std::string const victim = directory.write("victim", "precious");
    fs::create_symlink(directory / "nowhere", directory / "rep0000002a.tmp");
    fs::create_symlink(victim, directory / "rep0000002b.tmp");
    EXPECT_EQ(new_name(directory.path(), "report", 42), "rep0000002c.tmp");
    EXPECT_FALSE(fs::exists(directory / "nowhere"));
    EXPECT_EQ(read_file(victim), "precious");
}

namespace {

/// Creates files until there are @p count, all from the same first number.
std::set<std::string> new_paths(std::string const& directory, int count) {
    std::set<std::string> paths;
    for (int i = 0; i < count; ++i)
        paths.emplace(gen_get_temp_filename(STR(directory), "race", 42));
    return paths;
}

std::string joined(std::set<std::string> const& texts) {
    std::string all;
    for (std::string const& text : texts)
        all += text + "\n";
    return all;
}

std::set<std::string> lines_of(std::string const& text) {
    std::set<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.insert(line);
    return lines;
}

void expect_each_got_its_own(std::set<std::string> const& mine, std::set<std::string> const& others,
                             std::size_t each) {
    std::set<std::string> both = mine;
    both.insert(others.begin(), others.end());
    EXPECT_EQ(mine.size(), each);
    EXPECT_EQ(others.size(), each);
    EXPECT_EQ(both.size(), 2 * each);
}

} // namespace

TEST(TempFilename, TwoThreadsThatRaceGetTheirOwnFiles) {
    TempDirectory const directory;
    std::set<std::string> others;
    std::thread other([&] { others = new_paths(directory.path(), 200); });
    std::set<std::string> const mine = new_paths(directory.path(), 200);
    other.join();
    expect_each_got_its_own(mine, others, 200);
}

TEST(TempFilename, TwoProcessesThatRaceGetTheirOwnFiles) {
    TempDirectory const directory;
    std::set<std::string> mine;
    std::string const others = in_child([&] { return joined(new_paths(directory.path(), 200)); },
                                        [&] { mine = new_paths(directory.path(), 200); });
    expect_each_got_its_own(mine, lines_of(others), 200);
}

namespace {

std::string full_device_messages;
std::string full_device_filler;

/// Hears the message, and makes room when it comes the second time.
int free_the_device(char const* owner, char const* text) {
    if (!full_device_messages.empty())
        unlink(full_device_filler.c_str());
    full_device_messages += std::string(owner) + ": " + text + "\n";
    return 0;
}

} // namespace

// A device without room for one more file: the function waits, and says why after each round.
TEST(TempFilename, FullDeviceIsReportedAfterEachRoundUntilThereIsRoom) {
    TempDirectory const directory;
    std::string const answer = in_child([&]() -> std::string {
        // An empty file needs no block, only an inode: the directory's own is the first of two.
        if (!enter_private_mounts() ||
            mount("tmpfs", directory.path().c_str(), "tmpfs", 0, "nr_inodes=2") != 0)
            return "not permitted";
        full_device_filler = directory.write("filler");
        mem_msg_set_sink(free_the_device);
        STR const path = gen_get_temp_filename(STR(directory.path()), "full", 42);
        return full_device_messages + std::string(path.substr(directory.path().size()));
    });
    if (answer == "not permitted")
        GTEST_SKIP() << "no private mounts for this user";
    std::string const message = "GEN: No temporary file can be created in \"" + directory.path() +
                                "\": tried all 65536 numbers\n";
    EXPECT_EQ(answer, message + message + "/ful0000002a.tmp");
}

TEST(TempFilename, IsForItsOwnerAlone) {
    TempDirectory const directory;
    mode_t const previous = umask(0);
    STR const path = gen_get_temp_filename(STR(directory.path()), "own", 42);
    umask(previous);
    EXPECT_EQ(fs::status(std::string(path)).permissions(), fs::perms(0600));
}

TEST(TempFilename, NeitherFollowsNorReusesWhatWasPlanted) {
    TempDirectory const directory;
    std::string const victim = directory.write("victim", "precious");
    auto const name = [&](int number) {
        return directory / ("own0000000" + std::to_string(number) + ".tmp");
    };
    fs::create_symlink(victim, name(1));
    fs::create_symlink(directory / "nowhere", name(2));
    fs::create_hard_link(victim, name(3));
    ASSERT_EQ(mkfifo(name(4).c_str(), 0666), 0);
    fs::create_directory(name(5));
    fs::create_directory(directory / "target");
    fs::create_directory_symlink(directory / "target", name(6));
    EXPECT_EQ(gen_get_temp_filename(STR(directory.path()), "own", 1), STR(name(7)));
    EXPECT_EQ(read_file(victim), "precious");
    EXPECT_FALSE(fs::exists(directory / "nowhere"));
    EXPECT_TRUE(fs::is_empty(directory / "target"));
}

namespace {

/// gen_get_temp_path in a root directory that contains nothing but @p directories, and the internal
/// errors it reported.
std::string temp_path_with(std::vector<std::string> const& directories) {
    TempDirectory const root;
    for (std::string const& directory : directories)
        root.make_directory(directory);
    return in_child([&]() -> std::string {
        if (!enter_private_mounts() || chroot(root.path().c_str()) != 0)
            return "not permitted";
        setenv("TMPDIR", "/elsewhere", 1); // has no say
        ErrorRecorder recorder;
        std::string answer(gen_get_temp_path());
        for (ReportedError const& error : recorder.errors())
            answer += "|" + error.condition + "|" + error.owner + "|" + error.source_file + ":" +
                      std::to_string(error.line);
        return answer;
    });
}

} // namespace

TEST(TempPath, PrefersVarTmpAndReportsWhenThereIsNone) {
    if (temp_path_with({}) == "not permitted")
        GTEST_SKIP() << "no private root directory for this user";
    EXPECT_EQ(temp_path_with({"var/tmp", "tmp"}), "/var/tmp/");
    EXPECT_EQ(temp_path_with({"var/tmp"}), "/var/tmp/");
    EXPECT_EQ(temp_path_with({"var", "tmp"}), "/tmp/");
    EXPECT_EQ(temp_path_with({}),
              "|Both /var/tmp and /tmp temporary directories do not exist|GEN|gen_path:1893");
}

TEST(UserProfileDirectory, IsCreatedUnderHome) {
    TempDirectory const home;
    for (std::string const& value : {home.path(), home.path() + "/"}) {
        ScopedVariable const variable("HOME", value.c_str());
        for (int call = 0; call < 2; ++call) { // created, then found
            EXPECT_EQ(gen_get_user_profile_directory(), STR(home / ".dravik.korvane"));
            EXPECT_TRUE(fs::is_directory(home / ".dravik.korvane"));
        }
        fs::remove(home / ".dravik.korvane");
    }
}

TEST(UserProfileDirectory, MissingHomeIsNotCreated) {
    TempDirectory const place;
    for (char const* const home : {"home", "new/home"}) {
        ScopedVariable const variable("HOME", (place / home).c_str());
        EXPECT_EQ(gen_get_user_profile_directory(), "");
        EXPECT_TRUE(fs::is_empty(place.path()));
    }
}

TEST(UserProfileDirectory, IsForTheUserAlone) {
    TempDirectory const home;
    ScopedVariable const variable("HOME", home.path().c_str());
    mode_t const previous = umask(0);
    EXPECT_EQ(gen_get_user_profile_directory(), STR(home / ".dravik.korvane"));
    umask(previous);
    EXPECT_EQ(fs::status(home / ".dravik.korvane").permissions(), fs::perms::owner_all);
    // One that exists keeps what the user gave it.
    fs::permissions(home / ".dravik.korvane", fs::perms(0755));
    EXPECT_EQ(gen_get_user_profile_directory(), STR(home / ".dravik.korvane"));
    EXPECT_EQ(fs::status(home / ".dravik.korvane").permissions(), fs::perms(0755));
}

TEST(UserProfileDirectory, FifoInItsPlaceIsNoDirectory) {
    TempDirectory const home;
    ScopedVariable const variable("HOME", home.path().c_str());
    ASSERT_EQ(mkfifo((home / ".dravik.korvane").c_str(), 0666), 0);
    EXPECT_EQ(gen_get_user_profile_directory(), "");
    EXPECT_TRUE(fs::is_fifo(home / ".dravik.korvane"));
}

TEST(UserProfileDirectory, IsEmptyWhenItCannotBeHad) {
    ErrorRecorder recorder;
    TempDirectory const home;
    {
        ScopedVariable const unset("HOME", nullptr);
        EXPECT_EQ(gen_get_user_profile_directory(), "");
    }
    ScopedVariable const under_a_file("HOME", home.write("file").c_str());
    EXPECT_EQ(gen_get_user_profile_directory(), "");
    home.write(".dravik.korvane", "a file in its place");
    ScopedVariable const blocked("HOME", home.path().c_str());
    EXPECT_EQ(gen_get_user_profile_directory(), "");
    EXPECT_EQ(read_file(home / ".dravik.korvane"), "a file in its place");
    EXPECT_THAT(recorder.errors(), testing::IsEmpty());
}

TEST(UserProfileDirectory, IsEmptyOnAFullDevice) {
    TempDirectory const home;
    std::string const answer = in_child([&]() -> std::string {
        // The device has room for its own directory only.
        if (!enter_private_mounts() || !mount_in_memory(home.path(), "nr_inodes=1"))
            return "not permitted";
        setenv("HOME", home.path().c_str(), 1);
        return "<" + std::string(gen_get_user_profile_directory()) + ">";
    });
    if (answer == "not permitted")
        GTEST_SKIP() << "no private mounts for this user";
    EXPECT_EQ(answer, "<>");
}

TEST(UserProfileDirectory, IsFoundWhereNothingCanBeWritten) {
    TempDirectory const home;
    std::string const answer = in_child([&]() -> std::string {
        if (!enter_private_mounts() || !mount_in_memory(home.path(), ""))
            return "not permitted";
        home.make_directory("old/.dravik.korvane");
        home.make_directory("new");
        if (!make_mount_read_only(home.path()))
            return "not permitted";
        std::string answers;
        for (char const* const name : {"old", "new"}) {
            setenv("HOME", (home / name).c_str(), 1);
            answers += "<" + std::string(gen_get_user_profile_directory()) + ">";
        }
        return answers;
    });
    if (answer == "not permitted")
        GTEST_SKIP() << "no private mounts for this user";
    EXPECT_EQ(answer, "<" + (home / "old/.dravik.korvane") + "><>");
}

TEST(UserProfileDirectory, MayBeALinkToADirectoryButNotToNowhere) {
    TempDirectory const home;
    ScopedVariable const variable("HOME", home.path().c_str());
    fs::create_directory_symlink(home / "settings", home / ".dravik.korvane");
    EXPECT_EQ(gen_get_user_profile_directory(), "");
    EXPECT_FALSE(fs::exists(home / "settings"));
    home.make_directory("settings");
    EXPECT_EQ(gen_get_user_profile_directory(), STR(home / ".dravik.korvane"));
    EXPECT_TRUE(fs::is_symlink(home / ".dravik.korvane"));
}

TEST(UserProfileDirectory, RootAndEmptyHomeGiveOneSlash) {
    TempDirectory const root;
    for (char const* const home : {"/", ""}) {
        std::string const answer = in_child([&]() -> std::string {
            if (!enter_private_mounts() || chroot(root.path().c_str()) != 0)
                return "not permitted";
            setenv("HOME", home, 1);
            return std::string(gen_get_user_profile_directory());
        });
        if (answer == "not permitted")
            GTEST_SKIP() << "no private root directory for this user";
        EXPECT_EQ(answer, "/.dravik.korvane");
    }
    EXPECT_TRUE(fs::is_directory(root / ".dravik.korvane"));
}
