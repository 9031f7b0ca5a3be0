// The program behind "qzlhost watch": prints notifications as they arrive.
#pragma once

#include <functional>
#include <iosfwd>
#include <limits>
#include <optional>
#include <string>

#include "qzlhost/centers.h"

struct WatchOptions {
    /// Without a value: every name, every object.
    std::optional<std::string> name;
    std::optional<std::string> object;
    CenterKind center;
    bool asJson = false;
    /// After so many notifications the watch ends.
    std::optional<int64_t> count;
    double seconds = std::numeric_limits<double>::infinity();
};

/// Observes, calls `ready`, and writes a line for each notification as it arrives, until `isStopped`, `count`
/// or `seconds` ends the watch. Returns false if `seconds` ended it. Main thread only.
bool RunWatch(qzlhost::Host &host, const WatchOptions &options, std::ostream &out,
              const std::function<void()> &ready, const std::function<bool()> &isStopped);
