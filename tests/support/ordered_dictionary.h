// A Cocoa dictionary whose entries have an order that a test chooses.
#pragma once

#import <Foundation/Foundation.h>

/// An autoreleased dictionary that keeps its entries in order. Without a list of keys it has not even an
/// empty one. It raises when asked for the value of the key "broken".
NSDictionary *OrderedDictionary(NSArray *keys, NSArray *values);
