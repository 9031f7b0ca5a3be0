// A test that converts host arrays, in a program where the family raises Cocoa's exceptions.
#pragma once

#include <optional>

#include "family/family.h"
#include "tests/bridge/to_cocoa/array_rows.h"
#include "tests/bridge/to_cocoa/member_conversion.h"

class ArrayTest : public MemberConversion {
protected:
    qzlhost::Host &Start(double version = 2024.01,
                         const std::function<void(qzlhost::Host &)> &prepare = nullptr)
    {
        qzlhost::HostOptions options;
        options.version = version;
        qzlhost::Host &host = MemberConversion::Start(options, prepare);
        family_.emplace(host);
        family_->OfferExceptions();
        return host;
    }

    qzlhost::Value NewArray(const ArrayRow &row, int64_t count)
    {
        std::vector<qzlhost::Value> elements;
        for (int64_t index = 0; index < count; ++index)
            elements.push_back(row.element(host(), index));
        return host().NewArray(row.elementCode, elements);
    }

    /// The name of the Cocoa exception that converting the array raises; nil for none.
    NSString *ExceptionNameOf(const qzlhost::Value &array) { return [ExceptionOf(array) name]; }

private:
    std::optional<Family> family_;
};
