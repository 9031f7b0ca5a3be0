// File URLs for which a step on the way to a folder item fails: the result, and that nothing is left behind.
#include "bridge/to_host/file_url_to_host.h"

#include <filesystem>
#include <fstream>

#include "tests/support/conversion_doubles.h"
#include "tests/support/core_foundation_double.h"
#include "tests/support/host_declarations.h"
#include "tests/support/private_folder.h"
#include "tests/support/raising.h"
#include "tests/support/row_names.h"
#include "tests/support/throwing.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;
namespace fs = std::filesystem;

namespace {

constexpr char kByParent[] = "REALFolderItemFromParentFSRef";

/// Long enough to be separate objects in Cocoa. The first character is one unit, and two when decomposed.
constexpr char kComposed[] = "\u00e9 is the first of this name.txt";
constexpr char kDecomposed[] = "e\u0301 is the first of this name.txt";

/// With a folder of the test's own, and one file in it.
class FileURLRefusals : public LinkedTest {
protected:
    FileURLRefusals() { std::ofstream(File()) << "content"; }
    ~FileURLRefusals() override { TheCoreFoundation().ReleaseMade(); }

    fs::path File() const { return folder_.Path("file.txt"); }
    fs::path Missing() const { return folder_.Path(kComposed); }

    static NSURL *URL(const fs::path &path)
    {
        return [NSURL fileURLWithPath:[NSString stringWithUTF8String:path.c_str()]];
    }

    static FSRef ReferenceOf(const fs::path &path)
    {
        FSRef reference = {};
        EXPECT_TRUE(CFURLGetFSRef((CFURLRef)URL(path), &reference));
        return reference;
    }

    /// Expects the file's item, made from its path.
    void ExpectItemByPath()
    {
        const Value item = Owned(NSURLRBFile(URL(File())));
        ASSERT_FALSE(item.IsNil());
        EXPECT_EQ(host().FolderItemPath(item), File());
        EXPECT_EQ(host().References(item), 1);
        EXPECT_EQ(host().CallsOf(kByParent), 0);
        const std::vector<std::string> calls = ArgumentsOf(host(), "GetTrueFolderItem");
        ASSERT_EQ(calls.size(), 1u);
        EXPECT_NE(calls[0].find('"' + File().string() + '"'), std::string::npos) << calls[0];
        EXPECT_EQ(calls[0].substr(calls[0].size() - 3), ", 3");
    }

    /// Expects the file's item, made from its folder and its name.
    void ExpectItemByParent()
    {
        const Value item = Owned(NSURLRBFile(URL(File())));
        ASSERT_FALSE(item.IsNil());
        EXPECT_EQ(host().FolderItemPath(item), File());
        EXPECT_EQ(host().References(item), 1);
        EXPECT_EQ(host().CallsOf(kByParent), 1);
        EXPECT_EQ(host().CallsOf("GetTrueFolderItem"), 0);
    }

    /// Expects no item for the URL, whose conversion is its text.
    void ExpectNoItem(NSURL *url)
    {
        EXPECT_EQ(NSURLRBFile(url), nullptr);
        EXPECT_EQ(host().CallsOf(kByParent), 0);
        EXPECT_EQ(host().CallsOf("GetTrueFolderItem"), 0);
        const Value variant = Convert(url);
        EXPECT_EQ(variant.Code(), qzlhost::code::String);
        EXPECT_EQ(variant.AsString(), [[url absoluteString] UTF8String]);
    }

    /// Expects that the library got `count` objects and holds none of them.
    static void ExpectReleased(size_t count)
    {
        EXPECT_EQ(TheCoreFoundation().ReleaseMade(), std::pair(count, count));
    }

private:
    PrivateFolder folder_;
};

/// The requests that the item of an existing file by parent and name needs.
class ExistingItemRefusals : public FileURLRefusals, public ::testing::WithParamInterface<Refusal> {};

/// A request that is refused for a missing item, and the number of objects made before.
struct MissingRow {
    const char *name;
    Refusal refusal;
    size_t objects;
};

constexpr MissingRow kMissingRows[] = {
    {"FolderURL", Refusal::FolderURL, 0},
    {"FolderReference", Refusal::FolderReference, 1},
    {"LastComponent", Refusal::LastComponent, 1},
};

class MissingItemRefusals : public FileURLRefusals, public ::testing::WithParamInterface<MissingRow> {};

/// A call of the host's function for paths.
struct GivenPath {
    std::string bytes;
    uint32_t encoding;
    int64_t mode;
};
std::vector<GivenPath> gGivenPaths;

REALobject NotePath(REALstring path, int64_t mode)
{
    const Value string = Value::Share(reinterpret_cast<qzlhost::String *>(path));
    gGivenPaths.push_back({string.StringBytes(), string.StringEncoding(), mode});
    return nullptr;
}

/// A host function or method that does not return, and how.
struct FailingRow {
    const char *name;
    /// A host function's name, or a method's declaration.
    const char *function;
    bool isMethod;
    void *(*failure)();
    bool isCocoa;
};

/// While an item is made from its path, and from its parent.
constexpr FailingRow kFailingByPath[] = {
    {"CocoaWhileTheFunctionIsLookedUp", "REALLoadGlobalMethod", false, RaiseInHost, true},
    {"StandardWhileTheFunctionIsLookedUp", "REALLoadGlobalMethod", false, ThrowInHost, false},
    {"CocoaFromTheFunction", kGetTrueFolderItem, true, RaiseInHost, true},
    {"StandardFromTheFunction", kGetTrueFolderItem, true, ThrowInHost, false},
};
constexpr FailingRow kFailingByParent[] = {
    {"Cocoa", kByParent, false, RaiseInHost, true},
    {"Standard", kByParent, false, ThrowInHost, false},
};

class HostExceptions : public FileURLRefusals, public ::testing::WithParamInterface<FailingRow> {
protected:
    void StartFailing()
    {
        Start(2024.01, [](Host &unloaded) {
            const FailingRow &row = GetParam();
            void *const failure = reinterpret_cast<void *>(row.failure);
            if (row.isMethod)
                unloaded.ReplaceMethod(row.function, failure);
            else
                unloaded.Replace(row.function, failure);
        });
    }

    void ExpectException(NSURL *url)
    {
        if (GetParam().isCocoa)
            EXPECT_TRUE([ExceptionRaisedBy([&] { NSURLRBFile(url); }) isEqualToString:kRaised]);
        else
            EXPECT_TRUE(EndsThrown([&] { NSURLRBFile(url); }));
    }
};

class FileURLByPath : public HostExceptions {};
class FileURLByParent : public HostExceptions {};

std::string NameOfRefusal(const ::testing::TestParamInfo<Refusal> &info)
{
    return info.param == Refusal::NodeAndParent ? "NodeAndParent"
           : info.param == Refusal::Name        ? "Name"
                                                : "Existence";
}

} // namespace

TEST_F(FileURLRefusals, NilIsNullAndNothingIsAsked)
{
    Start();
    EXPECT_EQ(NSURLRBFile(nil), nullptr);
    EXPECT_TRUE(TheCoreFoundation().catalogCalls.empty());
    ExpectReleased(0);
}

// Existing items

TEST_F(FileURLRefusals, ExistingItemIsAskedForItsParentAndItsNameAndTheParentWhetherItIsThere)
{
    Start();
    const std::string file = BytesOf(ReferenceOf(File()));
    const std::string folder = BytesOf(ReferenceOf(File().parent_path()));
    ExpectItemByParent();
    EXPECT_EQ(TheCoreFoundation().catalogCalls, (std::vector<CatalogCall>{{file, 0x10, true, false, true},
                                                                          {file, 0, false, true, false},
                                                                          {folder, 0, false, false, false}}));
}

TEST_P(ExistingItemRefusals, ItemIsMadeFromItsPath)
{
    Start();
    TheCoreFoundation().refusal = GetParam();
    ExpectItemByPath();
}

INSTANTIATE_TEST_SUITE_P(Rows, ExistingItemRefusals,
                         ::testing::Values(Refusal::NodeAndParent, Refusal::Name, Refusal::Existence),
                         NameOfRefusal);

TEST_F(FileURLRefusals, ItemWithoutAParentIsAskedNothingElse)
{
    Start();
    TheCoreFoundation().refusal = Refusal::NodeAndParent;
    const std::string file = BytesOf(ReferenceOf(File()));
    ExpectItemByPath();
    EXPECT_EQ(TheCoreFoundation().catalogCalls, (std::vector<CatalogCall>{{file, 0x10, true, false, true}}));
}

TEST_F(FileURLRefusals, NodeNumberTwoIsTheRootOfAVolumeWhoseParentIsNothing)
{
    Start();
    TheCoreFoundation().nodeID = 2;
    TheCoreFoundation().marksParents = true;
    ExpectItemByPath();
    ASSERT_FALSE(TheCoreFoundation().catalogCalls.empty());
    EXPECT_EQ(TheCoreFoundation().catalogCalls.back(),
              (CatalogCall{std::string(80, '\0'), 0, false, false, false}));
}

TEST_F(FileURLRefusals, OtherNodeNumbersAreThoseOfItemsInFolders)
{
    Host &host = Start();
    for (const UInt32 number : {1u, 3u, 0x102u, 0x80000002u}) {
        SCOPED_TRACE(number);
        TheCoreFoundation().nodeID = number;
        host.ClearTrace();
        ExpectItemByParent();
    }
}

TEST_F(FileURLRefusals, ItemWithoutParentAndPathIsAString)
{
    Host &host = Start();
    // The root of a volume has no parent; one refusal is possible at a time.
    TheCoreFoundation().nodeID = 2;
    TheCoreFoundation().refusal = Refusal::Path;
    ExpectNoItem(URL(File()));
    EXPECT_EQ(host.AsksFor("REALLoadGlobalMethod"), 0) << "the function for paths was not looked for";
}

TEST_F(FileURLRefusals, PathIsReadUpToItsEndFromAClearedBuffer)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kGetTrueFolderItem, reinterpret_cast<void *>(&NotePath));
    });
    TheCoreFoundation().refusal = Refusal::Name;
    for (const std::string &path : {std::string("/caf\u00e9"), "/" + std::string(4094, 'p')}) {
        TheCoreFoundation().path = path;
        gGivenPaths.clear();
        EXPECT_EQ(NSURLRBFile(URL(File())), nullptr) << "the host made no item";
        ASSERT_EQ(gGivenPaths.size(), 1u);
        EXPECT_EQ(gGivenPaths[0].bytes, path);
        EXPECT_EQ(gGivenPaths[0].encoding, qzlhost::encoding::UTF8);
        EXPECT_EQ(gGivenPaths[0].mode, 3);
    }
    EXPECT_EQ(TheCoreFoundation().pathBuffers, std::vector<std::string>(2, std::string(4096, '\0')));
}

TEST_F(FileURLRefusals, ItemThatTheHostDoesNotMakeFromParentAndNameIsNull)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Fail(kByParent); });
    EXPECT_EQ(NSURLRBFile(URL(File())), nullptr);
    EXPECT_EQ(NSURLRBFile(URL(Missing())), nullptr);
    EXPECT_EQ(host.CallsOf(kByParent), 2);
    EXPECT_EQ(host.CallsOf("GetTrueFolderItem"), 0) << "its path is not tried";
    host.Fail(kByParent, false);
}

// Missing items

TEST_F(FileURLRefusals, MissingItemLeavesNoObjectsBehind)
{
    Host &host = Start();
    {
        const qzlhost::AutoreleasePool pool;
        const Value item = Owned(NSURLRBFile(URL(Missing())));
        EXPECT_EQ(host.FolderItemPath(item), (Missing().parent_path() / kDecomposed).string());
    }
    // The folder's URL, the last component and its copy.
    ExpectReleased(3);
}

TEST_F(FileURLRefusals, NameThatCannotBeCopiedStaysAsItIs)
{
    Host &host = Start();
    TheCoreFoundation().refusal = Refusal::MutableCopy;
    {
        const qzlhost::AutoreleasePool pool;
        const Value item = Owned(NSURLRBFile(URL(Missing())));
        EXPECT_EQ(host.FolderItemPath(item), Missing().string());
        EXPECT_EQ(host.References(item), 1);
    }
    ExpectReleased(2);
}

TEST_P(MissingItemRefusals, MakeItAString)
{
    Start();
    TheCoreFoundation().refusal = GetParam().refusal;
    {
        const qzlhost::AutoreleasePool pool;
        ExpectNoItem(URL(Missing()));
    }
    // The URL was converted twice.
    ExpectReleased(2 * GetParam().objects);
}

INSTANTIATE_TEST_SUITE_P(Rows, MissingItemRefusals, ::testing::ValuesIn(kMissingRows), kNameOfRow);

// Exceptions out of the host

TEST_P(FileURLByPath, ExceptionPassesAndTheStringIsGivenBack)
{
    StartFailing();
    TheCoreFoundation().refusal = Refusal::Name;
    ExpectException(URL(File()));
    // It was made; the accounts at the end would show it.
    EXPECT_EQ(host().CallsOf("REALUnlockString"), 1);
}

INSTANTIATE_TEST_SUITE_P(Rows, FileURLByPath, ::testing::ValuesIn(kFailingByPath), kNameOfRow);

TEST_P(FileURLByParent, ExceptionPassesAndLeavesNoObjectsBehind)
{
    StartFailing();
    {
        const qzlhost::AutoreleasePool pool;
        ExpectException(URL(Missing()));
    }
    ExpectReleased(3);
}

INSTANTIATE_TEST_SUITE_P(Rows, FileURLByParent, ::testing::ValuesIn(kFailingByParent), kNameOfRow);
