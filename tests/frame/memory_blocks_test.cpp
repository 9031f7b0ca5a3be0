// New host memory blocks: their bytes, sizes beyond 32 bits, and failures to make one.
#include "frame/memory_blocks.h"

#include <new>
#include <utility>

#include "frame/host_entry_points.h"
#include "tests/frame/folded_bytes.h"
#include "tests/support/host_declarations.h"
#include "tests/support/linked_test.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

constexpr int64_t kLastPlainLength = 0x7FFFFFFE;
constexpr int64_t kConstructorLengths[] = {0x7FFFFFFF, 0x80000000, 0x100000003};

/// The requests to the host's replaced functions, in order.
std::vector<std::string> gAsked;

std::string Ask(const std::string &function, int64_t size)
{
    return function + " " + std::to_string(size);
}

REALobject NoBlock(int32_t size)
{
    gAsked.push_back(Ask("newMemoryBlock", size));
    return nullptr;
}

void ConstructNothing(REALobject, int64_t size)
{
    gAsked.push_back(Ask(kMemoryBlockConstructor, size));
}

/// Where the bytes of blocks are.
void *gTarget;

void *PointerToTarget(REALobject)
{
    return gTarget;
}

/// The size that a block reports after the constructor has run.
int64_t gReportedSize;

bool ReportSize(REALobject, const char *name, int64_t *size)
{
    gAsked.push_back(name);
    *size = gReportedSize;
    return true;
}

void *NoPointer(REALobject)
{
    gAsked.push_back(kConvertToPointer);
    return nullptr;
}

/// Replaces a host function of any signature.
void *OutOfMemory()
{
    throw std::bad_alloc();
}

/// The host's own function; the one in its place throws the first time.
REALobject (*gRealNewInstance)(const char *);

REALobject OutOfMemoryForTheFirstInstance(const char *className)
{
    static bool failed = false;
    if (!std::exchange(failed, true))
        throw std::bad_alloc();
    return gRealNewInstance(className);
}

/// What the exception handler returns, with one reference each time.
REALobject gReport;

REALobject CallWithReport(void (*function)(void *), void *argument)
{
    function(argument);
    REALLockObject(gReport);
    return gReport;
}

std::string Message(int64_t length)
{
    return "Failed to allocate a memoryblock with " + std::to_string(length) + " bytes in size.";
}

class MemoryBlocks : public LinkedTest {
protected:
    /// Expects no block of this length, and the exception for it. No byte is read.
    void ExpectOutOfMemory(int64_t length = 3)
    {
        EXPECT_EQ(NewMemoryBlockOfBytes("abc", length), nullptr);
        ExpectRaised("OutOfMemoryException", Message(length));
    }
};

Value BlockOf(const char *bytes, int64_t length)
{
    return Owned(AsInstance(NewMemoryBlockOfBytes(bytes, length)));
}

} // namespace

TEST_F(MemoryBlocks, OfNoBytesAreNullWithoutAnException)
{
    Host &host = Start();
    EXPECT_EQ(NewMemoryBlockOfBytes("", 0), nullptr);
    EXPECT_EQ(NewMemoryBlockOfBytes("", -1), nullptr);
    EXPECT_EQ(NewMemoryBlockOfBytes(nullptr, 3), nullptr);
    ExpectNothingRaised();
    EXPECT_EQ(host.CallsOf("newMemoryBlock"), 0);
}

TEST_F(MemoryBlocks, HoldACopyOfTheBytes)
{
    Host &host = Start();
    for (const size_t length : {size_t{1}, size_t{3}, size_t{1} << 20}) {
        std::string bytes(length, '\0');
        for (size_t index = 0; index < length; ++index)
            bytes[index] = static_cast<char>(index % 251);
        const Value block = BlockOf(bytes.data(), static_cast<int64_t>(length));
        EXPECT_EQ(host.ClassOf(block), "MemoryBlock");
        EXPECT_EQ(host.MemoryBlockBytes(block), bytes) << length;
        EXPECT_EQ(host.References(block), 1);
    }
    ExpectNothingRaised();
    EXPECT_EQ(host.CallsOf("PluginCallFunctionWithExceptionHandler"), 0);
}

TEST_F(MemoryBlocks, LastPlainLengthGoesThroughTheHostFunction)
{
    Host &host = StartReplacing("newMemoryBlock", reinterpret_cast<void *>(&NoBlock));
    ExpectOutOfMemory(kLastPlainLength);
    EXPECT_EQ(gAsked, std::vector{Ask("newMemoryBlock", 0x7FFFFFFE)});
    EXPECT_EQ(host.CallsOf("PluginCallFunctionWithExceptionHandler"), 0);
}

TEST_F(MemoryBlocks, GreaterLengthsGoThroughTheConstructor)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Replace("newMemoryBlock", reinterpret_cast<void *>(&NoBlock));
        unloaded.ReplaceMethod(kMemoryBlockConstructor, reinterpret_cast<void *>(&ConstructNothing));
    });
    for (const int64_t length : kConstructorLengths) {
        gAsked.clear();
        host.ClearTrace();
        ExpectOutOfMemory(length);
        EXPECT_EQ(gAsked, std::vector{Ask(kMemoryBlockConstructor, length)});
        EXPECT_EQ(host.CallsOf("PluginCallFunctionWithExceptionHandler"), 1);
    }
}

TEST_F(MemoryBlocks, BlockOfTheConstructorWithoutAPointerIsGivenBack)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kConvertToPointer, reinterpret_cast<void *>(&NoPointer));
    });
    ExpectOutOfMemory(kConstructorLengths[0]);
    EXPECT_EQ(gAsked, std::vector<std::string>{kConvertToPointer}) << "there was a block";
    EXPECT_EQ(host.CallsOf("MemoryBlock.Constructor"), 1);
}

TEST_F(MemoryBlocks, BlockOfTheHostFunctionWithoutAPointerIsGivenBack)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kConvertToPointer, reinterpret_cast<void *>(&NoPointer));
    });
    ExpectOutOfMemory();
    EXPECT_EQ(gAsked, std::vector<std::string>{kConvertToPointer}) << "there was a block";
}

TEST_F(MemoryBlocks, BlockThatIsSmallerThanAskedIsGivenBack)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kMemoryBlockConstructor, reinterpret_cast<void *>(&ConstructNothing));
        unloaded.Replace("REALGetPropValueInteger", reinterpret_cast<void *>(&ReportSize));
    });
    gReportedSize = 0x7FFFFFFE;
    ExpectOutOfMemory(0x7FFFFFFF);
    EXPECT_EQ(gAsked, (std::vector<std::string>{Ask(kMemoryBlockConstructor, 0x7FFFFFFF), "Size"}));
}

TEST_F(MemoryBlocks, BeyondThePlainLengthsAreCopiedToTheirEnd)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kMemoryBlockConstructor, reinterpret_cast<void *>(&ConstructNothing));
        unloaded.Replace("REALGetPropValueInteger", reinterpret_cast<void *>(&ReportSize));
        unloaded.ReplaceMethod(kConvertToPointer, reinterpret_cast<void *>(&PointerToTarget));
    });
    // The first of them, and one beyond 32 bits.
    for (const int64_t length : {kConstructorLengths[0], kConstructorLengths[2]}) {
        SCOPED_TRACE(length);
        const FoldedBytes source(static_cast<size_t>(length), 'd');
        const FoldedBytes target(static_cast<size_t>(length), '-');
        gTarget = target.Start();
        gReportedSize = length;

        const Value block = BlockOf(source.Start(), length);

        EXPECT_FALSE(block.IsNil());
        EXPECT_EQ(host.References(block), 1);
        EXPECT_EQ(target.Start()[0], 'd');
        EXPECT_EQ(target.Start()[length - 1], 'd');
        EXPECT_EQ(target.Start()[length], '-');
        ExpectNothingRaised();
    }
}

TEST_F(MemoryBlocks, ConstructorThatThrowsIsOutOfMemoryAndItsInstanceIsGivenBack)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kMemoryBlockConstructor, reinterpret_cast<void *>(&OutOfMemory));
    });
    ExpectOutOfMemory(kConstructorLengths[0]);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 2) << "a block and the exception";
}

TEST_F(MemoryBlocks, MissingFunctionForPlainBlocksIsOutOfMemory)
{
    StartLacking({"newMemoryBlock"});
    ExpectOutOfMemory();
}

TEST_F(MemoryBlocks, MissingExceptionHandlerIsOutOfMemory)
{
    StartLacking({"PluginCallFunctionWithExceptionHandler"});
    ExpectOutOfMemory(kConstructorLengths[1]);
}

TEST_F(MemoryBlocks, MissingPointersAreOutOfMemory)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.LackMethod(kConvertToPointer);
        unloaded.Lack("memoryBlockGetPtr");
    });
    ExpectOutOfMemory();
}

TEST_F(MemoryBlocks, WithoutInstancesNothingIsMadeOrRaised)
{
    Host &host = StartLacking({"PluginNewInstance"});
    EXPECT_EQ(NewMemoryBlockOfBytes("abc", kConstructorLengths[0]), nullptr);
    ExpectNothingRaised();
    EXPECT_EQ(host.CallsOf("PluginCallFunctionWithExceptionHandler"), 1);
}

TEST_F(MemoryBlocks, ReportOfTheExceptionHandlerIsGivenBack)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Replace("PluginCallFunctionWithExceptionHandler", reinterpret_cast<void *>(&CallWithReport));
        unloaded.ReplaceMethod(kMemoryBlockConstructor, reinterpret_cast<void *>(&ConstructNothing));
    });
    const Value report = host.New("RuntimeException");
    gReport = ObjectOf(report);
    ExpectOutOfMemory(kConstructorLengths[0]);
    EXPECT_EQ(host.References(report), 1);
}

TEST_F(MemoryBlocks, LengthThatTheConstructorRefusesIsOutOfMemory)
{
    // More than any machine maps.
    Host &host = Start();
    ExpectOutOfMemory(int64_t{1} << 60);
    EXPECT_EQ(host.CallsOf("MemoryBlock.Constructor"), 1);
}

TEST_F(MemoryBlocks, StandardExceptionWhileABlockIsMadeIsOutOfMemory)
{
    StartReplacing("newMemoryBlock", reinterpret_cast<void *>(&OutOfMemory));
    ExpectOutOfMemory();
}

TEST_F(MemoryBlocks, StandardExceptionWhileTheFailureIsRaisedIsOutOfMemory)
{
    Start(2024.01, [](Host &unloaded) {
        gRealNewInstance =
            reinterpret_cast<decltype(gRealNewInstance)>(unloaded.Resolver()("PluginNewInstance"));
        unloaded.Replace("PluginNewInstance", reinterpret_cast<void *>(&OutOfMemoryForTheFirstInstance));
        unloaded.Fail("newMemoryBlock");
    });
    ExpectOutOfMemory();
}

TEST_F(MemoryBlocks, StandardExceptionWhileTheConstructorRunsIsOutOfMemory)
{
    StartReplacing("PluginCallFunctionWithExceptionHandler", reinterpret_cast<void *>(&OutOfMemory));
    ExpectOutOfMemory(kConstructorLengths[0]);
}

TEST_F(MemoryBlocks, StandardExceptionWhileThePointerIsAskedForGivesTheBlockBack)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kConvertToPointer, reinterpret_cast<void *>(&OutOfMemory));
    });
    ExpectOutOfMemory();
}
