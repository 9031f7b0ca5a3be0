// Mends gdnc, GNUstep's daemon for notifications between processes. This library is preloaded into it.
//
// gdnc serves requests while it waits for a process's socket. It delivers each post that arrives meanwhile on
// top of the one before, so some seven hundred of them overflow its stack, and what it does for one process
// waits for another that does not run. It also keeps what it held for a suspended process until the same name
// is posted again, and holds what is to be delivered immediately. With this library, gdnc does not wait: its
// run loop writes each message once the socket takes it. A resumed process gets at once what was held for it,
// and a suspended one gets what it observes for immediate delivery.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <dlfcn.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

/// What gdnc sends to a process.
@interface NSObject (DaemonClient)
- (void)postNotificationName:(NSString *)name
                      object:(NSString *)object
                    userInfo:(NSData *)info
                    selector:(NSString *)selector
                          to:(uint64_t)observer;
@end

/// One end of a socket between gdnc and a process.
@interface NSObject (MessageHandle)
- (int)descriptor;
- (BOOL)isValid;
@end

/// A post, until it is on its way to every observer.
@interface DaemonPost : NSObject {
@public
    NSString *name;
    NSString *object;
    NSData *info;
}
@end

@implementation DaemonPost

- (void)dealloc
{
    [name release];
    [object release];
    [info release];
    [super dealloc];
}

@end

namespace {

using PostMethod = void (*)(id server, SEL selector, NSString *name, NSString *object, NSData *info,
                            BOOL deliverImmediately, id client);
using SetSuspendedMethod = void (*)(id server, SEL selector, BOOL suspended, id client);
using SetRootObjectMethod = void (*)(id connection, SEL selector, id root);
using SendMessageMethod = BOOL (*)(id handle, SEL selector, NSArray *message, NSDate *limit);
using ReceivedEventMethod = void (*)(id handle, SEL selector, void *data, RunLoopEventType type, void *extra,
                                     NSString *mode);

SetSuspendedMethod gSetSuspended;
SetRootObjectMethod gSetRootObject;
ReceivedEventMethod gReceivedEvent;

/// An instance variable of one of gdnc's objects: the server, a process, an observer of a process, or a
/// handle.
template <typename Content>
Content &Field(id object, const char *name)
{
    const Ivar variable = class_getInstanceVariable(object_getClass(object), name);
    return *reinterpret_cast<Content *>(reinterpret_cast<char *>(object) + ivar_getOffset(variable));
}

/// The modes in which gdnc's run loop runs.
NSArray *Modes()
{
    return [NSArray arrayWithObjects:NSDefaultRunLoopMode, NSConnectionReplyMode, nil];
}

void *WatchedData(id handle)
{
    return reinterpret_cast<void *>(static_cast<intptr_t>([handle descriptor]));
}

/// Leaves the message to the run loop, where the original waits until it is written.
BOOL SendMessage(id handle, SEL, NSArray *message, NSDate *)
{
    if (![handle isValid])
        return NO;
    NSMutableArray *const messages = Field<NSMutableArray *>(handle, "wMsgs");
    [messages addObject:message];
    if ([messages count] == 1)
        for (NSString *mode in Modes())
            [[NSRunLoop currentRunLoop] addEvent:WatchedData(handle)
                                            type:ET_WDESC
                                         watcher:handle
                                         forMode:mode];
    return YES;
}

/// Reads, or writes a piece of the first message. Stops watching when all is written.
void ReceivedEvent(id handle, SEL selector, void *data, RunLoopEventType type, void *extra, NSString *mode)
{
    [[handle retain] autorelease];
    gReceivedEvent(handle, selector, data, type, extra, mode);
    if (type == ET_WDESC && [handle isValid] && [Field<NSMutableArray *>(handle, "wMsgs") count] == 0)
        for (NSString *each in Modes())
            [[NSRunLoop currentRunLoop] removeEvent:WatchedData(handle) type:ET_WDESC forMode:each all:YES];
}

void Send(id server, id observer, DaemonPost *post)
{
    if (NSHashGet(Field<NSHashTable *>(server, "allObservers"), observer) == nullptr)
        return;
    @try {
        [Field<id>(Field<id>(observer, "client"), "client")
            postNotificationName:post->name
                          object:post->object
                        userInfo:post->info
                        selector:Field<NSString *>(observer, "selector")
                              to:Field<uint64_t>(observer, "observer")];
    } @catch (NSException *exception) {
        NSLog(@"gdnc: %@", exception);
    }
}

/// Sends what was held for the observer.
void SendHeld(id server, id observer)
{
    NSMutableArray *const held = Field<NSMutableArray *>(observer, "queue");
    NSArray *const posts = [NSArray arrayWithArray:held];
    [held removeAllObjects];
    for (DaemonPost *post in posts)
        Send(server, observer, post);
}

void SendAllHeld(id server, id process)
{
    // A process that has ended loses its observers meanwhile.
    for (id observer in [NSArray arrayWithArray:Field<NSArray *>(process, "observers")])
        SendHeld(server, observer);
}

void SendOrHold(id server, id observer, DaemonPost *post, bool deliverImmediately)
{
    const id process = Field<id>(observer, "client");
    NSMutableArray *const held = Field<NSMutableArray *>(observer, "queue");
    const auto behavior = Field<NSNotificationSuspensionBehavior>(observer, "behavior");
    if (Field<BOOL>(process, "suspended") && !deliverImmediately) {
        switch (behavior) {
        case NSNotificationSuspensionBehaviorCoalesce:
            [held removeAllObjects];
            [held addObject:post];
            return;
        case NSNotificationSuspensionBehaviorHold:
            [held addObject:post];
            return;
        case NSNotificationSuspensionBehaviorDeliverImmediately:
            // As if the process were resumed for a moment.
            SendAllHeld(server, process);
            break;
        default:
            return;
        }
    }
    SendHeld(server, observer);
    Send(server, observer, post);
}

/// The observers that match, each once.
NSArray *ObserversOf(id server, NSString *name, NSString *object)
{
    NSMutableArray *const observers = [NSMutableArray array];
    for (id observer in [Field<NSDictionary *>(server, "observersForNames") objectForKey:name]) {
        NSString *const wanted = Field<NSString *>(observer, "notificationObject");
        if (wanted == nil || [wanted isEqual:object])
            [observers addObject:observer];
    }
    if (object != nil)
        for (id observer in [Field<NSDictionary *>(server, "observersForObjects") objectForKey:object])
            if (Field<NSString *>(observer, "notificationName") == nil)
                [observers addObject:observer];
    return observers;
}

void Post(id server, SEL, NSString *name, NSString *object, NSData *info, BOOL deliverImmediately, id)
{
    DaemonPost *const post = [[[DaemonPost alloc] init] autorelease];
    post->name = [name copy];
    post->object = [object copy];
    post->info = [info copy];
    for (id observer in ObserversOf(server, name, object))
        SendOrHold(server, observer, post, deliverImmediately);
}

void SetSuspended(id server, SEL selector, BOOL suspended, id client)
{
    gSetSuspended(server, selector, suspended, client);
    if (suspended)
        return;
    auto *const clients = static_cast<NSMapTable *>(
        NSMapGet(Field<NSMapTable *>(server, "connections"), [client connectionForProxy]));
    const id process = static_cast<id>(NSMapGet(clients, client));
    SendAllHeld(server, process);
}

template <typename Function>
Function Replace(Class cls, SEL selector, Function replacement)
{
    const Method method = class_getInstanceMethod(cls, selector);
    return reinterpret_cast<Function>(method_setImplementation(method, reinterpret_cast<IMP>(replacement)));
}

/// gdnc's server becomes the root object of its connection before any request arrives.
void SetRootObject(id connection, SEL selector, id root)
{
    const Class server = object_getClass(root);
    if (server == objc_getClass("GDNCServer") && gSetSuspended == nullptr) {
        Replace<PostMethod>(server, @selector(postNotificationName:object:userInfo:deliverImmediately:for:),
                            Post);
        gSetSuspended = Replace<SetSuspendedMethod>(server, @selector(setSuspended:for:), SetSuspended);
        const Class handle = objc_getClass("GSMessageHandle");
        Replace<SendMessageMethod>(handle, @selector(sendMessage:beforeDate:), SendMessage);
        gReceivedEvent =
            Replace<ReceivedEventMethod>(handle, @selector(receivedEvent:type:extra:forMode:), ReceivedEvent);
    }
    gSetRootObject(connection, selector, root);
}

std::string_view NameOfFile(std::string_view path)
{
    return path.substr(path.rfind('/') + 1);
}

/// Takes this library out of LD_PRELOAD, and leaves what else is there.
void StayOutOfChildren()
{
    const char *const preloaded = std::getenv("LD_PRELOAD");
    Dl_info self;
    if (preloaded == nullptr || dladdr(reinterpret_cast<void *>(&StayOutOfChildren), &self) == 0)
        return;
    std::string others;
    for (std::string_view rest = preloaded; !rest.empty();) {
        const std::string_view entry = rest.substr(0, rest.find_first_of(": "));
        rest.remove_prefix(std::min(entry.size() + 1, rest.size()));
        if (!entry.empty() && NameOfFile(entry) != NameOfFile(self.dli_fname))
            others.append(others.empty() ? "" : ":").append(entry);
    }
    if (others.empty())
        unsetenv("LD_PRELOAD");
    else
        setenv("LD_PRELOAD", others.c_str(), 1);
}

} // namespace

@interface MendedDaemon : NSObject
@end

@implementation MendedDaemon

+ (void)load
{
    // Before the classes are used: one that starts a program when it is initialised would start it in that
    // program, too.
    StayOutOfChildren();
    @autoreleasepool {
        gSetRootObject =
            Replace<SetRootObjectMethod>([NSConnection class], @selector(setRootObject:), SetRootObject);
    }
}

@end
