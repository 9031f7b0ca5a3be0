// A Cocoa dictionary whose entries have an order that a test chooses.
#pragma once

#import <Foundation/Foundation.h>

/// A dictionary that keeps its entries in order, or has not even a list of keys. It raises when
/// asked for the value of the key "broken".
@interface QZLOrderedDictionary : NSDictionary {
@public
    NSArray *keys;
    NSArray *values;
}
@end
