// What goes to Foundation's log.
#pragma once

#include <string>
#include <vector>

/// Takes what NSLog writes, in place of standard error, while it lives. One at a time.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    /// What each call of NSLog wrote, without Foundation's prefix of time, process and thread.
    std::vector<std::string> Lines() const;
};
