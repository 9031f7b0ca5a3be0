// Folder items where Core Foundation refuses a step on the way to the URL, and what the steps leave behind.
#import <Foundation/Foundation.h>

#include <algorithm>

#include "bridge/to_cocoa/object_to_cocoa.h"
#include "tests/support/core_foundation_double.h"
#include "tests/support/linked_test.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

std::u16string gLeaf;

/// Every item is missing, in a folder that is there.
bool AnswerMissingItem(REALobject, FSRef *reference, HFSUniStr255 *name)
{
    if (name == nullptr)
        return false;
    name->length = static_cast<uint16_t>(gLeaf.size());
    std::copy(gLeaf.begin(), gLeaf.end(), name->unicode);
    return CFURLGetFSRef((CFURLRef)[NSURL fileURLWithPath:@"/tmp"], reference) != 0;
}

class FolderItemRefusals : public LinkedTest {
protected:
    /// What becomes of a missing item of this name where Core Foundation refuses the step.
    std::string Convert(const std::u16string &leaf, Refusal refusal = Refusal::Nothing)
    {
        Host &host = Start(2024.01, [](Host &unloaded) {
            unloaded.Replace("REALFSRefFromFolderItem", reinterpret_cast<void *>(&AnswerMissingItem));
        });
        gLeaf = leaf;
        const Value item = host.NewFolderItem("/any");
        const qzlhost::AutoreleasePool pool;
        TheCoreFoundation().ReleaseMade();
        TheCoreFoundation().refusal = refusal;
        const id url = GetObjectAsNSObject(ObjectOf(item));
        TheCoreFoundation().refusal = Refusal::Nothing;
        return url == nil ? "nil" : [[url absoluteString] UTF8String];
    }

    /// Expects that the library got `count` objects and holds none of them.
    static void ExpectReleased(size_t count)
    {
        EXPECT_EQ(TheCoreFoundation().ReleaseMade(), std::pair(count, count));
    }
};

} // namespace

TEST_F(FolderItemRefusals, NothingIsLeftBehindWhereNoneIsMade)
{
    EXPECT_EQ(Convert(u"\u00E9"), "file:///tmp/e%CC%81");
    ExpectReleased(4);
}

TEST_F(FolderItemRefusals, NameThatCannotBeCopiedIsTakenAsItIs)
{
    EXPECT_EQ(Convert(u"\u00E9", Refusal::MutableCopy), "file:///tmp/%C3%A9");
    ExpectReleased(3);
}

TEST_F(FolderItemRefusals, ItemWhoseParentHasNoURLIsNil)
{
    EXPECT_EQ(Convert(u"leaf", Refusal::ReferenceURL), "nil");
    ExpectReleased(0);
}

TEST_F(FolderItemRefusals, ItemWhoseNameCannotBeMadeIsNil)
{
    EXPECT_EQ(Convert(u"leaf", Refusal::String), "nil");
    ExpectReleased(1);
}

TEST_F(FolderItemRefusals, ItemWhoseNameCannotBeAppendedIsNil)
{
    EXPECT_EQ(Convert(u"leaf", Refusal::LongerURL), "nil");
    ExpectReleased(3);
}

TEST_F(FolderItemRefusals, ItemWithoutANameGivesItsParentBack)
{
    EXPECT_EQ(Convert(u""), "nil");
    ExpectReleased(1);
}
