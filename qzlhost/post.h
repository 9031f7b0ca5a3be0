// The program behind "qzlhost post": posts one notification.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "qzlhost/centers.h"

struct PostOptions {
    std::string name;
    std::optional<std::string> object;
    /// Keys and values of the user info; without any the notification has none.
    std::vector<std::pair<std::string, std::string>> info;
    CenterKind center;
};

/// Main thread only. Throws ProgramException where Cocoa refuses.
void RunPost(qzlhost::Host &host, const PostOptions &options);
