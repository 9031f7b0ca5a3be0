// A dictionary that compares keys by address and retains neither keys nor values.
#pragma once

#import <Foundation/Foundation.h>

#include <unordered_map>

/// Keys and values need not be objects, and either may be null. NSDictionary's methods that send messages to
/// keys or values need them to be objects; copies, equality and the description send none.
@interface CocoaportAddressDictionary : NSMutableDictionary {
@public
    std::unordered_map<const void *, const void *> *entries;
}
@end
