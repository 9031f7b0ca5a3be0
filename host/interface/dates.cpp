// Dates: the members of their class.
#include "host/interface/builtin_classes.h"
#include "host/interface/thunk.h"
#include "host/values/date.h"

namespace qzlhost {

namespace {

int64_t GetField(Of<Date> self, int64_t field)
{
    return self->Fields()[static_cast<size_t>(field)];
}

void SetField(Of<Date> self, int64_t field, int64_t value)
{
    self->SetField(static_cast<size_t>(field), value);
}

void Construct(Of<Date> self, int64_t year, int64_t month, int64_t day, int64_t hour, int64_t minute,
               int64_t second)
{
    self->SetFields({year, month, day, hour, minute, second});
}

} // namespace

BuiltInClass DateClass()
{
    void *const get = Native<&GetField>("Date field");
    void *const set = Native<&SetField>("Date field=");
    return {"Date",
            nullptr,
            &MakePayloadOf<Date>,
            {
                {"Year", "Integer", get, set, 0},
                {"Month", "Integer", get, set, 1},
                {"Day", "Integer", get, set, 2},
                {"Hour", "Integer", get, set, 3},
                {"Minute", "Integer", get, set, 4},
                {"Second", "Integer", get, set, 5},
            },
            {
                {"Constructor(Year As Integer, Month As Integer = 1, Day As Integer = 1, "
                 "hour As Integer = 0, minute As Integer = 0, second As Integer = 0)",
                 Native<&Construct>("Date.Constructor")},
            }};
}

} // namespace qzlhost
