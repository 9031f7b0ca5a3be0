// A Cocoa dictionary whose entries have an order that a test chooses.
#pragma once

#import <Foundation/Foundation.h>

/// An autoreleased dictionary with its entries in this order. With nil `keys` its list of keys is nil, not
/// empty. The value of the key "broken" raises.
NSDictionary *OrderedDictionary(NSArray *keys, NSArray *values);
