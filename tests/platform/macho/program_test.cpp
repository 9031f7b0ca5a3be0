// Programs for macOS run: the command macho_run calls their main function, and starts those that they start.
#include <gmock/gmock.h>

#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <ostream>

#include "tests/platform/macho/dylib_file.h"
#include "tests/platform/macho/dylib_test.h"

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr char kMachoRun[] = QZL_MACHO_RUN;

/// What a command printed on both streams, and its exit status, or the negative number of the signal that
/// ended it.
struct Result {
    std::string output;
    int status = 0;

    bool operator==(const Result &) const = default;
};

std::ostream &operator<<(std::ostream &stream, const Result &result)
{
    return stream << result.status << ": " << result.output;
}

Result RunCommand(const std::string &command)
{
    Result result;
    std::FILE *const pipe = popen((command + " 2>&1").c_str(), "r");
    char part[4096];
    while (const size_t size = std::fread(part, 1, sizeof part, pipe))
        result.output.append(part, size);
    const int status = pclose(pipe);
    result.status = WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
    return result;
}

/// The path of a program that was built for the tests.
std::string ProgramPath(const std::string &name)
{
    return std::string(TEST_DYLIBS) + "/" + FolderOf(macho::kThisProcessor) + "/" + name;
}

/// Runs a program with arguments as the shell takes them.
Result RunProgram(const std::string &path, const std::string &arguments = "")
{
    return RunCommand(std::string("exec '") + kMachoRun + "' '" + path + "' " + arguments);
}

/// Lets the program of many actions do one.
Result RunAction(const std::string &arguments)
{
    return RunProgram(ProgramPath("program"), arguments);
}

/// The lines that the program prints when it has started itself twice.
std::string LinesOfBothChildren()
{
    const char *const kept = "its path is kept 1\nits arguments are kept 1\n";
    return ProgramPath("program") + "\narguments\nwith a space\n\n\nexit 4\n" + kept + "\nsignal " +
           std::to_string(SIGABRT) + "\n" + kept;
}

} // namespace

TEST(Program, GetsItsArgumentsAndReturnsItsResult)
{
    EXPECT_EQ(RunAction("arguments 'with a space' ''"),
              (Result{ProgramPath("program") + "\narguments\nwith a space\n\n", 4}));
}

TEST(Program, GetsTheEnvironmentAndItsPath)
{
    EXPECT_EQ(RunCommand("SURROUNDINGS=here exec " + std::string(kMachoRun) + " " + ProgramPath("program") +
                         " surroundings"),
              (Result{"SURROUNDINGS=here\nexecutable_path=" + ProgramPath("program") + "\n", 0}));
}

TEST(Program, HasItsPointersSet)
{
    EXPECT_EQ(RunProgram(ProgramPath("pointers_opcodes")), (Result{"", 42}));
    EXPECT_EQ(RunProgram(ProgramPath("pointers_chained")), (Result{"", 42}));
}

TEST(Program, MayBeASliceOfAUniversalFile)
{
    EXPECT_EQ(RunProgram(std::string(TEST_DYLIBS) + "/universal_program"), (Result{"", 42}));
}

TEST(Program, UsesFoundationAndTheCLibrary)
{
    EXPECT_EQ(RunAction("foundation"), (Result{"elements 2\n"
                                               "joined: one\n"
                                               "the folder has a name 1\n"
                                               "NSNotificationCenter\n"
                                               "the mode has a name 1\n"
                                               "process 1\n"
                                               "terminal 0\n"
                                               "it fits 1\n"
                                               "CFUUID\n",
                                               0}));
}

TEST(Program, HasClassesOfItsOwn)
{
    EXPECT_EQ(RunAction("class"), (Result{"Counter 42\nits class was loaded 1\n", 0}));
}

TEST(Program, MakesClasses)
{
    EXPECT_EQ(RunAction("made_class"), (Result{"the method is new 1\n"
                                               "the name is taken 1\n"
                                               "MadeCounter 42\n"
                                               "the name is free 1\n",
                                               0}));
}

TEST(Program, CatchesExceptions)
{
    EXPECT_EQ(RunAction("catch"), (Result{"Reason\nfinally\nNSRangeException\na C++ exception\n", 0}));
}

TEST(Program, ThatLetsAnExceptionOutEndsAsOthersOfThePlatform)
{
    const Result cxx = RunAction("throw_cxx");
    EXPECT_THAT(cxx.output,
                AllOf(HasSubstr("terminate called after throwing"), HasSubstr("a C++ exception")));
    EXPECT_EQ(cxx.status, -SIGABRT);
    const Result cocoa = RunAction("throw_cocoa");
    EXPECT_THAT(cocoa.output, HasSubstr("Uncaught exception Name, reason: nobody catches it"));
    EXPECT_EQ(cocoa.status, 1);
}

TEST(Program, RunsWhatIsToRunBeforeItsMainFunctionAndAtItsEnd)
{
    const std::string beginning = "the constructor has run 1\n";
    const std::string end = "the function for the end runs\nthe destructor runs\n";
    EXPECT_EQ(RunAction("ends"), (Result{beginning + end, 3}));
    EXPECT_EQ(RunAction("exit"), (Result{beginning + end, 4}));
    EXPECT_EQ(RunAction("exit_at_once"), (Result{beginning, 5}));
}

TEST(Program, ThatAbortsIsEndedByASignal)
{
    EXPECT_EQ(RunAction("abort").status, -SIGABRT);
}

TEST(Program, LoadsDylibsOnce)
{
    const std::string lines = "the same handle 1\n"
                              "the function is found 1\n"
                              "so is one of its libraries 1\n"
                              "no error 1\n"
                              "nonsense is found 0\n"
                              "the error says so 1\n"
                              "the image has an address 1\n"
                              "its header is there 1\n"
                              "the stack is in an image 0\n";
    EXPECT_EQ(RunAction("dylib '" QZL_DYLIB "' REALPluginMain"), (Result{lines, 0}));
    EXPECT_EQ(RunAction("dylib '" + ProgramPath("fixups_chained.dylib") + "' answer"), (Result{lines, 0}));
}

TEST(Program, LoadsNoFilesOfAnotherKind)
{
    const auto error = [](const std::string &path, const std::string &reason) {
        return Result{"dlopen(" + path + ", 0x6): " + path + ": " + reason + "\nand then nothing 1\n", 1};
    };
    const std::string needed =
        "; a 64-bit dylib or bundle for " + NameOf(macho::kThisProcessor) + " is needed";
    EXPECT_EQ(RunAction("dylib /no/such/file answer"),
              error("/no/such/file", "cannot be opened: No such file or directory"));
    EXPECT_EQ(RunAction("dylib /bin/sh answer"), error("/bin/sh", "it is no Mach-O file" + needed));
    EXPECT_EQ(RunAction("dylib '" + ProgramPath("program") + "' answer"),
              error(ProgramPath("program"),
                    "it is a 64-bit executable for " + NameOf(macho::kThisProcessor) + needed));
}

TEST(Program, FindsSymbolsInLoadedDylibsAndTheirLibrariesAlone)
{
    EXPECT_EQ(RunAction("elsewhere"),
              (Result{"program 0\n"
                      "dlopen(NULL, 0x1): there is no handle of the program\n"
                      "everywhere 0\n"
                      "dlsym(0xfffffffffffffffe, main): the handle is none of a dylib\n",
                      0}));
}

TEST(Program, StartsItselfAsATask)
{
    EXPECT_EQ(RunAction("itself"), (Result{LinesOfBothChildren(), 0}));
}

TEST(Program, StartsItselfHoweverTheCommandWasFound)
{
    const std::filesystem::path command = kMachoRun;
    const std::string program = ProgramPath("program") + " itself";
    EXPECT_EQ(RunCommand("cd '" + command.parent_path().string() + "'; exec ./macho_run " + program),
              (Result{LinesOfBothChildren(), 0}));
    EXPECT_EQ(RunCommand("PATH='" + command.parent_path().string() + "':$PATH; exec macho_run " + program),
              (Result{LinesOfBothChildren(), 0}));
}

TEST(Program, StartsProgramsOfThePlatformAsTheyAre)
{
    EXPECT_EQ(RunAction("another /bin/echo"), (Result{"an argument\n", 0}));
    EXPECT_EQ(RunAction("another /bin/false"), (Result{"", 1}));
}

TEST(MachoRun, SaysHowItIsUsed)
{
    EXPECT_EQ(RunCommand(kMachoRun), (Result{"usage: macho_run PROGRAM [ARGUMENT...]\n", 125}));
}

TEST(MachoRun, EndsLikeAShellThatFindsNoProgram)
{
    EXPECT_EQ(RunProgram("/no/such/file"),
              (Result{"macho_run: /no/such/file: cannot be opened: No such file or directory\n", 127}));
}

TEST(MachoRun, EndsLikeAShellThatCannotRunAProgram)
{
    EXPECT_EQ(RunProgram("/"), (Result{"macho_run: /: it is a directory\n", 126}));
    const Result dylib = RunProgram(ProgramPath("objects.dylib"));
    EXPECT_THAT(
        dylib.output,
        AllOf(StartsWith("macho_run: " + ProgramPath("objects.dylib") + ": it is a 64-bit dylib for "),
              EndsWith("; a 64-bit executable for " + NameOf(macho::kThisProcessor) + " is needed\n")));
    EXPECT_EQ(dylib.status, 126);
    const TemporaryFile text({'#', '!', '/', 'b'});
    EXPECT_EQ(RunProgram(text.Path()).status, 126);
}
