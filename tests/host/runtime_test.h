// What the tests of the host's runtime share: a host with the example library, and its functions by name.
#pragma once

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/host.h"

namespace qzlhost {

/// A host function as a library gets it.
template <class F>
F *HostFunction(const char *name)
{
    return reinterpret_cast<F *>(Host::Current().Resolver()(name));
}

/// The library forgets what it has logged for a host before.
inline void LoadExample(Host &host)
{
    host.Load(EXAMPLE_LIBRARY_PATH);
    if (host.HasClass("BaseEX"))
        host.CallShared("BaseEX", "TakeLog");
}

/// A host, whose books must balance at the end of the test.
class RuntimeTest : public testing::Test {
protected:
    void TearDown() override
    {
        EXPECT_THAT(host.Leaks(), testing::IsEmpty());
        EXPECT_THAT(host.Mistakes(), testing::IsEmpty());
    }

    Host host;
};

/// As above, with the example library.
class ExampleTest : public RuntimeTest {
protected:
    void SetUp() override { LoadExample(host); }
};

} // namespace qzlhost
