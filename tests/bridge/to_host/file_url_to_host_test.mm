// File URLs become folder items; other URLs become strings.
#include "bridge/to_host/file_url_to_host.h"

#include <ApplicationServices/ApplicationServices.h>

#include <filesystem>
#include <fstream>

#include "tests/support/conversion_doubles.h"
#include "tests/support/host_declarations.h"
#include "tests/support/private_folder.h"
#include "tests/support/row_names.h"
#include "tests/support/texts.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;
namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

/// "é" as one character, and as a letter and an accent.
constexpr char kComposed[] = "caf\u00e9.txt";
constexpr char kDecomposed[] = "cafe\u0301.txt";

NSString *Text(const std::string &utf8)
{
    return [NSString stringWithUTF8String:utf8.c_str()];
}

NSURL *FileURL(const fs::path &path)
{
    return [NSURL fileURLWithPath:Text(path.string())];
}

/// With an empty folder of the test's own.
class FileURLToHost : public LinkedTest {
protected:
    fs::path Folder() const { return folder_.Path(); }

    fs::path NewFile(const std::string &name) const
    {
        const fs::path path = Folder() / name;
        std::ofstream(path) << "content";
        return path;
    }

    /// How often the host was asked for its function for paths.
    static size_t AsksForGetTrueFolderItem(const Host &host)
    {
        size_t asks = 0;
        for (const std::string &arguments : ArgumentsOf(host, "REALLoadGlobalMethod"))
            asks += arguments.find(kGetTrueFolderItem) != std::string::npos ? 1 : 0;
        return asks;
    }

private:
    PrivateFolder folder_;
};

/// Expects no folder item for the URL, whose conversion is its text.
void ExpectString(Host &host, NSURL *url)
{
    EXPECT_EQ(NSURLRBFile(url), nullptr);
    const Value variant = Convert(url);
    EXPECT_EQ(variant.Code(), qzlhost::code::String);
    EXPECT_EQ(variant.AsString(), [[url absoluteString] UTF8String]);
    EXPECT_EQ(host.References(variant), 1);
}

/// The last name that the host got.
std::u16string gName;

REALobject NoteName(const FSRef *, const HFSUniStr255 *name)
{
    gName.assign(name->unicode, name->unicode + name->length);
    return nullptr;
}

struct OtherURLRow {
    const char *name;
    const char *text;
};

constexpr OtherURLRow kOtherURLs[] = {
    {"Http", "http://example.com/folder/file.txt?query=1#part"},
    {"HttpsWithEscapes", "https://example.com/a%20b/%C3%A9"},
    {"HttpWithAnExistingPath", "http://example.com/etc/passwd"},
    {"Mail", "mailto:someone@example.com"},
    {"Data", "data:text/plain,hello"},
    {"Ftp", "ftp://user@example.com:2121/etc"},
};

class OtherURLToHost : public LinkedTest, public ::testing::WithParamInterface<OtherURLRow> {};

/// The name of a missing item, and the name that the host gets.
struct NameRow {
    const char *name;
    std::u16string leaf;
    std::u16string given;
};

const NameRow kNames[] = {
    {"Plain", u"new file.txt", u"new file.txt"},
    {"Composed", u"\u00e9\u00c4\u1e69", u"e\u0301A\u0308s\u0323\u0307"},
    {"Decomposed", u"e\u0301", u"e\u0301"},
    {"Hangul", u"\ud55c", u"\u1112\u1161\u11ab"},
    {"BeyondSixteenBits", u"\U0001F600", u"\U0001F600"},
    {"PercentAndMarks", u"100% #1? a+b;c", u"100% #1? a+b;c"},
    {"Longest", Repeated(u"a"s, 255), Repeated(u"a"s, 255)},
    {"OneTooLong", Repeated(u"a"s, 256), Repeated(u"a"s, 255)},
    {"MuchTooLong", Repeated(u"ab"s, 500), Repeated(u"ab"s, 127) + u"a"},
    {"TooLongOnceDecomposed", Repeated(u"\u00e9"s, 130), Repeated(u"e\u0301"s, 127) + u"e"},
    {"CutInsideAPair", u"a" + Repeated(u"\U0001F600"s, 130), u"a" + Repeated(u"\U0001F600"s, 127)},
    {"CutBetweenHalvesOfAPair", Repeated(u"\U0001F600"s, 130), Repeated(u"\U0001F600"s, 127) + u'\xd83d'},
};

class MissingName : public FileURLToHost, public ::testing::WithParamInterface<NameRow> {};

} // namespace

TEST_F(FileURLToHost, ExistingFileIsMadeFromItsParentAndName)
{
    Host &host = Start();
    const fs::path file = NewFile("file.txt");
    const Value item = Convert(FileURL(file));
    EXPECT_EQ(host.ClassOf(item), "FolderItem");
    EXPECT_EQ(host.FolderItemPath(item), file);
    EXPECT_EQ(host.References(item), 1);
    EXPECT_EQ(host.CallsOf("REALFolderItemFromParentFSRef"), 1);
    EXPECT_EQ(AsksForGetTrueFolderItem(host), 0u);
}

TEST_F(FileURLToHost, ExistingFolderIsAnItemWithAndWithoutASlash)
{
    Host &host = Start();
    fs::create_directory(Folder() / "inner");
    const std::string path = (Folder() / "inner").string();
    EXPECT_EQ(host.FolderItemPath(Convert([NSURL fileURLWithPath:Text(path)])), path);
    EXPECT_EQ(host.FolderItemPath(Convert([NSURL fileURLWithPath:Text(path) isDirectory:YES])), path);
    EXPECT_EQ(host.FolderItemPath(Convert([NSURL URLWithString:Text("file://" + path + "/")])), path);
}

TEST_F(FileURLToHost, NamesOfExistingItemsStayAsTheyAreOnDisk)
{
    Host &host = Start();
    for (const char *name : {kComposed, kDecomposed, "\U0001F600 100% #1? a+b;c"})
        EXPECT_EQ(host.FolderItemPath(Convert(FileURL(NewFile(name)))), (Folder() / name).string());
}

TEST_F(FileURLToHost, MissingItemInAFolderIsAnItemWithADecomposedName)
{
    Host &host = Start();
    const Value item = Convert(FileURL(Folder() / kComposed));
    EXPECT_EQ(host.FolderItemPath(item), (Folder() / kDecomposed).string());
    EXPECT_EQ(host.References(item), 1);
}

TEST_P(MissingName, IsGivenDecomposedAndAtMost255UnitsLong)
{
    StartReplacing("REALFolderItemFromParentFSRef", reinterpret_cast<void *>(&NoteName));
    NSString *const path =
        [Text(Folder().string()) stringByAppendingFormat:@"/%@", CocoaString(GetParam().leaf)];
    EXPECT_EQ(NSURLRBFile([NSURL fileURLWithPath:path]), nullptr);
    EXPECT_EQ(gName, GetParam().given);
}

INSTANTIATE_TEST_SUITE_P(Rows, MissingName, ::testing::ValuesIn(kNames), kNameOfRow);

TEST_F(FileURLToHost, ItemInAMissingFolderIsAString)
{
    Host &host = Start();
    ExpectString(host, FileURL(Folder() / "missing" / "file.txt"));
}

TEST_F(FileURLToHost, ItemInsideAFileIsGivenWithTheFileAsParent)
{
    Host &host = Start();
    const fs::path file = NewFile("file.txt");
    EXPECT_EQ(host.FolderItemPath(Convert(FileURL(file / "inside"))), (file / "inside").string());
}

TEST_F(FileURLToHost, SymbolicLinkIsItselfNotItsTarget)
{
    Host &host = Start();
    const fs::path link = Folder() / "link";
    fs::create_symlink(NewFile("target"), link);
    const fs::path dangling = Folder() / "dangling";
    fs::create_symlink(Folder() / "nowhere", dangling);
    EXPECT_EQ(host.FolderItemPath(Convert(FileURL(link))), link);
    EXPECT_EQ(host.FolderItemPath(Convert(FileURL(dangling))), dangling);
}

TEST_F(FileURLToHost, RootsOfVolumesAreMadeFromTheirPath)
{
    Host &host = Start();
    for (const char *path : {"/", "/proc"}) {
        host.ClearTrace();
        const Value item = Convert(FileURL(path));
        EXPECT_EQ(host.FolderItemPath(item), path);
        EXPECT_EQ(host.References(item), 1);
        EXPECT_EQ(host.CallsOf("REALFolderItemFromParentFSRef"), 0);
        const std::vector<std::string> calls = ArgumentsOf(host, "GetTrueFolderItem");
        ASSERT_EQ(calls.size(), 1u);
        EXPECT_NE(calls[0].find('"' + std::string(path) + '"'), std::string::npos) << calls[0];
        EXPECT_EQ(calls[0].substr(calls[0].size() - 3), ", 3");
    }
}

TEST_F(FileURLToHost, FunctionForPathsIsAskedForOnce)
{
    Host &host = Start();
    for (int time = 0; time < 3; ++time)
        EXPECT_FALSE(Convert(FileURL("/")).IsNil());
    EXPECT_EQ(AsksForGetTrueFolderItem(host), 1u);
    EXPECT_EQ(host.CallsOf("GetTrueFolderItem"), 3);
}

TEST_F(FileURLToHost, FunctionForPathsThatIsNotFoundIsAskedForOnceToo)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.LackMethod(kGetTrueFolderItem); });
    for (int time = 0; time < 3; ++time)
        EXPECT_EQ(NSURLRBFile(FileURL("/")), nullptr);
    EXPECT_EQ(AsksForGetTrueFolderItem(host), 1u);
    ExpectString(host, FileURL("/"));
}

TEST_F(FileURLToHost, HostThatLoadsNoMethodsIsAskedOnce)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.AnswerFrom("REALLoadGlobalMethod", 2); });
    for (int time = 0; time < 3; ++time)
        EXPECT_EQ(NSURLRBFile(FileURL("/")), nullptr);
    EXPECT_EQ(host.AsksFor("REALLoadGlobalMethod"), 1);
}

TEST_F(FileURLToHost, HostWithoutItemsByParentGivesNull)
{
    StartLacking({"REALFolderItemFromParentFSRef"});
    EXPECT_EQ(NSURLRBFile(FileURL(NewFile("file.txt"))), nullptr);
    EXPECT_EQ(NSURLRBFile(FileURL(Folder() / "missing")), nullptr);
    EXPECT_EQ(Convert(FileURL(NewFile("file.txt"))).Code(), qzlhost::code::String);
}

TEST_F(FileURLToHost, ConversionLeavesTheURLsRetainsAlone)
{
    Start();
    for (NSURL *url : {FileURL(NewFile("file.txt")), FileURL(Folder() / "missing"), FileURL("/")}) {
        const NSUInteger retains = [url retainCount];
        {
            const qzlhost::AutoreleasePool pool;
            Convert(url);
        }
        EXPECT_EQ([url retainCount], retains);
    }
}

TEST_P(OtherURLToHost, IsAString)
{
    Host &host = Start();
    NSURL *const url = [NSURL URLWithString:Text(GetParam().text)];
    ExpectString(host, url);
    EXPECT_EQ(Convert(url).AsString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Rows, OtherURLToHost, ::testing::ValuesIn(kOtherURLs), kNameOfRow);
