// What a look-up on one thread makes ready for another. The thread sanitizer reports what is not.
#include "frame/kept_look_ups.h"

#include <gtest/gtest.h>

#include <thread>

TEST(KeptLookUps, ThreadThatFindsAPointerKeptSeesWhatTheLookUpMadeReady)
{
    static int found;
    static int *slot;

    std::thread finder([] {
        KeepFound(slot, [] {
            found = 42;
            return &found;
        });
    });
    const int *kept = nullptr;
    while ((kept = Kept(slot)) == nullptr)
        std::this_thread::yield();

    EXPECT_EQ(*kept, 42);
    finder.join();
}

TEST(KeptLookUps, ThreadThatFindsAFirstLookUpDoneSeesWhatItMadeReady)
{
    static int found;
    static FirstSlot<int *> slot;

    std::thread finder([] {
        KeepFirst(slot, [] {
            found = 42;
            return &found;
        });
    });
    while (!slot.isFilled)
        std::this_thread::yield();

    EXPECT_EQ(*KeepFirst(slot, [] { return static_cast<int *>(nullptr); }), 42);
    finder.join();
}
