// The classes and global methods that every host has.
#pragma once

#include <vector>

#include "host/calls/builtin.h"
#include "host/language/declaration.h"

namespace qzlhost {

/// The class "Variant", whose properties every instance has.
BuiltInClass VariantClass();
BuiltInClass DictionaryClass();
BuiltInClass DateClass();
BuiltInClass MemoryBlockClass();
BuiltInClass FolderItemClass();

/// The global method that returns the folder item of a path.
BuiltInMethod TrueFolderItemMethod();

/// All classes that every host has.
std::vector<BuiltInClass> BuiltInClasses();

/// The function of the global method with this declaration; null if there is none.
void *FindGlobalMethod(const Declaration &declaration);

} // namespace qzlhost
