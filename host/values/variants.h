// Conversions of variants.
#pragma once

#include "host/values/counted.h"

namespace qzlhost {

/// The variant as a string, with one reference; null for the empty string.
String *StringOfVariant(Instance *variant);

} // namespace qzlhost
