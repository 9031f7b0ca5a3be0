// How instances begin and end, as their classes say.
#pragma once

#include <memory>

#include "host/calls/class.h"
#include "host/values/value.h"

namespace qzlhost {

/// Sets the hooks by which instances reach their classes.
void SetClassHooks();

/// A new instance with one reference; the constructor hooks have run, topmost superclass first. Without a
/// payload it has the class's own.
Instance *NewInstance(const Class &type, std::unique_ptr<Payload> payload = nullptr);

/// Borrowed. Throws UsageError for what is no object.
Instance &InstanceOf(const Value &value);

} // namespace qzlhost
