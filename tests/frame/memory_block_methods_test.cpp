// The methods of host memory blocks: the constructor for any size, and the pointer to the bytes.
#include "frame/memory_blocks.h"
#include "tests/support/host_declarations.h"
#include "tests/support/linked_test.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// The size that a block reports after the constructor has run.
int64_t gReportedSize;

bool ReportSize(REALobject, const char *, int64_t *size)
{
    *size = gReportedSize;
    return true;
}

void *NoPointer(REALobject)
{
    return nullptr;
}

using MemoryBlockWork = LinkedTest;
using MemoryBlockPointer = LinkedTest;

/// The block that a request for this size returns.
Value BlockOfSize(int64_t size)
{
    MemoryBlockRequest request = {size, nullptr};
    REALNewMemoryBlockWork(&request);
    return Owned(AsInstance(request.block));
}

REALmemoryBlock BlockHandle(const Value &block)
{
    return reinterpret_cast<REALmemoryBlock>(ObjectOf(block));
}

/// The bytes at the block's pointer, as many as the block has.
std::string TextAtPointer(const Value &block)
{
    const void *const bytes = MyREALMemoryBlockGetPtr(BlockHandle(block));
    const size_t size = Host::Current().MemoryBlockBytes(block).size();
    return bytes == nullptr ? "no pointer" : std::string(static_cast<const char *>(bytes), size);
}

} // namespace

TEST_F(MemoryBlockWork, ConstructorMakesABlockOfTheSize)
{
    Host &host = Start();
    MemoryBlockRequest request = {16, nullptr};
    REALNewMemoryBlockWork(&request);
    const Value block = Owned(reinterpret_cast<REALobject>(request.block));
    ASSERT_FALSE(block.IsNil());
    EXPECT_EQ(host.Get(block, "Size").AsInteger(), 16);
    EXPECT_EQ(host.References(block), 1);
    EXPECT_EQ(request.size, 16);
}

TEST_F(MemoryBlockWork, ConstructorMayMakeMoreThanAsked)
{
    StartReplacing("REALGetPropValueInteger", reinterpret_cast<void *>(&ReportSize));
    gReportedSize = 17;
    EXPECT_FALSE(BlockOfSize(16).IsNil());
}

TEST_F(MemoryBlockWork, SizeComesFromTheHostFunctionWithoutTheProperty)
{
    Host &host = StartLacking({"REALGetPropValueInteger"});
    EXPECT_FALSE(BlockOfSize(16).IsNil());
    EXPECT_EQ(host.CallsOf("memoryBlockGetSize"), 1);
}

TEST_F(MemoryBlockWork, BlockWithoutAnySizeIsGivenBack)
{
    StartLacking({"REALGetPropValueInteger", "memoryBlockGetSize"});
    EXPECT_TRUE(BlockOfSize(16).IsNil());
}

TEST_F(MemoryBlockWork, ConstructorIsLookedUpOnce)
{
    Host &host = Start();
    for (int round = 0; round < 3; ++round)
        EXPECT_FALSE(BlockOfSize(16).IsNil());
    EXPECT_EQ(LoadsOf(host, kMemoryBlockConstructor), 1);
    EXPECT_EQ(host.CallsOf("MemoryBlock.Constructor"), 3);
}

TEST_F(MemoryBlockWork, MissingConstructorIsLookedUpOnce)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.LackMethod(kMemoryBlockConstructor); });
    for (int round = 0; round < 3; ++round)
        EXPECT_TRUE(BlockOfSize(16).IsNil());
    EXPECT_EQ(LoadsOf(host, kMemoryBlockConstructor), 1);
    EXPECT_EQ(host.CallsOf("PluginNewInstance"), 3);
    EXPECT_TRUE(host.TakeException().IsNil());
}

TEST_F(MemoryBlockWork, ConstructorIsLookedUpWithTheFirstInstanceThatTheHostMakes)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.AnswerFrom("PluginNewInstance", 2); });
    EXPECT_TRUE(BlockOfSize(16).IsNil());
    EXPECT_EQ(LoadsOf(host, kMemoryBlockConstructor), 0);
    EXPECT_FALSE(BlockOfSize(16).IsNil());
    EXPECT_EQ(LoadsOf(host, kMemoryBlockConstructor), 1);
    EXPECT_EQ(host.CallsOf("MemoryBlock.Constructor"), 1);
}

TEST_F(MemoryBlockPointer, NoBlockHasNoPointer)
{
    Host &host = Start();
    EXPECT_EQ(MyREALMemoryBlockGetPtr(nullptr), nullptr);
    EXPECT_TRUE(host.Trace().empty());
}

TEST_F(MemoryBlockPointer, PointerMethodIsFoundOnceThroughATemporaryBlock)
{
    Host &host = Start();
    const Value first = host.NewMemoryBlock("first");
    const Value second = host.NewMemoryBlock("second");
    EXPECT_EQ(TextAtPointer(first), "first");
    EXPECT_EQ(TextAtPointer(second), "second");
    EXPECT_EQ(LoadsOf(host, kConvertToPointer), 1);
    ASSERT_EQ(host.CallsOf("newMemoryBlock"), 1);
    EXPECT_EQ(host.Trace().at(0).arguments, "4");
    EXPECT_EQ(host.CallsOf("REALUnlockObject"), 1);
    EXPECT_EQ(host.CallsOf("memoryBlockGetPtr"), 0);
}

TEST_F(MemoryBlockPointer, PointerMethodIsThatOfTheTemporaryBlockNotOfAProgramsOwnClass)
{
    Host &host = Start();
    host.DefineClass(
        {.name = "ProgramBlock",
         .super = "MemoryBlock",
         .methods = {{kConvertToPointer, [](const Value &, const auto &) { return Value(int64_t{0}); }}}});
    const Value block = host.New("ProgramBlock", {3});
    EXPECT_NE(MyREALMemoryBlockGetPtr(BlockHandle(block)), nullptr);
}

TEST_F(MemoryBlockPointer, PointerMethodIsAskedOfTheBlockItselfWithoutATemporaryOne)
{
    Host &host = StartLacking({"newMemoryBlock"});
    const Value block = host.NewMemoryBlock("bytes");
    EXPECT_EQ(TextAtPointer(block), "bytes");
    EXPECT_EQ(LoadsOf(host, kConvertToPointer), 1);
    EXPECT_EQ(host.References(block), 1);
}

TEST_F(MemoryBlockPointer, PointerComesFromTheHostFunctionWithoutTheMethodWhichIsLookedUpAgain)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.LackMethod(kConvertToPointer); });
    const Value block = host.NewMemoryBlock("bytes");
    for (int round = 0; round < 3; ++round)
        EXPECT_EQ(TextAtPointer(block), "bytes");
    EXPECT_EQ(LoadsOf(host, kConvertToPointer), 3);
    EXPECT_EQ(host.CallsOf("newMemoryBlock"), 3);
    EXPECT_EQ(host.CallsOf("memoryBlockGetPtr"), 3);
}

TEST_F(MemoryBlockPointer, PointerMethodThatComesLaterIsFound)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.LackMethod(kConvertToPointer); });
    const Value block = host.NewMemoryBlock("bytes");
    MyREALMemoryBlockGetPtr(BlockHandle(block));
    host.ReplaceMethod(kConvertToPointer, reinterpret_cast<void *>(&NoPointer));
    EXPECT_EQ(MyREALMemoryBlockGetPtr(BlockHandle(block)), nullptr);
    EXPECT_EQ(host.CallsOf("memoryBlockGetPtr"), 1);
}
