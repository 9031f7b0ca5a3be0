// The step that an object takes by its class is the one it would take if it were asked about each class.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <thread>
#include <utility>

#include "bridge/to_host/conversion_steps.h"
#include "bridge/to_host/root_class_kind.h"
#include "tests/support/class_look_ups.h"
#include "tests/support/conversion_doubles.h"
#include "tests/support/leak_check_pause.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;

/// Claims to be of a class without being so; it must be asked about each class in turn.
@interface QZLTestStandIn : NSObject {
    Class _class;
    std::vector<std::string> *_asked;
}
- (instancetype)initWithClass:(Class)cocoaClass;
/// From now on it claims to be of another class.
- (void)become:(Class)cocoaClass;
/// The names of the classes that it was asked about; empties the list.
- (std::vector<std::string>)takeAsked;
@end

@implementation QZLTestStandIn
- (instancetype)initWithClass:(Class)cocoaClass
{
    self = [super init];
    _class = cocoaClass;
    _asked = new std::vector<std::string>;
    return self;
}
- (void)dealloc
{
    delete _asked;
    [super dealloc];
}
- (void)become:(Class)cocoaClass
{
    _class = cocoaClass;
}
- (std::vector<std::string>)takeAsked
{
    return std::exchange(*_asked, {});
}
- (Class)class
{
    return _class;
}
- (BOOL)isKindOfClass:(Class)asked
{
    _asked->push_back(class_getName(asked));
    return DescendsFrom(_class, asked);
}
@end

namespace {

BOOL AnswerNo(id, SEL, Class)
{
    return NO;
}

Class AnswerTask(id, SEL)
{
    return [NSTask class];
}

Class gPipeClass = Nil;

/// Returns no, and is of another class from then on.
BOOL BecomePipe(id object, SEL, Class)
{
    object_setClass(object, gPipeClass);
    return NO;
}

/// While it lives, one class replaces another at its address: name, superclass and methods.
class Replacement {
public:
    Replacement(Class place, Class replacement) : place_(place)
    {
        std::memcpy(stood_, reinterpret_cast<void *>(place), sizeof stood_);
        std::memcpy(reinterpret_cast<void *>(place), reinterpret_cast<void *>(replacement), sizeof stood_);
    }
    ~Replacement() { std::memcpy(reinterpret_cast<void *>(place_), stood_, sizeof stood_); }
    Replacement(const Replacement &) = delete;
    Replacement &operator=(const Replacement &) = delete;

private:
    /// The size of a class in this runtime.
    char stood_[13 * sizeof(void *)];
    Class place_;
};

QZLTestStandIn *MakeStandIn(Class cocoaClass)
{
    return [[[QZLTestStandIn alloc] initWithClass:cocoaClass] autorelease];
}

/// Classes that need a display, start a program or leak as soon as they are used.
constexpr std::initializer_list<const char *> kUnusableClasses = {
    "GSToolTips",         "NSAppIconView", "NSBrowser",       "NSMiniWindowView", "NSToolbarItem",
    "NSSpeechRecognizer", "NSProgress",    "NSURLComponents", "NSViewAnimation",
};

bool IsOfAny(Class cocoaClass, std::initializer_list<const char *> names)
{
    return std::any_of(names.begin(), names.end(),
                       [&](const char *name) { return DescendsFrom(cocoaClass, name); });
}

std::vector<Class> AllClasses()
{
    std::vector<Class> classes(static_cast<size_t>(objc_getClassList(nullptr, 0)));
    classes.resize(static_cast<size_t>(objc_getClassList(classes.data(), static_cast<int>(classes.size()))));
    return classes;
}

class ClassSteps : public LinkedTest {
protected:
    /// A host with a host class for each of these Cocoa classes.
    Host &StartWith(const std::vector<std::string> &classNames)
    {
        Host &host = Start();
        for (const std::string &name : classNames)
            DefineWrapperClass(host, name + "QZL");
        return host;
    }

    /// The host class that the object becomes; empty for null.
    std::string HostClassOf(id object)
    {
        const Value variant = Convert(object);
        return variant.IsNil() ? "" : host().ClassOf(variant);
    }

    bool IsRegisteredWhenConverted(const Registry &registry, id object)
    {
        const Value variant = Convert(object);
        return registry.At(object) != nullptr && registry.At(object) == ObjectOf(variant);
    }

    /// The host classes of which the conversion asks for an instance. The host has none of them.
    std::vector<std::string> HostClassesWanted(id object)
    {
        host().ClearTrace();
        EXPECT_TRUE(Convert(object).IsNil());
        return ArgumentsOf(host(), "PluginNewInstance");
    }

    /// The same for a step.
    std::vector<std::string> HostClassesWantedBy(const ConversionStep &step, id object)
    {
        host().ClearTrace();
        EXPECT_EQ(step.convert({object, step.name, nullptr}), nullptr);
        return ArgumentsOf(host(), "PluginNewInstance");
    }
};

/// Whether its objects become values. They are read, so they would have to be initialised.
bool BecomesValue(Class cocoaClass)
{
    return IsOfAny(cocoaClass, {"NSURL", "NSString", "NSData", "NSArray", "NSSet", "NSDate", "NSDictionary",
                                "NSValue", "NSNull"});
}

} // namespace

TEST_F(ClassSteps, ObjectOfAnyClassTakesTheRowThatItWouldTakeIfItWereAskedAboutEach)
{
    Start();
    size_t withRow = 0;
    size_t withoutRow = 0;
    for (const Class cocoaClass : AllClasses()) {
        // Objects of other root classes are made in other ways.
        if (!DescendsFrom(cocoaClass, [NSObject class]) || IsOfAny(cocoaClass, kUnusableClasses) ||
            BecomesValue(cocoaClass))
            continue;
        SCOPED_TRACE(class_getName(cocoaClass));
        const qzlhost::AutoreleasePool pool;
        {
            // What a class of GNUstep's leaves behind when it is initialised is its own.
            const LeakCheckPause pause;
            [cocoaClass class];
        }
        const UninitializedObject object(cocoaClass);
        // Other objects are asked about each class anyway.
        if (!InheritsRootIsKindOfClass(cocoaClass))
            continue;
        const std::vector<std::string> cold = HostClassesWanted(object.Get());
        EXPECT_EQ(cold, HostClassesWanted(object.Get())) << "again";
        const id standIn = MakeStandIn(cocoaClass);
        const ConversionStep *const step = FindConversionStep(standIn);
        EXPECT_EQ(FindConversionStep(object.Get()), step);
        if (step != nullptr)
            EXPECT_EQ(cold, HostClassesWantedBy(*step, standIn));
        EXPECT_EQ(object.Retains(), 0u);
        ++(step != nullptr ? withRow : withoutRow);
    }
    EXPECT_GT(withRow, 200u);
    EXPECT_GT(withoutRow, 500u);
}

TEST_F(ClassSteps, ClassThatAppearsLaterIsFound)
{
    StartWith({"NSPipe", "NSObject"});
    const Registry registry;
    const id plain = MakeObject(MakeClass("QZLTestPlain", [NSObject class]));
    const std::array<id, 2> pipes = {MakeObject(MakeClass("QZLTestPipe", [NSPipe class])),
                                     MakeStandIn([NSPipe class])};
    // The last step wraps along the class chain and registers nothing.
    ClassLookUps::hidden = "NSPipe";
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(HostClassOf(plain), "NSObjectQZL");
        for (const id pipe : pipes)
            EXPECT_FALSE(IsRegisteredWhenConverted(registry, pipe));
    }

    ClassLookUps::hidden = nullptr;

    EXPECT_EQ(HostClassOf(plain), "NSObjectQZL");
    for (const id pipe : pipes) {
        EXPECT_EQ(HostClassOf(pipe), "NSPipeQZL");
        EXPECT_TRUE(IsRegisteredWhenConverted(registry, pipe));
    }
}

TEST_F(ClassSteps, LaterRowIsTakenUntilTheClassOfAnEarlierOneAppears)
{
    // The first row, and a later one for all cells, which registers nothing.
    StartWith({"NSPathComponentCell", "NSCell"});
    const Registry registry;
    const UninitializedObject cell(objc_getClass("NSPathComponentCell"));
    ClassLookUps::hidden = "NSPathComponentCell";
    EXPECT_FALSE(IsRegisteredWhenConverted(registry, cell.Get()));
    ClassLookUps::hidden = nullptr;
    EXPECT_TRUE(IsRegisteredWhenConverted(registry, cell.Get()));
}

TEST_F(ClassSteps, ClassMadeAtRunTimeIsOfTheFirstRowInItsChain)
{
    StartWith({"NSPredicate", "NSComparisonPredicate", "NSObject"});
    Convert(MakeObject([NSObject class]));
    const Class made = MakeClass("QZLTestLeaf", [NSComparisonPredicate class]);
    EXPECT_EQ(HostClassOf(MakeObject(made)), "NSPredicateQZL");
    EXPECT_EQ(HostClassOf(MakeObject(MakeClass("QZLTestLeafOfLeaf", made))), "NSPredicateQZL");
}

TEST_F(ClassSteps, ObjectThatAnswersForItselfIsAskedEachTime)
{
    StartWith({"NSPipe", "NSTask", "NSObject"});
    QZLTestStandIn *const first = MakeStandIn([NSPipe class]);
    QZLTestStandIn *const second = MakeStandIn([NSTask class]);
    EXPECT_EQ(HostClassOf(first), "NSPipeQZL");
    EXPECT_EQ(HostClassOf(second), "NSTaskQZL");

    const std::vector<std::string> asked = [first takeAsked];
    EXPECT_EQ(asked.back(), "NSPipe");
    EXPECT_EQ(HostClassOf(first), "NSPipeQZL");
    EXPECT_EQ([first takeAsked], asked);

    [first become:[NSObject class]];
    EXPECT_EQ(HostClassOf(first), "NSObjectQZL");
    EXPECT_GT([first takeAsked].size(), 80u);
    [first become:[NSTask class]];
    EXPECT_EQ(HostClassOf(first), "NSTaskQZL");
}

TEST_F(ClassSteps, ObjectWhoseClassChangesTakesTheRowOfTheNewOne)
{
    StartWith({"NSPipe", "NSTask", "NSObject"});
    const Class plain = MakeClass("QZLTestPlain", [NSObject class]);
    const id object = MakeObject(plain);
    const Class pipe = MakeClass("QZLTestPipe", [NSPipe class]);
    const Class task = MakeClass("QZLTestTask", [NSTask class]);
    for (int round = 0; round < 3; ++round) {
        object_setClass(object, plain);
        EXPECT_EQ(HostClassOf(object), "NSObjectQZL");
        object_setClass(object, pipe);
        EXPECT_EQ(HostClassOf(object), "NSPipeQZL");
        object_setClass(object, task);
        EXPECT_EQ(HostClassOf(object), "NSTaskQZL");
    }
    object_setClass(object, plain);
}

TEST_F(ClassSteps, ClassThatStandsWhereAnotherOneStoodTakesItsOwnRow)
{
    StartWith({"NSPipe", "NSTask", "NSObject"});
    const Class stood = MakeClass("QZLTestStood", [NSPipe class]);
    const id object = MakeObject(stood);
    EXPECT_EQ(HostClassOf(object), "NSPipeQZL");

    // As if a new class got the memory of one that was disposed of.
    for (const Class super : {[NSTask class], [NSObject class]}) {
        const Replacement replacement(stood,
                                      MakeClass("QZLTestNew" + std::string(class_getName(super)), super));
        EXPECT_EQ(HostClassOf(object), std::string(class_getName(super)) + "QZL");
    }
    EXPECT_EQ(HostClassOf(object), "NSPipeQZL");
}

TEST_F(ClassSteps, SuperclassThatStandsWhereAnotherOneStoodCounts)
{
    StartWith({"NSPipe", "NSTask"});
    const Class stood = MakeClass("QZLTestStood", [NSPipe class]);
    const id object = MakeObject(MakeClass("QZLTestLeaf", stood));
    EXPECT_EQ(HostClassOf(object), "NSPipeQZL");
    const Replacement replacement(stood, MakeClass("QZLTestNew", [NSTask class]));
    EXPECT_EQ(HostClassOf(object), "NSTaskQZL");
}

TEST_F(ClassSteps, ObjectWhoseClassGetsItsOwnAnswerIsAskedFromThenOn)
{
    StartWith({"NSPipe", "NSObject"});
    const Class middle = MakeClass("QZLTestMiddle", [NSPipe class]);
    const id object = MakeObject(MakeClass("QZLTestLeaf", middle));
    EXPECT_EQ(HostClassOf(object), "NSPipeQZL");
    class_addMethod(middle, @selector(isKindOfClass:), reinterpret_cast<IMP>(AnswerNo), "C24@0:8#16");
    const Registry registry;
    EXPECT_FALSE(IsRegisteredWhenConverted(registry, object))
        << "the last step goes by the class chain alone";
}

TEST_F(ClassSteps, ObjectThatChangesItsClassWhileItIsAskedSaysNothingAboutItsFormerClass)
{
    StartWith({"NSPipe", "NSObject"});
    const Class former = MakeClass("QZLTestFormer", [NSObject class],
                                   { {"isKindOfClass:", reinterpret_cast<IMP>(BecomePipe), "C24@0:8#16"} });
    gPipeClass = MakeClass("QZLTestPipe", [NSPipe class]);
    const size_t room = class_getInstanceSize(gPipeClass);
    for (int round = 0; round < 3; ++round) {
        const id object = [NSAllocateObject(former, room, nullptr) autorelease];
        EXPECT_EQ(HostClassOf(object), "NSPipeQZL") << round;
    }
    class_replaceMethod(former, @selector(isKindOfClass:), reinterpret_cast<IMP>(AnswerNo), "C24@0:8#16");
    EXPECT_EQ(HostClassOf(MakeObject(former)), "NSObjectQZL");
}

TEST_F(ClassSteps, ObjectThatSaysItIsOfAnotherClassIsAsked)
{
    StartWith({"NSPipe", "NSTask"});
    const Class liar =
        MakeClass("QZLTestLiar", [NSPipe class], { {"class", reinterpret_cast<IMP>(AnswerTask), "#16@0:8"} });
    const id object = MakeObject(liar);
    ClassLookUps::count = 0;
    // Its own method decides which of its two classes counts.
    EXPECT_EQ(HostClassOf(object), [object isKindOfClass:[NSTask class]] ? "NSTaskQZL" : "NSPipeQZL");
    EXPECT_GT(ClassLookUps::count, 3);
}

TEST_F(ClassSteps, RowBehindAMissingClassIsFoundWithAsFewLookUps)
{
    StartWith({"NSExpression", "NSObject"});
    const id plain = MakeObject(MakeClass("QZLTestPlain", [NSObject class]));
    const UninitializedObject expression([NSExpression class]);
    const auto lookUpsFor = [&](id object) {
        Convert(object);
        ClassLookUps::count = 0;
        Convert(object);
        return ClassLookUps::count.load();
    };
    const int ofPlain = lookUpsFor(plain);
    const int ofExpression = lookUpsFor(expression.Get());
    EXPECT_LE(ofPlain, 1);
    EXPECT_LE(ofExpression, 1);
    ClassLookUps::hidden = "NSPathCell";
    EXPECT_EQ(lookUpsFor(plain), ofPlain);
    EXPECT_EQ(lookUpsFor(expression.Get()), ofExpression);
    ClassLookUps::hidden = nullptr;
}

TEST_F(ClassSteps, NoLinkedClassDerivesFromAnother)
{
    for (const ConversionStep &step : kConversionSteps)
        for (const ConversionStep &other : kConversionSteps)
            if (step.isLinked && other.isLinked && &step != &other)
                EXPECT_FALSE([objc_getClass(step.name) isSubclassOfClass:objc_getClass(other.name)])
                    << step.name << " " << other.name;
}

TEST_F(ClassSteps, ClassOfAnEarlierRowCountsBeforeTheValueClassThatItDerivesFrom)
{
    // The platform has no class of that name. Its superclass is of the last step.
    StartWith({"NSDraggingImageComponent"});
    MakeClass("NSDraggingImageComponent", [NSValue class]);
    EXPECT_EQ(HostClassOf(MakeObject(MakeClass("QZLTestLeaf", objc_getClass("NSDraggingImageComponent")))),
              "NSDraggingImageComponentQZL");
}

TEST_F(ClassSteps, ObjectsOfThousandsOfClassesTakeTheirRows)
{
    StartWith({"NSPipe", "NSTask", "NSUndoManager", "NSExpression", "NSObject"});
    const char *const supers[] = {"NSPipe", "NSTask", "NSUndoManager", "NSExpression", "NSObject"};
    std::vector<std::pair<Class, std::string>> classes;
    for (size_t number = 0; number < 5000; ++number) {
        const char *const super = supers[number % std::size(supers)];
        classes.emplace_back(MakeClass("QZLTest" + std::to_string(number), objc_getClass(super)),
                             std::string(super) + "QZL");
    }
    for (int round = 0; round < 2; ++round) {
        for (const auto &[cocoaClass, hostClass] : classes) {
            const UninitializedObject object(cocoaClass);
            ASSERT_EQ(HostClassOf(object.Get()), hostClass) << class_getName(cocoaClass);
        }
        host().ClearTrace();
    }
}

TEST_F(ClassSteps, ManyThreadsThatConvertForTheFirstTimeTakeTheSameRows)
{
    constexpr int kThreads = 16;
    constexpr int kClasses = 200;
    StartWith({"NSPipe", "NSTask", "NSUndoManager", "NSExpression", "NSObject", "QCCompositionRepository"});
    const Class supers[] = {
        objc_getClass("NSPipe"),        objc_getClass("NSTask"),
        objc_getClass("NSUndoManager"), objc_getClass("NSExpression"),
        objc_getClass("NSObject"),      MakeClass("QCCompositionRepository", [NSObject class])};
    std::vector<std::pair<Class, std::string>> classes;
    for (int number = 0; number < kClasses; ++number) {
        const Class super = supers[static_cast<size_t>(number) % std::size(supers)];
        const Class made = MakeClass("QZLTest" + std::to_string(number), super);
        [made class];
        classes.emplace_back(made, std::string(class_getName(super)) + "QZL");
    }

    std::atomic<int> waiting{kThreads};
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            const qzlhost::AutoreleasePool pool;
            for (--waiting; waiting > 0;)
                std::this_thread::yield();
            for (int step = 0; step < kClasses; ++step) {
                const auto &[cocoaClass, hostClass] =
                    classes[static_cast<size_t>(step + thread * 7) % kClasses];
                const UninitializedObject object(cocoaClass);
                wrong += HostClassOf(object.Get()) != hostClass;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}
