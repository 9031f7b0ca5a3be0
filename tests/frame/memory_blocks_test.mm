// Host memory blocks: of Cocoa data, beyond 32 bits, and where their bytes are.
#include "frame/memory_blocks.h"

#import <Foundation/Foundation.h>

#include <sys/mman.h>

#include <new>
#include <utility>

#include "bridge/to_host/data_to_host.h"
#include "frame/host_entry_points.h"
#include "tests/frame/folded_bytes.h"
#include "tests/support/linked_test.h"

using qzlhost::Host;
using qzlhost::Value;

/// Data of any length whose bytes are pages that nobody has touched.
@interface QZLSparseData : NSData {
    void *pages;
    NSUInteger size;
}
+ (instancetype)dataOfLength:(NSUInteger)length;
@end

@implementation QZLSparseData
+ (instancetype)dataOfLength:(NSUInteger)length
{
    QZLSparseData *const data = NSAllocateObject(self, 0, nullptr);
    data->pages = mmap(nullptr, length, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    data->size = length;
    return [data autorelease];
}
- (void)dealloc
{
    munmap(pages, size);
    [super dealloc];
}
- (const void *)bytes
{
    return pages;
}
- (NSUInteger)length
{
    return size;
}
@end

namespace {

constexpr char kConstructor[] = "Constructor(bytes as Integer)";
constexpr char kConvertToPointer[] = "Operator_Convert() As Ptr";
constexpr NSUInteger kLastPlainLength = 0x7FFFFFFE;
constexpr NSUInteger kConstructorLengths[] = {0x7FFFFFFF, 0x80000000, 0x100000003};

/// What the host's replaced functions were asked for, in order.
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
    gAsked.push_back(Ask(kConstructor, size));
}

void ConstructOutOfMemory(REALobject, int64_t)
{
    throw std::bad_alloc();
}

/// Where blocks have their bytes.
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

REALobject OutOfMemory(int32_t)
{
    throw std::bad_alloc();
}

void *OutOfMemoryForAPointer(REALobject)
{
    throw std::bad_alloc();
}

REALobject OutOfMemoryForACall(void (*)(void *), void *)
{
    throw std::bad_alloc();
}

/// The host's own way to instances, and one that has no memory the first time.
REALobject (*gRealNewInstance)(const char *);

REALobject OutOfMemoryForTheFirstInstance(const char *className)
{
    static bool failed = false;
    if (!std::exchange(failed, true))
        throw std::bad_alloc();
    return gRealNewInstance(className);
}

/// What the exception handler returns, with a reference of its own.
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
    Host &StartReplacing(const char *function, void *replacement)
    {
        return Start(2024.01, [&](Host &unloaded) { unloaded.Replace(function, replacement); });
    }

    Host &StartLacking(const char *function)
    {
        return Start(2024.01, [&](Host &unloaded) { unloaded.Lack(function); });
    }

    Value BlockOf(NSData *data) { return Owned(reinterpret_cast<REALobject>(NSDataRB(data))); }

    /// Expects no block and the one exception of this file's subject.
    void ExpectOutOfMemory(NSData *data)
    {
        EXPECT_TRUE(BlockOf(data).IsNil());
        const Value exception = host().TakeException();
        ASSERT_FALSE(exception.IsNil());
        EXPECT_EQ(host().ClassOf(exception), "OutOfMemoryException");
        EXPECT_EQ(host().Get(exception, "Message").AsString(), Message(static_cast<int64_t>([data length])));
        EXPECT_EQ(host().Get(exception, "ErrorNumber").AsInteger(), 0);
    }

    void ExpectNoException() { EXPECT_TRUE(host().TakeException().IsNil()); }
};

NSData *ThreeBytes()
{
    return [NSData dataWithBytes:"a\0b" length:3];
}

} // namespace

TEST_F(MemoryBlocks, NoDataAndEmptyDataAreNullWithoutAnException)
{
    Host &host = Start();
    EXPECT_EQ(NSDataRB(nil), nullptr);
    EXPECT_EQ(NSDataRB([NSData data]), nullptr);
    EXPECT_EQ(NSDataRB([NSMutableData data]), nullptr);
    EXPECT_EQ(NewMemoryBlockOfBytes("", 0), nullptr);
    EXPECT_EQ(NewMemoryBlockOfBytes("", -1), nullptr);
    EXPECT_EQ(NewMemoryBlockOfBytes(nullptr, 3), nullptr);
    ExpectNoException();
    EXPECT_EQ(host.CallsOf("newMemoryBlock"), 0);
}

TEST_F(MemoryBlocks, DataAreCopied)
{
    Host &host = Start();
    for (const size_t length : {size_t{1}, size_t{3}, size_t{1} << 20}) {
        std::string bytes(length, '\0');
        for (size_t index = 0; index < length; ++index)
            bytes[index] = static_cast<char>(index % 251);
        Value block;
        {
            const qzlhost::AutoreleasePool pool;
            block = BlockOf([NSData dataWithBytes:bytes.data() length:length]);
        }
        EXPECT_EQ(host.ClassOf(block), "MemoryBlock");
        EXPECT_EQ(host.MemoryBlockBytes(block), bytes) << length;
        EXPECT_EQ(host.References(block), 1);
    }
    ExpectNoException();
    EXPECT_EQ(host.CallsOf("PluginCallFunctionWithExceptionHandler"), 0);
}

TEST_F(MemoryBlocks, LastPlainLengthGoesThroughTheHostFunction)
{
    Host &host = StartReplacing("newMemoryBlock", reinterpret_cast<void *>(&NoBlock));
    ExpectOutOfMemory([QZLSparseData dataOfLength:kLastPlainLength]);
    EXPECT_EQ(gAsked, std::vector{Ask("newMemoryBlock", 0x7FFFFFFE)});
    EXPECT_EQ(host.CallsOf("PluginCallFunctionWithExceptionHandler"), 0);
}

TEST_F(MemoryBlocks, GreaterLengthsGoThroughTheConstructor)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Replace("newMemoryBlock", reinterpret_cast<void *>(&NoBlock));
        unloaded.ReplaceMethod(kConstructor, reinterpret_cast<void *>(&ConstructNothing));
    });
    for (const NSUInteger length : kConstructorLengths) {
        gAsked.clear();
        host.ClearTrace();
        ExpectOutOfMemory([QZLSparseData dataOfLength:length]);
        EXPECT_EQ(gAsked, std::vector{Ask(kConstructor, static_cast<int64_t>(length))});
        EXPECT_EQ(host.CallsOf("PluginCallFunctionWithExceptionHandler"), 1);
    }
}

TEST_F(MemoryBlocks, BlockOfTheConstructorWithoutAPointerIsGivenBack)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kConvertToPointer, reinterpret_cast<void *>(&NoPointer));
    });
    ExpectOutOfMemory([QZLSparseData dataOfLength:kConstructorLengths[0]]);
    EXPECT_EQ(gAsked, std::vector<std::string>{kConvertToPointer}) << "there was a block";
    EXPECT_EQ(host.CallsOf("MemoryBlock.Constructor"), 1);
}

TEST_F(MemoryBlocks, BlockOfTheHostFunctionWithoutAPointerIsGivenBack)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kConvertToPointer, reinterpret_cast<void *>(&NoPointer));
    });
    ExpectOutOfMemory(ThreeBytes());
    EXPECT_EQ(gAsked, std::vector<std::string>{kConvertToPointer}) << "there was a block";
}

TEST_F(MemoryBlocks, BlockThatIsSmallerThanAskedIsGivenBack)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kConstructor, reinterpret_cast<void *>(&ConstructNothing));
        unloaded.Replace("REALGetPropValueInteger", reinterpret_cast<void *>(&ReportSize));
    });
    gReportedSize = 0x7FFFFFFE;
    ExpectOutOfMemory([QZLSparseData dataOfLength:0x7FFFFFFF]);
    EXPECT_EQ(gAsked, (std::vector<std::string>{Ask(kConstructor, 0x7FFFFFFF), "Size"}));
}

TEST_F(MemoryBlocks, DataBeyondThePlainLengthsAreCopiedToTheirEnd)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kConstructor, reinterpret_cast<void *>(&ConstructNothing));
        unloaded.Replace("REALGetPropValueInteger", reinterpret_cast<void *>(&ReportSize));
        unloaded.ReplaceMethod(kConvertToPointer, reinterpret_cast<void *>(&PointerToTarget));
    });
    // The first of them, and one that 32 bits cannot say.
    for (const NSUInteger length : {kConstructorLengths[0], kConstructorLengths[2]}) {
        SCOPED_TRACE(length);
        const FoldedBytes source(length, 'd');
        const FoldedBytes target(length, '-');
        gTarget = target.Start();
        gReportedSize = static_cast<int64_t>(length);

        const Value block = BlockOf([NSData dataWithBytesNoCopy:source.Start()
                                                         length:length
                                                   freeWhenDone:NO]);

        EXPECT_FALSE(block.IsNil());
        EXPECT_EQ(host.References(block), 1);
        EXPECT_EQ(target.Start()[0], 'd');
        EXPECT_EQ(target.Start()[length - 1], 'd');
        EXPECT_EQ(target.Start()[length], '-');
        ExpectNoException();
    }
}

TEST_F(MemoryBlocks, ConstructorThatThrowsIsOutOfMemoryAndItsInstanceIsGivenBack)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kConstructor, reinterpret_cast<void *>(&ConstructOutOfMemory));
    });
    ExpectOutOfMemory([QZLSparseData dataOfLength:kConstructorLengths[0]]);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 2) << "a block and the exception";
}

TEST_F(MemoryBlocks, MissingFunctionForPlainBlocksIsOutOfMemory)
{
    StartLacking("newMemoryBlock");
    ExpectOutOfMemory(ThreeBytes());
}

TEST_F(MemoryBlocks, MissingExceptionHandlerIsOutOfMemory)
{
    StartLacking("PluginCallFunctionWithExceptionHandler");
    ExpectOutOfMemory([QZLSparseData dataOfLength:kConstructorLengths[1]]);
}

TEST_F(MemoryBlocks, MissingPointersAreOutOfMemory)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.LackMethod(kConvertToPointer);
        unloaded.Lack("memoryBlockGetPtr");
    });
    ExpectOutOfMemory(ThreeBytes());
}

TEST_F(MemoryBlocks, WithoutInstancesNothingIsMadeOrRaised)
{
    Host &host = StartLacking("PluginNewInstance");
    EXPECT_EQ(NSDataRB([QZLSparseData dataOfLength:kConstructorLengths[0]]), nullptr);
    ExpectNoException();
    EXPECT_EQ(host.CallsOf("PluginCallFunctionWithExceptionHandler"), 1);
}

TEST_F(MemoryBlocks, ReportOfTheExceptionHandlerIsGivenBack)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Replace("PluginCallFunctionWithExceptionHandler", reinterpret_cast<void *>(&CallWithReport));
        unloaded.ReplaceMethod(kConstructor, reinterpret_cast<void *>(&ConstructNothing));
    });
    const Value report = host.New("RuntimeException");
    gReport = ObjectOf(report);
    ExpectOutOfMemory([QZLSparseData dataOfLength:kConstructorLengths[0]]);
    EXPECT_EQ(host.References(report), 1);
}

TEST_F(MemoryBlocks, ExceptionOfTheConstructorStaysWithTheHost)
{
    // More than any machine maps: the constructor raises its own exception with another message.
    Host &host = Start();
    constexpr int64_t kTooMuch = int64_t{1} << 60;
    EXPECT_EQ(NewMemoryBlockOfBytes("", kTooMuch), nullptr);
    const Value exception = host.TakeException();
    ASSERT_FALSE(exception.IsNil());
    EXPECT_EQ(host.Get(exception, "Message").AsString(), Message(kTooMuch));
    EXPECT_EQ(host.CallsOf("MemoryBlock.Constructor"), 1);
}

TEST_F(MemoryBlocks, StandardExceptionWhileABlockIsMadeIsOutOfMemory)
{
    StartReplacing("newMemoryBlock", reinterpret_cast<void *>(&OutOfMemory));
    ExpectOutOfMemory(ThreeBytes());
}

TEST_F(MemoryBlocks, StandardExceptionWhileTheFailureIsRaisedIsOutOfMemory)
{
    Start(2024.01, [](Host &unloaded) {
        gRealNewInstance =
            reinterpret_cast<decltype(gRealNewInstance)>(unloaded.Resolver()("PluginNewInstance"));
        unloaded.Replace("PluginNewInstance", reinterpret_cast<void *>(&OutOfMemoryForTheFirstInstance));
        unloaded.Fail("newMemoryBlock");
    });
    ExpectOutOfMemory(ThreeBytes());
}

TEST_F(MemoryBlocks, StandardExceptionWhileTheConstructorRunsIsOutOfMemory)
{
    StartReplacing("PluginCallFunctionWithExceptionHandler", reinterpret_cast<void *>(&OutOfMemoryForACall));
    ExpectOutOfMemory([QZLSparseData dataOfLength:kConstructorLengths[0]]);
}

TEST_F(MemoryBlocks, StandardExceptionWhileThePointerIsAskedForGivesTheBlockBack)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kConvertToPointer, reinterpret_cast<void *>(&OutOfMemoryForAPointer));
    });
    ExpectOutOfMemory(ThreeBytes());
}
