// Functions of this platform that code of a dylib calls in macOS's way.
#import <Foundation/Foundation.h>
#include <gmock/gmock.h>

#include <new>
#include <stdexcept>

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

TEST_F(Calls, OfCheckedFunctionsWithoutRoomEndTheProcess)
{
    const auto formatChecked = Find<int(char *, size_t, size_t)>("formatChecked");
    EXPECT_DEATH(formatChecked(text, sizeof text, 8), "buffer overflow");
    const auto formatCheckedUnbounded = Find<int(char *, size_t)>("formatCheckedUnbounded");
    EXPECT_DEATH(formatCheckedUnbounded(text, 8), "buffer overflow");
}

TEST_F(Calls, OfTheLogPassEachArgument)
{
    testing::internal::CaptureStderr();
    Find<void()>("logMany")();
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("1 two 3.25 four 5"));
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

TEST_F(DylibTest, MessagesOfVariableArgumentsPassEachOfThemOnX86_64)
{
    if (macho::kThisProcessor != macho::Processor::X86_64)
        return;
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    Load("variadic_messages");
    EXPECT_STREQ([Find<NSString *()>("format")() UTF8String], "one 2 3.5");
    [pool release];
}
