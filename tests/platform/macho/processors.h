// The processors for which each test dylib is built.
#pragma once

#include <string>

#include "platform/macho/processor.h"

inline constexpr macho::Processor kProcessors[] = {macho::Processor::X86_64, macho::Processor::Arm64};

/// The folder of the dylibs for a processor, in the build folder of the tests.
inline std::string FolderOf(macho::Processor processor)
{
    return processor == macho::Processor::X86_64 ? "x86_64" : "arm64";
}

/// As messages name it.
inline std::string NameOf(macho::Processor processor)
{
    return processor == macho::Processor::X86_64 ? "x86-64" : "arm64";
}
