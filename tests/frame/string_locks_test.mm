// The lock on a host string while its bytes are read: given back however the reading ends.
#import <Foundation/Foundation.h>

#include "bridge/to_cocoa/string_to_cocoa.h"
#include "tests/support/linked_test.h"
#include "tests/support/texts.h"
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

// A host whose strings have their bytes in place only while they are locked.

std::string gContents;
std::string gBytes;

void PutBytesInPlace(REALstring)
{
    gBytes = gContents;
}

void TakeBytesAway(REALstring)
{
    gBytes.assign(gBytes.size(), 'x');
}

const char *WhereBytesAre(REALstring)
{
    return gBytes.data();
}

int64_t CountBytes(REALstring)
{
    return static_cast<int64_t>(gBytes.size());
}

class LockedBytes : public LinkedTest, public ::testing::WithParamInterface<uint32_t> {};

} // namespace

TEST_P(LockedBytes, AreReadWhileTheLockLasts)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.Lack("REALGetStringCFString");
        unloaded.Replace("REALLockString", reinterpret_cast<void *>(&PutBytesInPlace));
        unloaded.Replace("REALUnlockString", reinterpret_cast<void *>(&TakeBytesAway));
        unloaded.Replace("StringGetCString", reinterpret_cast<void *>(&WhereBytesAre));
        unloaded.ReplaceMethod(kLenB, reinterpret_cast<void *>(&CountBytes));
    });
    const std::u16string units = u"text";
    gContents = GetParam() == qzlhost::encoding::UTF16 ? std::string(BytesOfUnits(units)) : "text";
    const Value string = Value::StringOfBytes("other", GetParam());

    EXPECT_EQ(UnitsOf(NewNSString(StringOf(string))), units);

    EXPECT_EQ(gBytes, std::string(gContents.size(), 'x')) << "unlocked";
}

INSTANTIATE_TEST_SUITE_P(Encodings, LockedBytes,
                         ::testing::Values(qzlhost::encoding::UTF8, qzlhost::encoding::UTF16,
                                           qzlhost::encoding::Unknown));

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
