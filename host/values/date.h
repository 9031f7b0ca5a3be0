// The host's Date: a wall-clock time in whole seconds.
#pragma once

#include <array>
#include <mutex>
#include <string>

#include "host/values/object.h"

namespace qzlhost {

/// Year, month, day, hour, minute, second.
using DateFields = std::array<int64_t, 6>;

/// Any thread.
struct Date : Payload {
    /// The current time in the local time zone.
    Date();

    int64_t Code() const override { return code::Date; }
    /// As in 2024-02-29 14:05:09.
    std::string AsString() const override;

    /// The fields, each in its range. They are carried over when they are read, so that they can be set one
    /// by one.
    DateFields Fields() const;
    void SetFields(const DateFields &fields);
    void SetField(size_t field, int64_t value);

private:
    mutable std::mutex mutex_;
    DateFields fields_;
};

} // namespace qzlhost
