// The headers together, Cocoa's before Core Foundation's.
#include <Cocoa/Cocoa.h>

#include <ApplicationServices/ApplicationServices.h>
#include <CoreFoundation/CoreFoundation.h>
#include <DiscRecording/DiscRecording.h>
#include <InstantMessage/IMService.h>
#include <pthread.h>

#include <gtest/gtest.h>

extern "C" CFTypeID TypeOfNothingAskedFromC(void);

TEST(Headers, WorkFromC)
{
    EXPECT_EQ(TypeOfNothingAskedFromC(), 0U);
}

TEST(Headers, BringTheAdditionsOfFoundationThroughCocoa)
{
    const SEL post = @selector(postNotificationName:object:userInfo:options:);
    EXPECT_TRUE([NSDistributedNotificationCenter instancesRespondToSelector:post]);
    EXPECT_EQ(NSDistributedNotificationDeliverImmediately, 1);
    EXPECT_EQ(NSDistributedNotificationPostToAllSessions, 2);
}

TEST(Headers, KnowTheLocalNotificationCenterType)
{
    EXPECT_NE(NSLocalNotificationCenterType, nil);
}

TEST(Headers, MakeConstantStrings)
{
    EXPECT_TRUE([static_cast<NSString *>(const_cast<void *>(CFTypeRef(CFSTR("text")))) isEqual:@"text"]);
}
