// Only regular files are opened, and no more of them is read than is needed.
#include "platform/macho/file.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <fstream>

#include "tests/platform/macho/dylib_file.h"
#include "tests/platform/macho/dylib_test.h"
#include "tests/platform/macho/load_error.h"

namespace {

constexpr off_t kGibibyte = off_t{1} << 30;

class LoadedFile : public testing::Test {
protected:
    /// A hang ends the test.
    LoadedFile() { alarm(60); }
    ~LoadedFile() override { std::remove(path.c_str()); }

    const std::string path = testing::TempDir() + "macho_other_" + std::to_string(getpid());
};

/// The error for this file, without its path; empty for a file that is loaded.
std::string ErrorOf(const std::string &path)
{
    const std::string error = ErrorFrom([&] { macho::LoadDylib(path); });
    const std::string beginning = path + ": ";
    EXPECT_EQ(error.substr(0, beginning.size()), error.empty() ? "" : beginning);
    // Whoever asks what it is gets the same answer.
    const std::string kindError = ErrorFrom([&] { macho::IsMachO(path); });
    EXPECT_TRUE(kindError.empty() || kindError == error) << kindError;
    return error.empty() ? "" : error.substr(beginning.size());
}

/// The greatest amount of memory that the process has had, in bytes.
long PeakMemory()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss * 1024;
}

#if !__has_feature(address_sanitizer)

/// The address space that the process uses, in bytes.
size_t AddressSpace()
{
    size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<size_t>(getpagesize());
}

/// Lets the process use this much more address space. Returns whether the limit holds: an emulator of the
/// processor ignores it.
bool AllowMemory(size_t size)
{
    const rlim_t limit = AddressSpace() + size;
    const rlimit limits = {limit, limit};
    EXPECT_EQ(setrlimit(RLIMIT_AS, &limits), 0);
    void *const beyond = mmap(nullptr, limit, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (beyond == MAP_FAILED)
        return true;
    munmap(beyond, limit);
    return false;
}

#endif

/// The beginning of an image with a single segment of this size, all of which is in the file, and with this
/// rebase table.
std::vector<char> ImageOfOneSegment(uint32_t size, const std::vector<uint8_t> &rebases)
{
    namespace format = macho::format;
    constexpr bool isX86 = macho::kThisProcessor == macho::Processor::X86_64;
    const format::Header header = {format::kMagic64,
                                   isX86 ? format::kCpuX86_64 : format::kCpuArm64,
                                   isX86 ? format::kCpuSubtypeX86_64All : format::kCpuSubtypeArm64All,
                                   format::kFileDylib,
                                   2,
                                   sizeof(format::SegmentCommand) + sizeof(format::DyldInfoCommand),
                                   0,
                                   0};
    const format::SegmentCommand segment = {
        {format::command::Segment64, sizeof segment}, "__DATA", 0, size, 0, size, 3, 3, 0, 0};
    constexpr uint32_t kTable = 0x200;
    format::DyldInfoCommand info = {};
    info.header = {format::command::DyldInfoOnly, sizeof info};
    info.rebaseOffset = kTable;
    info.rebaseSize = static_cast<uint32_t>(rebases.size());
    std::vector<char> file(kTable + rebases.size());
    Write(file, 0, header);
    Write(file, sizeof header, segment);
    Write(file, sizeof header + sizeof segment, info);
    std::copy(rebases.begin(), rebases.end(), file.begin() + kTable);
    return file;
}

} // namespace

TEST_F(LoadedFile, MustBeARegularFile)
{
    EXPECT_EQ(ErrorOf("/"), "it is a directory");
    EXPECT_EQ(ErrorOf("/dev/null"), "it is a device");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(ErrorOf(path), "it is a FIFO");
}

TEST_F(LoadedFile, MustNotBeASocket)
{
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {AF_UNIX, ""};
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    close(descriptor);
    EXPECT_EQ(ErrorOf(path), "it is a socket");
}

TEST_F(LoadedFile, ThatCannotBeOpenedSaysWhy)
{
    EXPECT_EQ(ErrorOf(path), "cannot be opened: No such file or directory");
    ASSERT_EQ(symlink(path.c_str(), path.c_str()), 0);
    EXPECT_EQ(ErrorOf(path), "its symbolic links lead in a circle");
}

TEST_F(LoadedFile, MayBeReachedThroughALink)
{
    ASSERT_EQ(
        symlink((std::string(TEST_DYLIBS) + "/" + FolderOf(macho::kThisProcessor) + "/fixups_opcodes.dylib")
                    .c_str(),
                path.c_str()),
        0);
    EXPECT_EQ(ErrorOf(path), "");
}

TEST_F(LoadedFile, IsLoadedOnce)
{
    const std::string first =
        std::string(TEST_DYLIBS) + "/" + FolderOf(macho::kThisProcessor) + "/fixups_opcodes.dylib";
    ASSERT_EQ(symlink(first.c_str(), path.c_str()), 0);
    const macho::LoadedImage &loaded = macho::LoadDylib(first);
    EXPECT_EQ(&macho::LoadDylib(first), &loaded);
    EXPECT_EQ(&macho::LoadDylib(path), &loaded);
    const TemporaryFile copy(FileOf("fixups_opcodes"));
    EXPECT_NE(&macho::LoadDylib(copy.Path()), &loaded);
}

TEST_F(LoadedFile, ThatHasChangedIsLoadedAgain)
{
    const TemporaryFile file(FileOf("fixups_opcodes"));
    const macho::LoadedImage &loaded = macho::LoadDylib(file.Path());
    const timespec times[] = {{1, 0}, {1, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, file.Path().c_str(), times, 0), 0);
    EXPECT_NE(&macho::LoadDylib(file.Path()), &loaded);
}

TEST_F(LoadedFile, ThatCannotBeLoadedIsRefusedEachTime)
{
    const std::string missing =
        std::string(TEST_DYLIBS) + "/" + FolderOf(macho::kThisProcessor) + "/strong_import.dylib";
    const std::string error = ErrorOf(missing);
    EXPECT_NE(error, "");
    EXPECT_EQ(ErrorOf(missing), error);
}

TEST_F(LoadedFile, ThatIsEmptyIsRefused)
{
    const TemporaryFile file;
    EXPECT_EQ(ErrorOf(file.Path()), "header: 0x4 bytes at 0x0 are beyond the end at 0x0");
}

TEST_F(LoadedFile, IsReadOnlyAsFarAsItIsNeeded)
{
    const TemporaryFile file(FileOf("fixups_opcodes"));
    ASSERT_EQ(truncate(file.Path().c_str(), 3 * kGibibyte), 0);
    const long before = PeakMemory();
    EXPECT_EQ(ErrorOf(file.Path()), "");
    EXPECT_LT(PeakMemory() - before, kGibibyte / 8);
}

TEST_F(LoadedFile, IsNotCopiedIfItIsTooLarge)
{
    const TemporaryFile file(ImageOfOneSegment(kGibibyte, {}));
    ASSERT_EQ(truncate(file.Path().c_str(), kGibibyte), 0);
    const long before = PeakMemory();
    EXPECT_EQ(ErrorOf(file.Path()), "image: has too much in the file");
    EXPECT_LT(PeakMemory() - before, kGibibyte / 8);
}

TEST_F(LoadedFile, ThatIsRefusedIsUnmapped)
{
    const TemporaryFile file(ImageOfOneSegment(kGibibyte, {}));
    ASSERT_EQ(truncate(file.Path().c_str(), kGibibyte), 0);
    const auto isMapped = [&] {
        std::ifstream maps("/proc/self/maps");
        return std::string(std::istreambuf_iterator<char>(maps), {}).find(file.Path()) != std::string::npos;
    };
    EXPECT_NE(ErrorOf(file.Path()), "");
    EXPECT_FALSE(isMapped());
}

#if !__has_feature(address_sanitizer)

TEST_F(LoadedFile, ThatFindsNoAddressSpaceIsRefused)
{
    const TemporaryFile file(FileOf("fixups_opcodes"));
    ASSERT_EQ(truncate(file.Path().c_str(), 3 * kGibibyte), 0);
    if (!AllowMemory(kGibibyte))
        GTEST_SKIP() << "address space cannot be limited here";
    EXPECT_EQ(ErrorOf(file.Path()), "cannot be mapped into memory: Cannot allocate memory");
}

TEST_F(LoadedFile, WhoseTablesFindNoMemoryIsRefused)
{
    // A rebase for each pointer of 64 MiB: 16 bytes each.
    constexpr uint32_t kSize = 1U << 26;
    const TemporaryFile file(
        ImageOfOneSegment(kSize, {0x11, 0x20, 0x80, 0x08, 0x60, 0x80, 0x80, 0xF0, 0x03}));
    ASSERT_EQ(truncate(file.Path().c_str(), kSize), 0);
    if (!AllowMemory(size_t{2} * kSize))
        GTEST_SKIP() << "address space cannot be limited here";
    EXPECT_EQ(ErrorOf(file.Path()), "there is not enough memory");
}

#endif
