// Runs the tests, each within an autorelease pool of its own.
#import <Foundation/Foundation.h>

#include <gtest/gtest.h>

namespace {

class PoolPerTest : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo &) override { pool_ = [[NSAutoreleasePool alloc] init]; }
    void OnTestEnd(const testing::TestInfo &) override { [pool_ drain]; }

    NSAutoreleasePool *pool_ = nil;
};

} // namespace

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new PoolPerTest);
    return RUN_ALL_TESTS();
}
