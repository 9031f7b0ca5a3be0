// A test that loads the library into a host and has the family's other libraries at hand.
#pragma once

#include <optional>

#include "family/family.h"
#include "tests/support/plugin_test.h"

class PluginWithFamily : public PluginTest {
protected:
    /// As Start; the family offers nothing yet.
    qzlhost::Host &StartWithFamily()
    {
        qzlhost::Host &host = Start();
        family_.emplace(host);
        return host;
    }

    Family &family() { return *family_; }

private:
    std::optional<Family> family_;
};
