// Centres that record, in the places of the four from which an observer withdraws itself.
#pragma once

#include <functional>

#include "tests/support/recording_center.h"

/// What the centres get while `body` runs. Each message begins with "distributed", "default", "service" or
/// "workspace".
std::vector<std::string> MessagesToTheFourCenters(RecordedMessages &recorded,
                                                  const std::function<void()> &body);
