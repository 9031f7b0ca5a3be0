// Finds the step that an object takes. Nothing is remembered that may differ the next time an object is
// asked.
#include "bridge/to_host/conversion_steps.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <atomic>
#include <iterator>

#include "bridge/to_host/root_class_kind.h"
#include "bridge/to_host/rows_by_name.h"
#include "frame/kept_look_ups.h"

namespace {

// Steps of a single object, and steps whose class is looked up once: each kind is contiguous

template <typename Test>
constexpr const ConversionStep *FirstStepFrom(const ConversionStep *step, Test test)
{
    while (!test(*step))
        ++step;
    return step;
}

constexpr bool IsOfObject(const ConversionStep &step)
{
    return step.object != nullptr;
}
constexpr bool IsOfClass(const ConversionStep &step)
{
    return !IsOfObject(step);
}
constexpr const ConversionStep *kObjectsBegin = FirstStepFrom(kConversionSteps, IsOfObject);
constexpr const ConversionStep *kObjectsEnd = FirstStepFrom(kObjectsBegin, IsOfClass);
constexpr RowsByName<ConversionStep> kClassSteps(kConversionSteps, IsOfClass);

constexpr bool IsLookedUpOnce(const ConversionStep &step)
{
    return step.lookup == Lookup::Once;
}
constexpr bool IsLookedUpEachTime(const ConversionStep &step)
{
    return !IsLookedUpOnce(step);
}
constexpr const ConversionStep *kOnceBegin = FirstStepFrom(kConversionSteps, IsLookedUpOnce);
constexpr const ConversionStep *kOnceEnd = FirstStepFrom(kOnceBegin, IsLookedUpEachTime);

FirstSlot<Class> gOnceFound[kOnceEnd - kOnceBegin];

/// The class of a step as its lookup finds it; `Nil` where there is none.
Class ClassOfStep(const ConversionStep &step)
{
    const auto find = [&] { return objc_getClass(step.name); };
    return step.lookup == Lookup::Once ? KeepFirst(gOnceFound[&step - kOnceBegin], find) : find();
}

// The step of a class

bool IsInChain(Class type, Class sought)
{
    for (Class reached = type; reached != Nil; reached = class_getSuperclass(reached))
        if (reached == sought)
            return true;
    return false;
}

/// The earlier of two steps, each of which may be null.
const ConversionStep *Earlier(const ConversionStep *one, const ConversionStep *other)
{
    if (one == nullptr || other == nullptr)
        return one != nullptr ? one : other;
    return one < other ? one : other;
}

/// The step of an object whose own `isKindOfClass:` decides.
__attribute__((noinline)) const ConversionStep *StepByAsking(id object)
{
    for (const ConversionStep &step : kConversionSteps) {
        if (step.object != nullptr) {
            if ((id)*step.object == object)
                return &step;
        } else if (const Class stepClass = ClassOfStep(step)) {
            if ([object isKindOfClass:stepClass])
                return &step;
        }
    }
    return nullptr;
}

struct ClassStep {
    const ConversionStep *step;
    Class type;
};

/// The first step that is named after the class or one of its superclasses, and the class that it is named
/// after. Ignores the steps whose class is looked up once.
ClassStep FirstNamedStep(Class type)
{
    ClassStep first = {nullptr, Nil};
    for (Class reached = type; reached != Nil; reached = class_getSuperclass(reached)) {
        const ConversionStep *const step = kClassSteps.Find(class_getName(reached));
        if (step != nullptr && step->lookup == Lookup::EachTime && Earlier(first.step, step) == step)
            first = {step, reached};
    }
    return first;
}

// What follows is read and written in relaxed order: a class that is remembered is only compared.

/// The classes of the linked steps, each null until it is first found.
std::atomic<void *> gLinkedClasses[std::size(kConversionSteps)];

/// Where the linked class of a class was last found: the number of its step and, in the low four bits, how
/// far up the chain it is. An entry does not say which class it is for: each use checks whether it holds.
std::atomic<uint8_t> gLinkedPlaces[256];
constexpr unsigned kBitsOfUp = 4;
constexpr size_t kMostUp = (1 << kBitsOfUp) - 1;

std::atomic<uint8_t> &PlaceFor(Class type)
{
    const auto address = reinterpret_cast<uintptr_t>(type);
    return gLinkedPlaces[(address >> 4 ^ address >> 12) % std::size(gLinkedPlaces)];
}

/// The step of the linked class in the class's chain; null if there is none, or none that was found before.
/// No linked class derives from another, and their steps precede those of all other classes.
const ConversionStep *LinkedStep(Class type)
{
    const uint8_t place = PlaceFor(type).load(std::memory_order_relaxed);
    Class reached = type;
    for (size_t up = place & kMostUp; up > 0; --up)
        reached = class_getSuperclass(reached);
    const size_t number = place >> kBitsOfUp;
    const bool holds = reached != Nil && reached == gLinkedClasses[number].load(std::memory_order_relaxed);
    return holds ? &kConversionSteps[number] : nullptr;
}

void RememberLinkedStep(Class type, const ClassStep &found)
{
    const auto number = static_cast<size_t>(found.step - kConversionSteps);
    size_t up = 0;
    for (Class reached = type; reached != found.type; reached = class_getSuperclass(reached))
        ++up;
    if (up > kMostUp || number > UINT8_MAX >> kBitsOfUp)
        return;
    gLinkedClasses[number].store(found.type, std::memory_order_relaxed);
    PlaceFor(type).store(static_cast<uint8_t>(number << kBitsOfUp | up), std::memory_order_relaxed);
}

/// The step of an object of this class, which has the root class's `isKindOfClass:`. The class and its
/// superclasses decide what that returns.
__attribute__((noinline)) const ConversionStep *StepOfClass(id object, Class type)
{
    const ClassStep named = FirstNamedStep(type);
    if (named.step == nullptr || named.step > kOnceBegin)
        for (const ConversionStep *step = kOnceBegin; step != kOnceEnd; ++step)
            if (IsInChain(type, ClassOfStep(*step)))
                return step;
    // By now, another class may have the name.
    if (named.step != nullptr && ClassOfStep(*named.step) != named.type)
        return StepByAsking(object);
    if (named.step != nullptr && named.step->isLinked)
        RememberLinkedStep(type, named);
    return named.step;
}

/// The class of the objects that have steps of their own, unless a class of its chain has an earlier step.
/// These objects live for ever, so their class stays the same.
std::atomic<void *> gClassOfOwnObjects{nullptr};

/// The step of this very object; null if it has none of its own.
const ConversionStep *StepOfObject(id object)
{
    for (const ConversionStep *step = kObjectsBegin; step != kObjectsEnd; ++step)
        if ((id)*step->object == object)
            return step;
    return nullptr;
}

/// The earlier of `stepOfClass`, the step of the object's class, and the object's own step.
const ConversionStep *OwnStepOr(const ConversionStep *stepOfClass, id object, Class type)
{
    const ConversionStep *const own = StepOfObject(object);
    const ConversionStep *const step = Earlier(own, stepOfClass);
    if (own != nullptr && step == own)
        gClassOfOwnObjects.store(type, std::memory_order_relaxed);
    return step;
}

/// The step of an object about whose class nothing is remembered.
__attribute__((noinline)) const ConversionStep *StepByLooking(id object, Class type)
{
    // The root class may use the class that the object reports, and the object may report another one each
    // time.
    if ([object class] != type || object_getClass(object) != type)
        return StepByAsking(object);
    return OwnStepOr(StepOfClass(object, type), object, type);
}

} // namespace

const ConversionStep *FindConversionStep(id object)
{
    const Class type = object_getClass(object);
    if (!InheritsRootIsKindOfClass(type))
        return StepByAsking(object);
    if (type == static_cast<Class>(gClassOfOwnObjects.load(std::memory_order_relaxed)))
        if (const ConversionStep *const step = StepOfObject(object))
            return step;
    if (const ConversionStep *const step = LinkedStep(type))
        return step < kObjectsBegin ? step : OwnStepOr(step, object, type);
    return StepByLooking(object, type);
}
