// The notification centres that GNUstep lacks, and posting with options.
#include "platform/gnustep/DRNotificationCenterPosting.h"
#include "tests/platform/gnustep/port_testing.h"
#include "tests/support/recording_observer.h"

#include <InstantMessage/IMService.h>

#include <thread>

/// Records the call of the method that GNUstep has. It is never initialised, so that it connects to no other
/// process, and is freed without -dealloc.
@interface RecordingDistributedCenter : NSDistributedNotificationCenter {
@public
    NSArray *posted;
    BOOL atOnce;
}
@end

@implementation RecordingDistributedCenter

- (void)postNotificationName:(NSString *)name
                      object:(NSString *)object
                    userInfo:(NSDictionary *)userInfo
          deliverImmediately:(BOOL)deliverImmediately
{
    posted = [NSArray arrayWithObjects:name, object, userInfo, nil];
    atOnce = deliverImmediately;
}

@end

namespace {

QZLRecordingObserver *NewObserver()
{
    return [[[QZLRecordingObserver alloc] init] autorelease];
}

NSNotification *Notification(NSString *name, id object = nil)
{
    return [NSNotification notificationWithName:name object:object];
}

} // namespace

TEST(IMServiceCenter, IsOnePerProcessAndItsOwn)
{
    NSNotificationCenter *const center = [IMService notificationCenter];
    EXPECT_TRUE([center isKindOfClass:[NSNotificationCenter class]]);
    EXPECT_EQ([IMService notificationCenter], center);
    EXPECT_NE(center, [NSNotificationCenter defaultCenter]);
    NSNotificationCenter *elsewhere = nil;
    std::thread([&elsewhere] {
        @autoreleasepool {
            elsewhere = [IMService notificationCenter];
        }
    }).join();
    EXPECT_EQ(elsewhere, center);
}

TEST(IMServiceCenter, DeliversWhatIsPostedThere)
{
    QZLRecordingObserver *const observer = NewObserver();
    NSNotificationCenter *const center = [IMService notificationCenter];
    [center addObserver:observer selector:@selector(receive:) name:@"changed" object:nil];
    [[NSNotificationCenter defaultCenter] postNotificationName:@"changed" object:nil];
    EXPECT_EQ([observer->received count], 0U);
    [center postNotificationName:@"changed" object:nil];
    EXPECT_EQ([observer->received count], 1U);
    [center removeObserver:observer];
}

TEST(DRCenter, IsOnePerThread)
{
    DRNotificationCenter *const center = [DRNotificationCenter currentRunLoopCenter];
    ASSERT_NE(center, nil);
    EXPECT_EQ([DRNotificationCenter currentRunLoopCenter], center);
    bool isSameThere = false;
    const void *elsewhere = nullptr;
    std::thread([&] {
        @autoreleasepool {
            DRNotificationCenter *const other = [DRNotificationCenter currentRunLoopCenter];
            isSameThere = other == [DRNotificationCenter currentRunLoopCenter];
            elsewhere = other;
        }
    }).join();
    EXPECT_TRUE(isSameThere);
    EXPECT_NE(elsewhere, nullptr);
    EXPECT_NE(elsewhere, static_cast<const void *>(center));
}

TEST(DRCenter, OutlivesThePoolThatItWasFirstUsedIn)
{
    const void *first = nullptr;
    @autoreleasepool {
        first = [DRNotificationCenter currentRunLoopCenter];
    }
    EXPECT_EQ([DRNotificationCenter currentRunLoopCenter], first);
    EXPECT_EQ([[DRNotificationCenter currentRunLoopCenter] retainCount], 1U);
}

TEST(DRCenter, IsNoNotificationCenterAndCannotPost)
{
    DRNotificationCenter *const center = [DRNotificationCenter currentRunLoopCenter];
    EXPECT_FALSE([center isKindOfClass:[NSNotificationCenter class]]);
    EXPECT_FALSE([center respondsToSelector:@selector(removeObserver:)]);
    EXPECT_FALSE([center respondsToSelector:@selector(postNotification:)]);
    EXPECT_FALSE([center respondsToSelector:@selector(postNotificationName:object:)]);
    EXPECT_FALSE([center respondsToSelector:@selector(postNotificationName:object:userInfo:)]);
}

TEST(DRCenter, DeliversByNameAndObject)
{
    DRNotificationCenter *const center = [DRNotificationCenter currentRunLoopCenter];
    QZLRecordingObserver *const all = NewObserver();
    QZLRecordingObserver *const named = NewObserver();
    QZLRecordingObserver *const ofObject = NewObserver();
    [center addObserver:all selector:@selector(receive:) name:nil object:nil];
    [center addObserver:named selector:@selector(receive:) name:@"burned" object:nil];
    [center addObserver:ofObject selector:@selector(receive:) name:@"burned" object:@"burner"];

    NSNotification *const burned = Notification(@"burned", @"burner");
    DRNotificationCenterPost(center, burned);
    DRNotificationCenterPost(center, Notification(@"burned"));
    DRNotificationCenterPost(center, Notification(@"ejected"));

    EXPECT_EQ([all->received count], 3U);
    EXPECT_EQ([named->received count], 2U);
    ASSERT_EQ([ofObject->received count], 1U);
    EXPECT_EQ([ofObject->received objectAtIndex:0], burned);
    for (QZLRecordingObserver *const observer : {all, named, ofObject})
        [center removeObserver:observer name:nil object:nil];
}

TEST(DRCenter, RemovesByNameOrAltogether)
{
    DRNotificationCenter *const center = [DRNotificationCenter currentRunLoopCenter];
    QZLRecordingObserver *const observer = NewObserver();
    [center addObserver:observer selector:@selector(receive:) name:@"burned" object:nil];
    [center addObserver:observer selector:@selector(receive:) name:@"ejected" object:nil];
    [center removeObserver:observer name:@"burned" object:nil];
    DRNotificationCenterPost(center, Notification(@"burned"));
    DRNotificationCenterPost(center, Notification(@"ejected"));
    EXPECT_EQ([observer->received count], 1U);
    [center removeObserver:observer name:nil object:nil];
    DRNotificationCenterPost(center, Notification(@"ejected"));
    EXPECT_EQ([observer->received count], 1U);
}

TEST(DRCenter, DoesNotRetainObservers)
{
    DRNotificationCenter *const center = [DRNotificationCenter currentRunLoopCenter];
    QZLRecordingObserver *const observer = NewObserver();
    [center addObserver:observer selector:@selector(receive:) name:@"burned" object:nil];
    EXPECT_EQ([observer retainCount], 1U);
    [center removeObserver:observer name:nil object:nil];
}

TEST(DRCenter, OfAnotherThreadIsNotReached)
{
    QZLRecordingObserver *const observer = NewObserver();
    DRNotificationCenter *const center = [DRNotificationCenter currentRunLoopCenter];
    [center addObserver:observer selector:@selector(receive:) name:@"burned" object:nil];
    std::thread([] {
        @autoreleasepool {
            DRNotificationCenterPost([DRNotificationCenter currentRunLoopCenter], Notification(@"burned"));
        }
    }).join();
    EXPECT_EQ([observer->received count], 0U);
    [center removeObserver:observer name:nil object:nil];
}

TEST(DRCenter, RefusesANilObserverIfFoundationsCentersDo)
{
    const auto raisesForNil = [](id center) {
        @try {
            [center addObserver:nil selector:@selector(receive:) name:@"burned" object:nil];
        } @catch (NSException *exception) {
            return true;
        }
        return false;
    };
    NSNotificationCenter *const foundations = [[[NSNotificationCenter alloc] init] autorelease];
    EXPECT_EQ(raisesForNil([DRNotificationCenter currentRunLoopCenter]), raisesForNil(foundations));
}

TEST(DistributedCenter, PostsWithOptions)
{
    RecordingDistributedCenter *const center =
        NSAllocateObject([RecordingDistributedCenter class], 0, NSDefaultMallocZone());
    NSDictionary *const userInfo = [NSDictionary dictionaryWithObject:@"value" forKey:@"key"];
    NSArray *const expected = [NSArray arrayWithObjects:@"name", @"object", userInfo, nil];
    const std::pair<NSUInteger, BOOL> cases[] = {
        {0, NO},
        {NSDistributedNotificationDeliverImmediately, YES},
        {NSDistributedNotificationPostToAllSessions, NO},
        {NSDistributedNotificationDeliverImmediately | NSDistributedNotificationPostToAllSessions, YES},
    };
    for (const auto &[options, atOnce] : cases) {
        [center postNotificationName:@"name" object:@"object" userInfo:userInfo options:options];
        EXPECT_TRUE([center->posted isEqual:expected]);
        EXPECT_EQ(center->atOnce, atOnce);
    }
    NSDeallocateObject(center);
}
