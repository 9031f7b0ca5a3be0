// The URLs of host folder items, and the requests to the host for them.
#include <filesystem>
#include <fstream>

#include "family/family.h"
#include "tests/bridge/to_cocoa/folder_item_test.h"
#include "tests/support/private_folder.h"

using qzlhost::Host;

namespace {

using FolderItemURLs = FolderItemTest;

} // namespace

TEST_F(FolderItemURLs, EndInASlashOnlyForFoldersThatExist)
{
    Host &host = Start();
    const PrivateFolder folder;
    std::ofstream(folder.Path("file")) << "content";
    const auto convert = [&](const std::string &path) { return URLOf(Convert(host.NewFolderItem(path))); };
    EXPECT_EQ(convert(folder.Path()), "file://" + folder.Path() + "/");
    EXPECT_EQ(convert(folder.Path("file")), "file://" + folder.Path("file"));
    EXPECT_EQ(convert(folder.Path("missing")), "file://" + folder.Path("missing"));
}

TEST_F(FolderItemURLs, MissingItemIsNoFolderEvenIfAFolderGetsItsName)
{
    const PrivateFolder folder;
    StartAnswering({.parent = folder.Path(), .leaf = u"folder"});
    std::filesystem::create_directory(folder.Path("folder"));
    EXPECT_EQ(ConvertItem(), "file://" + folder.Path("folder"));
}

TEST_F(FolderItemURLs, NameOfAMissingItemIsDecomposedAndEscaped)
{
    StartAnswering({.leaf = u"\u00C5\u1E69 \u2126\uFB01%?#"});
    // Their form D is in UnicodeData.txt.
    EXPECT_EQ(ConvertItem(), "file:///tmp/A%CC%8As%CC%A3%CC%87%20%CE%A9%EF%AC%81%25%3F%23");
}

TEST_F(FolderItemURLs, ItemThatExistsIsAskedForOnceAndWithoutAName)
{
    StartAnswering({.hasItself = true, .itself = "/dev/null"});
    EXPECT_EQ(ConvertItem(), "file:///dev/null");
    ExpectQuestions({false});
}

TEST_F(FolderItemURLs, MissingItemIsAskedForAgainWithAZeroedName)
{
    StartAnswering({});
    EXPECT_EQ(ConvertItem(), "file:///tmp/leaf");
    ExpectQuestions({false, true});
    EXPECT_TRUE(FolderItems::questions.back().isNameZeroed);
}

TEST_F(FolderItemURLs, ItemWhoseReferenceHasNoURLIsAskedForAgain)
{
    StartAnswering({.hasItself = true});
    EXPECT_EQ(ConvertItem(), "file:///tmp/leaf");
    ExpectQuestions({false, true});
}

TEST_F(FolderItemURLs, ItemWithoutAReferenceIsAskedForAgainWhateverWasWrittenThere)
{
    StartAnswering({.hasItself = false, .itself = "/dev/null"});
    EXPECT_EQ(ConvertItem(), "file:///tmp/leaf");
    ExpectQuestions({false, true});
}

TEST_F(FolderItemURLs, ItemWithoutAParentIsNilWhateverWasWrittenThere)
{
    StartAnswering({.hasParent = false});
    EXPECT_EQ(ConvertItem(), "no URL");
    ExpectQuestions({false, true});
}

TEST_F(FolderItemURLs, ItemWhoseParentHasNoURLIsNil)
{
    StartAnswering({.parent = ""});
    EXPECT_EQ(ConvertItem(), "no URL");
    ExpectQuestions({false, true});
}

TEST_F(FolderItemURLs, ItemWithoutANameIsNil)
{
    StartAnswering({.leaf = u""});
    EXPECT_EQ(ConvertItem(), "no URL");
    ExpectQuestions({false, true});
}

TEST_F(FolderItemURLs, ItemThatFailsIsNotWrappedAsAnyOtherObject)
{
    Host &host = StartAnswering({.hasParent = false});
    Family family(host);
    family.OfferObjectWrapper();
    EXPECT_EQ(Convert(host.NewFolderItem("/any")), nil);
    ExpectQuestions({false, true});
}
