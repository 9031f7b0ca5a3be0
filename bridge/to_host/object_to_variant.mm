// Turns a Cocoa object into a host value: a chain of tests whose order counts.
#include "bridge/to_host/object_to_variant.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <iterator>
#include <optional>

#include "bridge/to_host/array_to_host.h"
#include "bridge/to_host/class_memory.h"
#include "bridge/to_host/class_rows.h"
#include "bridge/to_host/core_foundation_wrappers.h"
#include "bridge/to_host/date_to_host.h"
#include "bridge/to_host/dictionary_to_host.h"
#include "bridge/to_host/file_url_to_host.h"
#include "bridge/to_host/instance_registry.h"
#include "bridge/to_host/number_to_host.h"
#include "bridge/to_host/root_class_kind.h"
#include "bridge/to_host/value_to_host.h"
#include "bridge/to_host/wrappers.h"
#include "frame/host_ref.h"
#include "frame/host_strings.h"
#include "frame/memory_blocks.h"

/// What objects answer that the compiler does not know.
@interface NSObject (QZLObjectToVariant)
/// The object's Core Foundation type.
- (CFTypeID)_cfTypeID;
/// The host object in the family's wrapper.
- (REALobject)unwrap;
@end

namespace {

/// The one object that stands for nothing in collections.
id TheNull()
{
    static const id null = [NSNull null];
    return null;
}

/// Made even of the null string.
REALobject NewStringVariant(NSString *text)
{
    const HostRef<REALstring> string(CFString2RBString((CFStringRef)text));
    return REALNewVariantString(string.Get());
}

REALobject NewURLVariant(NSURL *url)
{
    const REALobject folderItem = NSURLRBFile(url);
    return folderItem != nullptr ? folderItem : NewStringVariant([url absoluteString]);
}

/// Whether the object is a host object in the family's wrapper. That class may appear at any time, but not as
/// a superclass of one that was there before.
bool IsWrappedHostObject(id object)
{
    const Class wrapperClass = objc_getClass("QZLREALobjectWrapper");
    return wrapperClass != Nil && [object isKindOfClass:wrapperClass];
}

/// The wrapper of an object that says that it is a Core Foundation object: with one reference for the caller,
/// or null. Nothing for any other object, and for one that raises.
std::optional<REALobject> ConvertAsCoreFoundation(id object)
{
    @try {
        if ([object respondsToSelector:@selector(_cfTypeID)] && static_cast<int32_t>([object _cfTypeID]) > 0)
            return NewCFWrapper(object, CFWrapperClassName(object));
    } @catch (NSException *) {
        return std::nullopt;
    }
    return std::nullopt;
}

/// The first steps of the chain: classes whose objects become values.
constexpr struct {
    Class (*cocoaClass)();
    REALobject (*convert)(id object);
} kValueSteps[] = {
    {[] { return [NSURL class]; }, [](id object) { return NewURLVariant(object); }},
    {[] { return [NSString class]; }, [](id object) { return NewStringVariant(object); }},
    {[] { return [NSData class]; }, [](id object) { return AsInstance(NSDataRB(object)); }},
    {[] { return [NSArray class]; }, [](id object) { return NewHostArray(object); }},
    {[] { return [NSSet class]; }, [](id object) { return NewHostArray([object allObjects]); }},
    {[] { return [NSNumber class]; }, [](id object) { return NewVariantFromNSNumber(object); }},
    {[] { return [NSDate class]; }, [](id object) { return NewHostDate(object); }},
    {[] { return [NSDictionary class]; }, [](id object) { return AsInstance(NSDictionaryRB(object)); }},
};
constexpr size_t kValueStepCount = std::size(kValueSteps);
/// The two booleans are known by their identity, behind the sets and before the numbers.
constexpr size_t kStepsBeforeBooleans = 5;

/// The steps behind the class rows.
constexpr size_t kWrappedStep = kValueStepCount + kClassRowCount;
constexpr size_t kNSValueStep = kWrappedStep + 1;
constexpr size_t kLastStep = kNSValueStep + 1;

/// A step of the chain by its number: the value steps, behind them the class rows, and the last ones.
struct FoundStep {
    size_t step;
    /// Whether the object's class stays with it, whatever classes appear.
    bool isFinal;
};

FoundStep FindStep(id object)
{
    for (size_t step = 0; step < kValueStepCount; ++step)
        if ([object isKindOfClass:kValueSteps[step].cocoaClass()])
            return {step, true};
    const FoundRow found = ClassRowOf(object);
    if (found.row < kClassRowCount)
        return {kValueStepCount + found.row, found.isFinal};
    if (IsWrappedHostObject(object))
        return {kWrappedStep, found.isFinal};
    return {[object isKindOfClass:[NSValue class]] ? kNSValueStep : kLastStep, found.isFinal};
}

/// The steps of classes whose objects leave it to the root class to say of which classes they are. A class
/// that is given a method of its own for that later keeps its step.
ClassMemory gSteps;

size_t StepOf(id object)
{
    const Class type = object_getClass(object);
    if (const std::optional<size_t> known = gSteps.Find(type))
        return *known;
    const FoundStep found = FindStep(object);
    if (found.isFinal && LeavesItsKindToTheRootClass(object))
        gSteps.Remember(type, found.step);
    return found.step;
}

} // namespace

REALobject NewVariantFromNSObject(id object)
{
    if (object == nil || object == TheNull())
        return nullptr;
    if (const REALobject known = FindInstance(object)) {
        REALLockObject(known);
        return known;
    }
    const size_t step = StepOf(object);
    if (step >= kStepsBeforeBooleans && object == (id)kCFBooleanFalse)
        return REALNewVariantBoolean(false);
    if (step >= kStepsBeforeBooleans && object == (id)kCFBooleanTrue)
        return REALNewVariantBoolean(true);
    if (step < kValueStepCount)
        return kValueSteps[step].convert(object);
    if (step < kWrappedStep)
        return ConvertByClassRow(object, step - kValueStepCount);
    if (step == kWrappedStep)
        return [object unwrap];
    if (step == kNSValueStep)
        return NewInstanceFromNSValue(object);
    if (const std::optional<REALobject> wrapper = ConvertAsCoreFoundation(object))
        return *wrapper;
    return NewWrapperOfAnyClass(object);
}
