// The lock on a host string while its bytes are read: given back however the reading ends.
#import <Foundation/Foundation.h>

#include "frame/host_strings.h"
#include "tests/support/linked_test.h"
#include "tests/support/throwing.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

constexpr char kLenB[] = "LenB( s as string ) as integer";

NSString *const kRaised = @"QZLRaisedByTheHost";

enum class Ending { Thrown, Raised };

/// What a host function ends with, instead of an answer.
Ending gEnding;

template <typename Answer>
Answer End(REALstring)
{
    if (gEnding == Ending::Thrown)
        ThrowForTest();
    [NSException raise:kRaised format:@"on purpose"];
    return Answer();
}

/// Where a host that does not answer with Core Foundation strings fails.
struct Failure {
    const char *name;
    Ending ending;
    bool inLenB;
};

void PrintTo(const Failure &failure, std::ostream *stream)
{
    *stream << failure.name;
}

class StringLock : public LinkedTest, public ::testing::WithParamInterface<Failure> {
protected:
    Host &StartFailing()
    {
        gEnding = GetParam().ending;
        return Start(2024.01, [](Host &unloaded) {
            unloaded.Lack("REALGetStringCFString");
            if (GetParam().inLenB)
                unloaded.ReplaceMethod(kLenB, reinterpret_cast<void *>(&End<int64_t>));
            else
                unloaded.Replace("StringGetCString", reinterpret_cast<void *>(&End<const char *>));
        });
    }
};

/// Whether reading the string ends as the parameter says.
bool ReadingEnds(const Value &string, Ending ending)
{
    if (ending == Ending::Thrown)
        return EndsThrown([&] { NewNSString(StringOf(string)); });
    @try {
        NewNSString(StringOf(string));
    } @catch (NSException *exception) {
        return [[exception name] isEqualToString:kRaised];
    }
    return false;
}

} // namespace

TEST_P(StringLock, IsGivenBackWhenTheReadingEndsWithAnException)
{
    Host &host = StartFailing();
    for (const uint32_t encoding :
         {qzlhost::encoding::UTF8, qzlhost::encoding::UTF16, qzlhost::encoding::Unknown}) {
        const Value string = Value::StringOfBytes("text", encoding);
        host.ClearTrace();

        EXPECT_TRUE(ReadingEnds(string, GetParam().ending));

        EXPECT_EQ(host.CallsOf("REALLockString"), 1);
        EXPECT_EQ(host.CallsOf("REALUnlockString"), 1);
        EXPECT_EQ(host.References(string), 1);
    }
}

INSTANTIATE_TEST_SUITE_P(All, StringLock,
                         ::testing::Values(Failure{"ThrownByLenB", Ending::Thrown, true},
                                           Failure{"RaisedByLenB", Ending::Raised, true},
                                           Failure{"ThrownByTheContents", Ending::Thrown, false},
                                           Failure{"RaisedByTheContents", Ending::Raised, false}),
                         [](const auto &info) { return std::string(info.param.name); });
