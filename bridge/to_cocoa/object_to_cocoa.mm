// Turns a host object into the Cocoa object that stands for it.
#include "bridge/to_cocoa/object_to_cocoa.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <algorithm>
#include <iterator>

#include "bridge/instance_data.h"
#include "bridge/to_cocoa/dictionary_to_cocoa.h"
#include "bridge/to_cocoa/folder_item_to_cocoa.h"
#include "bridge/to_cocoa/wrapper_classes.h"
#include "frame/host_references.h"
#include "frame/memory_blocks.h"

/// Class methods that other libraries of the family add; they read the host object themselves.
@interface NSValue (QZLFamily)
+ (NSValue *)valueWithQTTimeQZL:(REALobject)time;
+ (NSValue *)valueWithQTTimeRangeQZL:(REALobject)range;
+ (NSValue *)valueWithCMTimeMappingQZL:(REALobject)mapping;
+ (NSValue *)valueWithCMTimeRangeQZL:(REALobject)range;
+ (NSValue *)valueWithCMTimeQZL:(REALobject)time;
@end

/// The family's Cocoa class for host objects that have no other counterpart; found at run time.
@interface NSObject (QZLObjectWrapper)
+ (id)wrap:(REALobject)object;
@end

namespace {

/// A copy of the block's bytes; nil without any.
NSData *DataOfMemoryBlock(REALobject object)
{
    HostLock<REALobject> lock(object);
    const auto block = reinterpret_cast<REALmemoryBlock>(object);
    const int64_t size = MemoryBlockSize(block);
    const void *const bytes = MyREALMemoryBlockGetPtr(block);
    NSData *const data = bytes == nullptr || size <= 0
                             ? nil
                             : [NSData dataWithBytes:bytes length:static_cast<NSUInteger>(size)];
    lock.GiveBack();
    return data;
}

struct ValueClass {
    const char *hostClassName;
    NSValue *(*convert)(REALobject object);
};

/// The instance data of the first four has its numbers laid out as Cocoa's structures.
constexpr ValueClass kValueClasses[] = {
    {"NSSizeQZL", [](REALobject object) { return [NSValue valueWithSize:*InstanceData<NSSize>(object)]; }},
    {"NSRectQZL", [](REALobject object) { return [NSValue valueWithRect:*InstanceData<NSRect>(object)]; }},
    {"NSRangeQZL", [](REALobject object) { return [NSValue valueWithRange:*InstanceData<NSRange>(object)]; }},
    {"NSPointQZL", [](REALobject object) { return [NSValue valueWithPoint:*InstanceData<NSPoint>(object)]; }},
    {"QTKitTimeQZL", [](REALobject object) { return [NSValue valueWithQTTimeQZL:object]; }},
    {"QTKitTimeRangeQZL", [](REALobject object) { return [NSValue valueWithQTTimeRangeQZL:object]; }},
    {"CMTimeMappingQZL", [](REALobject object) { return [NSValue valueWithCMTimeMappingQZL:object]; }},
    {"CMTimeRangeQZL", [](REALobject object) { return [NSValue valueWithCMTimeRangeQZL:object]; }},
    {"CMTimeQZL", [](REALobject object) { return [NSValue valueWithCMTimeQZL:object]; }},
};
static_assert(sizeof(NSSize) == 2 * sizeof(double) && sizeof(NSPoint) == 2 * sizeof(double));
static_assert(sizeof(NSRect) == 4 * sizeof(double) && sizeof(NSRange) == 2 * sizeof(uint64_t));

/// The row of the first value class that the object is an instance of, or null.
const ValueClass *FindValueClass(REALobject object)
{
    const auto row =
        std::find_if(std::begin(kValueClasses), std::end(kValueClasses), [object](const ValueClass &tried) {
            return IsOfHostClass(object, tried.hostClassName);
        });
    return row == std::end(kValueClasses) ? nullptr : row;
}

template <size_t Count>
bool IsOfAny(REALobject object, const char *const (&classNames)[Count])
{
    return std::any_of(std::begin(classNames), std::end(classNames),
                       [object](const char *className) { return IsOfHostClass(object, className); });
}

id WrapInFamilyObject(REALobject object)
{
    return [(id)objc_getClass("QZLREALobjectWrapper") wrap:object];
}

} // namespace

id GetObjectAsNSObject(REALobject object, const EnclosingContainers *enclosing)
{
    if (object != nullptr && IsOfHostClass(object, "MemoryBlock"))
        return DataOfMemoryBlock(object);
    if (IsFolderItem(object))
        return object != nullptr ? NewFolderItemURL(object) : nil;
    if (object != nullptr && IsOfHostClass(object, "Dictionary"))
        return NewNSDictionary(reinterpret_cast<REALdictionary>(object), enclosing);
    if (IsOfRememberedWrapperClass(object) || IsOfAny(object, kWrapperClassesBeforeValues))
        return WrapperHandle(object);
    if (const ValueClass *const valueClass = FindValueClass(object))
        return object != nullptr ? valueClass->convert(object) : nil;
    if (IsOfAny(object, kWrapperClassesAfterValues))
        return WrapperHandle(object);
    return WrapInFamilyObject(object);
}
