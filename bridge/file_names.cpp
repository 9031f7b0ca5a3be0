// Decomposes file names.
#include "bridge/file_names.h"

CFStringRef CreateDecomposedName(CFStringRef name)
{
    const CFMutableStringRef decomposed = CFStringCreateMutableCopy(kCFAllocatorDefault, 0, name);
    if (decomposed == nullptr)
        return static_cast<CFStringRef>(CFRetain(name));
    CFStringNormalize(decomposed, kCFStringNormalizationFormD);
    return decomposed;
}
