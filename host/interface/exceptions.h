// Exceptions that the host raises, and their classes.
#pragma once

#include <string_view>
#include <vector>

#include "host/calls/builtin.h"

namespace qzlhost {

/// Records a new instance of this class as the calling thread's exception.
void RaiseHostException(const char *className, std::string_view message);

/// RuntimeException and the classes that derive from it.
std::vector<BuiltInClass> ExceptionClasses();

} // namespace qzlhost
