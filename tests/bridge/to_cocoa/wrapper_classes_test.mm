// Host objects of the family's wrapper classes become the very Cocoa objects that they hold.
#include "bridge/to_cocoa/wrapper_classes.h"

#import <Foundation/Foundation.h>

#include "bridge/to_cocoa/variant_to_object.h"
#include "tests/bridge/to_cocoa/remembered_classes.h"
#include "tests/support/linked_test.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

static_assert(std::size(kRememberedNames) == 108);

const char *const kDelegateNames[] = {
    "WebUIDelegateQZL",
    "WebResourceLoadDelegateQZL",
    "WebFrameLoadDelegateQZL",
    "WebDownloadDelegateQZL",
    "DRBurnQZL",
    "PDFAnnotationQZL",
    "PDFActionQZL",
};

const char *const kValueNames[] = {
    "NSSizeQZL",         "NSRectQZL",        "NSRangeQZL",     "NSPointQZL", "QTKitTimeQZL",
    "QTKitTimeRangeQZL", "CMTimeMappingQZL", "CMTimeRangeQZL", "CMTimeQZL",
};

const char *const kOtherNames[] = {
    "WebPolicyDelegateQZL", "CFObjectQZL", "CGColorQZL",   "CGFontQZL",  "CGImageQZL",
    "CGColorSpaceQZL",      "CGPathQZL",   "CGContextQZL", "CGLayerQZL",
};

template <size_t Count>
void Append(std::vector<std::string> &list, const char *const (&names)[Count])
{
    list.insert(list.end(), std::begin(names), std::end(names));
}

void DefineWrapperClass(Host &host, const std::string &name, const std::string &super = "")
{
    qzlhost::ClassDefinition definition;
    definition.name = name;
    definition.super = super;
    definition.dataSize = super.empty() ? sizeof(id) : 0;
    host.DefineClass(std::move(definition));
}

/// A host object of the class that holds the Cocoa object, borrowed.
Value NewWrapper(Host &host, const char *className, id handle)
{
    const Value wrapper = host.New(className);
    *static_cast<id *>(host.InstanceData(wrapper)) = handle;
    return wrapper;
}

id Convert(const Value &object)
{
    return GetVariantAsNSObject(ObjectOf(object));
}

/// The classes that the host was asked for, in order.
std::vector<std::string> ClassesAskedFor(const Host &host)
{
    std::vector<std::string> names;
    for (const qzlhost::TraceEntry &entry : host.Trace())
        if (entry.function == "pluginObjectType")
            names.push_back(entry.arguments.substr(1, entry.arguments.size() - 2));
    return names;
}

class WrapperClasses : public LinkedTest {
protected:
    /// Expects the wrapper's own object, and nothing retained.
    void ExpectHandle(const char *className)
    {
        SCOPED_TRACE(className);
        NSObject *const handle = [[[NSObject alloc] init] autorelease];
        const Value wrapper = NewWrapper(host(), className, handle);
        const NSUInteger retains = [handle retainCount];
        {
            const qzlhost::AutoreleasePool pool;
            EXPECT_EQ(Convert(wrapper), handle);
        }
        EXPECT_EQ([handle retainCount], retains);
        EXPECT_EQ(host().References(wrapper), 1);
    }
};

} // namespace

TEST_F(WrapperClasses, EveryRememberedClassGivesItsObject)
{
    Host &host = Start();
    for (const char *className : kRememberedNames)
        DefineWrapperClass(host, className);
    for (const char *className : kRememberedNames)
        ExpectHandle(className);
}

TEST_F(WrapperClasses, EveryOtherWrapperClassGivesItsObject)
{
    Host &host = Start();
    for (const char *className : kDelegateNames) {
        DefineWrapperClass(host, className);
        ExpectHandle(className);
    }
    for (const char *className : kOtherNames) {
        DefineWrapperClass(host, className);
        ExpectHandle(className);
    }
}

TEST_F(WrapperClasses, WrapperWithoutAnObjectIsNil)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    EXPECT_EQ(Convert(NewWrapper(host, "NSTimerQZL", nil)), nil);
}

TEST_F(WrapperClasses, ProgramsOwnSubclassGivesTheObject)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    DefineWrapperClass(host, "ProgramTimer", "NSTimerQZL");
    ExpectHandle("ProgramTimer");
}

TEST_F(WrapperClasses, EveryClassIsAskedForInOrderOnTheFirstCall)
{
    Host &host = Start();
    DefineWrapperClass(host, "Unrelated");
    const Value object = host.New("Unrelated");
    host.ClearTrace();

    Convert(object);

    std::vector<std::string> expected = {"MemoryBlock", "Dictionary"};
    Append(expected, kRememberedNames);
    Append(expected, kDelegateNames);
    Append(expected, kValueNames);
    Append(expected, kOtherNames);
    EXPECT_EQ(ClassesAskedFor(host), expected);
}

TEST_F(WrapperClasses, RememberedClassesAreNotAskedForAgain)
{
    Host &host = Start();
    DefineWrapperClass(host, "Unrelated");
    const Value object = host.New("Unrelated");
    Convert(object);
    host.ClearTrace();

    Convert(object);

    std::vector<std::string> expected = {"MemoryBlock", "Dictionary"};
    Append(expected, kDelegateNames);
    Append(expected, kValueNames);
    Append(expected, kOtherNames);
    EXPECT_EQ(ClassesAskedFor(host), expected);
}

TEST_F(WrapperClasses, RememberedClassEndsTheSearch)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    const Value object = NewWrapper(host, "NSTimerQZL", nil);
    host.ClearTrace();
    Convert(object);
    std::vector<std::string> expected = {"MemoryBlock", "Dictionary"};
    Append(expected, kRememberedNames);
    EXPECT_EQ(ClassesAskedFor(host), expected);
}

TEST_F(WrapperClasses, RememberedClassThatComesAfterTheFirstCallStaysUnknown)
{
    Host &host = Start();
    DefineWrapperClass(host, "NSTimerQZL");
    NSObject *const handle = [[[NSObject alloc] init] autorelease];
    ASSERT_EQ(Convert(NewWrapper(host, "NSTimerQZL", handle)), handle);

    for (const char *className : {"NSPathComponentCellQZL", "NSExpressionQZL"}) {
        DefineWrapperClass(host, className);
        EXPECT_EQ(Convert(NewWrapper(host, className, handle)), nil) << className;
    }
}

TEST_F(WrapperClasses, OtherWrapperClassThatComesLaterIsFound)
{
    Host &host = Start();
    DefineWrapperClass(host, "Unrelated");
    ASSERT_EQ(Convert(host.New("Unrelated")), nil);
    for (const char *className : {"WebUIDelegateQZL", "PDFActionQZL", "WebPolicyDelegateQZL", "CGLayerQZL"}) {
        DefineWrapperClass(host, className);
        ExpectHandle(className);
    }
}

TEST_F(WrapperClasses, NoObjectIsAWrapperWhereTheHostTellsNoInstances)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Lack("RuntimeObjectIsa"); });
    NSObject *const handle = [[[NSObject alloc] init] autorelease];
    for (const char *className : {"NSTimerQZL", "PDFActionQZL", "CFObjectQZL"}) {
        DefineWrapperClass(host, className);
        EXPECT_EQ(Convert(NewWrapper(host, className, handle)), nil) << className;
    }
}

TEST_F(WrapperClasses, NoObjectIsAWrapperWhereTheHostTellsNoClasses)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Lack("pluginObjectType"); });
    NSObject *const handle = [[[NSObject alloc] init] autorelease];
    for (const char *className : {"NSTimerQZL", "PDFActionQZL", "CFObjectQZL"}) {
        DefineWrapperClass(host, className);
        EXPECT_EQ(Convert(NewWrapper(host, className, handle)), nil) << className;
    }
}
