/// All of the InstantMessage framework.
#ifndef COCOAPORT_INSTANTMESSAGE_H
#define COCOAPORT_INSTANTMESSAGE_H

#import <InstantMessage/IMService.h>

#endif
