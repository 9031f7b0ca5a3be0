// The rows of Cocoa classes whose objects become wrappers: which wrapper, registered or not, in which order.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <algorithm>
#include <functional>
#include <iterator>

#include "tests/support/conversion_doubles.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// The classes that a pretender claims to be of.
std::vector<Class> gPretendedClasses;
/// The names of the classes that pretenders were asked about.
std::vector<std::string> gAskedClasses;
/// Runs whenever a pretender is asked.
std::function<void()> gOnAsk;

} // namespace

/// Claims to be of these classes and of no other, not even of its own.
@interface QZLTestPretender : NSObject
@end

@implementation QZLTestPretender
- (BOOL)isKindOfClass:(Class)asked
{
    gAskedClasses.push_back(class_getName(asked));
    if (gOnAsk)
        gOnAsk();
    return std::find(gPretendedClasses.begin(), gPretendedClasses.end(), asked) != gPretendedClasses.end();
}
@end

namespace {

/// How a row makes its wrapper.
enum class Kind {
    /// Of the row's own host class, registered.
    FixedName,
    /// Of the nearest class of the object's chain that has a host class; not registered.
    ClassChain,
    /// By the family's method for views, or else along the class chain.
    View,
    /// Of NSNotificationQZL, registered.
    Notification,
    /// Of NSDistributedNotificationCenterQZL, registered.
    DistributedCenter,
    /// As FixedName, but the class must exist when the row is first tried.
    LookedUpOnce,
};

struct Row {
    const char *className;
    Kind kind;
};

const Row kRows[] = {
    {"NSPathComponentCell", Kind::FixedName},
    {"NSPathCell", Kind::FixedName},
    {"NSPathControl", Kind::FixedName},
    {"NSPipe", Kind::FixedName},
    {"NSTask", Kind::FixedName},
    {"NSFileHandle", Kind::FixedName},
    {"NSClipView", Kind::FixedName},
    {"NSAnimation", Kind::FixedName},
    {"NSCoder", Kind::FixedName},
    {"NSTimeZone", Kind::FixedName},
    {"NSDateComponents", Kind::FixedName},
    {"NSAnimationContext", Kind::FixedName},
    {"NSTimer", Kind::FixedName},
    {"NSBox", Kind::FixedName},
    {"NSComboBox", Kind::FixedName},
    {"NSImageView", Kind::FixedName},
    {"NSPopUpButton", Kind::FixedName},
    {"NSTextField", Kind::FixedName},
    {"NSSearchFieldCell", Kind::FixedName},
    {"NSSecureTextField", Kind::FixedName},
    {"NSSecureTextFieldCell", Kind::FixedName},
    {"NSApplication", Kind::FixedName},
    {"NSSearchField", Kind::FixedName},
    {"NSTabView", Kind::FixedName},
    {"NSTabViewItem", Kind::FixedName},
    {"NSStepper", Kind::FixedName},
    {"NSURLRequest", Kind::FixedName},
    {"NSURLDownload", Kind::FixedName},
    {"NSURLConnection", Kind::FixedName},
    {"NSFontPanel", Kind::FixedName},
    {"NSFontManager", Kind::FixedName},
    {"NSImage", Kind::FixedName},
    {"NSImageRep", Kind::ClassChain},
    {"NSShadow", Kind::FixedName},
    {"NSAffineTransform", Kind::FixedName},
    {"NSFont", Kind::FixedName},
    {"NSToolbarItem", Kind::FixedName},
    {"NSToolbar", Kind::FixedName},
    {"NSScreen", Kind::FixedName},
    {"NSCharacterSet", Kind::FixedName},
    {"NSTextStorage", Kind::FixedName},
    {"NSColor", Kind::FixedName},
    {"NSAttributedString", Kind::ClassChain},
    {"NSAssertionHandler", Kind::FixedName},
    {"NSMenu", Kind::FixedName},
    {"NSFontDescriptor", Kind::FixedName},
    {"NSMenuItem", Kind::FixedName},
    {"NSError", Kind::FixedName},
    {"NSViewController", Kind::FixedName},
    {"NSWindowController", Kind::FixedName},
    {"NSHTTPCookie", Kind::FixedName},
    {"NSHTTPCookieStorage", Kind::FixedName},
    {"NSPasteboard", Kind::FixedName},
    {"NSBundle", Kind::FixedName},
    {"NSEnumerator", Kind::FixedName},
    {"NSDirectoryEnumerator", Kind::FixedName},
    {"NSRunningApplication", Kind::FixedName},
    {"NSURLCache", Kind::FixedName},
    {"NSCell", Kind::ClassChain},
    {"NSFileManager", Kind::FixedName},
    {"NSSound", Kind::FixedName},
    {"NSBezierPath", Kind::FixedName},
    {"NSCursor", Kind::FixedName},
    {"NSEvent", Kind::FixedName},
    {"NSIndexSet", Kind::ClassChain},
    {"NSCalendar", Kind::FixedName},
    {"NSView", Kind::View},
    {"NSWindow", Kind::ClassChain},
    {"NSColorList", Kind::FixedName},
    {"NSColorSpace", Kind::FixedName},
    {"NSTableColumn", Kind::FixedName},
    {"NSUndoManager", Kind::FixedName},
    {"NSScroller", Kind::FixedName},
    {"NSResponder", Kind::ClassChain},
    {"NSTextFieldCell", Kind::ClassChain},
    {"NSText", Kind::ClassChain},
    {"NSTableHeaderView", Kind::FixedName},
    {"NSOperation", Kind::FixedName},
    {"NSNotification", Kind::Notification},
    {"NSNotificationCenter", Kind::ClassChain},
    {"NSDistributedNotificationCenter", Kind::DistributedCenter},
    {"NSUserDefaults", Kind::FixedName},
    {"NSDockTile", Kind::FixedName},
    {"NSLocale", Kind::FixedName},
    {"NSAppleEventDescriptor", Kind::FixedName},
    {"NSAppleScript", Kind::FixedName},
    {"NSTableView", Kind::FixedName},
    {"NSLayoutManager", Kind::FixedName},
    {"NSTextContainer", Kind::FixedName},
    {"NSTextView", Kind::ClassChain},
    {"NSTextTab", Kind::FixedName},
    {"NSParagraphStyle", Kind::FixedName},
    {"NSPasteboardItem", Kind::FixedName},
    {"NSRunLoop", Kind::FixedName},
    {"NSMetadataQuery", Kind::FixedName},
    {"NSMetadataItem", Kind::FixedName},
    {"NSPredicate", Kind::FixedName},
    {"NSCompoundPredicate", Kind::FixedName},
    {"NSSortDescriptor", Kind::FixedName},
    {"NSMetadataQueryResultGroup", Kind::FixedName},
    {"NSComparisonPredicate", Kind::FixedName},
    {"NSFileWrapper", Kind::FixedName},
    {"NSTextAttachment", Kind::FixedName},
    {"NSExpression", Kind::FixedName},
    {"NSUserNotification", Kind::LookedUpOnce},
    {"NSDraggingImageComponent", Kind::LookedUpOnce},
    {"QuartzFilter", Kind::LookedUpOnce},
    {"QCComposition", Kind::LookedUpOnce},
    {"QCCompositionRepository", Kind::LookedUpOnce},
};

constexpr auto kRowName = [](const auto &info) { return std::string(info.param.className); };

std::string HostClassOf(const char *className)
{
    return std::string(className) + "QZL";
}

bool IsRegistered(Kind kind)
{
    return kind != Kind::ClassChain && kind != Kind::View;
}

/// The class of a row; a new one if the platform has none.
Class ClassNamed(const char *name)
{
    const Class found = objc_getClass(name);
    return found != Nil ? found : MakeClass(name, [NSObject class]);
}

/// Initialises the class now: without a display the initialisation of a few classes raises, but only once.
Class Initialized(Class cocoaClass)
{
    @try {
        [cocoaClass class];
    } @catch (NSException *) {
    }
    return cocoaClass;
}

void InitializeNothing(id, SEL) {}

/// A subclass of the row's class. It does not inherit +initialize, since some classes cannot run it twice.
Class MakeSubclass(const char *name)
{
    const Class made = MakeClass("QZLTestSubclass", Initialized(ClassNamed(name)));
    class_addMethod(object_getClass(made), @selector(initialize), reinterpret_cast<IMP>(InitializeNothing),
                    "v16@0:8");
    return made;
}

/// The first row for objects of the class, by the superclasses that it has on this platform.
const Row &FirstRowOf(Class cocoaClass)
{
    for (const Row &row : kRows)
        if (DescendsFrom(cocoaClass, row.className))
            return row;
    throw std::logic_error("no row");
}

std::string NearestHostClass(const Host &host, Class cocoaClass)
{
    for (Class reached = cocoaClass; reached != Nil; reached = class_getSuperclass(reached))
        if (host.HasClass(HostClassOf(class_getName(reached))))
            return HostClassOf(class_getName(reached));
    return "";
}

/// The host class that an object of the class gets from a row.
std::string ExpectedHostClass(const Host &host, const Row &row, Class cocoaClass)
{
    return IsRegistered(row.kind) ? HostClassOf(row.className) : NearestHostClass(host, cocoaClass);
}

class ClassRows : public LinkedTest {
protected:
    /// A host with the wrapper class of every row, and with those for objects of no row.
    Host &StartWithAllWrapperClasses()
    {
        Host &host = Start();
        for (const Row &row : kRows)
            DefineWrapperClass(host, HostClassOf(row.className));
        DefineWrapperClass(host, "NSObjectQZL");
        DefineCFWrapperClass(host, "CFObjectQZL");
        return host;
    }

    /// Converts an object of the class twice and checks the wrappers, the registry and the references against
    /// the row.
    void ExpectWrapper(Class cocoaClass, const Row &row)
    {
        const std::string hostClass = ExpectedHostClass(host(), row, cocoaClass);
        const Registry registry;
        const UninitializedObject object(cocoaClass);
        {
            const Value first = Convert(object.Get());
            EXPECT_EQ(host().ClassOf(first), hostClass);
            EXPECT_EQ(host().References(first), 1);
            EXPECT_EQ(HandleOf<id>(host(), first), object.Get());
            EXPECT_EQ(object.Retains(), 1u);
            if (IsRegistered(row.kind))
                EXPECT_EQ(registry.At(object.Get()), ObjectOf(first));
            else
                EXPECT_EQ(registry.At(object.Get()), nullptr);

            const Value second = Convert(object.Get());
            EXPECT_EQ(second.ObjectPointer() == first.ObjectPointer(), IsRegistered(row.kind));
            EXPECT_EQ(host().References(second), IsRegistered(row.kind) ? 2 : 1);
            EXPECT_EQ(object.Retains(), IsRegistered(row.kind) ? 1u : 2u);
        }
        EXPECT_EQ(object.Retains(), 0u);
        EXPECT_EQ(registry.At(object.Get()), nullptr);
    }
};

class EachClassRow : public ClassRows, public testing::WithParamInterface<Row> {};

} // namespace

TEST_P(EachClassRow, WrapsAnInstance)
{
    StartWithAllWrapperClasses();
    const Class rowClass = Initialized(ClassNamed(GetParam().className));
    ExpectWrapper(rowClass, FirstRowOf(rowClass));
}

TEST_P(EachClassRow, WrapsAnInstanceOfASubclass)
{
    StartWithAllWrapperClasses();
    const Class subclass = MakeSubclass(GetParam().className);
    ExpectWrapper(subclass, FirstRowOf(subclass));
}

TEST_P(EachClassRow, TakesTheSubclassesHostClassOnlyAlongTheClassChain)
{
    Host &host = StartWithAllWrapperClasses();
    DefineWrapperClass(host, "QZLTestSubclassQZL");
    const Class subclass = MakeSubclass(GetParam().className);
    ExpectWrapper(subclass, FirstRowOf(subclass));
}

TEST_P(EachClassRow, TakesAnObjectThatIsOfNoOtherRow)
{
    Host &host = StartWithAllWrapperClasses();
    DefineWrapperClass(host, "QZLTestPretenderQZL");
    gPretendedClasses = {ClassNamed(GetParam().className)};
    ExpectWrapper([QZLTestPretender class], GetParam());
}

INSTANTIATE_TEST_SUITE_P(Cocoa, EachClassRow, testing::ValuesIn(kRows), kRowName);

TEST_F(ClassRows, AreTriedInOrder)
{
    StartWithAllWrapperClasses();
    for (const Row &row : kRows)
        ClassNamed(row.className);
    gPretendedClasses.clear();
    gAskedClasses.clear();

    Convert(MakeObject([QZLTestPretender class]));

    std::vector<std::string> expected = {"NSURL", "NSString", "NSData", "NSArray",
                                         "NSSet", "NSNumber", "NSDate", "NSDictionary"};
    for (const Row &row : kRows)
        expected.push_back(row.className);
    expected.push_back("NSValue");
    EXPECT_EQ(gAskedClasses, expected);
}

TEST_F(ClassRows, EarlierRowWinsOverTheNext)
{
    Host &host = StartWithAllWrapperClasses();
    DefineWrapperClass(host, "QZLTestPretenderQZL");
    for (size_t index = 0; index + 1 < std::size(kRows); ++index) {
        SCOPED_TRACE(kRows[index].className);
        gPretendedClasses = {ClassNamed(kRows[index].className), ClassNamed(kRows[index + 1].className)};
        ExpectWrapper([QZLTestPretender class], kRows[index]);
    }
}

TEST_F(ClassRows, WithoutARegistryEachConversionMakesAWrapper)
{
    Host &host = StartWithAllWrapperClasses();
    DefineWrapperClass(host, "QZLTestPretenderQZL");
    const UninitializedObject object([QZLTestPretender class]);
    for (const Row &row : kRows) {
        SCOPED_TRACE(row.className);
        gPretendedClasses = {ClassNamed(row.className)};
        const Value first = Convert(object.Get());
        const Value second = Convert(object.Get());
        EXPECT_EQ(host.ClassOf(first), ExpectedHostClass(host, row, [QZLTestPretender class]));
        EXPECT_NE(first.ObjectPointer(), second.ObjectPointer());
        EXPECT_EQ(host.References(second), 1);
        EXPECT_EQ(object.Retains(), 2u);
    }
    EXPECT_EQ(object.Retains(), 0u);
}

TEST_F(ClassRows, WithoutTheRowsHostClassTheResultIsNullAndNoLaterStepIsTried)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSObjectQZL");
    DefineCFWrapperClass(host, "CFObjectQZL");
    const UninitializedObject object([QZLTestPretender class]);
    for (const Row &row : kRows) {
        SCOPED_TRACE(row.className);
        gPretendedClasses = {ClassNamed(row.className)};
        const Value variant = Convert(object.Get());
        // A walk along the class chain ends at the root class, whose host class is there.
        EXPECT_EQ(variant.IsNil() ? "" : host.ClassOf(variant), IsRegistered(row.kind) ? "" : "NSObjectQZL");
    }
    EXPECT_EQ(object.Retains(), 0u);
}

TEST_F(ClassRows, ClassChainWithoutAnyHostClassEndsWithNull)
{
    Start();
    const UninitializedObject object([QZLTestPretender class]);
    for (const Row &row : kRows) {
        SCOPED_TRACE(row.className);
        gPretendedClasses = {ClassNamed(row.className)};
        EXPECT_EQ(NewVariantFromNSObject(object.Get()), nullptr);
    }
    EXPECT_EQ(object.Retains(), 0u);
}

TEST_F(ClassRows, WrapperRegisteredWhileTheRowsAreTriedIsReturned)
{
    Host &host = StartWithAllWrapperClasses();
    Registry registry;
    const Value entered = host.New("NSObjectQZL");
    const UninitializedObject object([QZLTestPretender class]);
    gPretendedClasses = {ClassNamed("NSPipe")};
    gOnAsk = [&] { registry.Enter(object.Get(), entered); };

    const Value variant = Convert(object.Get());
    gOnAsk = nullptr;

    EXPECT_EQ(variant.ObjectPointer(), entered.ObjectPointer());
    EXPECT_EQ(host.References(entered), 2);
    EXPECT_EQ(object.Retains(), 0u);
}

namespace {

struct ShadowedClass {
    const char *className;
    const char *hostClass;
    bool registered;
};

/// Objects of later rows, and the wrapper that an earlier row makes of them.
const ShadowedClass kShadowedClasses[] = {
    {"NSSearchField", "NSTextFieldQZL", true},
    {"NSSecureTextField", "NSTextFieldQZL", true},
    {"NSDirectoryEnumerator", "NSEnumeratorQZL", true},
    {"NSCompoundPredicate", "NSPredicateQZL", true},
    {"NSComparisonPredicate", "NSPredicateQZL", true},
    {"NSScroller", "NSScrollerQZL", false},
    {"NSTableHeaderView", "NSTableHeaderViewQZL", false},
    {"NSTableView", "NSTableViewQZL", false},
    {"NSText", "NSTextQZL", false},
    {"NSTextView", "NSTextViewQZL", false},
    {"NSDistributedNotificationCenter", "NSDistributedNotificationCenterQZL", false},
};

class ShadowedRow : public ClassRows, public testing::WithParamInterface<ShadowedClass> {};

/// A row whose class is looked up once, and which the platform lacks.
class RowLookedUpOnce : public ClassRows, public testing::WithParamInterface<Row> {};

std::vector<Row> RowsLookedUpOnce()
{
    std::vector<Row> rows;
    for (const Row &row : kRows)
        if (row.kind == Kind::LookedUpOnce && objc_getClass(row.className) == Nil)
            rows.push_back(row);
    return rows;
}

} // namespace

TEST_P(ShadowedRow, IsLeftToTheEarlierRow)
{
    Host &host = StartWithAllWrapperClasses();
    const Registry registry;
    const UninitializedObject object(objc_getClass(GetParam().className));
    const Value variant = Convert(object.Get());
    EXPECT_EQ(host.ClassOf(variant), GetParam().hostClass);
    EXPECT_EQ(registry.At(object.Get()) != nullptr, GetParam().registered);
}

INSTANTIATE_TEST_SUITE_P(Cocoa, ShadowedRow, testing::ValuesIn(kShadowedClasses), kRowName);

TEST_P(RowLookedUpOnce, DoesNotFindAClassThatAppearsAfterwards)
{
    Host &host = StartWithAllWrapperClasses();
    const Registry registry;
    Convert(MakeObject([NSObject class]));

    const id object = MakeObject(MakeClass(GetParam().className, [NSObject class]));
    const Value variant = Convert(object);

    // The walk along the class chain finds the same host class, but registers nothing.
    EXPECT_EQ(host.ClassOf(variant), HostClassOf(GetParam().className));
    EXPECT_EQ(registry.At(object), nullptr);
}

TEST_P(RowLookedUpOnce, FindsAClassThatAppearsAfterObjectsOfEarlierRows)
{
    Host &host = StartWithAllWrapperClasses();
    const Registry registry;
    Convert(@"text");
    Convert([NSPipe pipe]);

    const id object = MakeObject(MakeClass(GetParam().className, [NSObject class]));
    const Value variant = Convert(object);

    EXPECT_EQ(host.ClassOf(variant), HostClassOf(GetParam().className));
    EXPECT_EQ(registry.At(object), ObjectOf(variant));
}

INSTANTIATE_TEST_SUITE_P(Cocoa, RowLookedUpOnce, testing::ValuesIn(RowsLookedUpOnce()), kRowName);

namespace {

/// What the family's method for views returns, without a reference.
REALobject gViewWrapper;
id gViewAskedFor;

REALobject AnswerViewWrapper(id, SEL, id view)
{
    gViewAskedFor = view;
    return gViewWrapper;
}

/// Adds the family's method for views to NSValue, for the rest of the process.
void AddViewMethod()
{
    class_addMethod(object_getClass([NSValue class]), sel_registerName("NewQTKitNSViewQZL:"),
                    reinterpret_cast<IMP>(AnswerViewWrapper), "^v24@0:8@16");
}

} // namespace

TEST_F(ClassRows, ViewIsWhatTheFamilyMakesOfIt)
{
    Host &host = StartWithAllWrapperClasses();
    DefineWrapperClass(host, "FamilyViewQZL");
    AddViewMethod();
    const Registry registry;
    const UninitializedObject view(objc_getClass("NSView"));
    const Value wrapper = host.New("FamilyViewQZL");
    gViewWrapper = ObjectOf(wrapper);

    const REALobject result = NewVariantFromNSObject(view.Get());

    EXPECT_EQ(result, ObjectOf(wrapper));
    EXPECT_EQ(gViewAskedFor, view.Get());
    EXPECT_EQ(host.References(wrapper), 1) << "passed on with no reference added";
    EXPECT_EQ(view.Retains(), 0u);
    EXPECT_EQ(registry.At(view.Get()), nullptr);
}

TEST_F(ClassRows, ViewThatTheFamilyDoesNotKnowTakesItsClassChain)
{
    Host &host = StartWithAllWrapperClasses();
    AddViewMethod();
    gViewWrapper = nullptr;
    const UninitializedObject view(objc_getClass("NSScroller"));
    const Value variant = Convert(view.Get());
    EXPECT_EQ(gViewAskedFor, view.Get());
    EXPECT_EQ(host.ClassOf(variant), "NSScrollerQZL");
    EXPECT_EQ(view.Retains(), 1u);
}

TEST_F(ClassRows, FamilyIsAskedForViewsOnly)
{
    StartWithAllWrapperClasses();
    AddViewMethod();
    const UninitializedObject object([QZLTestPretender class]);
    for (const Row &row : kRows) {
        SCOPED_TRACE(row.className);
        gPretendedClasses = {ClassNamed(row.className)};
        gViewAskedFor = nil;
        Convert(object.Get());
        EXPECT_EQ(gViewAskedFor != nil, row.kind == Kind::View);
    }
}

TEST_F(ClassRows, FamilyIsAskedForViewsFromWhenItsMethodAppears)
{
    Host &host = StartWithAllWrapperClasses();
    const UninitializedObject view(objc_getClass("NSView"));
    EXPECT_EQ(host.ClassOf(Convert(view.Get())), "NSViewQZL");
    const Value wrapper = host.New("NSObjectQZL");
    gViewWrapper = ObjectOf(wrapper);
    AddViewMethod();
    EXPECT_EQ(NewVariantFromNSObject(view.Get()), ObjectOf(wrapper));
}

TEST_F(ClassRows, NotificationIsRegisteredUnderTheLibrarysOwnClass)
{
    Host &host = StartWithAllWrapperClasses();
    const Registry registry;
    NSNotification *const notification = [NSNotification notificationWithName:@"name" object:nil];
    const Value first = Convert(notification);
    const Value second = Convert(notification);
    EXPECT_EQ(host.ClassOf(first), "NSNotificationQZL");
    EXPECT_EQ(first.ObjectPointer(), second.ObjectPointer());
    EXPECT_EQ(host.References(first), 2);
    EXPECT_EQ(registry.At(notification), ObjectOf(first));
}

TEST_F(ClassRows, DistributedCenterIsNotRegistered)
{
    Host &host = StartWithAllWrapperClasses();
    const Registry registry;
    const id center = [NSDistributedNotificationCenter defaultCenter];
    const Value first = Convert(center);
    const Value second = Convert(center);
    EXPECT_EQ(host.ClassOf(first), "NSDistributedNotificationCenterQZL");
    EXPECT_NE(first.ObjectPointer(), second.ObjectPointer());
    EXPECT_EQ(registry.At(center), nullptr);
}

TEST_F(ClassRows, TimerConvertedTwiceIsTheSameInstance)
{
    Host &host = StartWithAllWrapperClasses();
    const Registry registry;
    NSTimer *const timer = [NSTimer timerWithTimeInterval:60
                                                   target:[NSObject class]
                                                 selector:@selector(class)
                                                 userInfo:nil
                                                  repeats:NO];
    const Value first = Convert(timer);
    const Value second = Convert(timer);
    EXPECT_EQ(host.ClassOf(first), "NSTimerQZL");
    EXPECT_EQ(first.ObjectPointer(), second.ObjectPointer());
}
