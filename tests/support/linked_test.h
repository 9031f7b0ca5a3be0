// A test of the library's own functions, linked into the test, with the stand-in host behind them.
#pragma once

#include <initializer_list>

#include "frame/host_types.h"
#include "frame/loaded_host.h"
#include "tests/support/plugin_test.h"

class LinkedTest : public HostTest {
protected:
    /// Makes the host, lets `prepare` change it, and gives the library its resolver and version, as loading
    /// would.
    qzlhost::Host &Start(double version = 2024.01,
                         const std::function<void(qzlhost::Host &)> &prepare = nullptr)
    {
        qzlhost::HostOptions options;
        options.version = version;
        qzlhost::Host &host = MakeHost(options);
        if (prepare)
            prepare(host);
        gResolver = host.Resolver();
        rbversion_rbversion = version;
        return host;
    }

    /// Start with a host that lacks these functions.
    qzlhost::Host &StartLacking(std::initializer_list<const char *> functions)
    {
        return Start(2024.01, [&](qzlhost::Host &unloaded) {
            for (const char *function : functions)
                unloaded.Lack(function);
        });
    }

    /// Start with this in place of a host function.
    qzlhost::Host &StartReplacing(const char *function, void *replacement)
    {
        return Start(2024.01, [&](qzlhost::Host &unloaded) { unloaded.Replace(function, replacement); });
    }

    /// Expects that the library raised this host exception last, and takes it.
    void ExpectRaised(const std::string &className, const std::string &message)
    {
        const qzlhost::Value exception = host().TakeException();
        ASSERT_FALSE(exception.IsNil()) << "nothing was raised";
        EXPECT_EQ(host().ClassOf(exception), className);
        EXPECT_EQ(host().Get(exception, "Message").AsString(), message);
        EXPECT_EQ(host().Get(exception, "ErrorNumber").AsInteger(), 0);
    }

    void ExpectNothingRaised() { EXPECT_TRUE(host().TakeException().IsNil()); }
};

/// The library's handle for a value that the host holds, borrowed.
inline REALobject ObjectOf(const qzlhost::Value &value)
{
    return reinterpret_cast<REALobject>(value.ObjectPointer());
}

inline REALstring StringOf(const qzlhost::Value &value)
{
    return reinterpret_cast<REALstring>(value.StringPointer());
}

/// A value that owns what the library returned; the null string stays a string.
inline qzlhost::Value Owned(REALstring string)
{
    return qzlhost::Value::Adopt(reinterpret_cast<qzlhost::String *>(string));
}

inline qzlhost::Value Owned(REALobject object)
{
    return qzlhost::Value::Adopt(reinterpret_cast<qzlhost::Instance *>(object));
}
