// Values that works convert.
#pragma once

#import <Foundation/Foundation.h>

#include <string>

#include "frame/host_types.h"
#include "host/host.h"

/// Holds a Cocoa object, each copy with a retain of its own.
class Kept {
public:
    explicit Kept(id object) : object_([object retain]) {}
    Kept(const Kept &other) : Kept(other.object_) {}
    ~Kept() { [object_ release]; }
    Kept &operator=(const Kept &) = delete;

    id Get() const { return object_; }

private:
    id object_;
};

/// The library's handle for a value that the program holds, borrowed.
inline REALobject ObjectOf(const qzlhost::Value &value)
{
    return reinterpret_cast<REALobject>(value.ObjectPointer());
}
inline REALstring StringOf(const qzlhost::Value &value)
{
    return reinterpret_cast<REALstring>(value.StringPointer());
}

/// Autoreleased.
inline NSString *CocoaString(const std::string &utf8)
{
    return [NSString stringWithUTF8String:utf8.c_str()];
}
