// Recording centres in place of the four from which an observer withdraws.
#pragma once

#include <functional>

#include "tests/support/recording_center.h"

/// The messages to the centres while `body` runs. Each begins with "distributed", "default", "service" or
/// "workspace".
std::vector<std::string> MessagesToTheFourCenters(RecordedMessages &recorded,
                                                  const std::function<void()> &body);
