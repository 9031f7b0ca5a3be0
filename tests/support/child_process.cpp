// A child process that does not outlive its test.
#include "tests/support/child_process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <map>
#include <system_error>
#include <thread>
#include <tuple>

namespace {

constexpr int kNoSuchCommand = 127;

[[noreturn]] void ThrowErrno(const char *what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

/// No child inherits the ends; a child gets its own by dup2.
std::pair<int, int> NewPipe()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        ThrowErrno("pipe2");
    return {ends[0], ends[1]};
}

/// The environment of this process with these variables set, in the form for exec.
std::vector<std::string> EnvironmentWith(const EnvironmentVariables &variables)
{
    std::map<std::string, std::string> values;
    for (char **line = environ; *line != nullptr; ++line) {
        const std::string text = *line;
        const size_t equals = text.find('=');
        if (equals != std::string::npos)
            values[text.substr(0, equals)] = text.substr(equals + 1);
    }
    for (const auto &[name, value] : variables)
        values[name] = value;
    std::vector<std::string> lines;
    for (const auto &[name, value] : values)
        lines.push_back(name + "=" + value);
    return lines;
}

std::vector<char *> Pointers(std::vector<std::string> &texts)
{
    std::vector<char *> pointers;
    for (std::string &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

bool WaitUntil(const std::function<bool()> &done, std::chrono::milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!done()) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

ChildProcess::ChildProcess(const std::vector<std::string> &command, const EnvironmentVariables &environment,
                           Pipes pipes)
{
    // All memory is allocated before the fork: the child may only make system calls.
    std::vector<std::string> arguments = command;
    const std::vector<char *> argumentPointers = Pointers(arguments);
    std::vector<std::string> variables = EnvironmentWith(environment);
    const std::vector<char *> variablePointers = Pointers(variables);
    int childsInput = -1;
    int childsOutput = -1;
    if (pipes == Pipes::InputAndOutput) {
        std::tie(childsInput, input_) = NewPipe();
        std::tie(output_, childsOutput) = NewPipe();
    }

    const pid_t parent = getpid();
    id_ = fork();
    if (id_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent)
            _exit(kNoSuchCommand);
        if (childsInput != -1) {
            dup2(childsInput, STDIN_FILENO);
            dup2(childsOutput, STDOUT_FILENO);
        }
        execvpe(argumentPointers[0], argumentPointers.data(), variablePointers.data());
        _exit(kNoSuchCommand);
    }
    const int error = errno;
    if (childsInput != -1) {
        close(childsInput);
        close(childsOutput);
    }
    if (id_ == -1)
        throw std::system_error(error, std::generic_category(), "fork");
}

ChildProcess::~ChildProcess()
{
    if (!HasEnded()) {
        Signal(SIGKILL);
        waitpid(id_, nullptr, 0);
    }
    CloseInput();
    if (output_ != -1)
        close(output_);
}

void ChildProcess::CloseInput()
{
    if (input_ != -1)
        close(input_);
    input_ = -1;
}

void ChildProcess::Signal(int signal)
{
    if (!HasEnded())
        kill(id_, signal);
}

bool ChildProcess::HasEnded()
{
    return Status().has_value();
}

bool ChildProcess::WaitForEnd(std::chrono::milliseconds limit)
{
    return WaitUntil([this] { return HasEnded(); }, limit);
}

std::optional<int> ChildProcess::Status()
{
    int status = 0;
    if (!status_ && waitpid(id_, &status, WNOHANG) == id_)
        status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return status_;
}
