// The parts of the current host, one of each kind.
#pragma once

#include <atomic>

namespace qzlhost {

/// Set by the host as it begins and ends.
template <typename Part>
inline std::atomic<Part *> gCurrent{nullptr};

/// The current host's part of this kind; null between hosts. Any thread.
template <typename Part>
Part *Current()
{
    return gCurrent<Part>;
}

} // namespace qzlhost
