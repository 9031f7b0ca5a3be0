// Times notifications between two processes, over any bus: many in a row, and one there and back.
#pragma once

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "bench/peers/medians.h"

constexpr char kMany[] = "PeersMany";
constexpr char kThere[] = "PeersThere";
constexpr char kBack[] = "PeersBack";
constexpr int64_t kManyCount = 2000;
constexpr int kRoundTrips = 300;
constexpr int kWarmUp = 50;

/// What every notification carries: the number that counts up, and with it three values that do not change.
struct Info {
    int64_t serial = 0;
    std::string language = "en";
    double level = 0.07;
    bool charging = true;
};

inline bool operator==(const Info &left, const Info &right)
{
    return left.serial == right.serial && left.language == right.language && left.level == right.level &&
           left.charging == right.charging;
}

/// What a bus must have; it is made in the process that uses it:
///   explicit Bus(void (*receive)(const std::string &name, const Info &info)), the observers' function
///   void Observe(const char *name), which returns when posts from now on arrive
///   void Post(const char *name, const Info &info)
///   void RunUntil(const std::function<bool()> &done), which lets notifications arrive
template <typename Bus>
class Processes {
public:
    /// Measures and returns the exit status. Call it before the bus's library does anything.
    static int Run(const std::string &bus)
    {
        int pipe[2];
        if (::pipe(pipe) != 0)
            return 1;
        const pid_t child = fork();
        if (child < 0)
            return 1;
        if (child == 0) {
            close(pipe[0]);
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            Answer(pipe[1]);
        }
        close(pipe[1]);
        Await(pipe[0]);
        Bus own(Receive);
        gBus = &own;
        own.Observe(kBack);
        MeasureRoundTrips(bus);
        MeasureMany(bus, pipe[0]);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        return 0;
    }

private:
    static void MeasureRoundTrips(const std::string &bus)
    {
        std::vector<double> each;
        for (int64_t i = 1; i <= kWarmUp + kRoundTrips; ++i) {
            const double start = Now(CLOCK_MONOTONIC);
            gBus->Post(kThere, Info{i});
            gBus->RunUntil([i] { return gBack == i; });
            if (i > kWarmUp)
                each.push_back(Now(CLOCK_MONOTONIC) - start);
        }
        Print((bus + "/round_trip").c_str(), MedianOf(std::move(each)));
    }

    static void MeasureMany(const std::string &bus, int arrived)
    {
        const double start = Now(CLOCK_MONOTONIC);
        for (int64_t i = 1; i <= kManyCount; ++i)
            gBus->Post(kMany, Info{i});
        Await(arrived);
        Print((bus + "/many").c_str(), (Now(CLOCK_MONOTONIC) - start) / static_cast<double>(kManyCount));
    }

    /// The other process, which says on `output` that it observes, and that the last has arrived.
    [[noreturn]] static void Answer(int output)
    {
        Bus own(Receive);
        gBus = &own;
        own.Observe(kMany);
        own.Observe(kThere);
        Tell(output);
        own.RunUntil([] { return gMany == kManyCount; });
        Tell(output);
        for (;;)
            pause();
    }

    static void Receive(const std::string &name, const Info &info)
    {
        if (!(info == Info{info.serial}))
            Fail("what arrived is not what was posted");
        if (name == kThere) {
            gBus->Post(kBack, info);
        } else if (name == kBack) {
            gBack = info.serial;
        } else if (++gMany != info.serial) {
            Fail("notifications are lost or out of order");
        }
    }

    static void Tell(int output)
    {
        if (write(output, "!", 1) != 1)
            Fail("cannot tell the other process");
    }

    static void Await(int input)
    {
        char byte;
        if (read(input, &byte, 1) != 1)
            Fail("the other process ended");
    }

    [[noreturn]] static void Fail(const char *what)
    {
        std::fprintf(stderr, "%s\n", what);
        std::_Exit(1);
    }

    static inline Bus *gBus = nullptr;
    static inline int64_t gBack = 0;
    static inline int64_t gMany = 0;
};
