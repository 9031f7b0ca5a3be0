// Fills a host array with the elements of a Cocoa array.
#include "bridge/to_host/array_to_host.h"

#import <Foundation/Foundation.h>

#include "bridge/to_host/object_to_variant.h"
#include "frame/host_references.h"

namespace {

/// A new host array of the elements of `array`: the subject itself, or the members of the set that it is.
REALobject NewHostArray(NSArray *array, const ConversionSubject &subject)
{
    if (Encloses(subject.enclosing, subject.object))
        return nullptr;
    const EnclosingContainers here = {subject.object, subject.enclosing};
    constexpr int64_t kObjectElements = 4;
    constexpr int64_t kEmpty = -1;
    HostRef<REALobject> result(AsInstance(REALCreateArray(kObjectElements, kEmpty)));
    if (!result)
        return nullptr;
    const auto hostArray = reinterpret_cast<REALarray>(result.Get());
    NSEnumerator *const elements = [array objectEnumerator];
    int64_t index = 0;
    while (const id element = [elements nextObject]) {
        HostRef<REALobject> variant(NewVariantFromNSObject(element, &here));
        const bool inserted = REALInsertArrayValueObject(hostArray, index++, variant.Get());
        variant.GiveBack();
        if (!inserted) {
            result.GiveBack();
            return nullptr;
        }
    }
    return result.Release();
}

} // namespace

REALobject NewArrayOfElements(const ConversionSubject &subject)
{
    return NewHostArray(subject.object, subject);
}

REALobject NewArrayOfMembers(const ConversionSubject &subject)
{
    return NewHostArray([subject.object allObjects], subject);
}
