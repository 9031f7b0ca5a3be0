// The lock on a host string while its bytes are read is given back however the reading ends.
#import <Foundation/Foundation.h>

#include "bridge/to_cocoa/string_to_cocoa.h"
#include "tests/support/host_declarations.h"
#include "tests/support/linked_test.h"
#include "tests/support/raising.h"
#include "tests/support/row_names.h"
#include "tests/support/texts.h"
#include "tests/support/throwing.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// How and where a host without Core Foundation strings fails.
struct Failure {
    const char *name;
    bool isCocoa;
    bool inLenB;
};

class StringLock : public LinkedTest, public ::testing::WithParamInterface<Failure> {
protected:
    Host &StartFailing()
    {
        return Start(2024.01, [](Host &unloaded) {
            void *const failure = reinterpret_cast<void *>(GetParam().isCocoa ? RaiseInHost : ThrowInHost);
            unloaded.Lack("REALGetStringCFString");
            if (GetParam().inLenB)
                unloaded.ReplaceMethod(kLenB, failure);
            else
                unloaded.Replace("StringGetCString", failure);
        });
    }

    /// Expects that reading the string ends with the host's exception.
    void ExpectException(const Value &string)
    {
        const auto read = [&] { NewNSString(StringOf(string)); };
        if (GetParam().isCocoa)
            EXPECT_TRUE([ExceptionRaisedBy(read) isEqualToString:kRaised]);
        else
            EXPECT_TRUE(EndsThrown(read));
    }
};

// A host whose strings have their bytes only while they are locked

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

        ExpectException(string);

        EXPECT_EQ(host.CallsOf("REALLockString"), 1);
        EXPECT_EQ(host.CallsOf("REALUnlockString"), 1);
        EXPECT_EQ(host.References(string), 1);
    }
}

INSTANTIATE_TEST_SUITE_P(All, StringLock,
                         ::testing::Values(Failure{"ThrownByLenB", false, true},
                                           Failure{"RaisedByLenB", true, true},
                                           Failure{"ThrownByTheContents", false, false},
                                           Failure{"RaisedByTheContents", true, false}),
                         kNameOfRow);
