// Finds the step that an object takes. Nothing of what an object might answer otherwise next time is remembered.
#include "bridge/to_host/conversion_steps.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <array>
#include <climits>
#include <cstring>

#include "bridge/to_host/class_memory.h"
#include "bridge/to_host/root_class_kind.h"
#include "frame/kept_function.h"

namespace {

constexpr size_t kStepCount = std::size(kConversionSteps);

// The steps of classes by name

constexpr size_t LengthOf(const char *text)
{
    size_t length = 0;
    while (text[length] != '\0')
        ++length;
    return length;
}

/// The steps by the hash of their class's name, for names that are long enough to have one; where two share a slot,
/// the later one has the next.
class StepNames {
public:
    constexpr StepNames()
    {
        for (size_t step = 0; step < kStepCount; ++step) {
            const char *const name = kConversionSteps[step].name;
            if (kConversionSteps[step].object != nullptr)
                continue;
            size_t slot = SlotOf(name, LengthOf(name));
            while (numbers_[slot] != 0)
                slot = (slot + 1) % kSlots;
            numbers_[slot] = static_cast<uint8_t>(step + 1);
            begins_[static_cast<unsigned char>(name[0])] = true;
        }
    }

    /// Null for a class that has no step.
    const ConversionStep *Find(const char *name) const
    {
        if (!begins_[static_cast<unsigned char>(name[0])])
            return nullptr;
        const size_t length = std::strlen(name);
        if (length < kShortestName)
            return nullptr;
        for (size_t slot = SlotOf(name, length); numbers_[slot] != 0; slot = (slot + 1) % kSlots) {
            const ConversionStep &step = kConversionSteps[numbers_[slot] - 1];
            if (std::strcmp(step.name, name) == 0)
                return &step;
        }
        return nullptr;
    }

private:
    static constexpr size_t kSlots = 512;
    static constexpr size_t kShortestName = 5;
    static_assert(kStepCount < kSlots / 4 && kStepCount < UINT8_MAX);

    static constexpr size_t SlotOf(const char *name, size_t length)
    {
        const auto letter = [&](size_t index) { return static_cast<unsigned char>(name[index]); };
        return (length * 67 + letter(2) * 5 + letter(4) * 29 + letter(length / 2) * 13 + letter(length - 2) * 3 +
                letter(length - 1)) %
               kSlots;
    }

    std::array<uint8_t, kSlots> numbers_ = {};
    std::array<bool, UCHAR_MAX + 1> begins_ = {};
};

constexpr StepNames kStepNames;

// Steps of one object, and steps whose class is looked up once: each kind stands side by side

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

FirstFound<Class> gOnceFound[kOnceEnd - kOnceBegin];

// The step of a class

bool IsInChain(Class type, Class sought)
{
    for (Class reached = type; reached != Nil; reached = class_getSuperclass(reached))
        if (reached == sought)
            return true;
    return false;
}

/// The linked classes that came up, each with the number of its step. None of them derives from another.
ClassMemory gLinkedClasses;

/// The earlier of two steps, each of which may be null.
const ConversionStep *Earlier(const ConversionStep *one, const ConversionStep *other)
{
    if (one == nullptr || other == nullptr)
        return one != nullptr ? one : other;
    return one < other ? one : other;
}

const ConversionStep *StepByAsking(id object)
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

/// The first step by the names of a class and its superclasses, and which of them has it; apart from classes that
/// are looked up once.
ClassStep FirstNamedStep(Class type)
{
    ClassStep first = {nullptr, Nil};
    for (Class reached = type; reached != Nil; reached = class_getSuperclass(reached)) {
        const ConversionStep *const step = kStepNames.Find(class_getName(reached));
        if (step != nullptr && step->lookup == Lookup::EachTime && Earlier(first.step, step) == step)
            first = {step, reached};
    }
    return first;
}

/// The step of an object of this class that leaves it to the root class to say of which classes it is: what it would
/// answer is read off the class and its superclasses.
const ConversionStep *StepOfClass(id object, Class type)
{
    for (Class reached = type; reached != Nil; reached = class_getSuperclass(reached))
        if (const std::optional<size_t> step = gLinkedClasses.Find(reached))
            return &kConversionSteps[*step];

    const ClassStep named = FirstNamedStep(type);
    if (named.step == nullptr || named.step > kOnceBegin)
        for (const ConversionStep *step = kOnceBegin; step != kOnceEnd; ++step)
            if (IsInChain(type, ClassOfStep(*step)))
                return step;
    // A name may be that of another class by now.
    if (named.step != nullptr && ClassOfStep(*named.step) != named.type)
        return StepByAsking(object);
    if (named.step != nullptr && named.step->isLinked)
        gLinkedClasses.Remember(named.type, static_cast<size_t>(named.step - kConversionSteps));
    return named.step;
}

/// The step that is this very object's; null for any other.
const ConversionStep *StepOfObject(id object)
{
    for (const ConversionStep *step = kObjectsBegin; step != kObjectsEnd; ++step)
        if ((id)*step->object == object)
            return step;
    return nullptr;
}

} // namespace

const ConversionStep *FindConversionStep(id object)
{
    const Class type = object_getClass(object);
    if (!LeavesItsKindToTheRootClass(type))
        return StepByAsking(object);
    return Earlier(StepOfObject(object), StepOfClass(object, type));
}

Class ClassOfStep(const ConversionStep &step)
{
    const auto find = [&] { return objc_getClass(step.name); };
    return step.lookup == Lookup::Once ? gOnceFound[&step - kOnceBegin].Get(find) : find();
}
