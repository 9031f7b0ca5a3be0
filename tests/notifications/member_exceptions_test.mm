// A Cocoa exception in every member of every class: it is logged and raised once, and has no other effect.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <gmock/gmock.h>

#include <set>

#include "tests/notifications/member_calls.h"
#include "tests/notifications/member_rows.h"
#include "tests/support/family_fixture.h"
#include "tests/support/leak_check_pause.h"
#include "tests/support/log_capture.h"
#include "tests/support/raising.h"

using qzlhost::Host;
using qzlhost::Value;

/// An exception whose user info raises another.
@interface QZLUnspeakableException : NSException
@end

@implementation QZLUnspeakableException
- (NSDictionary *)userInfo
{
    [NSException raise:@"Unspeakable" format:@"no user info"];
    return nil;
}
@end

/// A notification whose name raises such an exception.
@interface QZLUnspeakableNotification : NSNotification
@end

@implementation QZLUnspeakableNotification
- (NSString *)name
{
    @throw [QZLUnspeakableException exceptionWithName:@"First" reason:@"no name" userInfo:nil];
}
@end

namespace {

/// Makes a row's trouble while it lives.
class TroubleScope {
public:
    TroubleScope(const Trouble &trouble, Family &family)
    {
        switch (trouble.kind) {
        case Trouble::Kind::None:
            break;
        case Trouble::Kind::Method:
            method_.emplace(objc_getClass(trouble.cocoaClass), sel_registerName(trouble.selector));
            break;
        case Trouble::Kind::LocalType:
            constant_.emplace(NSLocalNotificationCenterType);
            break;
        case Trouble::Kind::Registry:
            Offer(family, FamilyMethod::Registry);
            break;
        case Trouble::Kind::Preparation:
            Offer(family, FamilyMethod::Preparation);
            break;
        }
    }
    ~TroubleScope()
    {
        if (family_ != nullptr)
            family_->Raise(familyMethod_, false);
    }
    TroubleScope(const TroubleScope &) = delete;
    TroubleScope &operator=(const TroubleScope &) = delete;

private:
    void Offer(Family &family, FamilyMethod method)
    {
        family_ = &family;
        familyMethod_ = method;
        family.Raise(method);
        family.Offer(method);
    }

    std::optional<RaisingMethod> method_;
    std::optional<RaisingMeanwhile> constant_;
    Family *family_ = nullptr;
    FamilyMethod familyMethod_ = FamilyMethod::Registry;
};

/// What a member's call did and left behind.
struct Outcome {
    MemberAnswer answer;
    std::vector<std::string> log;
    int raised = 0;
    /// The host exception; Nil without one.
    Value exception;
    bool handleStayed = false;
};

class MemberException : public PluginWithFamily, public ::testing::WithParamInterface<MemberRow> {
protected:
    /// Calls the row's member while its trouble lasts.
    Outcome CallInTrouble()
    {
        const MemberRow &row = GetParam();
        const Value self = MakeSelf(row);
        const std::vector<Value> arguments = MakeArguments(row);
        const MemberFunction member = FindMember(host(), KeyOf(row));
        const id handle = HandleIn(self);
        host().ClearTrace();

        Outcome outcome;
        {
            const LogCapture log;
            const TroubleScope trouble(row.trouble, family());
            std::optional<LeakCheckPause> pause;
            if (row.losesText)
                pause.emplace();
            outcome.answer = CallMember(member, self, arguments);
            outcome.log = log.Lines();
        }
        outcome.raised = host().CallsOf("RuntimeRaiseException");
        outcome.exception = host().TakeException();
        outcome.handleStayed = HandleIn(self) == handle;

        ClearRaisingHandle(self);
        for (const Value &argument : arguments)
            ClearRaisingHandle(argument);
        return outcome;
    }

private:
    id HandleIn(const Value &self) { return self.IsNil() ? nil : HandleOf<id>(host(), self); }

    void SetHandle(const Value &self, id handle)
    {
        if (host().ClassOf(self) == kDiscs)
            *static_cast<id *>(host().InstanceData(self)) = handle;
        else
            host().Set(self, "Handle", reinterpret_cast<int64_t>(handle));
    }

    /// Clears a handle that the instance does not own and could not release.
    void ClearRaisingHandle(const Value &value)
    {
        const bool mayHold = value.Code() == qzlhost::code::Object &&
                             (host().IsA(value, GetParam().className) || host().IsA(value, kObserver));
        if (mayHold && (HandleIn(value) == raising_.Get() || HandleIn(value) == deaf_))
            SetHandle(value, nil);
    }

    Value MakeSelf(const MemberRow &row)
    {
        switch (row.self) {
        case Self::None:
            return Value();
        case Self::Bare:
            return host().NewWithoutConstructor(row.className);
        case Self::Constructed:
            return host().New(row.className);
        case Self::Raising:
            break;
        }
        const Value self = host().NewWithoutConstructor(row.className);
        SetHandle(self, raising_.Get());
        return self;
    }

    std::vector<Value> MakeArguments(const MemberRow &row)
    {
        std::vector<Value> arguments;
        for (const Argument argument : row.arguments)
            arguments.push_back(Make(argument));
        return arguments;
    }

    Value Make(Argument argument)
    {
        switch (argument) {
        case Argument::Nothing:
            return Value();
        case Argument::Name:
            return "AName";
        case Argument::NoName:
            return Value::EmptyString();
        case Argument::UnknownType:
            return "a type that no centre is of";
        case Argument::Object:
            return "an object";
        case Argument::ArrayWithNil:
            return host().NewArray(qzlhost::code::Object, {Value()});
        case Argument::Info:
            return MakeInfo("a value");
        case Argument::InfoWithNil:
            return MakeInfo(host().NewArray(qzlhost::code::Object, {Value()}));
        case Argument::Observer:
            return host().New(kObserver);
        case Argument::DeafObserver: {
            const Value observer = host().NewWithoutConstructor(kObserver);
            SetHandle(observer, deaf_);
            return observer;
        }
        case Argument::Notification:
            return host().New(kNotification, {"AName"});
        case Argument::RaisingAddress:
            return reinterpret_cast<int64_t>(raising_.Get());
        case Argument::True:
            return true;
        case Argument::One:
            return int64_t{1};
        }
        return Value();
    }

    Value MakeInfo(const Value &value)
    {
        const Value info = host().NewDictionary();
        host().DictionarySet(info, "key", value);
        return info;
    }

    RaisingObject raising_;
    const id deaf_ = @"deaf";
};

/// How the exception is logged.
std::string LogOf(NSException *exception)
{
    return [[NSString stringWithFormat:@"A %@: %@, Info: %@\n", [exception name], [exception reason],
                                       [exception userInfo]] UTF8String];
}

std::string NameOf(const ::testing::TestParamInfo<MemberRow> &info)
{
    return info.param.testName;
}

using MemberTable = PluginWithFamily;

} // namespace

TEST_P(MemberException, IsLoggedAndRaisedOnceAndTheResultIsEmpty)
{
    Host &host = StartWithFamily();
    family().OfferExceptions();
    if (GetParam().trouble.kind != Trouble::Kind::Registry)
        family().OfferRegistry();

    const Outcome outcome = CallInTrouble();

    EXPECT_FALSE(outcome.answer.threw);
    EXPECT_EQ(outcome.answer.result, 0);
    EXPECT_TRUE(outcome.handleStayed);
    if (GetParam().raises == nullptr) {
        EXPECT_EQ(outcome.raised, 0);
        EXPECT_TRUE(outcome.exception.IsNil());
        EXPECT_THAT(outcome.log, ::testing::IsEmpty());
        return;
    }
    EXPECT_EQ(outcome.raised, 1);
    EXPECT_EQ(family().ExceptionsWrapped(), 1);
    ASSERT_FALSE(outcome.exception.IsNil());
    EXPECT_EQ(host.ClassOf(outcome.exception), "NSExceptionQZL");
    NSException *const raised = HandleOf<NSException *>(host, outcome.exception);
    EXPECT_STREQ([[raised name] UTF8String], GetParam().raises);
    EXPECT_THAT(outcome.log, ::testing::ElementsAre(LogOf(raised)));
}

TEST_P(MemberException, WithoutTheFamilyIsLoggedAndNothingElse)
{
    StartWithFamily();

    const Outcome outcome = CallInTrouble();

    EXPECT_FALSE(outcome.answer.threw);
    EXPECT_EQ(outcome.answer.result, 0);
    EXPECT_TRUE(outcome.handleStayed);
    EXPECT_EQ(outcome.raised, 0);
    EXPECT_TRUE(outcome.exception.IsNil());
    if (GetParam().raises == nullptr)
        EXPECT_THAT(outcome.log, ::testing::IsEmpty());
    else
        EXPECT_THAT(outcome.log, ::testing::ElementsAre(
                                     ::testing::StartsWith(std::string("A ") + GetParam().raises + ": ")));
}

INSTANTIATE_TEST_SUITE_P(Members, MemberException, ::testing::ValuesIn(kMemberRows), NameOf);

TEST_F(MemberTable, CoversEveryFunctionOfTheLibrarysClasses)
{
    Host &host = Start();
    std::set<std::string> registered;
    for (const MemberFunction &member : MemberFunctions(host))
        registered.insert(member.Key());
    std::set<std::string> tested;
    for (const MemberRow &row : kMemberRows)
        tested.insert(KeyOf(row));
    EXPECT_EQ(tested, registered);
}

TEST_F(MemberTable, ExceptionThatCannotBeLoggedIsRaisedAllTheSame)
{
    Host &host = StartWithFamily();
    family().OfferExceptions();
    NSNotification *const broken = NSAllocateObject([QZLUnspeakableNotification class], 0, nullptr);
    {
        const Value notification = host.New(kNotification, {reinterpret_cast<int64_t>(broken)});
        ExpectException([&] { host.Get(notification, "Name"); }, "NSExceptionQZL", "no name");
        EXPECT_EQ(family().ExceptionsWrapped(), 1);
    }
    NSDeallocateObject(broken);
}
