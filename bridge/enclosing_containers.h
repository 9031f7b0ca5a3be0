// The containers that are being converted, so that the conversion of one that contains itself ends.
#pragma once

/// An array, set or dictionary that is being converted, and the container that encloses it. Lives on the
/// stack of the conversion.
struct EnclosingContainers {
    const void *container;
    /// Null for the outermost.
    const EnclosingContainers *outer;
};

/// Whether this container is one of those that are being converted.
inline bool Encloses(const EnclosingContainers *enclosing, const void *container)
{
    for (; enclosing != nullptr; enclosing = enclosing->outer)
        if (enclosing->container == container)
            return true;
    return false;
}
