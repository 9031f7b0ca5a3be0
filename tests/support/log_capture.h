// Captures Foundation's log.
#pragma once

#include <string>
#include <vector>

/// While it lives, NSLog writes here instead of to standard error. One at a time.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    /// What each call of NSLog wrote, without Foundation's prefix of time, process and thread.
    std::vector<std::string> Lines() const;
};
