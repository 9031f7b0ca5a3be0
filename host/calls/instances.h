// Makes and destroys instances as their classes say.
#pragma once

#include <memory>

#include "host/calls/class.h"
#include "host/values/value.h"

namespace qzlhost {

/// Sets the hooks through which instances reach their classes.
void SetClassHooks();

/// A new instance with one reference. The constructor hooks have run, topmost superclass first. A null
/// payload becomes the class's own.
Instance *NewInstance(const Class &type, std::unique_ptr<Payload> payload = nullptr);

/// The value's instance, borrowed. Throws UsageError for a value that is not an object.
Instance &InstanceOf(const Value &value);

} // namespace qzlhost
