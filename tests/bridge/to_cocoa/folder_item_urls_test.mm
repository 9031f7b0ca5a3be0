// The URLs of host folder items, whole, and what the host is asked for to make them.
#include <CoreServices/CoreServices.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "tests/bridge/to_cocoa/member_conversion.h"
#include "tests/support/family.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// One question to the host about a folder item.
struct Question {
    bool asksForName = false;
    /// Whether all 512 bytes of the name were zero.
    bool isNameZeroed = false;
};

/// How the host answers, and what it was asked.
struct FolderItems {
    /// Whether the item itself has a reference, and the path that it refers to; nothing for no path.
    bool hasItself = false;
    std::string itself = {};
    /// The same for the parent.
    bool hasParent = true;
    std::string parent = "/tmp";
    std::u16string leaf = u"leaf";

    static inline std::vector<Question> questions;
};

FolderItems gItems;

void Refer(const std::string &path, FSRef *reference)
{
    *reference = {};
    if (!path.empty())
        CFURLGetFSRef((CFURLRef)[NSURL fileURLWithPath:@(path.c_str())], reference);
}

bool AnswerFolderItem(qzlhost::Instance *item, FSRef *reference, HFSUniStr255 *name)
{
    static_assert(sizeof(HFSUniStr255) == 512);
    Question question;
    question.asksForName = name != nullptr;
    const HFSUniStr255 zeros = {};
    question.isNameZeroed = name != nullptr && std::memcmp(name, &zeros, sizeof zeros) == 0;
    FolderItems::questions.push_back(question);
    EXPECT_NE(item, nullptr);
    EXPECT_NE(reference, nullptr);
    if (name == nullptr) {
        Refer(gItems.itself, reference);
        return gItems.hasItself;
    }
    Refer(gItems.parent, reference);
    name->length = static_cast<uint16_t>(gItems.leaf.size());
    std::copy(gItems.leaf.begin(), gItems.leaf.end(), name->unicode);
    return gItems.hasParent;
}

/// A folder of the test's own, by its real path.
class Folder {
public:
    Folder() : path_(std::filesystem::canonical(mkdtemp(pattern_))) {}
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    std::string Path() const { return path_; }
    std::string Path(const std::string &name) const { return path_ / name; }

private:
    char pattern_[32] = "/tmp/folder_items.XXXXXX";
    std::filesystem::path path_;
};

std::string URLOf(id converted)
{
    return [converted isKindOfClass:[NSURL class]] ? [[converted absoluteString] UTF8String] : "no URL";
}

class FolderItemURLs : public MemberConversion {
protected:
    /// A host whose every folder item answers this.
    Host &StartAnswering(const FolderItems &items)
    {
        gItems = items;
        return Start({}, [](Host &unloaded) {
            unloaded.Replace("REALFSRefFromFolderItem", reinterpret_cast<void *>(&AnswerFolderItem));
        });
    }

    std::string ConvertItem() { return URLOf(Convert(host().NewFolderItem("/any"))); }

    void ExpectQuestions(const std::vector<bool> &forNames)
    {
        std::vector<bool> asked;
        for (const Question &question : FolderItems::questions)
            asked.push_back(question.asksForName);
        EXPECT_EQ(asked, forNames);
    }
};

} // namespace

TEST_F(FolderItemURLs, FileIsNoFolder)
{
    Host &host = Start();
    const Folder folder;
    std::ofstream(folder.Path("file")) << "content";
    EXPECT_EQ(URLOf(Convert(host.NewFolderItem(folder.Path("file")))), "file://" + folder.Path("file"));
}

TEST_F(FolderItemURLs, FolderThatExistsEndsInASlash)
{
    Host &host = Start();
    const Folder folder;
    EXPECT_EQ(URLOf(Convert(host.NewFolderItem(folder.Path()))), "file://" + folder.Path() + "/");
}

TEST_F(FolderItemURLs, MissingItemIsNoFolder)
{
    Host &host = Start();
    const Folder folder;
    EXPECT_EQ(URLOf(Convert(host.NewFolderItem(folder.Path("missing")))), "file://" + folder.Path("missing"));
}

TEST_F(FolderItemURLs, MissingItemIsNoFolderAlsoWhereAFolderComesToHaveItsName)
{
    const Folder folder;
    StartAnswering({.parent = folder.Path(), .leaf = u"folder"});
    std::filesystem::create_directory(folder.Path("folder"));
    EXPECT_EQ(ConvertItem(), "file://" + folder.Path("folder"));
}

TEST_F(FolderItemURLs, NameOfAMissingItemIsDecomposedAndEscaped)
{
    StartAnswering({.leaf = u"\u00C5\u1E69 \u2126\uFB01%?#"});
    // The form D of these: UnicodeData.txt.
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
