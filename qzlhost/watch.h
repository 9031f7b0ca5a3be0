// The program behind "qzlhost watch": prints notifications as they arrive.
#pragma once

#include <functional>
#include <iosfwd>
#include <limits>
#include <optional>
#include <string>

#include "qzlhost/centers.h"

struct WatchOptions {
    /// Without a value every name, or every object.
    std::optional<std::string> name;
    std::optional<std::string> object;
    CenterKind center;
    bool asJson = false;
    /// After so many notifications the watch ends.
    std::optional<int64_t> count;
    double seconds = std::numeric_limits<double>::infinity();
};

enum class WatchEnd { Counted, TimedOut, Stopped };

/// Observes, calls `ready`, and writes a line for each notification, at once, until one of the three ends.
/// `isStopped` is asked all the time. Main thread only.
WatchEnd RunWatch(qzlhost::Host &host, const WatchOptions &options, std::ostream &out,
                  const std::function<void()> &ready, const std::function<bool()> &isStopped);
