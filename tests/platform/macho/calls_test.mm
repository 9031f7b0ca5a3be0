// Functions of this platform that code of a dylib calls in macOS's way.
#import <Foundation/Foundation.h>
#include <gmock/gmock.h>

#include <objc/runtime.h>

#include <new>
#include <stdexcept>
#include <utility>

#include "platform/macho/adapters.h"
#include "tests/platform/macho/dylib_test.h"

namespace {

class Calls : public DylibTest {
protected:
    void SetUp() override { Load("calls"); }

    char text[100] = "";
};

/// Destroys an object that was made here, and returns what the dylib takes for its address.
template <typename Type, typename... Arguments>
bool IsSameAfter(void *(*destroy)(void *), Arguments... arguments)
{
    alignas(Type) char memory[sizeof(Type)];
    void *const object = new (memory) Type(arguments...);
    return destroy(object) == object;
}

template <typename Result>
__attribute__((noinline)) Result Narrow(int64_t value)
{
    return static_cast<Result>(value);
}

/// A method whose result has more bits than its type says, as the platform's methods may leave it.
int64_t WideResult(id, SEL)
{
    return 0x123456789ABCDEF0;
}

/// An object that the caller owns. Its methods have the names and the types of a number's.
id ObjectWithWideResults()
{
    const Class type = objc_allocateClassPair([NSObject class], "MachOWideResults", 0);
    const std::pair<SEL, const char *> methods[] = {
        {@selector(charValue), "c16@0:8"},  {@selector(unsignedCharValue), "C16@0:8"},
        {@selector(shortValue), "s16@0:8"}, {@selector(unsignedShortValue), "S16@0:8"},
        {@selector(intValue), "i16@0:8"},
    };
    for (const auto &[selector, types] : methods)
        class_addMethod(type, selector, reinterpret_cast<IMP>(WideResult), types);
    objc_registerClassPair(type);
    return [[type alloc] init];
}

} // namespace

TEST_F(Calls, OfVariableArgumentsPassEachOfThem)
{
    const auto formatMany = Find<int(char *, size_t)>("formatMany");
    EXPECT_EQ(formatMany(text, sizeof text), 42);
    EXPECT_STREQ(text, "1 two 3.25 4 5 6.5 7 8 9.125 a eleven 12.5");
    EXPECT_EQ(formatMany(text, 8), 42);
    EXPECT_STREQ(text, "1 two 3");
    Find<int(char *, size_t)>("formatNumbers")(text, sizeof text);
    EXPECT_STREQ(text, "1.5 2.5 3.5 4.5 5.5 6.5 7.5 8.5 9.5 10.5");
    EXPECT_EQ(Find<int(char *, size_t)>("formatNothing")(text, sizeof text), 1);
    EXPECT_STREQ(text, "%");
}

TEST_F(Calls, OfCheckedFunctionsPassEachArgument)
{
    EXPECT_EQ((Find<int(char *, size_t, size_t)>("formatChecked")(text, sizeof text, sizeof text)), 10);
    EXPECT_STREQ(text, "1 two 3.25");
    EXPECT_EQ((Find<int(char *, size_t)>("formatCheckedUnbounded")(text, sizeof text)), 10);
    EXPECT_STREQ(text, "1 two 3.25");
}

// The sanitizer has its own versions of these functions, which do not check.
#if !__has_feature(address_sanitizer)
TEST_F(Calls, OfCheckedFunctionsWithoutRoomEndTheProcess)
{
    const auto formatChecked = Find<int(char *, size_t, size_t)>("formatChecked");
    EXPECT_DEATH(formatChecked(text, sizeof text, 8), "buffer overflow");
    const auto formatCheckedUnbounded = Find<int(char *, size_t)>("formatCheckedUnbounded");
    EXPECT_DEATH(formatCheckedUnbounded(text, 8), "buffer overflow");
}
#endif

TEST_F(Calls, OfTheLogPassEachArgument)
{
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    testing::internal::CaptureStderr();
    Find<void()>("logMany")();
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("1 two 3.25 four 5"));
    [pool release];
}

TEST_F(Calls, OfConstructorsAndDestructorsKeepTheObject)
{
    alignas(std::bad_alloc) char memory[sizeof(std::bad_alloc)];
    EXPECT_EQ(Find<void *(void *)>("makeBadAlloc")(memory), memory);
    EXPECT_STREQ(reinterpret_cast<std::bad_alloc *>(memory)->what(), std::bad_alloc().what());
    EXPECT_EQ(Find<void *(void *)>("destroyBadAlloc")(memory), memory);
    EXPECT_TRUE(IsSameAfter<std::logic_error>(Find<void *(void *)>("destroyLogicError"), "on purpose"));
    EXPECT_TRUE(IsSameAfter<std::runtime_error>(Find<void *(void *)>("destroyRuntimeError"), "on purpose"));
    EXPECT_TRUE(IsSameAfter<std::exception>(Find<void *(void *)>("destroyException")));
}

TEST_F(Calls, OfThisProjectsFunctionsGiveNarrowResultsExtended)
{
    const int64_t value = 0x123456789ABCDEF0;
    EXPECT_EQ((Find<int64_t(int8_t (*)(int64_t), int64_t)>("widenChar")(Narrow<int8_t>, value)), -0x10);
    EXPECT_EQ((Find<int64_t(uint8_t (*)(int64_t), int64_t)>("widenUnsignedChar")(Narrow<uint8_t>, value)),
              0xF0);
    EXPECT_EQ((Find<int64_t(int16_t (*)(int64_t), int64_t)>("widenShort")(Narrow<int16_t>, value)), -0x2110);
    EXPECT_EQ((Find<int64_t(uint16_t (*)(int64_t), int64_t)>("widenUnsignedShort")(Narrow<uint16_t>, value)),
              0xDEF0);
}

TEST_F(Calls, OfMethodsGiveNarrowResultsExtended)
{
    const id object = ObjectWithWideResults();
    EXPECT_EQ(Find<int64_t(id)>("charOf")(object), -0x10);
    EXPECT_EQ(Find<int64_t(id)>("unsignedCharOf")(object), 0xF0);
    EXPECT_EQ(Find<int64_t(id)>("shortOf")(object), -0x2110);
    EXPECT_EQ(Find<int64_t(id)>("unsignedShortOf")(object), 0xDEF0);
    EXPECT_EQ(Find<int64_t(id)>("intOf")(object), static_cast<int32_t>(0x9ABCDEF0));
    [object release];
}

TEST_F(DylibTest, MessagesOfVariableArgumentsPassEachOfThemOnX86_64)
{
    if (macho::kThisProcessor != macho::Processor::X86_64)
        return;
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    Load("variadic_messages");
    EXPECT_STREQ([Find<NSString *()>("format")() UTF8String], "one 2 3.5");
    [pool release];
}

TEST(AllocationAndInitialisation, InOneCallGiveAnInitialisedObject)
{
    @autoreleasepool {
        const id string = static_cast<id>(machoAllocInit([NSMutableString class]));
        [string appendString:@"text"];
        EXPECT_TRUE([string isEqualToString:@"text"]);
        EXPECT_EQ([string retainCount], 1u);
        [string release];
    }
}
