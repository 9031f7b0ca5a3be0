// Folder items for which Core Foundation refuses a step on the way to the URL.
#import <Foundation/Foundation.h>

#include <algorithm>

#include "bridge/to_cocoa/object_to_cocoa.h"
#include "tests/support/core_foundation_double.h"
#include "tests/support/linked_test.h"
#include "tests/support/row_names.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

std::u16string gLeaf;

/// Every item is missing from a folder that exists.
bool AnswerMissingItem(REALobject, FSRef *reference, HFSUniStr255 *name)
{
    if (name == nullptr)
        return false;
    name->length = static_cast<uint16_t>(gLeaf.size());
    std::copy(gLeaf.begin(), gLeaf.end(), name->unicode);
    return CFURLGetFSRef((CFURLRef)[NSURL fileURLWithPath:@"/tmp"], reference) != 0;
}

/// A missing item, and what becomes of it where Core Foundation refuses a step.
struct RefusalRow {
    const char *name;
    const char16_t *leaf;
    Refusal refusal;
    const char *url;
    /// How many objects Core Foundation made.
    size_t objects;
};

constexpr RefusalRow kRows[] = {
    {"Nothing", u"\u00E9", Refusal::Nothing, "file:///tmp/e%CC%81", 4},
    {"CopyOfTheNameWhichStaysAsItIs", u"\u00E9", Refusal::MutableCopy, "file:///tmp/%C3%A9", 3},
    {"URLOfTheParent", u"leaf", Refusal::ReferenceURL, "nil", 0},
    {"Name", u"leaf", Refusal::String, "nil", 1},
    {"LongerURL", u"leaf", Refusal::LongerURL, "nil", 3},
    {"NothingOfAnItemWithoutAName", u"", Refusal::Nothing, "nil", 1},
};

class FolderItemRefusals : public LinkedTest, public ::testing::WithParamInterface<RefusalRow> {};

} // namespace

TEST_P(FolderItemRefusals, LeaveNothingBehind)
{
    Host &host = StartReplacing("REALFSRefFromFolderItem", reinterpret_cast<void *>(&AnswerMissingItem));
    CoreFoundationDouble &platform = TheCoreFoundation();
    gLeaf = GetParam().leaf;
    const Value item = host.NewFolderItem("/any");
    {
        const qzlhost::AutoreleasePool pool;
        platform.ReleaseMade();
        platform.refusal = GetParam().refusal;
        const id url = GetObjectAsNSObject(ObjectOf(item));
        platform.refusal = Refusal::Nothing;
        EXPECT_STREQ(url == nil ? "nil" : [[url absoluteString] UTF8String], GetParam().url);
    }
    EXPECT_EQ(platform.ReleaseMade(), std::pair(GetParam().objects, GetParam().objects));
}

INSTANTIATE_TEST_SUITE_P(Steps, FolderItemRefusals, ::testing::ValuesIn(kRows), kNameOfRow);
