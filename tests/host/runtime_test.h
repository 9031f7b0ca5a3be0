// A host for the tests of its runtime, with the example library or without, and its functions by name.
#pragma once

#include <functional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/host.h"

namespace qzlhost {

/// A host function as a library gets it.
template <typename F>
F *HostFunction(const char *name)
{
    return reinterpret_cast<F *>(Host::Current().Resolver()(name));
}

/// Reads a property by one of the functions REALGetPropValue... Returns what that returns.
template <typename T>
bool ReadProperty(const char *function, const Value &instance, const char *property, T *value)
{
    return HostFunction<bool(Instance *, const char *, T *)>(function)(instance.ObjectPointer(), property,
                                                                       value);
}

/// The class of the host exception that the body ends with; empty for none.
inline std::string ExceptionClassOf(const std::function<void()> &body)
{
    try {
        body();
    } catch (const ProgramException &exception) {
        return exception.ClassName();
    }
    return "";
}

/// Loads the example library, which forgets what it has logged for an earlier host.
inline void LoadExample(Host &host)
{
    host.Load(EXAMPLE_LIBRARY_PATH);
    if (host.HasClass("BaseEX"))
        host.CallShared("BaseEX", "TakeLog");
}

/// A host whose account of references must be even at the end of the test.
class RuntimeTest : public testing::Test {
protected:
    explicit RuntimeTest(const HostOptions &options = {}) : host(options) {}

    void TearDown() override
    {
        EXPECT_THAT(host.Leaks(), testing::IsEmpty());
        EXPECT_THAT(host.Mistakes(), testing::IsEmpty());
    }

    Host host;
};

/// The same with the example library.
class ExampleTest : public RuntimeTest {
protected:
    void SetUp() override { LoadExample(host); }
};

} // namespace qzlhost
