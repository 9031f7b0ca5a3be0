// Host folder items become file URLs.
#include "bridge/to_cocoa/folder_item_to_cocoa.h"

#include <CoreServices/CoreServices.h>
#import <Foundation/Foundation.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "bridge/to_cocoa/object_to_cocoa.h"
#include "tests/support/cocoa_objects.h"
#include "tests/support/linked_test.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// A folder of the test's own.
class Folder {
public:
    Folder() : path_(mkdtemp(pattern_)) {}
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    std::string Path(const std::string &name) const { return path_ + "/" + name; }
    std::string Create(const std::string &name) const
    {
        std::ofstream(Path(name)) << "content";
        return Path(name);
    }

private:
    char pattern_[32] = "/tmp/object_to_cocoa.XXXXXX";
    std::string path_;
};

id Convert(const Value &object)
{
    return GetObjectAsNSObject(ObjectOf(object));
}

std::string PathOf(id url)
{
    return [url isKindOfClass:[NSURL class]] ? [[url path] UTF8String] : "no URL";
}

/// A class of a program's own that has the folder item's method.
void DefineClassWithTrueItem(Host &host, const std::string &name, const std::string &super = "")
{
    qzlhost::ClassDefinition definition;
    definition.name = name;
    definition.super = super;
    definition.dataSize = super.empty() ? sizeof(id) : 0;
    definition.methods.push_back({"TrueItem(Index as integer) as Folderitem",
                                  [](const Value &, const std::vector<Value> &) { return Value(); }});
    host.DefineClass(std::move(definition));
}

/// What the next folder item that a host asks the File Manager about answers.
struct FolderItemAnswer {
    /// Whether there is a reference, which refers to nothing.
    bool itself = false;
    std::string parent;
    std::u16string leaf;
} gFolderItem;

bool AnswerFolderItem(REALobject, FSRef *reference, HFSUniStr255 *name)
{
    *reference = {};
    if (name == nullptr)
        return gFolderItem.itself;
    name->length = static_cast<uint16_t>(gFolderItem.leaf.size());
    std::copy(gFolderItem.leaf.begin(), gFolderItem.leaf.end(), name->unicode);
    NSString *const parent = [NSString stringWithUTF8String:gFolderItem.parent.c_str()];
    return CFURLGetFSRef((CFURLRef)[NSURL fileURLWithPath:parent], reference) != 0;
}

class FolderItemToCocoa : public LinkedTest {
protected:
    /// A host whose every folder item answers this.
    Host &StartAnswering(FolderItemAnswer answer)
    {
        gFolderItem = std::move(answer);
        return Start(2024.01, [](Host &unloaded) {
            unloaded.Replace("REALFSRefFromFolderItem", reinterpret_cast<void *>(&AnswerFolderItem));
        });
    }
};

} // namespace

TEST_F(FolderItemToCocoa, OfAFileIsItsURL)
{
    Host &host = Start();
    const Folder folder;
    const Value item = host.NewFolderItem(folder.Create("file.txt"));
    EXPECT_EQ(PathOf(Convert(item)), folder.Path("file.txt"));
    EXPECT_TRUE([Convert(item) isFileURL]);
    EXPECT_EQ(host.References(item), 1);
}

TEST_F(FolderItemToCocoa, OfAMissingFileIsTheFoldersURLWithTheDecomposedName)
{
    Host &host = Start();
    const Folder folder;
    const id url = Convert(host.NewFolderItem(folder.Path("caf\xC3\xA9.txt")));
    EXPECT_EQ(PathOf(url), folder.Path("cafe\xCC\x81.txt"));
    EXPECT_TRUE([url isFileURL]);
    EXPECT_EQ(host.CallsOf("REALFSRefFromFolderItem"), 2);
}

TEST_F(FolderItemToCocoa, LeavesNoURLBehind)
{
    Host &host = Start();
    const Folder folder;
    const Value existing = host.NewFolderItem(folder.Create("file.txt"));
    const Value missing = host.NewFolderItem(folder.Path("missing.txt"));
    {
        const qzlhost::AutoreleasePool pool;
        ASSERT_NE(Convert(existing), nil);
        ASSERT_NE(Convert(missing), nil);
        EXPECT_GT(LiveCocoaObjects("NSURL"), 0);
    }
    EXPECT_EQ(LiveCocoaObjects("NSURL"), 0);
}

TEST_F(FolderItemToCocoa, InAMissingFolderIsNil)
{
    Host &host = Start();
    const Folder folder;
    EXPECT_EQ(Convert(host.NewFolderItem(folder.Path("missing/file.txt"))), nil);
}

TEST_F(FolderItemToCocoa, IsNilWhereTheHostHasNoReferences)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Lack("REALFSRefFromFolderItem"); });
    const Folder folder;
    EXPECT_EQ(Convert(host.NewFolderItem(folder.Create("file.txt"))), nil);
}

TEST_F(FolderItemToCocoa, AnyObjectWithTheFolderItemsMethodIsAFolderItem)
{
    Host &host = StartAnswering({false, "/tmp", u"leaf"});
    DefineClassWithTrueItem(host, "Odd");
    EXPECT_EQ(PathOf(Convert(host.New("Odd"))), "/tmp/leaf");
}

TEST_F(FolderItemToCocoa, WhoseReferenceRefersToNothingIsFoundThroughItsParent)
{
    Host &host = StartAnswering({true, "/tmp", u"leaf"});
    EXPECT_EQ(PathOf(Convert(host.NewFolderItem("/tmp/any"))), "/tmp/leaf");
}

TEST_F(FolderItemToCocoa, WithoutANameIsNil)
{
    Host &host = StartAnswering({false, "/tmp", u""});
    EXPECT_EQ(Convert(host.NewFolderItem("/tmp/any")), nil);
}

TEST_F(FolderItemToCocoa, MayHaveANameOf255Units)
{
    Host &host = StartAnswering({false, "/tmp", std::u16string(255, u'n')});
    EXPECT_EQ(PathOf(Convert(host.NewFolderItem("/tmp/any"))), "/tmp/" + std::string(255, 'n'));
}

TEST_F(FolderItemToCocoa, ComesBeforeDictionaryAndWrappers)
{
    Host &host = StartAnswering({false, "/tmp", u"leaf"});
    DefineClassWithTrueItem(host, "OddDictionary", "Dictionary");
    DefineClassWithTrueItem(host, "NSTimerQZL");
    EXPECT_EQ(PathOf(Convert(host.New("OddDictionary"))), "/tmp/leaf");
    EXPECT_EQ(PathOf(Convert(host.New("NSTimerQZL"))), "/tmp/leaf");
}

TEST_F(FolderItemToCocoa, ThatFailsIsNilAlsoForAWrapper)
{
    Host &host = StartAnswering({false, "/no such folder", u"leaf"});
    DefineClassWithTrueItem(host, "NSTimerQZL");
    const Value wrapper = host.New("NSTimerQZL");
    *static_cast<id *>(host.InstanceData(wrapper)) = @"handle";
    EXPECT_EQ(Convert(wrapper), nil);
}
