// Runs the swept program in a process of its own.
#include "tests/sweep/child.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <nlohmann/json.hpp>

#include "tests/support/cocoa_objects.h"
#include "tests/support/log_capture.h"

using nlohmann::json;

namespace {

/// Seconds until a program that hangs is ended.
constexpr unsigned kPatience = 60;

/// Classes whose objects the library makes or keeps.
constexpr const char *kCountedClasses[] = {"NSNotificationObserver", "GSNotification", "GSMutableArray",
                                           "GSMutableDictionary",    "NSCalendarDate", "NSURL"};

json OutcomesAsJson(const std::vector<Outcome> &outcomes)
{
    json list = json::array();
    for (const Outcome &outcome : outcomes)
        list.push_back({outcome.step, outcome.result});
    return list;
}

std::vector<Outcome> OutcomesOf(const json &list)
{
    std::vector<Outcome> outcomes;
    for (const json &pair : list)
        outcomes.push_back({pair[0], pair[1]});
    return outcomes;
}

json Run(qzlhost::Host &host, SweptProgram &program, const FaultyCall &call)
{
    const LogCapture log;
    CountCocoaObjects();
    MakeFaulty(host, call);
    const std::vector<Outcome> first = program.Run();
    const std::map<std::string, int> calls = EndFaults(host);
    const std::vector<Outcome> second = program.Run();
    MakeLastFileError();
    json cocoaObjects = json::object();
    for (const char *name : kCountedClasses)
        cocoaObjects[name] = LiveCocoaObjects(name);
    return {{"first", OutcomesAsJson(first)},
            {"second", OutcomesAsJson(second)},
            {"calls", calls},
            {"leaks", host.Leaks()},
            {"mistakes", host.Mistakes()},
            {"cocoaObjects", cocoaObjects},
            {"log", log.Lines()}};
}

void Write(int file, const std::string &text)
{
    for (size_t written = 0; written < text.size();) {
        const ssize_t count = write(file, text.data() + written, text.size() - written);
        if (count < 0 && errno != EINTR)
            return;
        written += static_cast<size_t>(std::max<ssize_t>(count, 0));
    }
}

std::string ReadAll(int file)
{
    std::string text;
    char buffer[65536];
    for (ssize_t count = 0; (count = read(file, buffer, sizeof buffer)) != 0;)
        if (count > 0)
            text.append(buffer, static_cast<size_t>(count));
        else if (errno != EINTR)
            break;
    return text;
}

} // namespace

std::optional<Sight> SightOf(qzlhost::Host &host, SweptProgram &program, const FaultyCall &call,
                             std::string &end)
{
    int ends[2];
    if (pipe(ends) != 0)
        return std::nullopt;
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        alarm(kPatience);
        const auto lenient = json::error_handler_t::replace;
        Write(ends[1], Run(host, program, call).dump(-1, ' ', false, lenient));
        _exit(0); // posters may wait for ever
    }
    close(ends[1]);
    const std::string text = ReadAll(ends[0]);
    close(ends[0]);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFSIGNALED(status) || WEXITSTATUS(status) != 0) {
        end = WIFSIGNALED(status) ? strsignal(WTERMSIG(status))
                                  : "status " + std::to_string(WEXITSTATUS(status));
        return std::nullopt;
    }
    const json seen = json::parse(text);
    return Sight{OutcomesOf(seen["first"]), OutcomesOf(seen["second"]), seen["calls"], seen["leaks"],
                 seen["mistakes"],          seen["cocoaObjects"],       seen["log"]};
}
