// Core Foundation references as the Cocoa objects that they are, and back.
#pragma once

#import <Foundation/Foundation.h>

namespace cocoaport {

/// The object behind a reference, borrowed.
inline id Object(const void *reference)
{
    return static_cast<id>(const_cast<void *>(reference));
}

/// The object behind a reference, borrowed, as the class that the caller knows it to be of.
template <typename Class>
Class *ObjectOf(const void *reference)
{
    return static_cast<Class *>(Object(reference));
}

/// The object as a reference. The caller's retain, if any, goes with it.
template <typename Reference>
Reference ReferenceOf(id object)
{
    return reinterpret_cast<Reference>(object);
}

} // namespace cocoaport
