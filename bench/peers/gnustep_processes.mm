// Notifications between processes by GNUstep alone, without the library.
#import <Foundation/Foundation.h>

#include "bench/peers/processes.h"

using Receiver = void (*)(const std::string &name, const Info &info);

@interface PeersReceiver : NSObject {
@public
    Receiver receive;
}
- (void)got:(NSNotification *)notification;
@end

@implementation PeersReceiver

- (void)got:(NSNotification *)notification
{
    NSDictionary *const info = [notification userInfo];
    receive([[notification name] UTF8String],
            Info{[[info objectForKey:@"serial"] longLongValue],
                 [[info objectForKey:@"language"] UTF8String],
                 [[info objectForKey:@"level"] doubleValue],
                 static_cast<bool>([[info objectForKey:@"charging"] boolValue])});
}

@end

namespace {

class GnustepBus {
public:
    explicit GnustepBus(Receiver receive) : receiver_([[PeersReceiver alloc] init])
    {
        receiver_->receive = receive;
        center_ = [[NSDistributedNotificationCenter defaultCenter] retain];
    }

    void Observe(const char *name)
    {
        @autoreleasepool {
            [center_ addObserver:receiver_
                        selector:@selector(got:)
                            name:[NSString stringWithUTF8String:name]
                          object:nil];
        }
    }

    void Post(const char *name, const Info &info)
    {
        @autoreleasepool {
            NSDictionary *const userInfo = [NSDictionary
                dictionaryWithObjectsAndKeys:[NSNumber numberWithLongLong:info.serial], @"serial",
                                             [NSString stringWithUTF8String:info.language.c_str()],
                                             @"language", [NSNumber numberWithDouble:info.level], @"level",
                                             [NSNumber numberWithBool:info.charging], @"charging", nil];
            [center_ postNotificationName:[NSString stringWithUTF8String:name]
                                   object:nil
                                 userInfo:userInfo
                       deliverImmediately:YES];
        }
    }

    void RunUntil(const std::function<bool()> &done)
    {
        while (!done()) {
            @autoreleasepool {
                [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantFuture]];
            }
        }
    }

private:
    PeersReceiver *receiver_;
    NSDistributedNotificationCenter *center_;
};

} // namespace

int main()
{
    std::_Exit(Processes<GnustepBus>::Run("gnustep"));
}
