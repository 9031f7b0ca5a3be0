// Cocoa data becomes host memory blocks.
#include "bridge/to_host/data_to_host.h"

#include <random>

#include "tests/support/conversion_doubles.h"
#include "tests/support/host_declarations.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;

/// Data of one byte that claim any length.
@interface QZLLongData : NSData {
@public
    NSUInteger claimed;
}
@end

@implementation QZLLongData
- (const void *)bytes
{
    static const char byte = 'x';
    return &byte;
}
- (NSUInteger)length
{
    return claimed;
}
@end

namespace {

class DataToHost : public LinkedTest {
protected:
    /// Expects that the data becomes null, and the exception for its size.
    void ExpectOutOfMemory(NSData *data)
    {
        EXPECT_EQ(NewVariantFromNSObject(data), nullptr);
        ExpectRaised("OutOfMemoryException", "Failed to allocate a memoryblock with " +
                                                 std::to_string([data length]) + " bytes in size.");
    }
};

class DataOfSize : public LinkedTest, public ::testing::WithParamInterface<size_t> {};

std::string RandomBytes(size_t size)
{
    std::mt19937_64 random(size);
    std::string bytes(size, '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

NSData *DataOf(const std::string &bytes)
{
    return [NSData dataWithBytes:bytes.data() length:bytes.size()];
}

QZLLongData *MakeLongData(NSUInteger size)
{
    QZLLongData *const data = MakeObject([QZLLongData class]);
    data->claimed = size;
    return data;
}

void ConstructNothing(REALobject, int64_t) {}

} // namespace

TEST_P(DataOfSize, BecomesABlockOfItsBytes)
{
    Host &host = Start();
    const std::string bytes = RandomBytes(GetParam());
    const Value block = Convert(DataOf(bytes));
    EXPECT_EQ(host.ClassOf(block), "MemoryBlock");
    EXPECT_TRUE(host.MemoryBlockBytes(block) == bytes);
    EXPECT_EQ(host.References(block), 1);
}

INSTANTIATE_TEST_SUITE_P(Sizes, DataOfSize,
                         ::testing::Values(1, 2, 3, 4, 5, 7, 8, 255, 256, 4095, 4096, 65537, 10'000'000));

TEST_F(DataToHost, BlockOutlivesTheData)
{
    Host &host = Start();
    NSMutableData *const data = [NSMutableData dataWithBytes:"before" length:6];
    const Value block = Convert(data);
    [data replaceBytesInRange:NSMakeRange(0, 6) withBytes:"after!"];
    EXPECT_EQ(host.MemoryBlockBytes(block), "before");
}

TEST_F(DataToHost, EmptyDataIsNullWithoutAnException)
{
    Host &host = Start();
    EXPECT_EQ(NewVariantFromNSObject([NSData data]), nullptr);
    EXPECT_EQ(NewVariantFromNSObject([NSMutableData data]), nullptr);
    // Of length 0, but with bytes.
    EXPECT_EQ(NewVariantFromNSObject(MakeLongData(0)), nullptr);
    ExpectNothingRaised();
    EXPECT_EQ(host.CallsOf("newMemoryBlock"), 0);
}

TEST_F(DataToHost, NilDataIsNull)
{
    Start();
    EXPECT_EQ(NSDataRB(nil), nullptr);
}

TEST_F(DataToHost, LargestPlainSizeIsAskedForPlainly)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Fail("newMemoryBlock"); });
    ExpectOutOfMemory(MakeLongData(0x7FFFFFFE));
    EXPECT_EQ(ArgumentsOf(host, "newMemoryBlock"), (std::vector<std::string>{"2147483646"}));
    EXPECT_EQ(host.CallsOf("PluginCallFunctionWithExceptionHandler"), 0);
    host.Fail("newMemoryBlock", false);
}

TEST_F(DataToHost, LargerSizesGoThroughTheConstructorAndASmallerBlockIsOutOfMemory)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod(kMemoryBlockConstructor, reinterpret_cast<void *>(&ConstructNothing));
    });
    for (const NSUInteger size : {0x7FFFFFFFul, 0x80000000ul, 0x100000003ul}) {
        host.ClearTrace();
        ExpectOutOfMemory(MakeLongData(size));
        EXPECT_EQ(host.CallsOf("PluginCallFunctionWithExceptionHandler"), 1);
        EXPECT_EQ(host.CallsOf("newMemoryBlock"), 0);
    }
}

TEST_F(DataToHost, HostWithoutMemoryBlocksIsOutOfMemory)
{
    StartLacking({"newMemoryBlock"});
    ExpectOutOfMemory(DataOf("abc"));
}
