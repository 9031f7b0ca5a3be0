// The part of Apple's Foundation that the library uses.
#ifndef QZL_FOUNDATION_H
#define QZL_FOUNDATION_H

#include <CoreFoundation/CoreFoundation.h>
#include <objc/objc.h>

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double CGFloat;

struct CGPoint {
    CGFloat x;
    CGFloat y;
};
struct CGSize {
    CGFloat width;
    CGFloat height;
};
struct CGRect {
    struct CGPoint origin;
    struct CGSize size;
};
typedef struct CGPoint NSPoint;
typedef struct CGSize NSSize;
typedef struct CGRect NSRect;

typedef struct _NSRange {
    NSUInteger location;
    NSUInteger length;
} NSRange;

@class NSArray, NSDictionary, NSString;

__attribute__((objc_root_class))
@interface NSObject {
    Class isa;
}
+ (id)alloc;
+ (Class)class;
+ (IMP)instanceMethodForSelector:(SEL)selector;
+ (BOOL)respondsToSelector:(SEL)selector;
- (id)init;
- (id)retain;
- (oneway void)release;
- (id)autorelease;
- (Class)class;
- (BOOL)isKindOfClass:(Class)kind;
- (BOOL)respondsToSelector:(SEL)selector;
- (IMP)methodForSelector:(SEL)selector;
- (NSString *)description;
- (void)performSelectorOnMainThread:(SEL)selector withObject:(id)argument waitUntilDone:(BOOL)wait;
@end

@interface NSString : NSObject
@end

@interface NSURL : NSObject
- (NSString *)absoluteString;
@end

@interface NSData : NSObject
+ (id)dataWithBytes:(const void *)bytes length:(NSUInteger)length;
- (const void *)bytes;
- (NSUInteger)length;
@end

@interface NSTimeZone : NSObject
+ (NSTimeZone *)localTimeZone;
@end

@interface NSDate : NSObject
- (double)timeIntervalSinceReferenceDate;
- (id)initWithTimeIntervalSinceReferenceDate:(double)seconds;
@end

@interface NSCalendarDate : NSDate
+ (id)dateWithYear:(NSInteger)year
             month:(NSUInteger)month
               day:(NSUInteger)day
              hour:(NSUInteger)hour
            minute:(NSUInteger)minute
            second:(NSUInteger)second
          timeZone:(NSTimeZone *)timeZone;
- (NSInteger)yearOfCommonEra;
- (NSInteger)monthOfYear;
- (NSInteger)dayOfMonth;
- (NSInteger)hourOfDay;
- (NSInteger)minuteOfHour;
- (NSInteger)secondOfMinute;
@end

@interface NSValue : NSObject
+ (NSValue *)valueWithPoint:(NSPoint)point;
+ (NSValue *)valueWithSize:(NSSize)size;
+ (NSValue *)valueWithRect:(NSRect)rect;
+ (NSValue *)valueWithRange:(NSRange)range;
- (const char *)objCType;
- (NSPoint)pointValue;
- (NSSize)sizeValue;
- (NSRect)rectValue;
- (NSRange)rangeValue;
@end

@interface NSNumber : NSValue
+ (NSNumber *)numberWithBool:(BOOL)value;
+ (NSNumber *)numberWithLong:(long)value;
+ (NSNumber *)numberWithLongLong:(long long)value;
+ (NSNumber *)numberWithFloat:(float)value;
+ (NSNumber *)numberWithDouble:(double)value;
- (BOOL)boolValue;
- (unsigned char)unsignedCharValue;
- (short)shortValue;
- (unsigned short)unsignedShortValue;
- (int)intValue;
- (unsigned int)unsignedIntValue;
- (long)longValue;
- (unsigned long)unsignedLongValue;
- (float)floatValue;
- (double)doubleValue;
@end

@interface NSEnumerator : NSObject
- (id)nextObject;
@end

@interface NSArray : NSObject
- (NSUInteger)count;
- (id)objectAtIndex:(NSUInteger)index;
- (NSEnumerator *)objectEnumerator;
@end

@interface NSSet : NSObject
- (NSArray *)allObjects;
@end

@interface NSMutableArray : NSArray
+ (id)array;
- (void)addObject:(id)object;
@end

@interface NSDictionary : NSObject
+ (id)dictionary;
- (NSArray *)allKeys;
- (id)objectForKey:(id)key;
@end

@interface NSMutableDictionary : NSDictionary
+ (id)dictionaryWithCapacity:(NSUInteger)capacity;
- (void)setObject:(id)object forKey:(id)key;
@end

@interface NSNull : NSObject
+ (NSNull *)null;
@end

/// Without the attribute the library would define and export the class's exception type itself.
__attribute__((objc_exception))
@interface NSException : NSObject
- (NSString *)name;
- (NSString *)reason;
- (NSDictionary *)userInfo;
@end

@interface NSNotification : NSObject
+ (id)notificationWithName:(NSString *)name object:(id)object userInfo:(NSDictionary *)userInfo;
- (NSString *)name;
- (id)object;
- (NSDictionary *)userInfo;
@end

@interface NSNotificationCenter : NSObject
+ (NSNotificationCenter *)defaultCenter;
- (void)addObserver:(id)observer selector:(SEL)selector name:(NSString *)name object:(id)object;
- (void)postNotification:(NSNotification *)notification;
- (void)postNotificationName:(NSString *)name object:(id)object;
- (void)postNotificationName:(NSString *)name object:(id)object userInfo:(NSDictionary *)userInfo;
- (void)removeObserver:(id)observer;
- (void)removeObserver:(id)observer name:(NSString *)name object:(id)object;
@end

typedef NSUInteger NSNotificationSuspensionBehavior;
typedef NSUInteger NSDistributedNotificationOptions;

@interface NSDistributedNotificationCenter : NSNotificationCenter
+ (NSDistributedNotificationCenter *)defaultCenter;
+ (NSDistributedNotificationCenter *)notificationCenterForType:(NSString *)type;
- (void)addObserver:(id)observer
              selector:(SEL)selector
                  name:(NSString *)name
                object:(NSString *)object
    suspensionBehavior:(NSNotificationSuspensionBehavior)behavior;
- (void)postNotificationName:(NSString *)name
                      object:(NSString *)object
                    userInfo:(NSDictionary *)userInfo
                     options:(NSDistributedNotificationOptions)options;
- (void)postNotificationName:(NSString *)name
                      object:(NSString *)object
                    userInfo:(NSDictionary *)userInfo
          deliverImmediately:(BOOL)deliverImmediately;
- (BOOL)suspended;
- (void)setSuspended:(BOOL)suspended;
@end

CF_EXTERN_C_BEGIN

CF_EXPORT NSString *const NSLocalNotificationCenterType;

CF_EXPORT void NSLog(NSString *format, ...);

CF_EXTERN_C_END

#endif
