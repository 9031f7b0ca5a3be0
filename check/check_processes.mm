// Notifications between processes: to itself, from a second process of this program, and while suspended.
#include "check/groups.h"
#include "check/processes.h"
#include "check/programs.h"

namespace {

constexpr const char *kPost = "postNotificationName(name as string, theObject as string, userInfo as "
                              "dictionary, deliverImmediately as boolean)";
constexpr const char *kAdd =
    "addObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant, "
    "suspensionBehavior as integer)";

/// A name that no other process uses.
NSString *OwnName(NSString *name)
{
    static NSString *const process = [[[NSProcessInfo processInfo] globallyUniqueString] retain];
    return Text({name, @"-", process});
}

/// Posts with the object "lamp".
void PostBetweenProcesses(NSString *name, NSString *state, bool immediately = false)
{
    Call(kDistributed, kPost, DefaultCenter(kDistributed), String(name), String(@"lamp"),
         Value(@"Dictionary", @{@"state" : Variant(code::String, String(state))}), immediately);
}

void Suspend(bool suspended)
{
    const Instance center = DefaultCenter(kDistributed);
    reinterpret_cast<void (*)(Instance, bool)>(FindMember(kDistributed, "suspended as boolean", true))(
        center, suspended);
}

/// Waits for so many notifications, and returns their states.
NSString *States(NSUInteger awaited)
{
    NSMutableArray *const states = [NSMutableArray array];
    for (NSString *delivered in [Await(awaited) componentsSeparatedByString:@", "])
        [states addObject:[[delivered componentsSeparatedByString:@" "] lastObject]];
    NSString *const text = [states componentsJoinedByString:@" "];
    return [text length] == 0 ? @"nothing" : text;
}

/// What an observer of this behaviour gets of the posts "a" and "b" while suspended, and, if there is one, of
/// the post "now", which is to be delivered immediately. Waits for `awaited` notifications, and resumes if
/// they are to come then.
NSString *WhileSuspended(int64_t behavior, bool hasImmediate, bool resumes, NSUInteger awaited)
{
    const Instance observer = NewObserver();
    NSString *const name = OwnName([@(behavior) description]);
    Call(kDistributed, kAdd, DefaultCenter(kDistributed), observer, String(name), Instance(nil), behavior);
    Suspend(true);
    PostBetweenProcesses(name, @"a");
    PostBetweenProcesses(name, @"b");
    if (hasImmediate)
        PostBetweenProcesses(name, @"now", true);
    else
        RunLoopFor(0.5);
    if (resumes) {
        Suspend(false);
        RunLoopFor(0.5);
    }
    NSString *const got = States(awaited);
    Suspend(false);
    return got;
}

} // namespace

void PostToOtherProcess(NSString *name)
{
    PostBetweenProcesses(name, @"on");
    RunLoopFor(0.2);
}

void CheckProcesses()
{
    Check(@"A post reaches the process itself", @"on", [] {
        const Instance observer = NewObserver();
        AddObserver(DefaultCenter(kDistributed), observer, OwnName(@"Self"));
        PostBetweenProcesses(OwnName(@"Self"), @"on");
        return States(1);
    });
    Check(@"A post of another process arrives", @"on", [] {
        const Instance observer = NewObserver();
        AddObserver(DefaultCenter(kDistributed), observer, OwnName(@"Other"));
        [RunAgain(@[ @"--post", OwnName(@"Other") ], nil) waitUntilExit];
        return States(1);
    });
    Check(@"The centre reads back whether it is suspended", @"yes, no", [] {
        const Instance center = DefaultCenter(kDistributed);
        NSMutableArray *const answers = [NSMutableArray array];
        for (const bool suspended : {true, false}) {
            Suspend(suspended);
            [answers addObject:YesOrNo(Call<bool>(kDistributed, "suspended as boolean", center))];
        }
        return [answers componentsJoinedByString:@", "];
    });
    NSString *const behaviors[] = {@"Drop", @"Coalesce", @"Hold", @"DeliverImmediately"};
    NSString *const expected[] = {@"now", @"b now", @"a b now", @"a b now"};
    for (int i = 0; i < 4; ++i) {
        Check(Text({@"Posts while suspended: ", behaviors[i]}), expected[i], [&] {
            return WhileSuspended(i + 1, true, false, [[expected[i] componentsSeparatedByString:@" "] count]);
        });
    }
    Fact(@"DeliverImmediately, no immediate post", nil, [] { return WhileSuspended(4, false, false, 0); });
    Fact(@"Held posts, once resumed", nil, [] { return WhileSuspended(3, false, true, 0); });
}
