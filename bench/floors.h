// Conversions written by hand: the calls of Cocoa and of the host that cannot be left out, and no more. Each
// knows the kind of its value; only the conversions of any value find it out.
#pragma once

#import <Foundation/Foundation.h>

#include "frame/host_types.h"

NSString *FloorStringToCocoa(REALstring string);
// Of variants.
id FloorLong(REALobject variant);
id FloorLongLong(REALobject variant);
id FloorSingle(REALobject variant);
id FloorDouble(REALobject variant);
id FloorBoolean(REALobject variant);
id FloorString(REALobject variant);
id FloorInt64Array(REALobject variant);
id FloorStringArray(REALobject variant);
/// Of an array of variants of this kind.
id FloorObjectArray(REALobject variant, id (*convert)(REALobject element));
/// Of a Dictionary with keys and values of these kinds.
NSDictionary *FloorDictionary(REALobject dictionary, id (*convertKey)(REALobject key),
                              id (*convertValue)(REALobject value));
/// Of a 64-bit integer, double, boolean, string, object array or Dictionary, with such values inside.
id FloorAnyToCocoa(REALobject variant);

/// Whether the object is none of memory block, folder item and Dictionary. Asks the host what the library
/// asks of such an object.
bool FloorIsOtherObject(REALobject object);

REALstring FloorStringToHost(NSString *string);
// As variants.
REALobject FloorVariantOfString(id string);
REALobject FloorVariantOfInt(id number);
REALobject FloorVariantOfUnsignedLong(id number);
REALobject FloorVariantOfLong(id number);
REALobject FloorVariantOfFloat(id number);
REALobject FloorVariantOfDouble(id number);
REALobject FloorVariantOfTrue(id number);
/// Of an array of objects of this kind.
REALobject FloorHostArray(NSArray *array, REALobject (*convert)(id element));
/// Of a dictionary with keys and values of these kinds.
REALobject FloorHostDictionary(NSDictionary *dictionary, REALobject (*convertKey)(id key),
                               REALobject (*convertValue)(id value));
/// Of a string, number, array or dictionary, with such values inside.
REALobject FloorAnyToHost(id object);
