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

constexpr int64_t kDrop = 1, kCoalesce = 2, kHold = 3, kDeliverImmediately = 4;

/// An observer, what is posted while the process is suspended, and what the observer gets. The post "now" is
/// to be delivered immediately, and "|" ends the suspension.
struct Suspension {
    NSString *what;
    int64_t behavior;
    NSString *posts;
    /// Nil if that is different from run to run.
    NSString *expected;
};

const Suspension kSuspensions[] = {
    {@"Posts while suspended: Drop", kDrop, @"a b | c", @"c"},
    {@"Posts while suspended: Coalesce", kCoalesce, @"a b | c", @"b c"},
    {@"Posts while suspended: Hold", kHold, @"a b | c", @"a b c"},
    {@"Posts while suspended: DeliverImmediately", kDeliverImmediately, @"a b | c", @"a b c"},
    {@"An immediate post while suspended", kDrop, @"a b now", @"now"},
};

const Suspension kSuspensionFacts[] = {
    {@"Coalesced posts, and an immediate one", kCoalesce, @"a b now", @"b now"},
    {@"Held posts, and an immediate one", kHold, @"a b now", @"a b now"},
    {@"Held posts, once resumed", kHold, @"a b |", nil},
    {@"DeliverImmediately, no immediate post", kDeliverImmediately, @"a b", nil},
};

NSString *Got(const Suspension &suspension)
{
    constexpr double kPause = 0.3;
    const Instance observer = NewObserver();
    NSString *const name = OwnName(@"Suspended");
    Call(kDistributed, kAdd, DefaultCenter(kDistributed), observer, String(name), Instance(nil),
         suspension.behavior);
    Suspend(true);
    for (NSString *post in [suspension.posts componentsSeparatedByString:@" "]) {
        if ([post isEqual:@"|"]) {
            RunLoopFor(kPause);
            Suspend(false);
        } else {
            PostBetweenProcesses(name, post, [post isEqual:@"now"]);
        }
    }
    if (suspension.expected == nil)
        RunLoopFor(kPause);
    NSString *const got = States([[suspension.expected componentsSeparatedByString:@" "] count]);
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
    for (const Suspension &suspension : kSuspensions)
        Check(suspension.what, suspension.expected, [&] { return Got(suspension); });
    for (const Suspension &suspension : kSuspensionFacts)
        Fact(suspension.what, suspension.expected, [&] { return Got(suspension); });
}
