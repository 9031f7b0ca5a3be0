// Makes host memory blocks of Cocoa data.
#include "bridge/to_host/data_to_host.h"

#import <Foundation/Foundation.h>

#include "frame/memory_blocks.h"

REALmemoryBlock NSDataRB(NSData *data)
{
    return NewMemoryBlockOfBytes([data bytes], static_cast<int64_t>([data length]));
}
