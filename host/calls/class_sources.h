// Classes from the records of a library, from the host's tables, and from programs.
#pragma once

#include <cstdint>
#include <memory>

#include "host/calls/builtin.h"
#include "host/calls/class.h"
#include "host/calls/class_definition.h"

namespace qzlhost {

inline constexpr int32_t kOldestRecordVersion = 9;
inline constexpr int32_t kNewestRecordVersion = 13;

/// Reads the record at this address and registers its class. Records its faults as mistakes.
void RegisterLibraryClass(void *record);

std::unique_ptr<Class> MakeBuiltInClass(const BuiltInClass &table);

/// Throws UsageError for a malformed declaration, and for an event that no known superclass declares.
std::unique_ptr<Class> MakeProgramClass(ClassDefinition definition);

} // namespace qzlhost
