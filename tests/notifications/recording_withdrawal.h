// Centres that record, in the places of the four from which an observer withdraws itself.
#pragma once

#include <objc/runtime.h>

#include <functional>

#include "tests/notifications/recording_center.h"

/// A method that has another implementation while this lives.
class SwappedMethod {
public:
    SwappedMethod(Method method, IMP replacement)
        : method_(method), original_(method_setImplementation(method, replacement))
    {
    }
    ~SwappedMethod() { method_setImplementation(method_, original_); }
    SwappedMethod(const SwappedMethod &) = delete;
    SwappedMethod &operator=(const SwappedMethod &) = delete;

private:
    Method method_;
    IMP original_;
};

/// What the centres get while `body` runs. Each message begins with "distributed", "default", "service" or
/// "workspace".
std::vector<std::string> MessagesToTheFourCenters(RecordedMessages &recorded,
                                                  const std::function<void()> &body);
