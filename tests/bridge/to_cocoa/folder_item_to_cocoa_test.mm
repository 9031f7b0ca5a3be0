// Which host objects are folder items, and which of those have no URL.
#include <fstream>

#include "tests/bridge/to_cocoa/folder_item_test.h"
#include "tests/support/host_declarations.h"
#include "tests/support/private_folder.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// A class of a program's own that has the folder item's method.
void DefineClassWithTrueItem(Host &host, const std::string &name, const std::string &super = "")
{
    host.DefineClass({.name = name,
                      .super = super,
                      .dataSize = super.empty() ? sizeof(id) : 0,
                      .methods = {{kTrueItem, [](const Value &, const auto &) { return Value(); }}}});
}

using FolderItemToCocoa = FolderItemTest;

} // namespace

TEST_F(FolderItemToCocoa, InAMissingFolderIsNil)
{
    Host &host = Start();
    const PrivateFolder folder;
    EXPECT_EQ(Convert(host.NewFolderItem(folder.Path("missing/file.txt"))), nil);
}

TEST_F(FolderItemToCocoa, IsNilWhereTheHostHasNoReferences)
{
    Host &host = Start({}, [](Host &unloaded) { unloaded.Lack("REALFSRefFromFolderItem"); });
    const PrivateFolder folder;
    std::ofstream(folder.Path("file")) << "content";
    EXPECT_EQ(Convert(host.NewFolderItem(folder.Path("file"))), nil);
}

TEST_F(FolderItemToCocoa, AnyObjectWithTheFolderItemsMethodIsAFolderItem)
{
    Host &host = StartAnswering({});
    DefineClassWithTrueItem(host, "Odd");
    EXPECT_EQ(URLOf(Convert(host.New("Odd"))), "file:///tmp/leaf");
}

TEST_F(FolderItemToCocoa, KeepsANameOf255Units)
{
    Host &host = StartAnswering({.leaf = std::u16string(255, u'n')});
    EXPECT_EQ(URLOf(Convert(host.NewFolderItem("/tmp/any"))), "file:///tmp/" + std::string(255, 'n'));
}

TEST_F(FolderItemToCocoa, ComesBeforeDictionaryAndWrappers)
{
    Host &host = StartAnswering({});
    DefineClassWithTrueItem(host, "OddDictionary", "Dictionary");
    DefineClassWithTrueItem(host, "NSTimerQZL");
    EXPECT_EQ(URLOf(Convert(host.New("OddDictionary"))), "file:///tmp/leaf");
    EXPECT_EQ(URLOf(Convert(host.New("NSTimerQZL"))), "file:///tmp/leaf");
}

TEST_F(FolderItemToCocoa, ThatFailsIsNilAlsoForAWrapper)
{
    Host &host = StartAnswering({.hasParent = false});
    DefineClassWithTrueItem(host, "NSTimerQZL");
    const Value wrapper = host.New("NSTimerQZL");
    *static_cast<id *>(host.InstanceData(wrapper)) = @"handle";
    EXPECT_EQ(Convert(wrapper), nil);
}
