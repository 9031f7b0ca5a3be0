// Folder items where Core Foundation refuses a step on the way to the URL, and what the steps leave behind.
#include <CoreServices/CoreServices.h>
#import <Foundation/Foundation.h>

#include <algorithm>

#include "bridge/to_cocoa/object_to_cocoa.h"
#include "tests/support/linked_test.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

enum class Step { None, Parent, Name, Copy, Appending };

/// The step that Core Foundation refuses.
Step gRefused;

/// What the steps made, with a retain of the test's own.
std::vector<CFTypeRef> gMade;

template <typename Reference>
Reference Note(Reference made)
{
    if (made != nullptr)
        gMade.push_back(CFRetain(made));
    return made;
}

} // namespace

// The linker leads the library's calls here. On macOS, null arguments end the process.
extern "C" {
CFURLRef __real_CFURLCreateFromFSRef(CFAllocatorRef allocator, const FSRef *reference);
CFURLRef __wrap_CFURLCreateFromFSRef(CFAllocatorRef allocator, const FSRef *reference)
{
    return gRefused == Step::Parent ? nullptr : Note(__real_CFURLCreateFromFSRef(allocator, reference));
}

CFStringRef __real_CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar *units,
                                                CFIndex count);
CFStringRef __wrap_CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar *units, CFIndex count)
{
    if (gRefused == Step::Name)
        return nullptr;
    return Note(__real_CFStringCreateWithCharacters(allocator, units, count));
}

CFMutableStringRef __real_CFStringCreateMutableCopy(CFAllocatorRef allocator, CFIndex longest,
                                                    CFStringRef string);
CFMutableStringRef __wrap_CFStringCreateMutableCopy(CFAllocatorRef allocator, CFIndex longest,
                                                    CFStringRef string)
{
    EXPECT_NE(string, nullptr);
    if (gRefused == Step::Copy)
        return nullptr;
    return Note(__real_CFStringCreateMutableCopy(allocator, longest, string));
}

CFURLRef __real_CFURLCreateCopyAppendingPathComponent(CFAllocatorRef allocator, CFURLRef url,
                                                      CFStringRef component, Boolean isDirectory);
CFURLRef __wrap_CFURLCreateCopyAppendingPathComponent(CFAllocatorRef allocator, CFURLRef url,
                                                      CFStringRef component, Boolean isDirectory)
{
    EXPECT_NE(url, nullptr);
    EXPECT_NE(component, nullptr);
    if (gRefused == Step::Appending)
        return nullptr;
    return Note(__real_CFURLCreateCopyAppendingPathComponent(allocator, url, component, isDirectory));
}
}

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
    std::string Convert(const std::u16string &leaf, Step refused = Step::None)
    {
        Host &host = Start(2024.01, [](Host &unloaded) {
            unloaded.Replace("REALFSRefFromFolderItem", reinterpret_cast<void *>(&AnswerMissingItem));
        });
        gLeaf = leaf;
        const Value item = host.NewFolderItem("/any");
        const qzlhost::AutoreleasePool pool;
        gRefused = refused;
        const id url = GetObjectAsNSObject(ObjectOf(item));
        gRefused = Step::None;
        return url == nil ? "nil" : [[url absoluteString] UTF8String];
    }

    /// Expects so many objects, of which nobody but the test has one.
    void ExpectGivenBack(size_t count)
    {
        EXPECT_EQ(gMade.size(), count);
        for (const CFTypeRef made : gMade) {
            EXPECT_EQ([(id)made retainCount], 1u) << [[(id)made description] UTF8String];
            CFRelease(made);
        }
        gMade.clear();
    }
};

} // namespace

TEST_F(FolderItemRefusals, NothingIsLeftBehindWhereNoneIsMade)
{
    EXPECT_EQ(Convert(u"\u00E9"), "file:///tmp/e%CC%81");
    ExpectGivenBack(4);
}

TEST_F(FolderItemRefusals, NameThatCannotBeCopiedIsTakenAsItIs)
{
    EXPECT_EQ(Convert(u"\u00E9", Step::Copy), "file:///tmp/%C3%A9");
    ExpectGivenBack(3);
}

TEST_F(FolderItemRefusals, ItemWhoseParentHasNoURLIsNil)
{
    EXPECT_EQ(Convert(u"leaf", Step::Parent), "nil");
    ExpectGivenBack(0);
}

TEST_F(FolderItemRefusals, ItemWhoseNameCannotBeMadeIsNil)
{
    EXPECT_EQ(Convert(u"leaf", Step::Name), "nil");
    ExpectGivenBack(1);
}

TEST_F(FolderItemRefusals, ItemWhoseNameCannotBeAppendedIsNil)
{
    EXPECT_EQ(Convert(u"leaf", Step::Appending), "nil");
    ExpectGivenBack(3);
}

TEST_F(FolderItemRefusals, ItemWithoutANameGivesItsParentBack)
{
    EXPECT_EQ(Convert(u""), "nil");
    ExpectGivenBack(1);
}
