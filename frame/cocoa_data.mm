// Makes host memory blocks of Cocoa data.
#import <Foundation/Foundation.h>

#include "frame/memory_blocks.h"

REALmemoryBlock NSDataRB(NSData *data)
{
    return NewMemoryBlockOfBytes([data bytes], static_cast<int64_t>([data length]));
}
