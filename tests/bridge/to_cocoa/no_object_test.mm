// A null host object passes all but two of the tests that any object passes.
#import <Foundation/Foundation.h>

#include "bridge/to_cocoa/object_to_cocoa.h"
#include "family/family.h"
#include "family/wrapper_classes.h"
#include "tests/bridge/to_cocoa/chain_classes.h"
#include "tests/support/linked_test.h"

using qzlhost::Host;

namespace {

int gReferencesAskedFor;

void *FindEveryMethod(REALobject, const char *)
{
    return reinterpret_cast<void *>(&FindEveryMethod);
}

bool CountReference(REALobject, FSRef *, HFSUniStr255 *)
{
    ++gReferencesAskedFor;
    return false;
}

bool IsOfEveryClass(REALobject, REALclassRef)
{
    return true;
}

using NoObject = LinkedTest;

} // namespace

TEST_F(NoObject, GoesOnToTheFamilysWrapperWithoutTheTestsForBlocksAndDictionaries)
{
    Host &host = Start();
    Family family(host);
    family.OfferObjectWrapper();
    host.ClearTrace();

    const id converted = GetObjectAsNSObject(nullptr);

    EXPECT_STREQ([NSStringFromClass([converted class]) UTF8String], "QZLREALobjectWrapper");
    EXPECT_EQ(family.Wrapped(converted), nullptr);
    EXPECT_EQ(ClassesAskedFor(host), AndOthers(AndRemembered({})));
    EXPECT_EQ(host.CallsOf("REALLoadObjectMethod"), 1) << "the test for folder items";
}

TEST_F(NoObject, TakenForAFolderItemIsNilAndTheHostIsNotAskedForItsReference)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Replace("REALLoadObjectMethod", reinterpret_cast<void *>(&FindEveryMethod));
        unloaded.Replace("REALFSRefFromFolderItem", reinterpret_cast<void *>(&CountReference));
    });
    Family family(host);
    family.OfferObjectWrapper();
    host.ClearTrace();

    EXPECT_EQ(GetObjectAsNSObject(nullptr), nil);

    EXPECT_EQ(gReferencesAskedFor, 0);
    EXPECT_TRUE(ClassesAskedFor(host).empty()) << "no later test";
}

TEST_F(NoObject, TakenForAWrapperIsNil)
{
    Host &host = StartReplacing("RuntimeObjectIsa", reinterpret_cast<void *>(&IsOfEveryClass));
    Family family(host);
    family.OfferObjectWrapper();
    DefineWrapperClass(host, "NSTimerQZL");
    host.ClearTrace();

    EXPECT_EQ(GetObjectAsNSObject(nullptr), nil);

    EXPECT_EQ(ClassesAskedFor(host), AndRemembered({})) << "no other test";
}
