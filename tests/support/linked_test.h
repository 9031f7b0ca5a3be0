// A test of the library's own functions, linked into the test, with the stand-in host behind them.
#pragma once

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

/// A value that owns what the library handed over; the null string stays a string.
inline qzlhost::Value Owned(REALstring string)
{
    return qzlhost::Value::Adopt(reinterpret_cast<qzlhost::String *>(string));
}

inline qzlhost::Value Owned(REALobject object)
{
    return qzlhost::Value::Adopt(reinterpret_cast<qzlhost::Instance *>(object));
}
