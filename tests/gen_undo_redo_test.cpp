#include "gen_undo_redo.h"

#include "effort.h"
#include "environment.h"
#include "error_recorder.h"
#include "temp_directory.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <sys/stat.h>
#include <type_traits>
#include <unistd.h>
#include <vector>

using testing::IsEmpty;
using testing::StartsWith;

namespace fs = std::filesystem;

namespace {

/// A manager directed to a directory of its own.
class UndoRedo : public testing::Test {
  protected:
    UndoRedo() { manager.start_new_file(STR(directory.path())); }
    ~UndoRedo() override { EXPECT_THAT(recorder.errors(), IsEmpty()); }

    /// A finished section with one undo command.
    void add_section(char const* title) {
        manager.begin_section(title);
        manager.add_undo_command("command", "");
        manager.end_section();
    }
    static std::string section(std::string const& title) {
        return title + "\n\n\tUndo Commands\n\t     1.\tcommand\n\n\n";
    }

    /// What a commit writes.
    std::string committed() {
        manager.commit_file();
        return read_file(file);
    }

    TempDirectory directory;
    std::string file = directory / "undo_redo.txt";
    GEN_UNDO_REDO_MGR manager;
    ErrorRecorder recorder;
};

} // namespace

TEST(UndoRedoMgr, HasTheFieldsOfItsBinaryInterface) {
    std::size_t const text = sizeof(STR);
    std::size_t const list = sizeof(MEM_LIST<STR>);
    std::size_t const count = sizeof(void*); // padded
    EXPECT_EQ(sizeof(GEN_UNDO_REDO_CLASS_INFO), 2 * text + 2 * list + 2 * count);
    EXPECT_EQ(sizeof(GEN_UNDO_REDO_MGR),
              sizeof(FIO_PATH) + sizeof(GEN_UNDO_REDO_CLASS_INFO) + list + 4 * text);
    EXPECT_FALSE(std::is_polymorphic_v<GEN_UNDO_REDO_MGR>);
    EXPECT_TRUE(std::is_copy_assignable_v<GEN_UNDO_REDO_CLASS_INFO>);
}

TEST(UndoRedoClassInfo, FieldsAreInOrder) {
    GEN_UNDO_REDO_CLASS_INFO const info;
    auto const place_of = [&info](auto const& field) {
        return reinterpret_cast<char const*>(&field) - reinterpret_cast<char const*>(&info);
    };
    std::ptrdiff_t const text = sizeof(STR);
    std::ptrdiff_t const list = sizeof(MEM_LIST<STR>);
    std::ptrdiff_t const count = sizeof(void*); // padded
    EXPECT_EQ(place_of(info.title), 0);
    EXPECT_EQ(place_of(info.description), text);
    EXPECT_EQ(place_of(info.undo_commands), 2 * text);
    EXPECT_EQ(place_of(info.undo_count), 2 * text + list);
    EXPECT_EQ(place_of(info.redo_commands), 2 * text + list + count);
    EXPECT_EQ(place_of(info.redo_count), 2 * text + 2 * list + count);
}

TEST_F(UndoRedo, FieldsHaveTheirPlaces) {
    add_section("ended");
    manager.begin_section("begun");
    auto const* place = reinterpret_cast<unsigned char const*>(&manager);
    auto const next = [&place]<typename T>(T const* /*of that type*/) -> T const& {
        auto const* const field = reinterpret_cast<T const*>(place);
        place += sizeof(T);
        return *field;
    };
    constexpr STR const* text = nullptr;
    EXPECT_EQ(next(static_cast<FIO_PATH const*>(nullptr)).fullpath().c_str(), file);
    EXPECT_EQ(next(static_cast<GEN_UNDO_REDO_CLASS_INFO const*>(nullptr)).title, "begun");
    auto const& sections = next(static_cast<MEM_LIST<GEN_UNDO_REDO_CLASS_INFO> const*>(nullptr));
    ASSERT_EQ(sections.size(), 1U);
    EXPECT_EQ(sections.front().title, "ended");
    EXPECT_EQ(next(text), "\t%6d.\t%s");
    EXPECT_EQ(next(text), "%s\n\t\t\t%s");
    EXPECT_EQ(next(text), "\tUndo Commands");
    EXPECT_EQ(next(text), "\tRedo Commands");
}

TEST_F(UndoRedo, SectionIsWrittenAsDescribed) {
    manager.begin_section("Move node");
    manager.add_description("one node");
    manager.add_undo_command("undo_move a", "restores a");
    manager.add_redo_command("redo_move a", "");
    manager.end_section();
    EXPECT_EQ(committed(), "Move node\n"
                           "one node\n"
                           "\n"
                           "\tUndo Commands\n"
                           "\t     1.\tundo_move a\n"
                           "\t\t\trestores a\n"
                           "\n"
                           "\tRedo Commands\n"
                           "\t     1.\tredo_move a\n"
                           "\n"
                           "\n");
}

TEST_F(UndoRedo, LinkInTheFilesPlaceIsFollowed) {
    fs::create_symlink(directory / "elsewhere", file);
    add_section("title");
    manager.commit_file();
    EXPECT_EQ(read_file(directory / "elsewhere"), section("title"));
}

TEST_F(UndoRedo, PartsThatAreEmptyAreLeftOut) {
    manager.begin_section("redo only");
    manager.add_redo_command("r", "");
    manager.end_section();
    manager.begin_section("undo only");
    manager.add_undo_command("u", "");
    manager.end_section();
    EXPECT_EQ(committed(), "redo only\n\n\tRedo Commands\n\t     1.\tr\n\n\n"
                           "undo only\n\n\tUndo Commands\n\t     1.\tu\n\n\n");
}

TEST_F(UndoRedo, EntriesAreNumberedBySideInTheOrderAdded) {
    manager.begin_section("s");
    for (char const* const name : {"a", "b", "c"}) {
        manager.add_undo_command((STR("undo ") + name), "");
        manager.add_redo_command((STR("redo ") + name), STR("of ") + name);
    }
    manager.end_section();
    EXPECT_EQ(committed(), "s\n"
                           "\n\tUndo Commands\n"
                           "\t     1.\tundo a\n"
                           "\t     2.\tundo b\n"
                           "\t     3.\tundo c\n"
                           "\n\tRedo Commands\n"
                           "\t     1.\tredo a\n\t\t\tof a\n"
                           "\t     2.\tredo b\n\t\t\tof b\n"
                           "\t     3.\tredo c\n\t\t\tof c\n"
                           "\n\n");
}

TEST_F(UndoRedo, EmptyCommandIsIgnoredWithItsComment) {
    manager.begin_section("s");
    manager.add_undo_command("", "lost");
    manager.add_undo_command("one", "");
    manager.add_undo_command("", "");
    manager.add_undo_command("two", "");
    manager.add_redo_command("", "lost");
    manager.end_section();
    EXPECT_EQ(committed(), "s\n\n\tUndo Commands\n\t     1.\tone\n\t     2.\ttwo\n\n\n");
}

TEST_F(UndoRedo, LaterDescriptionReplacesTheEarlier) {
    manager.begin_section("s");
    manager.add_description("first");
    manager.add_undo_command("c", "");
    manager.add_description("second");
    manager.end_section();
    EXPECT_THAT(committed(), StartsWith("s\nsecond\n\n\tUndo"));
}

TEST_F(UndoRedo, SectionWithoutTitleOrCommandIsNotRecorded) {
    manager.begin_section("only a description");
    manager.add_description("text");
    manager.end_section();
    manager.begin_section("only empty commands");
    manager.add_undo_command("", "comment");
    manager.add_redo_command("", "comment");
    manager.end_section();
    manager.begin_section("");
    manager.add_undo_command("c", "");
    manager.add_redo_command("c", "");
    manager.end_section();
    EXPECT_EQ(committed(), "");
    EXPECT_TRUE(fs::exists(file)); // empty, but there
}

TEST_F(UndoRedo, EndingWithoutBeginningRecordsNothing) {
    manager.end_section();
    manager.add_undo_command("c", ""); // into the section without a title
    manager.end_section();
    EXPECT_EQ(committed(), "");
}

TEST_F(UndoRedo, BeginningEmptiesTheSection) {
    manager.begin_section("lost");
    manager.add_description("lost");
    manager.add_undo_command("lost", "");
    manager.add_redo_command("lost", "");
    manager.begin_section("kept");
    manager.add_undo_command("c", "");
    manager.end_section();
    EXPECT_EQ(committed(), "kept\n\n\tUndo Commands\n\t     1.\tc\n\n\n");
}

TEST_F(UndoRedo, EndingKeepsTheSectionCurrent) {
    manager.begin_section("s");
    manager.add_undo_command("a", "");
    manager.end_section();
    manager.add_undo_command("b", "");
    manager.end_section();
    EXPECT_EQ(committed(), "s\n\n\tUndo Commands\n\t     1.\ta\n\n\n"
                           "s\n\n\tUndo Commands\n\t     1.\ta\n\t     2.\tb\n\n\n");
}

TEST_F(UndoRedo, CommittingTwiceWritesTheSame) {
    add_section("one");
    add_section("two");
    std::string const first = committed();
    EXPECT_EQ(first, section("one") + section("two"));
    EXPECT_EQ(committed(), first);
}

TEST_F(UndoRedo, CommittingReplacesALongerFile) {
    directory.write("undo_redo.txt", std::string(100000, 'x'));
    add_section("s");
    EXPECT_EQ(committed(), section("s"));
}

TEST_F(UndoRedo, LastWrittenSectionIsCurrentAfterwards) {
    add_section("one");
    add_section("two");
    manager.begin_section("lost");
    manager.add_redo_command("lost", "");
    manager.commit_file();
    manager.add_undo_command("more", ""); // to "two", as its second
    manager.end_section();
    EXPECT_EQ(committed(), section("one") + section("two") +
                               "two\n\n\tUndo Commands\n\t     1.\tcommand\n\t     2.\tmore\n\n\n");
}

TEST_F(UndoRedo, CommittingNoSectionKeepsTheCurrentOne) {
    manager.begin_section("s");
    manager.add_undo_command("command", "");
    manager.commit_file();
    manager.end_section();
    EXPECT_EQ(committed(), section("s"));
}

TEST_F(UndoRedo, NewFileForgetsEndedSectionsAndKeepsTheOneBegun) {
    add_section("lost");
    manager.begin_section("kept");
    manager.add_undo_command("command", "");
    std::string const other = directory.make_directory("other");
    manager.start_new_file(STR(other));
    manager.end_section();
    manager.commit_file();
    EXPECT_EQ(read_file(other + "/undo_redo.txt"), section("kept"));
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(UndoRedo, NewFileTouchesNoFile) {
    add_section("s");
    manager.commit_file();
    manager.start_new_file(STR(directory.path()));
    EXPECT_EQ(read_file(file), section("s"));
}

TEST_F(UndoRedo, DirectoryMayEndInASeparatorOrBeEmpty) {
    ScopedCurrentDirectory const here(directory.make_directory("here"));
    for (std::string const& name :
         {directory.path() + "/here/", std::string(), std::string("."), std::string("../here")}) {
        SCOPED_TRACE(name);
        manager.start_new_file(STR(name));
        add_section("s");
        manager.commit_file();
        EXPECT_EQ(read_file(directory / "here/undo_redo.txt"), section("s"));
        fs::remove(directory / "here/undo_redo.txt");
    }
}

TEST_F(UndoRedo, TextsAreWrittenAsGiven) {
    manager.begin_section("100% %s %n\ttitle\nof two lines");
    manager.add_description("\xFF\x80 %d");
    manager.add_undo_command("%s%s%s %n", "%d%%\\");
    manager.add_redo_command(" ", " ");
    manager.end_section();
    EXPECT_EQ(committed(), "100% %s %n\ttitle\nof two lines\n"
                           "\xFF\x80 %d\n"
                           "\n\tUndo Commands\n\t     1.\t%s%s%s %n\n\t\t\t%d%%\\\n"
                           "\n\tRedo Commands\n\t     1.\t \n\t\t\t \n"
                           "\n\n");
}

TEST_F(UndoRedo, CommandAndCommentEndAtANulAndTheRestDoesNot) {
    STR const nul("a\0b", 3);
    manager.begin_section(nul);
    manager.add_description(nul);
    manager.add_undo_command(nul, nul);
    manager.end_section();
    EXPECT_EQ(committed(),
              std::string("a\0b\na\0b\n", 8) + "\n\tUndo Commands\n\t     1.\ta\n\t\t\ta\n\n\n");
}

TEST_F(UndoRedo, LongTextsAreWhole) {
    STR const command(300000, 'c');
    STR const comment(200000, 'm');
    manager.begin_section(STR(100000, 't'));
    manager.add_undo_command(command, comment);
    manager.end_section();
    EXPECT_EQ(committed(), std::string(100000, 't') + "\n\n\tUndo Commands\n\t     1.\t" +
                               std::string(command) + "\n\t\t\t" + std::string(comment) + "\n\n\n");
}

TEST_F(UndoRedo, NumbersAbove999999WidenTheField) {
    manager.begin_section("s");
    for (int i = 0; i < 1000001; ++i)
        manager.add_redo_command("c", "");
    manager.end_section();
    std::string const text = committed();
    EXPECT_NE(text.find("\n\t     9.\tc\n\t    10.\tc\n"), std::string::npos);
    EXPECT_NE(text.find("\n\t 99999.\tc\n\t100000.\tc\n"), std::string::npos);
    std::string const end = "\n\t999999.\tc\n\t1000000.\tc\n\t1000001.\tc\n\n\n";
    ASSERT_GT(text.size(), end.size());
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1000001 + 5);
}

// A long random life, its files compared with a string made the plain way.
TEST_F(UndoRedo, AgreesWithAPlainModel) {
    struct PlainSection {
        std::string title;
        std::string description;
        std::vector<std::string> undo;
        std::vector<std::string> redo;
    };
    PlainSection current;
    std::vector<PlainSection> sections;
    auto const side = [](std::string const& heading, std::vector<std::string> const& entries) {
        std::string text = entries.empty() ? "" : "\n\t" + heading + " Commands\n";
        for (std::size_t i = 0; i < entries.size(); ++i) {
            std::string const number = std::to_string(i + 1);
            text += "\t" + std::string(6 - number.size(), ' ') + number + ".\t" + entries[i] + "\n";
        }
        return text;
    };
    auto const whole = [&] {
        std::string text;
        for (PlainSection const& s : sections)
            text += s.title + "\n" + (s.description.empty() ? "" : s.description + "\n") +
                    side("Undo", s.undo) + side("Redo", s.redo) + "\n\n";
        return text;
    };

    std::mt19937 random(7);
    auto const below = [&](unsigned bound) { return static_cast<unsigned>(random() % bound); };
    auto const any_text = [&] { // often empty
        static char const* const pieces[] = {"", "", "x", "move %s", "a rather long text indeed"};
        return std::string(pieces[below(5)]) + pieces[below(5)];
    };
    for (std::size_t round = 0; round < effort(10000); ++round) {
        std::string const text = any_text();
        std::string const comment = any_text();
        unsigned const action = below(100);
        if (action < 15) {
            manager.begin_section(STR(text));
            current = {text, "", {}, {}};
        } else if (action < 25) {
            manager.add_description(STR(text));
            current.description = text;
        } else if (action < 75) {
            bool const undo = below(2) == 0;
            if (undo)
                manager.add_undo_command(STR(text), STR(comment));
            else
                manager.add_redo_command(STR(text), STR(comment));
            if (!text.empty())
                (undo ? current.undo : current.redo)
                    .push_back(text + (comment.empty() ? "" : "\n\t\t\t" + comment));
        } else if (action < 95) {
            manager.end_section();
            if (!current.title.empty() && !(current.undo.empty() && current.redo.empty()))
                sections.push_back(current);
        } else if (action < 98) {
            ASSERT_EQ(committed(), whole());
            if (!sections.empty())
                current = sections.back();
        } else {
            manager.start_new_file(STR(directory.path()));
            sections.clear();
        }
    }
}
