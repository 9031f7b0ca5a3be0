// Objective-C exceptions between a dylib and code of this platform.
#import <Foundation/Foundation.h>

#include <thread>
#include <vector>

#include "tests/platform/macho/dylib_test.h"
#include "tests/platform/macho/dylibs/exceptions.h"

namespace {

NSException *NewException()
{
    return [NSException exceptionWithName:@"Native" reason:@"on purpose" userInfo:nil];
}

void Throw(void *object)
{
    @throw static_cast<id>(object);
}

class ObjcExceptions : public DylibTest {
protected:
    void SetUp() override { Load("objc_exceptions"); }

    /// Throws the object from code of this platform.
    static Callback Throwing(id object) { return {Throw, object}; }
    static Callback DoingNothing()
    {
        return {[](void *) {}, nullptr};
    }

    /// The object that a call throws, caught on this platform; nil for none.
    template <typename Call>
    static id CaughtFrom(Call call)
    {
        @try {
            call();
        } @catch (id object) {
            return object;
        }
        return nil;
    }

private:
    NSAutoreleasePool *const pool_ = [[NSAutoreleasePool alloc] init];
};

} // namespace

TEST_F(ObjcExceptions, ThrownThereAreCaughtHere)
{
    const auto throwObject = Find<void(id)>("throwObject");
    const id exception = NewException();
    EXPECT_EQ(CaughtFrom([&] { throwObject(exception); }), exception);
    EXPECT_EQ(CaughtFrom([&] { throwObject(@"a string"); }), @"a string");
}

TEST_F(ObjcExceptions, ThrownHereAreCaughtThereByTheirClass)
{
    const auto catchByClass = Find<Outcome(const Callback &, id *)>("catchByClass");
    id caught = nil;
    const id exception = NewException();
    EXPECT_EQ(catchByClass(Throwing(exception), &caught), Outcome::Exception);
    EXPECT_EQ(caught, exception);
    const id own = [Find<id()>("newOwnException")() autorelease];
    EXPECT_EQ(catchByClass(Throwing(own), &caught), Outcome::OwnClass);
    EXPECT_EQ(caught, own);
    EXPECT_EQ(catchByClass(Throwing(@"a string"), &caught), Outcome::AnyObject);
    EXPECT_EQ(caught, @"a string");
    EXPECT_EQ(catchByClass(DoingNothing(), &caught), Outcome::Nothing);
}

TEST_F(ObjcExceptions, RaisedByFoundationAreCaughtThere)
{
    const auto callback = [](void *) { [[NSMutableArray array] objectAtIndex:5]; };
    EXPECT_EQ(Find<Outcome(const Callback &)>("catchExceptionsOnly")({callback, nullptr}),
              Outcome::Exception);
}

TEST_F(ObjcExceptions, OfAClassWithoutAHandlerGoThrough)
{
    const auto catchExceptionsOnly = Find<Outcome(const Callback &)>("catchExceptionsOnly");
    EXPECT_EQ(CaughtFrom([&] { catchExceptionsOnly(Throwing(@"a string")); }), @"a string");
    EXPECT_EQ(Find<Outcome(const Callback &)>("catchAnything")(Throwing(@"a string")), Outcome::Anything);
}

TEST_F(ObjcExceptions, FinallyRunsHoweverTheBlockEnds)
{
    const auto finallyCounts = Find<void(const Callback &, int *)>("finallyCounts");
    int count = 0;
    finallyCounts(DoingNothing(), &count);
    EXPECT_EQ(count, 11);
    const id exception = NewException();
    EXPECT_EQ(CaughtFrom([&] { finallyCounts(Throwing(exception), &count); }), exception);
    EXPECT_EQ(count, 12);
}

TEST_F(ObjcExceptions, ThrownOnStayTheSame)
{
    int count = 0;
    const id exception = NewException();
    const auto throwOn = Find<void(const Callback &, int *)>("catchAndThrowOn");
    for (int i = 1; i <= 3; ++i) {
        EXPECT_EQ(CaughtFrom([&] { throwOn(Throwing(exception), &count); }), exception);
        EXPECT_EQ(count, i);
    }
    const auto throwAnother = Find<void(const Callback &, id)>("catchAndThrowAnother");
    EXPECT_EQ(CaughtFrom([&] { throwAnother(Throwing(exception), @"another"); }), @"another");
}

TEST_F(ObjcExceptions, TwoAtOnceAreHandledEachInItsHandler)
{
    const id first = NewException();
    const id second = NewException();
    id inner = nil;
    EXPECT_EQ(Find<id(const Callback &, const Callback &, id *)>("catchTwo")(Throwing(first),
                                                                             Throwing(second), &inner),
              first);
    EXPECT_EQ(inner, second);
}

TEST_F(ObjcExceptions, GoThroughFramesWhoseObjectsAreDestroyed)
{
    int living = 0;
    const id exception = NewException();
    const auto through = Find<void(const Callback &, int *)>("letThrough");
    EXPECT_EQ(CaughtFrom([&] { through(Throwing(exception), &living); }), exception);
    EXPECT_EQ(living, 0);
    const auto deep = Find<void(const Callback &, int *, int)>("letThroughDeep");
    EXPECT_EQ(CaughtFrom([&] { deep(Throwing(exception), &living, 100); }), exception);
    EXPECT_EQ(living, 0);
}

TEST_F(ObjcExceptions, GoThroughCodeOfBothSidesInTurn)
{
    // Thrown there, through here, caught there.
    struct Context {
        void (*throwObject)(id);
        id object;
    } context = {Find<void(id)>("throwObject"), NewException()};
    const auto callback = [](void *pointer) {
        const Context &own = *static_cast<Context *>(pointer);
        @try {
            own.throwObject(own.object);
        } @catch (NSString *) {
        }
    };
    id caught = nil;
    EXPECT_EQ(Find<Outcome(const Callback &, id *)>("catchByClass")({callback, &context}, &caught),
              Outcome::Exception);
    EXPECT_EQ(caught, context.object);
}

TEST_F(ObjcExceptions, OnSeveralThreadsStayApart)
{
    const auto throwAndCatch = Find<long(id, long)>("throwAndCatch");
    constexpr long kTimes = 15000;
    std::vector<long> caught(4);
    std::vector<std::thread> threads;
    for (long &count : caught) {
        threads.emplace_back([&count, throwAndCatch] {
            GSRegisterCurrentThread();
            NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
            count = throwAndCatch(NewException(), kTimes);
            [pool release];
            GSUnregisterCurrentThread();
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(caught, std::vector<long>(4, kTimes));
}
