// Properties that the host reads and writes itself, as fields of the instance data.
#pragma once

#include "host/calls/class.h"
#include "host/values/value.h"

namespace qzlhost {

/// The field at the offset `parameter`, in the width of the property's type. The value takes a reference of
/// its own. Throws UsageError for a field outside the instance data.
Value ReadField(const Property &property, Instance *self);
/// Throws UsageError also for a field that holds a reference.
void WriteField(const Property &property, Instance *self, const Value &value);

} // namespace qzlhost
