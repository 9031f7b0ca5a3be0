/// A dictionary that compares keys by address and retains neither keys nor values.
#pragma once

#import <Foundation/Foundation.h>

#include <unordered_map>

/// Keys and values need not be objects, and either may be null. The methods of NSDictionary that
/// talk to keys or values are for callers who know theirs to be objects; copies, equality and the
/// description talk to none.
@interface CocoaportAddressDictionary : NSMutableDictionary {
@public
    std::unordered_map<const void *, const void *> *entries;
}
@end
