// Mends gdnc, GNUstep's daemon for notifications between processes. This library is preloaded into it.
//
// gdnc serves requests while it waits for an observer's socket. It delivers each post that arrives meanwhile
// on top of the one before, so some seven hundred of them overflow its stack. It also keeps what it held for
// a suspended process until the same name is posted again, and holds what is to be delivered immediately.
// With this library, a post that arrives meanwhile waits its turn, a resumed process gets at once what was
// held for it, and a suspended one gets what it observes for immediate delivery.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <utility>

/// What gdnc sends to a process.
@interface NSObject (DaemonClient)
- (void)postNotificationName:(NSString *)name
                      object:(NSString *)object
                    userInfo:(NSData *)info
                    selector:(NSString *)selector
                          to:(uint64_t)observer;
@end

/// A post, until it has been sent to an observer.
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

SetSuspendedMethod gSetSuspended;
SetRootObjectMethod gSetRootObject;

/// An instance variable of one of gdnc's objects: the server, a process, or an observer of a process.
template <typename Content>
Content &Field(id object, const char *name)
{
    const Ivar variable = class_getInstanceVariable(object_getClass(object), name);
    return *reinterpret_cast<Content *>(reinterpret_cast<char *>(object) + ivar_getOffset(variable));
}

/// What is still to be sent to a process.
struct Outbox {
    std::deque<std::pair<id, DaemonPost *>> posts; // each with its observer, both retained
    bool isBeingSent = false;
};

std::map<id, Outbox> gOutboxes;

void Send(id server, id observer, DaemonPost *post)
{
    if (NSHashGet(Field<NSHashTable *>(server, "allObservers"), observer) == nullptr)
        return;
    // The process may end while gdnc waits for its socket.
    const id proxy = [Field<id>(Field<id>(observer, "client"), "client") retain];
    @try {
        [proxy postNotificationName:post->name
                             object:post->object
                           userInfo:post->info
                           selector:Field<NSString *>(observer, "selector")
                                 to:Field<uint64_t>(observer, "observer")];
    } @catch (NSException *exception) {
        NSLog(@"gdnc: %@", exception);
    }
    [proxy release];
}

/// Sends everything in the process's outbox, unless a call further down the stack is doing so.
void SendAll(id server, id process)
{
    Outbox &outbox = gOutboxes[process];
    if (outbox.isBeingSent)
        return;
    outbox.isBeingSent = true;
    while (!outbox.posts.empty()) {
        const auto [observer, post] = outbox.posts.front();
        outbox.posts.pop_front();
        NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
        Send(server, observer, post);
        [pool release];
        [observer release];
        [post release];
    }
    gOutboxes.erase(process);
}

void Enqueue(id observer, DaemonPost *post)
{
    gOutboxes[Field<id>(observer, "client")].posts.emplace_back([observer retain], [post retain]);
}

/// Puts what was held for the observer into its process's outbox.
void Unhold(id observer)
{
    NSMutableArray *const held = Field<NSMutableArray *>(observer, "queue");
    for (DaemonPost *post in held)
        Enqueue(observer, post);
    [held removeAllObjects];
}

void UnholdAll(id process)
{
    for (id observer in Field<NSArray *>(process, "observers"))
        Unhold(observer);
}

void EnqueueOrHold(id observer, DaemonPost *post, bool deliverImmediately)
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
            UnholdAll(process);
            break;
        default:
            return;
        }
    }
    Unhold(observer);
    Enqueue(observer, post);
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
    NSMutableArray *const processes = [NSMutableArray array];
    for (id observer in ObserversOf(server, name, object)) {
        EnqueueOrHold(observer, post, deliverImmediately);
        [processes addObject:Field<id>(observer, "client")];
    }
    for (id process in processes)
        SendAll(server, process);
}

void SetSuspended(id server, SEL selector, BOOL suspended, id client)
{
    gSetSuspended(server, selector, suspended, client);
    if (suspended)
        return;
    auto *const clients = static_cast<NSMapTable *>(
        NSMapGet(Field<NSMapTable *>(server, "connections"), [client connectionForProxy]));
    const id process = static_cast<id>(NSMapGet(clients, client));
    UnholdAll(process);
    SendAll(server, [[process retain] autorelease]);
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
