// Stands in for the family's other plugins: host objects in Cocoa wrappers, and times in Cocoa values.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <algorithm>
#include <cstring>
#include <iterator>

#include "family/family.h"
#include "family/instances.h"

using namespace family;

/// What QZLREALobjectWrapper inherits once the family offers it.
@interface FamilyObjectWrapper : NSObject {
@public
    qzlhost::Instance *wrapped;
}
+ (id)wrap:(qzlhost::Instance *)instance;
- (qzlhost::Instance *)unwrap;
@end

namespace {

struct State {
    int unwraps = 0;
    int timesMade = 0;
    id lastTimeAsked = nil;
    qzlhost::Instance *lastTimeAnswered = nullptr;
} gState;

/// The time with this selector as its method.
const FamilyTime &TimeOf(const char *FamilyTime::*method, SEL selector)
{
    return *std::find_if(std::begin(kFamilyTimes), std::end(kFamilyTimes), [&](const FamilyTime &time) {
        return std::strcmp(time.*method, sel_getName(selector)) == 0;
    });
}

qzlhost::Instance *NewTime(NSValue *self, SEL selector)
{
    ++gState.timesMade;
    qzlhost::Instance *const instance = NewInstance(TimeOf(&FamilyTime::toHost, selector).hostClass);
    if (instance != nullptr)
        [self getValue:InstanceData(instance)];
    gState.lastTimeAsked = self;
    gState.lastTimeAnswered = instance;
    return instance;
}

NSValue *ValueWithTime(id, SEL selector, qzlhost::Instance *instance)
{
    ++gState.timesMade;
    return [NSValue valueWithBytes:InstanceData(instance)
                          objCType:TimeOf(&FamilyTime::toCocoa, selector).objCType];
}

} // namespace

@implementation FamilyObjectWrapper

+ (id)wrap:(qzlhost::Instance *)instance
{
    FamilyObjectWrapper *const made = [[[self alloc] init] autorelease];
    if (instance != nullptr)
        Lock(instance);
    made->wrapped = instance;
    return made;
}

- (qzlhost::Instance *)unwrap
{
    ++gState.unwraps;
    if (wrapped != nullptr)
        Lock(wrapped);
    return wrapped;
}

- (void)dealloc
{
    if (wrapped != nullptr)
        Unlock(wrapped);
    [super dealloc];
}

@end

void Family::OfferObjectWrapper()
{
    const Class made = objc_allocateClassPair([FamilyObjectWrapper class], "QZLREALobjectWrapper", 0);
    objc_registerClassPair(made);
}

qzlhost::Instance *Family::Wrapped(id object) const
{
    const bool isWrapper = [object isKindOfClass:[FamilyObjectWrapper class]];
    return isWrapper ? static_cast<FamilyObjectWrapper *>(object)->wrapped : nullptr;
}

int Family::Unwraps() const
{
    return gState.unwraps;
}

void Family::OfferTimeClass(const FamilyTime &time)
{
    qzlhost::ClassDefinition definition;
    definition.name = time.hostClass;
    definition.dataSize = time.size;
    host_.DefineClass(std::move(definition));
}

void Family::OfferTimeToHost(const FamilyTime &time)
{
    class_addMethod([NSValue class], sel_registerName(time.toHost), reinterpret_cast<IMP>(NewTime),
                    "^v16@0:8");
}

void Family::OfferTimeToCocoa(const FamilyTime &time)
{
    class_addMethod(object_getClass([NSValue class]), sel_registerName(time.toCocoa),
                    reinterpret_cast<IMP>(ValueWithTime), "@24@0:8^v16");
}

int Family::TimesMade() const
{
    return gState.timesMade;
}

id Family::LastTimeAsked() const
{
    return gState.lastTimeAsked;
}

qzlhost::Instance *Family::LastTimeAnswered() const
{
    return gState.lastTimeAnswered;
}
