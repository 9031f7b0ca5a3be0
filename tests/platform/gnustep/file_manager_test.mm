// References of file-system items.
#include "tests/platform/gnustep/port_testing.h"

#include <CoreServices/CoreServices.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <vector>

using namespace port_testing;

namespace {

FSRef Zeros()
{
    FSRef reference;
    std::memset(&reference, 0, sizeof reference);
    return reference;
}

bool IsZero(const FSRef &reference)
{
    const FSRef zeros = Zeros();
    return std::memcmp(&reference, &zeros, sizeof zeros) == 0;
}

bool AreSame(const FSRef &one, const FSRef &other)
{
    return std::memcmp(&one, &other, sizeof one) == 0;
}

/// The reference of a path; none if CFURLGetFSRef refuses it.
std::optional<FSRef> ReferenceOf(const std::string &path)
{
    const OwnedString text(CFStringCreateWithCString(nullptr, path.c_str(), kCFStringEncodingUTF8));
    const OwnedURL url(CFURLCreateWithFileSystemPath(nullptr, text.get(), kCFURLPOSIXPathStyle, false));
    FSRef reference = Zeros();
    return CFURLGetFSRef(url.get(), &reference) ? std::optional(reference) : std::nullopt;
}

std::string PathOf(const FSRef &reference)
{
    UInt8 path[4096];
    return FSRefMakePath(&reference, path, sizeof path) == noErr ? reinterpret_cast<char *>(path) : "(none)";
}

struct Catalog {
    OSErr error;
    UInt32 nodeID;
    std::u16string name;
    FSRef parent;
};

Catalog CatalogOf(const FSRef &reference)
{
    FSCatalogInfo info = {};
    HFSUniStr255 name = {};
    Catalog catalog = {};
    std::memset(&catalog.parent, 0x55, sizeof catalog.parent);
    catalog.error = FSGetCatalogInfo(&reference, kFSCatInfoNodeID, &info, &name, nullptr, &catalog.parent);
    catalog.nodeID = info.nodeID;
    catalog.name.assign(reinterpret_cast<const char16_t *>(name.unicode), name.length);
    return catalog;
}

OSErr Probe(const FSRef &reference)
{
    return FSGetCatalogInfo(&reference, kFSCatInfoNone, nullptr, nullptr, nullptr, nullptr);
}

/// Has an empty folder of its own.
class FileReferences : public testing::Test {
protected:
    void SetUp() override
    {
        char pattern[] = "/tmp/file_references_XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        folder = pattern;
    }

    void TearDown() override
    {
        [[NSFileManager defaultManager] removeFileAtPath:[NSString stringWithUTF8String:folder.c_str()]
                                                 handler:nil];
    }

    std::string MakeFile(const std::string &name) const
    {
        const std::string path = folder + "/" + name;
        std::ofstream(path) << "content";
        EXPECT_EQ(access(path.c_str(), F_OK), 0) << path;
        return path;
    }

    std::string MakeFolder(const std::string &name) const
    {
        const std::string path = folder + "/" + name;
        EXPECT_EQ(mkdir(path.c_str(), 0700), 0) << path;
        return path;
    }

    std::string MakeLink(const std::string &name, const std::string &target) const
    {
        const std::string path = folder + "/" + name;
        EXPECT_EQ(symlink(target.c_str(), path.c_str()), 0) << path;
        return path;
    }

    std::string folder;
};

} // namespace

TEST_F(FileReferences, FindTheItemAgain)
{
    const std::string path = MakeFile("a file");
    const std::optional<FSRef> reference = ReferenceOf(path);
    ASSERT_TRUE(reference.has_value());
    EXPECT_EQ(PathOf(*reference), path);
    EXPECT_EQ(Probe(*reference), noErr);
    const OwnedURL url(CFURLCreateFromFSRef(nullptr, &*reference));
    EXPECT_TRUE([[(NSURL *)url.get() path] isEqual:[NSString stringWithUTF8String:path.c_str()]]);
    EXPECT_EQ([(NSURL *)url.get() retainCount], 1U);
}

TEST_F(FileReferences, HaveNameParentAndNodeID)
{
    const std::string path = MakeFile("a file");
    const Catalog catalog = CatalogOf(*ReferenceOf(path));
    struct stat status;
    ASSERT_EQ(lstat(path.c_str(), &status), 0);
    EXPECT_EQ(catalog.error, noErr);
    EXPECT_EQ(catalog.name, u"a file");
    EXPECT_EQ(catalog.nodeID, static_cast<UInt32>(status.st_ino));
    EXPECT_EQ(PathOf(catalog.parent), folder);
    EXPECT_TRUE(AreSame(catalog.parent, *ReferenceOf(folder)));
}

TEST_F(FileReferences, KeepTheNameAsTheFileSystemHasIt)
{
    const Catalog decomposed = CatalogOf(*ReferenceOf(MakeFile("e\xCC\x81")));
    EXPECT_EQ(decomposed.name, u"e\u0301");
    const Catalog composed = CatalogOf(*ReferenceOf(MakeFile("\xC3\xA9 \xF0\x9F\x98\x80")));
    EXPECT_EQ(composed.name, u"\u00E9 \U0001F600");
    const Catalog odd = CatalogOf(*ReferenceOf(MakeFile("%41 #?;:")));
    EXPECT_EQ(odd.name, u"%41 #?;:");
    EXPECT_EQ(CatalogOf(*ReferenceOf(MakeFile(std::string(255, 'n')))).name, std::u16string(255, u'n'));
}

TEST_F(FileReferences, OfFoldersBecomeURLsWithASlash)
{
    const FSRef reference = *ReferenceOf(MakeFolder("sub folder"));
    const OwnedURL url(CFURLCreateFromFSRef(nullptr, &reference));
    EXPECT_TRUE([[(NSURL *)url.get() absoluteString] hasSuffix:@"/sub%20folder/"]);
}

TEST_F(FileReferences, AreTheSameHoweverTheItemIsNamed)
{
    const std::string sub = MakeFolder("sub");
    const std::string path = MakeFile("sub/file");
    MakeLink("link", sub);
    const FSRef reference = *ReferenceOf(path);
    EXPECT_TRUE(AreSame(*ReferenceOf(folder + "/link/file"), reference));
    EXPECT_TRUE(AreSame(*ReferenceOf(folder + "/./sub//../sub/file"), reference));
    EXPECT_TRUE(AreSame(*ReferenceOf(sub + "/"), *ReferenceOf(sub)));
    EXPECT_TRUE(AreSame(*ReferenceOf(sub + "/."), *ReferenceOf(sub)));
    EXPECT_TRUE(AreSame(*ReferenceOf(sub + "/.."), *ReferenceOf(folder)));
    EXPECT_FALSE(AreSame(*ReferenceOf(sub), reference));
}

TEST_F(FileReferences, OfASymbolicLinkAreOfTheLink)
{
    const std::string target = MakeFile("target");
    const std::string link = MakeLink("link", target);
    const std::string dangling = MakeLink("dangling", folder + "/nothing");
    EXPECT_EQ(PathOf(*ReferenceOf(link)), link);
    EXPECT_EQ(CatalogOf(*ReferenceOf(link)).name, u"link");
    EXPECT_NE(CatalogOf(*ReferenceOf(link)).nodeID, CatalogOf(*ReferenceOf(target)).nodeID);
    EXPECT_EQ(PathOf(*ReferenceOf(dangling)), dangling);
}

TEST_F(FileReferences, AreOnlyOfExistingItems)
{
    EXPECT_EQ(ReferenceOf(folder + "/missing"), std::nullopt);
    EXPECT_EQ(ReferenceOf(folder + "/missing/file"), std::nullopt);
    EXPECT_EQ(ReferenceOf(MakeFile("file") + "/below"), std::nullopt);
    EXPECT_EQ(ReferenceOf(folder + "/" + std::string(256, 'n')), std::nullopt);
}

TEST_F(FileReferences, LeaveTheOutputAloneWhenTheyFail)
{
    FSRef reference;
    std::memset(&reference, 0x55, sizeof reference);
    const FSRef before = reference;
    NSURL *const missing = [NSURL URLWithString:@"file:///no/such/item"];
    EXPECT_FALSE(CFURLGetFSRef((CFURLRef)missing, &reference));
    EXPECT_TRUE(AreSame(reference, before));
}

TEST_F(FileReferences, AreOfFileURLsOfThisMachine)
{
    FSRef reference = Zeros();
    const auto get = [&reference](NSString *text) {
        return CFURLGetFSRef((CFURLRef)[NSURL URLWithString:text], &reference) != 0;
    };
    EXPECT_TRUE(get(@"file:///tmp"));
    EXPECT_TRUE(get(@"file:///t%6Dp/"));
    EXPECT_TRUE(get(@"FILE://localhost/tmp"));
    EXPECT_FALSE(get(@"file://elsewhere/tmp"));
    EXPECT_FALSE(get(@"http://localhost/tmp"));
    EXPECT_FALSE(get(@"mailto:somebody"));
    EXPECT_FALSE(get(@"file:///tmp%00/x"));
    EXPECT_FALSE(CFURLGetFSRef(nullptr, &reference));
    EXPECT_FALSE(CFURLGetFSRef((CFURLRef)[NSURL URLWithString:@"file:///tmp"], nullptr));
}

TEST_F(FileReferences, FindNothingAfterTheItemIsGone)
{
    const std::string path = MakeFile("short-lived");
    const FSRef reference = *ReferenceOf(path);
    ASSERT_EQ(unlink(path.c_str()), 0);
    UInt8 buffer[4096];
    EXPECT_EQ(Probe(reference), fnfErr);
    EXPECT_EQ(FSRefMakePath(&reference, buffer, sizeof buffer), fnfErr);
    EXPECT_EQ(CFURLCreateFromFSRef(nullptr, &reference), nullptr);
}

TEST_F(FileReferences, ReportAnErrorThatIsNotAboutTheItem)
{
    const std::string sub = MakeFolder("sub");
    const std::string path = MakeFile("sub/file");
    const FSRef reference = *ReferenceOf(path);
    if (geteuid() == 0) {
        // Root may read everything; a path through a loop of links fails even for root.
        ASSERT_EQ(rename(sub.c_str(), (folder + "/moved").c_str()), 0);
        MakeLink("sub", "sub");
    } else {
        ASSERT_EQ(chmod(sub.c_str(), 0), 0);
    }
    EXPECT_EQ(Probe(reference), ioErr);
    chmod(sub.c_str(), 0700);
}

TEST_F(FileReferences, WithANameThatIsNotTextHaveNoName)
{
    const std::string path = folder + "/\xE9";
    std::ofstream(path) << "content";
    FSRef reference = Zeros();
    NSString *const text = [NSString stringWithFormat:@"file://%s/%%E9", folder.c_str()];
    ASSERT_TRUE(CFURLGetFSRef((CFURLRef)[NSURL URLWithString:text], &reference));
    EXPECT_EQ(PathOf(reference), path);
    HFSUniStr255 name;
    EXPECT_EQ(FSGetCatalogInfo(&reference, kFSCatInfoNone, nullptr, &name, nullptr, nullptr), ioErr);
    const OwnedURL url(CFURLCreateFromFSRef(nullptr, &reference));
    EXPECT_TRUE([[(NSURL *)url.get() absoluteString] hasSuffix:@"/%E9"]);
}

TEST_F(FileReferences, WriteThePathOnlyWhereItFits)
{
    const std::string path = MakeFile("file");
    const FSRef reference = *ReferenceOf(path);
    std::vector<UInt8> exact(path.size() + 1, 0x7F);
    EXPECT_EQ(FSRefMakePath(&reference, exact.data(), static_cast<UInt32>(exact.size())), noErr);
    EXPECT_STREQ(reinterpret_cast<char *>(exact.data()), path.c_str());
    std::vector<UInt8> tooSmall(path.size(), 0x7F);
    EXPECT_EQ(FSRefMakePath(&reference, tooSmall.data(), static_cast<UInt32>(tooSmall.size())),
              pathTooLongErr);
    EXPECT_EQ(FSRefMakePath(&reference, exact.data(), 0), pathTooLongErr);
    EXPECT_EQ(FSRefMakePath(&reference, nullptr, 100), paramErr);
}

TEST_F(FileReferences, RefuseToFillInWhatTheyDoNotHave)
{
    const FSRef reference = *ReferenceOf(folder);
    FSCatalogInfo info = {};
    FSSpec place;
    EXPECT_EQ(FSGetCatalogInfo(&reference, kFSCatInfoCreateDate, &info, nullptr, nullptr, nullptr), paramErr);
    EXPECT_EQ(FSGetCatalogInfo(&reference, kFSCatInfoNone, nullptr, nullptr, &place, nullptr), paramErr);
    EXPECT_EQ(FSGetCatalogInfo(&reference, kFSCatInfoNodeID, nullptr, nullptr, nullptr, nullptr), noErr);
}

TEST_F(FileReferences, FillInOnlyWhatWasAskedFor)
{
    const FSRef reference = *ReferenceOf(folder);
    FSCatalogInfo info;
    std::memset(&info, 0x55, sizeof info);
    const FSCatalogInfo before = info;
    EXPECT_EQ(FSGetCatalogInfo(&reference, kFSCatInfoNone, &info, nullptr, nullptr, nullptr), noErr);
    EXPECT_EQ(std::memcmp(&info, &before, sizeof info), 0);
    EXPECT_EQ(FSGetCatalogInfo(&reference, kFSCatInfoNodeID, &info, nullptr, nullptr, nullptr), noErr);
    EXPECT_NE(info.nodeID, before.nodeID);
    info.nodeID = before.nodeID;
    EXPECT_EQ(std::memcmp(&info, &before, sizeof info), 0);
}

TEST(ZeroReference, RefersToNothing)
{
    const FSRef zeros = Zeros();
    UInt8 path[16];
    FSCatalogInfo info;
    HFSUniStr255 name;
    FSRef parent;
    EXPECT_EQ(Probe(zeros), paramErr);
    EXPECT_EQ(FSGetCatalogInfo(&zeros, kFSCatInfoNodeID, &info, &name, nullptr, &parent), paramErr);
    EXPECT_EQ(FSRefMakePath(&zeros, path, sizeof path), paramErr);
    EXPECT_EQ(CFURLCreateFromFSRef(nullptr, &zeros), nullptr);
}

TEST(ForeignReference, RefersToNothing)
{
    FSRef reference = *ReferenceOf("/tmp");
    std::memset(reference.hidden + 8, 0xFF, 8);
    EXPECT_EQ(Probe(reference), paramErr);
    std::memset(&reference, 0xA5, sizeof reference);
    EXPECT_EQ(Probe(reference), paramErr);
}

TEST(NullReference, RefersToNothing)
{
    UInt8 path[16];
    EXPECT_EQ(FSGetCatalogInfo(nullptr, kFSCatInfoNone, nullptr, nullptr, nullptr, nullptr), paramErr);
    EXPECT_EQ(FSRefMakePath(nullptr, path, sizeof path), paramErr);
    EXPECT_EQ(CFURLCreateFromFSRef(nullptr, nullptr), nullptr);
}

TEST(VolumeRoots, HaveTheNodeIDTwo)
{
    for (const char *const path : {"/", "/proc"}) {
        const std::optional<FSRef> reference = ReferenceOf(path);
        ASSERT_TRUE(reference.has_value()) << path;
        EXPECT_EQ(CatalogOf(*reference).nodeID, static_cast<UInt32>(fsRtDirID)) << path;
        EXPECT_EQ(PathOf(*reference), path);
    }
    EXPECT_EQ(CatalogOf(*ReferenceOf("/proc")).name, u"proc");
}

TEST(VolumeRoots, AtTheTopHaveNoParent)
{
    const Catalog root = CatalogOf(*ReferenceOf("/"));
    EXPECT_EQ(root.error, noErr);
    EXPECT_TRUE(IsZero(root.parent));
    EXPECT_EQ(root.name, u"/");
    EXPECT_EQ(PathOf(CatalogOf(*ReferenceOf("/tmp")).parent), "/");
}

TEST(NodeIDs, OfOtherItemsAreNeverOneOrTwo)
{
    for (const char *const path : {"/etc", "/etc/passwd", "/proc/self", "/proc/1", "/proc/sys", "/dev/null",
                                   "/sys/kernel", "/dev/pts/ptmx"}) {
        const std::optional<FSRef> reference = ReferenceOf(path);
        if (reference)
            EXPECT_GT(CatalogOf(*reference).nodeID, static_cast<UInt32>(fsRtDirID)) << path;
    }
}
