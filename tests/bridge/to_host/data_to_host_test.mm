// Cocoa data become host memory blocks.
#include "tests/support/conversion_doubles.h"
#include "tests/support/trace.h"

#include <random>

#include "bridge/to_host/data_to_host.h"

using qzlhost::Host;
using qzlhost::Value;

/// Data that say that they are as long as they like.
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

using DataToHost = LinkedTest;

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

TEST_F(DataToHost, EmptyDataAreNullWithoutAnException)
{
    Host &host = Start();
    EXPECT_EQ(NewVariantFromNSObject([NSData data]), nullptr);
    EXPECT_EQ(NewVariantFromNSObject([NSMutableData data]), nullptr);
    // Of length 0, but with an address.
    EXPECT_EQ(NewVariantFromNSObject(MakeObject([QZLLongData class])), nullptr);
    EXPECT_TRUE(host.TakeException().IsNil());
    EXPECT_EQ(host.CallsOf("newMemoryBlock"), 0);
}

TEST_F(DataToHost, NilDataAreNull)
{
    Start();
    EXPECT_EQ(NSDataRB(nil), nullptr);
}

TEST_F(DataToHost, LargestPlainSizeIsAskedForPlainly)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Fail("newMemoryBlock"); });
    QZLLongData *const data = MakeObject([QZLLongData class]);
    data->claimed = 0x7FFFFFFE;
    EXPECT_EQ(NewVariantFromNSObject(data), nullptr);
    EXPECT_EQ(ArgumentsOf(host, "newMemoryBlock"), (std::vector<std::string>{"2147483646"}));
    EXPECT_EQ(host.CallsOf("PluginCallFunctionWithExceptionHandler"), 0);
    const Value exception = host.TakeException();
    EXPECT_EQ(host.ClassOf(exception), "OutOfMemoryException");
    EXPECT_EQ(host.Get(exception, "Message").AsString(),
              "Failed to allocate a memoryblock with 2147483646 bytes in size.");
    host.Fail("newMemoryBlock", false);
}

TEST_F(DataToHost, LargerSizesGoThroughTheConstructorAndASmallerBlockIsAnError)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.ReplaceMethod("Constructor(bytes as Integer)", reinterpret_cast<void *>(&ConstructNothing));
    });
    QZLLongData *const data = MakeObject([QZLLongData class]);
    data->claimed = 0x7FFFFFFF;
    EXPECT_EQ(NewVariantFromNSObject(data), nullptr);
    EXPECT_EQ(host.CallsOf("PluginCallFunctionWithExceptionHandler"), 1);
    EXPECT_EQ(host.CallsOf("newMemoryBlock"), 0);
    const Value exception = host.TakeException();
    EXPECT_EQ(host.ClassOf(exception), "OutOfMemoryException");
    EXPECT_EQ(host.Get(exception, "Message").AsString(),
              "Failed to allocate a memoryblock with 2147483647 bytes in size.");
}

TEST_F(DataToHost, HostWithoutMemoryBlocksIsAnError)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Lack("newMemoryBlock"); });
    EXPECT_EQ(NewVariantFromNSObject(DataOf("abc")), nullptr);
    const Value exception = host.TakeException();
    EXPECT_EQ(host.ClassOf(exception), "OutOfMemoryException");
    EXPECT_EQ(host.Get(exception, "Message").AsString(),
              "Failed to allocate a memoryblock with 3 bytes in size.");
}

TEST_F(DataToHost, BlockWithoutAPointerIsGivenBackAndAnError)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.LackMethod("Operator_Convert() As Ptr");
        unloaded.Lack("memoryBlockGetPtr");
    });
    EXPECT_EQ(NewVariantFromNSObject(DataOf("abc")), nullptr);
    EXPECT_EQ(host.ClassOf(host.TakeException()), "OutOfMemoryException");
}
