// Host memory blocks become Cocoa data.
#include "family/family.h"
#include "tests/bridge/to_cocoa/member_conversion.h"
#include "tests/support/host_declarations.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

void *NoPointer(qzlhost::Instance *)
{
    return nullptr;
}

char gBytes[] = "borrowed";

/// The block whose calls are recorded, and these calls in order.
qzlhost::Instance *gBlock;
std::vector<std::string> gBlockEvents;

/// Replaces a host function whose first argument may be the block, and records those calls.
template <int Kind, typename Function>
struct NotedCall;

template <int Kind, typename Result, typename... Arguments>
struct NotedCall<Kind, Result(qzlhost::Instance *, Arguments...)> {
    static inline Result (*original)(qzlhost::Instance *, Arguments...);
    static inline const char *name;

    static Result Call(qzlhost::Instance *object, Arguments... arguments)
    {
        if (object == gBlock)
            gBlockEvents.push_back(name);
        return original(object, arguments...);
    }

    static void StandIn(Host &unloaded, const char *function, const char *event)
    {
        original = reinterpret_cast<decltype(original)>(unloaded.Resolver()(function));
        name = event;
        unloaded.Replace(function, reinterpret_cast<void *>(&Call));
    }
};

void *NotePointer(qzlhost::Instance *block)
{
    if (block == gBlock)
        gBlockEvents.push_back("read");
    return gBytes;
}

bool NegativeSize(qzlhost::Instance *, const char *, int64_t *size)
{
    *size = -3;
    return true;
}

using MemoryBlockToCocoa = MemberConversion;

} // namespace

TEST_F(MemoryBlockToCocoa, IsACopyThatOutlivesIt)
{
    Host &host = Start();
    NSData *converted = nil;
    {
        const Value block = host.NewMemoryBlock(std::string_view("a\0b", 3));
        converted = Convert(block);
        EXPECT_EQ(host.References(block), 1);
    }
    ASSERT_TRUE([converted isKindOfClass:[NSData class]]);
    EXPECT_FALSE([converted isKindOfClass:[NSMutableData class]]);
    EXPECT_TRUE([converted isEqualToData:[NSData dataWithBytes:"a\0b" length:3]]);
}

TEST_F(MemoryBlockToCocoa, WithoutBytesIsNilWhateverComesLater)
{
    Host &host = Start();
    Family family(host);
    family.OfferObjectWrapper();
    EXPECT_EQ(Convert(host.NewMemoryBlock("")), nil);
}

TEST_F(MemoryBlockToCocoa, IsLockedWhileItIsRead)
{
    Host &host = Start({}, [](Host &unloaded) {
        NotedCall<0, void(qzlhost::Instance *)>::StandIn(unloaded, "REALLockObject", "lock");
        NotedCall<1, void(qzlhost::Instance *)>::StandIn(unloaded, "REALUnlockObject", "unlock");
        NotedCall<0, bool(qzlhost::Instance *, const char *, int64_t *)>::StandIn(
            unloaded, "REALGetPropValueInteger", "read");
        unloaded.ReplaceMethod(kConvertToPointer, reinterpret_cast<void *>(&NotePointer));
    });
    const Value block = host.NewMemoryBlock("abc");
    gBlock = block.ObjectPointer();

    ASSERT_TRUE([Convert(block) isEqualToData:[NSData dataWithBytes:"bor" length:3]]);

    EXPECT_EQ(gBlockEvents, (std::vector<std::string>{"lock", "read", "read", "unlock"}))
        << "the size and the pointer";
    EXPECT_EQ(host.References(block), 1);
}

TEST_F(MemoryBlockToCocoa, IsNotUnlockedWhereTheHostCannotLock)
{
    Host &host = Start({}, [](Host &unloaded) { unloaded.Lack("REALLockObject"); });
    const Value block = host.NewMemoryBlock("abc");
    EXPECT_EQ([Convert(block) length], 3u);
    EXPECT_EQ(host.References(block), 1);
}

TEST_F(MemoryBlockToCocoa, HasItsSizeFromTheProperty)
{
    Host &host = Start();
    EXPECT_EQ([Convert(host.NewMemoryBlock("abc")) length], 3u);
    EXPECT_EQ(host.CallsOf("REALGetPropValueInteger"), 1);
    EXPECT_EQ(host.CallsOf("memoryBlockGetSize"), 0);
}

TEST_F(MemoryBlockToCocoa, HasItsSizeFromTheHostFunctionWithoutTheProperty)
{
    Host &host = Start();
    host.Fail("REALGetPropValueInteger");
    EXPECT_EQ([Convert(host.NewMemoryBlock("abc")) length], 3u);
    EXPECT_EQ(host.CallsOf("memoryBlockGetSize"), 1);
}

TEST_F(MemoryBlockToCocoa, HasItsSizeFromTheHostFunctionOnHostsWithoutProperties)
{
    Host &host = Start({}, [](Host &unloaded) { unloaded.Lack("REALGetPropValueInteger"); });
    EXPECT_EQ([Convert(host.NewMemoryBlock("abc")) length], 3u);
    EXPECT_EQ(host.CallsOf("memoryBlockGetSize"), 1);
}

TEST_F(MemoryBlockToCocoa, WithoutAnySizeIsNil)
{
    Host &host = Start({}, [](Host &unloaded) {
        unloaded.Lack("REALGetPropValueInteger");
        unloaded.Lack("memoryBlockGetSize");
    });
    EXPECT_EQ(Convert(host.NewMemoryBlock("abc")), nil);
}

TEST_F(MemoryBlockToCocoa, OfNegativeSizeIsNil)
{
    Host &host = Start({}, [](Host &unloaded) {
        unloaded.Replace("REALGetPropValueInteger", reinterpret_cast<void *>(&NegativeSize));
    });
    EXPECT_EQ(Convert(host.NewMemoryBlock("abc")), nil);
}

TEST_F(MemoryBlockToCocoa, WithoutAPointerIsNil)
{
    Host &host = Start({}, [](Host &unloaded) {
        unloaded.ReplaceMethod(kConvertToPointer, reinterpret_cast<void *>(&NoPointer));
    });
    EXPECT_EQ(Convert(host.NewMemoryBlock("abc")), nil);
}
