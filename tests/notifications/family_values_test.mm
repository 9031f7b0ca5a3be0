// Host objects, Cocoa objects and times that are converted once the family's other libraries are there.
#import <Foundation/Foundation.h>

#include <array>
#include <cstring>
#include <numeric>

#include "family/wrapper_classes.h"
#include "tests/support/family_fixture.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// Posts values through Cocoa and through the library, and keeps what the program receives.
class FamilyValues : public PluginWithFamily {
protected:
    Host &StartListening()
    {
        Host &host = StartWithFamily();
        program_.emplace(host, "ProgramObserver", [&](const Value &notification) {
            ++posts_;
            object_ = host.Get(notification, "objectVariant");
            const Value userInfo = host.Get(notification, "userInfo");
            inUserInfo_ = userInfo.IsNil() ? Value() : host.DictionaryGet(userInfo, "key");
        });
        observer_ = program_->NewObserver();
        center_ = DefaultCenter(host);
        host.Call(center_, "addObserver", {observer_, "Posted"});
        return host;
    }

    void PostByCocoa(id value)
    {
        [HandleOf<NSNotificationCenter *>(host(), center_)
            postNotificationName:@"Posted"
                          object:value
                        userInfo:[NSDictionary dictionaryWithObject:value forKey:@"key"]];
    }

    /// Returns the class of the host exception; empty for none.
    std::string PostByProgram(const Value &value)
    {
        const Value info = host().NewDictionary();
        host().DictionarySet(info, "key", value);
        return ExceptionClassOf(
            [&] { host().Call(center_, "postNotificationName", {"Posted", value, info}); });
    }

    int Posts() const { return posts_; }
    /// What the last notification brought.
    const Value &Object() const { return object_; }
    const Value &InUserInfo() const { return inUserInfo_; }
    void Forget() { object_ = inUserInfo_ = Value(); }

    void TearDown() override
    {
        Forget();
        center_ = observer_ = Value();
        program_.reset();
        PluginWithFamily::TearDown();
    }

private:
    std::optional<ObserverProgram> program_;
    Value observer_;
    Value center_;
    int posts_ = 0;
    Value object_;
    Value inUserInfo_;
};

class FamilyTimes : public FamilyValues, public ::testing::WithParamInterface<FamilyTime> {
protected:
    FamilyTimes() { std::iota(bytes_.begin(), bytes_.end(), uint8_t{1}); }

    NSValue *NewCocoaTime() const
    {
        return [NSValue valueWithBytes:bytes_.data() objCType:GetParam().objCType];
    }

    Value NewHostTime()
    {
        const Value time = host().New(GetParam().hostClass);
        std::memcpy(host().InstanceData(time), bytes_.data(), GetParam().size);
        return time;
    }

    void ExpectTime(const Value &value)
    {
        ASSERT_FALSE(value.IsNil());
        EXPECT_EQ(host().ClassOf(value), GetParam().hostClass);
        EXPECT_EQ(host().References(value), 1);
        EXPECT_EQ(std::memcmp(host().InstanceData(value), bytes_.data(), GetParam().size), 0);
    }

private:
    std::array<uint8_t, 96> bytes_;
};

std::string TimeName(const ::testing::TestParamInfo<FamilyTime> &info)
{
    return info.param.hostClass;
}

} // namespace

// Host objects in Cocoa

TEST_F(FamilyValues, HostObjectIsNilInCocoaWithoutTheWrapperClass)
{
    Host &host = StartListening();
    host.DefineClass({"ProgramThing", ""});
    const Value thing = host.New("ProgramThing");
    EXPECT_EQ(PostByProgram(thing), "");
    EXPECT_EQ(Posts(), 1);
    EXPECT_TRUE(Object().IsNil());
    EXPECT_TRUE(InUserInfo().IsNil());
    EXPECT_EQ(host.References(thing), 1);
}

TEST_F(FamilyValues, HostObjectComesBackItselfOnceTheWrapperClassIsThere)
{
    Host &host = StartListening();
    host.DefineClass({"ProgramThing", ""});
    const Value thing = host.New("ProgramThing");
    {
        const qzlhost::AutoreleasePool pool;
        PostByProgram(thing);
        family().OfferObjectWrapper();
        EXPECT_EQ(PostByProgram(thing), "");
        EXPECT_EQ(Posts(), 2);
        EXPECT_EQ(Object().ObjectPointer(), thing.ObjectPointer());
        EXPECT_EQ(InUserInfo().ObjectPointer(), thing.ObjectPointer());
        EXPECT_EQ(family().Unwraps(), 2);
        Forget();
    }
    EXPECT_EQ(host.References(thing), 1) << "the wrappers gave their references back";
}

TEST_F(FamilyValues, CocoaObjectIsNilUntilTheFamilyHasAClassForIt)
{
    Host &host = StartListening();
    NSPipe *const pipe = [NSPipe pipe];
    PostByCocoa(pipe);
    EXPECT_TRUE(Object().IsNil());
    EXPECT_TRUE(InUserInfo().IsNil());

    DefineWrapperClass(host, "NSPipeQZL");

    PostByCocoa(pipe);
    EXPECT_EQ(host.ClassOf(Object()), "NSPipeQZL");
    EXPECT_EQ(HandleOf<NSPipe *>(host, Object()), pipe);
    EXPECT_EQ(HandleOf<NSPipe *>(host, InUserInfo()), pipe);
    EXPECT_NE(Object().ObjectPointer(), InUserInfo().ObjectPointer()) << "there is no registry";
}

TEST_F(FamilyValues, CocoaObjectIsOneInstanceWithTheRegistry)
{
    Host &host = StartListening();
    DefineWrapperClass(host, "NSPipeQZL");
    family().OfferRegistry();
    host.New("NSNotificationQZL", {"FindsTheRegistry"});
    NSPipe *const pipe = [NSPipe pipe];
    PostByCocoa(pipe);
    EXPECT_EQ(Object().ObjectPointer(), InUserInfo().ObjectPointer());
    EXPECT_EQ(family().Registered(pipe), Object().ObjectPointer());
    Forget();
    EXPECT_EQ(family().Registered(pipe), nullptr);
}

// Times

TEST_P(FamilyTimes, OfCocoaAreNilUntilTheFamilyConvertsThem)
{
    StartListening();
    NSValue *const time = NewCocoaTime();
    PostByCocoa(time);
    EXPECT_TRUE(Object().IsNil());
    EXPECT_TRUE(InUserInfo().IsNil());

    family().OfferTimeClass(GetParam());
    PostByCocoa(time);
    EXPECT_TRUE(Object().IsNil()) << "the host class alone does not suffice";

    family().OfferTimeToHost(GetParam());
    PostByCocoa(time);
    ExpectTime(Object());
    ExpectTime(InUserInfo());
    EXPECT_EQ(Posts(), 3);
}

TEST_P(FamilyTimes, OfTheHostAreRefusedByCocoaUntilTheFamilyConvertsThem)
{
    StartListening();
    family().OfferExceptions();
    family().OfferTimeClass(GetParam());
    family().OfferTimeToHost(GetParam());
    const Value time = NewHostTime();
    EXPECT_EQ(PostByProgram(time), "NSExceptionQZL") << "Cocoa lacks the method";
    EXPECT_EQ(Posts(), 0);

    family().OfferTimeToCocoa(GetParam());

    EXPECT_EQ(PostByProgram(time), "");
    EXPECT_EQ(Posts(), 1);
    ExpectTime(Object());
    ExpectTime(InUserInfo());
    EXPECT_NE(Object().ObjectPointer(), time.ObjectPointer());
    EXPECT_EQ(host().References(time), 1);
}

INSTANTIATE_TEST_SUITE_P(Kinds, FamilyTimes, ::testing::ValuesIn(kFamilyTimes), TimeName);
