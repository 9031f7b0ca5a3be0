/// All of the InstantMessage framework.
#ifndef QZL_INSTANTMESSAGE_H
#define QZL_INSTANTMESSAGE_H

#import <InstantMessage/IMService.h>

#endif
