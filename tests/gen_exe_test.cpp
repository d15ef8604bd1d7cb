#include "gen_exe.h"

#include "in_child.h"
#include "mem.h"
#include "private_mounts.h"
#include "probe.h"
#include "run_program.h"
#include "temp_directory.h"
#include "test_directories.h"
#include "ver.h"

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

using testing::IsEmpty;

namespace {

std::string probe(std::string const& name) {
    return TEST_BINARY_DIR "/" + name;
}

using Environment = std::vector<std::pair<std::string, std::string>>;

/// How start_probe is started: its process sees these variables and no others.
struct Start {
    std::string name; ///< argv[0]
    Environment environment;
    std::string directory = "/";
    std::vector<std::string> arguments;
};

ProgramResult start(Start const& how, std::string const& program = "start_probe") {
    ProgramStart child;
    child.file = probe(program);
    child.arguments = {how.name};
    child.arguments.insert(child.arguments.end(), how.arguments.begin(), how.arguments.end());
    child.directory = how.directory;
    child.set = how.environment;
    child.clear_environment = true;
    return run_program(child);
}

/// The "name=value" lines that start_probe printed.
std::map<std::string, std::string> answers_of(ProgramResult const& result) {
    std::map<std::string, std::string> answers;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);)
        answers[line.substr(0, line.find('='))] = line.substr(line.find('=') + 1);
    return answers;
}

std::string module_of(Start const& how) {
    ProgramResult const result = start(how);
    EXPECT_EQ(result.status, 0) << result.errors;
    return answers_of(result)["module_fullpath"];
}

constexpr char not_initialized[] =
    "Executable was not properly initialized with gen_exe_init!\n"
    "Check that the executable's main() is defined using GEN_DEFINE_MAIN\n";

} // namespace

TEST(GenExeInit, AnswersComeFromTheModulePath) {
    TempDirectory const k;
    k.write("linux/tool.exe");
    ProgramResult const result = start(
        {"tool.exe", {{"KORVANE_ROOTDIR", k.path()}, {"KORVANE_PLATFORM", "linux"}}, k.path(), {}});
    ASSERT_EQ(result.status, 0) << result.errors;
    auto answers = answers_of(result);
    EXPECT_EQ(answers["gen_module_fullpath"], k / "linux/tool.exe");
    EXPECT_EQ(answers["module_fullpath"], k / "linux/tool.exe");
    EXPECT_EQ(answers["module_path"], k / "linux/");
    EXPECT_EQ(answers["module_filename"], "tool.exe");
    EXPECT_EQ(answers["korvane_path"], k / "");
    EXPECT_EQ(answers["ui"], "no");
    EXPECT_EQ(answers["thr"], k / "linux/tool.exe");
    EXPECT_EQ(answers["ver"], k / "linux/");
    EXPECT_EQ(answers["mem.korvane_path"], k / "");
    EXPECT_EQ(answers["mem.module_filename"], "tool.exe");
    EXPECT_EQ(answers["mem.db_dir"], "");
    EXPECT_EQ(answers["mem.ui"], "no");
    EXPECT_THAT(result.errors, IsEmpty());
}

TEST(GenExeInit, NameWithSlashThatIsAFileIsTakenAsItIs) {
    TempDirectory const work;
    work.write("bin/tool");
    work.write("elsewhere/tool");
    Environment const decoy = {{"PATH", work / "elsewhere"}};
    EXPECT_EQ(module_of({"./bin/tool", decoy, work.path(), {}}), work / "bin/tool");
    EXPECT_EQ(module_of({"bin/tool", decoy, work.path(), {}}), work / "bin/tool");
    EXPECT_EQ(module_of({work / "bin/tool", decoy, "/", {}}), work / "bin/tool");
    EXPECT_EQ(module_of({work.path().substr(1) + "/bin/tool", decoy, "/", {}}), work / "bin/tool");
}

TEST(GenExeInit, ModulePathBeginsWithOneSlash) {
    TempDirectory const work;
    work.write("bin/tool");
    EXPECT_EQ(module_of({"/" + (work / "bin/tool"), {}, "/", {}}), work / "bin/tool");
    EXPECT_EQ(module_of({"tool", {{"PATH", "/" + (work / "bin")}}, "/", {}}), work / "bin/tool");
    EXPECT_EQ(module_of({"tool", {{"KORVANE_DIR", "/"}}, "/", {}}), "/bin/tool");
}

TEST(GenExeInit, NameWithSlashThatIsNoFileIsLookedForByItsLastPart) {
    TempDirectory const work;
    work.write("bin/tool");
    work.make_directory("there/tool");
    Environment const path = {{"PATH", work / "bin"}};
    EXPECT_EQ(module_of({"/gone/tool", path, "/", {}}), work / "bin/tool");
    EXPECT_EQ(module_of({work / "there/tool", path, "/", {}}), work / "bin/tool");
}

TEST(GenExeInit, ParentOfASymbolicLinkIsWhereTheLinkLeads) {
    TempDirectory const work;
    std::string const tool = work.write("other/bin/tool");
    work.make_directory("other/dir");
    std::filesystem::create_symlink("other/dir", work / "link");
    std::filesystem::create_symlink("tool", work / "other/bin/alias");
    std::string const in_root = work.path().substr(1) + "/link/../bin/tool";
    struct {
        Start how;
        std::string module;
    } const cases[] = {
        // By its string alone each of these would be bin/tool, which is not there at first.
        {{"link/../bin/tool", {}, work.path(), {}}, tool},
        {{work / "link/../bin/tool", {}, "/", {}}, tool},
        {{in_root, {}, "/", {}}, tool},
        {{"tool", {{"PATH", "link/../bin"}}, work.path(), {}}, tool},
        {{"tool", {{"PATH", "link/../bin/"}}, work.path(), {}}, tool},
        {{"tool", {{"PATH", work / "link/../bin///"}}, "/", {}}, tool},
        // The file keeps its own name.
        {{"link/../bin/alias", {}, work.path(), {}}, work / "other/bin/alias"},
    };
    for (char const* const other : {"", "bin", "bin/tool"}) {
        if (*other != '\0') { // what the string leads to instead
            std::filesystem::remove(work / "bin");
            work.write(other);
        }
        for (auto const& [how, module] : cases) {
            auto answers = answers_of(start(how));
            EXPECT_EQ(answers["module_fullpath"], module) << how.name;
            EXPECT_EQ(answers["korvane_path"], work / "other/") << how.name;
        }
    }
    std::filesystem::rename(work / "bin/tool", work / "elsewhere");
    std::filesystem::remove(work / "bin");
    work.write("bin"); // no directory
    for (auto const& [how, module] : cases)
        EXPECT_EQ(module_of(how), module) << how.name;
}

/// Starts up under @p name, in a copy of this process in which @p enter led somewhere.
static std::string module_in_child(std::string const& name, std::function<bool()> const& enter) {
    return in_child([&]() -> std::string {
        gen_module_fullpath = nullptr;
        char const* argv[] = {name.c_str(), nullptr};
        if (!enter())
            return "refused";
        gen_exe_init(1, argv);
        return gen_module_fullpath;
    });
}

TEST(GenExeInit, RootDirectoryBringsOneSlash) {
    TempDirectory const root;
    root.write("tool");
    root.make_directory("etc");
    root.make_directory("usr");
    std::filesystem::create_symlink("/etc", root / "usr/link");
    std::string const module = module_in_child("usr/link/../tool", [&] {
        return enter_private_mounts() && chroot(root.path().c_str()) == 0 && chdir("/") == 0;
    });
    if (module == "refused")
        GTEST_SKIP() << "the system gives no private view of the file system";
    EXPECT_EQ(module, "/tool");
}

TEST(GenExeInit, WithoutACurrentDirectoryARelativePathStaysRelative) {
    TempDirectory const work;
    work.write("bin/tool");
    work.write("other/bin/tool");
    work.make_directory("other/dir");
    std::filesystem::create_symlink("other/dir", work / "link");
    for (std::string const name : {"../bin/tool", "../link/../bin/tool"})
        EXPECT_EQ(module_in_child(name,
                                  [&] {
                                      std::string const gone = work.make_directory("gone");
                                      return chdir(gone.c_str()) == 0 && rmdir(gone.c_str()) == 0;
                                  }),
                  name);
}

TEST(GenExeInit, PathThatTheSystemDoesNotJudgeStaysSimplified) {
    TempDirectory const work;
    std::string const name = std::string(200, 'd');
    std::string directory = work.path();
    // Deeper than a path may be long: the file is found by its relative name alone.
    std::string const module = module_in_child("sub/link/../tool", [&] {
        if (chdir(directory.c_str()) != 0)
            return false;
        while (directory.size() < PATH_MAX) {
            directory += "/" + name;
            if (mkdir(name.c_str(), 0777) != 0 || chdir(name.c_str()) != 0)
                return false;
        }
        mkdir("sub", 0777);
        mkdir("other", 0777);
        mkdir("other/dir", 0777);
        std::ofstream("other/tool") << "found";
        return symlink("../other/dir", "sub/link") == 0;
    });
    while (directory.size() < PATH_MAX)
        directory += "/" + name;
    EXPECT_EQ(module, directory + "/sub/tool");
}

TEST(GenExeInit, SystemThatRefusesTheVariableIsIgnored) {
    TempDirectory const k;
    k.write("linux/tool");
    ProgramStart child;
    child.file = probe("start_probe");
    child.arguments = {k / "linux/tool"};
    child.clear_environment = true;
    auto answers = answers_of(run_with_faked_answers(child, {{"FAKED_PUTENV", "1"}}));
    EXPECT_EQ(answers["module_fullpath"], k / "linux/tool");
    EXPECT_EQ(answers["KORVANE_ROOTDIR"], "(none)");
    EXPECT_EQ(answers["mem.korvane_path"], k / "");
}

TEST(GenExeInit, RelativeCandidateBecomesAbsoluteAgainstTheCurrentDirectory) {
    TempDirectory const work;
    work.write("bin/tool");
    EXPECT_EQ(module_of({"tool", {{"PATH", "bin"}}, work.path(), {}}), work / "bin/tool");
}

TEST(GenExeInit, NothingFoundEndsTheProcess) {
    ProgramResult const result = start({"tool", {}, "/", {}});
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.errors, "Failed to find 'tool\n");
    EXPECT_THAT(result.output, IsEmpty());
}

TEST(GenExeInit, MessageShowsTheWholeNameThoughItsLastPartWasLookedFor) {
    TempDirectory const empty;
    ProgramResult const result = start({"/gone/tool", {{"PATH", empty.path()}}, "/", {}});
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.errors, "Failed to find '/gone/tool\n");
}

TEST(GenExeInit, CandidateThatDoesNotExistIsAcceptedWithoutPath) {
    EXPECT_EQ(module_of({"tool", {{"KORVANE_DIR", "/nowhere/k"}}, "/", {}}), "/nowhere/k/bin/tool");
}

TEST(GenExeInit, EmptyNameIsNotFound) {
    ProgramResult const result = start({"", {{"PATH", "/usr/bin:/bin"}}, "/", {}});
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.errors, "Failed to find '\n");
}

TEST(GenExeInit, MissingNameCountsAsEmpty) {
    // Newer kernels put an empty argv[0] there themselves, so ask the function as well.
    ProgramStart child;
    child.file = probe("start_probe");
    child.no_argv = true;
    child.clear_environment = true;
    ProgramResult const result = run_program(child);
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.errors, "Failed to find '\n");

    char const* no_name[] = {nullptr};
    EXPECT_EXIT((unsetenv("PATH"), gen_exe_init(0, no_name)), testing::ExitedWithCode(255),
                "^Failed to find '\n$");
    EXPECT_EXIT((unsetenv("PATH"), gen_exe_init(0, nullptr)), testing::ExitedWithCode(255),
                "^Failed to find '\n$");
}

TEST(GenExeInit, SetsTheRootVariableWithItsSlash) {
    TempDirectory const k;
    k.write("linux/tool");
    auto answers = answers_of(start({k / "linux/tool", {}, "/", {}}));
    EXPECT_EQ(answers["KORVANE_ROOTDIR"], k / "");
}

TEST(GenExeInit, LeavesARootVariableThatIsSetAlone) {
    TempDirectory const k;
    k.write("linux/tool");
    for (std::string const value : {"/another/root", ""}) {
        auto answers = answers_of(start({k / "linux/tool", {{"KORVANE_ROOTDIR", value}}, "/", {}}));
        EXPECT_EQ(answers["KORVANE_ROOTDIR"], value);
        EXPECT_EQ(answers["korvane_path"], k / "");
    }
}

TEST(GenExeInit, RootOfAnyLengthGoesIntoTheVariable) {
    for (std::size_t const length : {1007U, 1008U, 3000U, 60000U}) {
        std::string root = "/";
        while (root.size() + 200 < length)
            root += std::string(199, 'd') + "/";
        root += std::string(length - root.size() - 1, 'e') + "/";
        ASSERT_EQ(root.size(), length);
        auto answers = answers_of(
            start({"tool", {{"KORVANE_DIR", root.substr(0, root.size() - 1)}}, "/", {}}));
        EXPECT_EQ(answers["module_fullpath"], root + "bin/tool");
        EXPECT_EQ(answers["korvane_path"], root);
        EXPECT_EQ(answers["KORVANE_ROOTDIR"], root);
    }
}

TEST(GenExeInit, SecondCallKeepsTheLocationAndRepeatsTheRest) {
    TempDirectory const k;
    k.write("linux/tool");
    Start const once = {k / "linux/tool", {}, "/", {}};
    Start const twice = {k / "linux/tool", {}, "/", {"again"}};
    ProgramResult const result = start(twice);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, start(once).output);
}

TEST(GenExeInit, HandsOverInOrderBeforeTheBodyAndCleansUpAfterIt) {
    TempDirectory const k;
    k.write("linux/tool");
    ProgramResult const result =
        start({k / "linux/tool", {}, k.path(), {"argument"}}, "start_order_probe");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "sync_with_stdio 1\nKORVANE_ROOTDIR " + k / "" + "\nthr_drl_init " +
                                 k / "linux/tool" + "\n" + "ver_set_module_path " + k / "linux/" +
                                 "\n" + "korvane_path " + k / "" +
                                 "\n"
                                 "db_dir_path_string ''\n"
                                 "is_in_ui_process no\n"
                                 "module_filename tool\n"
                                 "project_output_directory registered\n"
                                 "body 2 argument\n"
                                 "ver_cleanup\n"
                                 "thr_drl_fini\n"
                                 "korvane_path withdrawn\n"
                                 "db_dir_path_string withdrawn\n"
                                 "is_in_ui_process withdrawn\n"
                                 "module_filename withdrawn\n"
                                 "project_output_directory withdrawn\n");
}

TEST(GenDefineMain, GivesTheExitStatusOfItsBody) {
    Environment const path = {{"PATH", TEST_BINARY_DIR}};
    for (int const status : {0, 1, 42})
        EXPECT_EQ(start({"start_probe", path, "/", {"status", std::to_string(status)}}).status,
                  status);
}

TEST(GenIsInUiProcess, ComparesTheBaseNameByteForByte) {
    std::string const shell = ver_get_dravik_product_filename();
    std::string other_case = shell;
    other_case[0] ^= 0x20;
    struct {
        std::string name;
        char const* answer;
    } const cases[] = {{shell, "yes"},
                       {shell + ".exe", "yes"},
                       {other_case, "no"},
                       {shell + "x", "no"},
                       {shell + "x.exe", "no"},
                       {shell.substr(1), "no"},
                       {shell.substr(0, 1), "no"}};
    for (auto const& [name, answer] : cases) {
        auto answers = answers_of(start({name, {{"KORVANE_DIR", "/k"}}, "/", {}}));
        EXPECT_EQ(answers["ui"], answer) << name;
        EXPECT_EQ(answers["mem.ui"], answer) << name;
    }
}

TEST(GenGetKorvanePath, IsTheParentOfTheExecutablesDirectory) {
    struct {
        char const* directory; ///< the executable is bin/tool below it
        char const* root;
    } const cases[] = {{"/opt/k", "/opt/k/"}, {"", "/"}, {"/opt/k/", "/opt/k/"}};
    for (auto const& [directory, root] : cases) {
        auto answers = answers_of(start({"tool", {{"KORVANE_DIR", directory}}, "/", {}}));
        EXPECT_EQ(answers["korvane_path"], root) << directory;
    }
    TempDirectory const work;
    work.write("tool");
    auto answers = answers_of(start({work / "tool", {}, "/", {}}));
    EXPECT_EQ(answers["korvane_path"],
              std::filesystem::path(work.path()).parent_path().string() + "/");
}

TEST(GenGetKorvanePath, ExecutableInTheRootDirectoryHasTheEmptyRoot) {
    // "/" loses its only slash, and there is none left to cut at.
    auto const answers = answers_of(
        start({"tool", {{"KORVANE_ROOTDIR", "/"}, {"KORVANE_PLATFORM", ".."}}, "/", {}}));
    EXPECT_EQ(answers.at("module_fullpath"), "/tool");
    EXPECT_EQ(answers.at("korvane_path"), "");
}

TEST(GenModuleLocation, EndsTheProcessBeforeStartUp) {
    for (std::string const request : {"fullpath", "path", "filename", "korvane_path", "ui"}) {
        ProgramResult const result = run_program({.arguments = {probe("bare_probe"), request}});
        EXPECT_EQ(result.status, 255) << request;
        EXPECT_EQ(result.errors, not_initialized) << request;
        EXPECT_THAT(result.output, IsEmpty()) << request;
    }
}
