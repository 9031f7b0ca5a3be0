// How an observer moves to the main thread, depending on what pthread_main_np returns.
#import <Foundation/Foundation.h>

#include <pthread.h>

#include <dlfcn.h>
#include <gmock/gmock.h>

#include "tests/notifications/delivery.h"
#include "tests/notifications/member_names.h"
#include "tests/support/plugin_test.h"
#include "tests/support/replaced_method.h"

using qzlhost::Host;
using qzlhost::Value;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// What pthread_main_np returns; where there is none, the platform decides.
std::optional<int> gAnswer;

std::vector<std::string> gMoves;
void (*gMove)(id, SEL, SEL, id, BOOL);

void Move(id self, SEL selector, SEL moved, id argument, BOOL waits)
{
    gMoves.push_back(std::string(sel_getName(moved)) + " " + [[argument name] UTF8String] +
                     (waits ? " waiting" : ""));
    gMove(self, selector, moved, argument, waits);
}

class MainThreadQuestion : public PluginTest {
protected:
    void TearDown() override
    {
        gAnswer.reset();
        PluginTest::TearDown();
    }

    /// The observer's moves to the main thread, with this answer. It is on the main thread already.
    std::vector<std::string> MovesWithAnswer(const Value &observer, int answer)
    {
        const Method method =
            class_getInstanceMethod([NSObject class], @selector(performSelectorOnMainThread:
                                                                                 withObject:waitUntilDone:));
        const ReplacedMethod replaced(method, &Move);
        gMove = replaced.Original();
        gAnswer = answer;
        gMoves.clear();
        Deliver(host(), observer);
        gAnswer.reset();
        return gMoves;
    }
};

} // namespace

/// Replaces the platform's.
extern "C" int pthread_main_np()
{
    if (gAnswer)
        return *gAnswer;
    return reinterpret_cast<int (*)()>(dlsym(RTLD_NEXT, "pthread_main_np"))();
}

TEST_F(MainThreadQuestion, AnsweredWithOneMovesNothing)
{
    Host &host = Start();
    ObserverProgram program(host);
    const Value observer = program.NewObserver();
    EXPECT_THAT(MovesWithAnswer(observer, 1), IsEmpty());
    EXPECT_EQ(program.received.size(), 1u);
}

TEST_F(MainThreadQuestion, AnsweredOtherwiseMovesAndWaits)
{
    Host &host = Start();
    ObserverProgram program(host);
    const Value observer = program.NewObserver();
    for (const int answer : {0, -1, 2})
        EXPECT_THAT(MovesWithAnswer(observer, answer),
                    ElementsAre("GotNotificationOnMainThread: Delivered waiting"))
            << answer;
    EXPECT_EQ(program.received.size(), 3u);
}
