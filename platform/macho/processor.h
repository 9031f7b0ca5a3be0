// The processors that images are read for.
#pragma once

namespace macho {

enum class Processor { X86_64, Arm64 };

/// The one that this process runs on: an image's code must be for it.
#if defined(__x86_64__)
inline constexpr Processor kThisProcessor = Processor::X86_64;
#elif defined(__aarch64__)
inline constexpr Processor kThisProcessor = Processor::Arm64;
#else
#error "code of an image runs on x86-64 and arm64 only"
#endif

} // namespace macho
