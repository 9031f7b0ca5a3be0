// Turns structures in Cocoa values into host instances.
#include "bridge/to_host/value_to_host.h"

#import <Foundation/Foundation.h>

#include <cstring>

#include "bridge/instance_data.h"
#include "frame/host_entry_points.h"

/// Methods that other libraries of the family add. What they return is passed on as it is.
@interface NSValue (QZLFamilyTimes)
- (REALobject)QTTimeValueQZL;
- (REALobject)QTTimeRangeValueQZL;
- (REALobject)CMTimeValueQZL;
- (REALobject)CMTimeRangeValueQZL;
- (REALobject)CMTimeMappingValueQZL;
@end

namespace {

/// A new instance of the host class whose instance data is the structure, or null.
template <typename Structure>
REALobject NewInstanceHolding(const char *hostClassName, Structure structure)
{
    const REALobject instance = REALnewInstance(hostClassName);
    if (instance != nullptr)
        *InstanceData<Structure>(instance) = structure;
    return instance;
}

constexpr struct {
    const char *objCType;
    REALobject (*convert)(NSValue *value);
} kStructures[] = {
    {"{CGRect={CGPoint=dd}{CGSize=dd}}",
     [](NSValue *value) { return NewInstanceHolding("NSRectQZL", [value rectValue]); }},
    {"{CGSize=dd}", [](NSValue *value) { return NewInstanceHolding("NSSizeQZL", [value sizeValue]); }},
    {"{_NSRange=QQ}", [](NSValue *value) { return NewInstanceHolding("NSRangeQZL", [value rangeValue]); }},
    {"{CGPoint=dd}", [](NSValue *value) { return NewInstanceHolding("NSPointQZL", [value pointValue]); }},
    {"{?=qqq}",
     [](NSValue *value) -> REALobject {
         return [value respondsToSelector:@selector(QTTimeValueQZL)] ? [value QTTimeValueQZL] : nullptr;
     }},
    {"{?={?=qqq}{?=qqq}}",
     [](NSValue *value) -> REALobject {
         return [value respondsToSelector:@selector(QTTimeRangeValueQZL)] ? [value QTTimeRangeValueQZL]
                                                                          : nullptr;
     }},
    {"{?=qiIq}",
     [](NSValue *value) -> REALobject {
         return [value respondsToSelector:@selector(CMTimeValueQZL)] ? [value CMTimeValueQZL] : nullptr;
     }},
    {"{?={?=qiIq}{?=qiIq}}",
     [](NSValue *value) -> REALobject {
         return [value respondsToSelector:@selector(CMTimeRangeValueQZL)] ? [value CMTimeRangeValueQZL]
                                                                          : nullptr;
     }},
    {"{?={?={?=qiIq}{?=qiIq}}{?={?=qiIq}{?=qiIq}}}",
     [](NSValue *value) -> REALobject {
         return [value respondsToSelector:@selector(CMTimeMappingValueQZL)] ? [value CMTimeMappingValueQZL]
                                                                            : nullptr;
     }},
};

} // namespace

REALobject NewInstanceFromNSValue(NSValue *value)
{
    const char *const objCType = [value objCType];
    for (const auto &row : kStructures)
        if (std::strcmp(row.objCType, objCType) == 0)
            return row.convert(value);
    return nullptr;
}
