// The parts of the host that lives now, one of each kind.
#pragma once

#include <atomic>

namespace qzlhost {

/// Set by the host as it begins and ends.
template <class Part>
inline std::atomic<Part *> gCurrent{nullptr};

/// The part of the host that lives now; null between hosts. Any thread.
template <class Part>
Part *Current()
{
    return gCurrent<Part>;
}

} // namespace qzlhost
