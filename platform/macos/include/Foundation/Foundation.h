// The part of Apple's Foundation that the library and the programs use.
#ifndef QZL_FOUNDATION_H
#define QZL_FOUNDATION_H

#include <CoreFoundation/CoreFoundation.h>
#include <objc/objc.h>

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double CGFloat;
typedef UniChar unichar;
typedef double NSTimeInterval;

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

static inline NSRange NSMakeRange(NSUInteger location, NSUInteger length)
{
    NSRange range;
    range.location = location;
    range.length = length;
    return range;
}

/// What `for (x in y)` keeps of its way through a collection.
typedef struct {
    unsigned long state;
    id __unsafe_unretained *itemsPtr;
    unsigned long *mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

@class NSArray, NSCharacterSet, NSData, NSDictionary, NSError, NSString;

__attribute__((objc_root_class))
@interface NSObject {
    Class isa;
}
+ (id)alloc;
+ (id)new;
+ (Class)class;
+ (IMP)instanceMethodForSelector:(SEL)selector;
+ (BOOL)respondsToSelector:(SEL)selector;
- (id)init;
- (id)retain;
- (oneway void)release;
- (id)autorelease;
- (Class)class;
- (BOOL)isKindOfClass:(Class)kind;
- (BOOL)isEqual:(id)other;
- (id)copy;
- (id)mutableCopy;
- (void)dealloc;
- (NSUInteger)retainCount;
- (id)performSelector:(SEL)selector;
- (BOOL)respondsToSelector:(SEL)selector;
- (IMP)methodForSelector:(SEL)selector;
- (NSString *)description;
- (void)performSelectorOnMainThread:(SEL)selector withObject:(id)argument waitUntilDone:(BOOL)wait;
@end

@interface NSString : NSObject
+ (id)stringWithUTF8String:(const char *)text;
- (const char *)UTF8String;
- (NSUInteger)length;
- (BOOL)isEqualToString:(NSString *)other;
- (NSString *)stringByAppendingString:(NSString *)text;
+ (id)string;
+ (id)stringWithCharacters:(const unichar *)characters length:(NSUInteger)length;
- (id)initWithUTF8String:(const char *)text;
- (unichar)characterAtIndex:(NSUInteger)index;
- (void)getCharacters:(unichar *)characters range:(NSRange)range;
- (BOOL)hasPrefix:(NSString *)prefix;
- (int)intValue;
- (NSRange)rangeOfString:(NSString *)text;
- (NSString *)substringFromIndex:(NSUInteger)index;
- (NSString *)substringToIndex:(NSUInteger)index;
- (NSArray *)componentsSeparatedByString:(NSString *)separator;
- (NSString *)stringByPaddingToLength:(NSUInteger)length
                           withString:(NSString *)filling
                      startingAtIndex:(NSUInteger)index;
- (NSString *)stringByReplacingOccurrencesOfString:(NSString *)text withString:(NSString *)replacement;
- (NSString *)stringByTrimmingCharactersInSet:(NSCharacterSet *)set;
- (NSString *)decomposedStringWithCanonicalMapping;
- (NSString *)precomposedStringWithCanonicalMapping;
- (const char *)fileSystemRepresentation;
- (NSString *)lastPathComponent;
- (NSString *)stringByAppendingPathComponent:(NSString *)component;
- (NSString *)stringByDeletingLastPathComponent;
- (NSData *)dataUsingEncoding:(NSUInteger)encoding;
- (id)initWithData:(NSData *)data encoding:(NSUInteger)encoding;
@end

@interface NSMutableString : NSString
+ (id)stringWithString:(NSString *)text;
- (void)appendString:(NSString *)text;
@end

@interface NSCharacterSet : NSObject
+ (NSCharacterSet *)whitespaceCharacterSet;
@end

/// NSStringEncoding.
enum { NSUTF8StringEncoding = 4, NSISOLatin1StringEncoding = 5 };

@interface NSURL : NSObject
- (NSString *)absoluteString;
+ (NSURL *)URLWithString:(NSString *)text;
+ (NSURL *)fileURLWithPath:(NSString *)path;
- (NSString *)path;
@end

@interface NSData : NSObject
+ (id)dataWithBytes:(const void *)bytes length:(NSUInteger)length;
- (const void *)bytes;
- (NSUInteger)length;
+ (id)data;
+ (id)dataWithContentsOfFile:(NSString *)path;
- (NSData *)subdataWithRange:(NSRange)range;
- (BOOL)writeToFile:(NSString *)path atomically:(BOOL)atomically;
@end

@interface NSMutableData : NSData
+ (id)dataWithData:(NSData *)data;
+ (id)dataWithLength:(NSUInteger)length;
- (void *)mutableBytes;
- (void)appendBytes:(const void *)bytes length:(NSUInteger)length;
- (void)appendData:(NSData *)data;
@end

@interface NSTimeZone : NSObject
+ (NSTimeZone *)localTimeZone;
+ (NSTimeZone *)timeZoneWithName:(NSString *)name;
+ (void)setDefaultTimeZone:(NSTimeZone *)zone;
@end

@interface NSDate : NSObject
- (double)timeIntervalSinceReferenceDate;
- (id)initWithTimeIntervalSinceReferenceDate:(double)seconds;
+ (id)date;
+ (id)dateWithTimeIntervalSinceNow:(NSTimeInterval)seconds;
- (NSTimeInterval)timeIntervalSinceNow;
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
+ (NSNumber *)numberWithInt:(int)value;
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
+ (NSNumber *)numberWithChar:(char)value;
+ (NSNumber *)numberWithUnsignedChar:(unsigned char)value;
+ (NSNumber *)numberWithShort:(short)value;
+ (NSNumber *)numberWithUnsignedShort:(unsigned short)value;
+ (NSNumber *)numberWithUnsignedInt:(unsigned int)value;
+ (NSNumber *)numberWithUnsignedLong:(unsigned long)value;
+ (NSNumber *)numberWithUnsignedLongLong:(unsigned long long)value;
+ (NSNumber *)numberWithInteger:(NSInteger)value;
+ (NSNumber *)numberWithUnsignedInteger:(NSUInteger)value;
- (long long)longLongValue;
- (unsigned long long)unsignedLongLongValue;
@end

@interface NSEnumerator : NSObject
- (id)nextObject;
@end

@interface NSArray : NSObject
+ (id)array;
+ (id)arrayWithObjects:(const id[])objects count:(NSUInteger)count;
- (NSUInteger)count;
- (id)objectAtIndex:(NSUInteger)index;
- (NSEnumerator *)objectEnumerator;
- (BOOL)containsObject:(id)object;
- (id)lastObject;
- (NSString *)componentsJoinedByString:(NSString *)separator;
- (NSArray *)arrayByAddingObject:(id)object;
- (NSArray *)sortedArrayUsingSelector:(SEL)comparison;
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)length;
@end

@interface NSSet : NSObject
- (NSArray *)allObjects;
+ (id)set;
@end

@interface NSMutableArray : NSArray
- (void)addObject:(id)object;
- (void)insertObject:(id)object atIndex:(NSUInteger)index;
- (void)addObjectsFromArray:(NSArray *)objects;
- (void)removeAllObjects;
- (void)removeObjectAtIndex:(NSUInteger)index;
@end

@interface NSDictionary : NSObject
+ (id)dictionary;
+ (id)dictionaryWithObjects:(const id[])objects forKeys:(const id[])keys count:(NSUInteger)count;
- (NSArray *)allKeys;
- (id)objectForKey:(id)key;
+ (id)dictionaryWithDictionary:(NSDictionary *)entries;
+ (id)dictionaryWithObject:(id)object forKey:(id)key;
+ (id)dictionaryWithObjects:(NSArray *)objects forKeys:(NSArray *)keys;
- (NSUInteger)count;
@end

@interface NSMutableDictionary : NSDictionary
+ (id)dictionaryWithCapacity:(NSUInteger)capacity;
- (void)setObject:(id)object forKey:(id)key;
- (void)addEntriesFromDictionary:(NSDictionary *)entries;
@end

@interface NSNull : NSObject
+ (NSNull *)null;
@end

/// Without the attribute the library would define and export the class's exception type itself.
__attribute__((objc_exception))
@interface NSException : NSObject
+ (NSException *)exceptionWithName:(NSString *)name
                            reason:(NSString *)reason
                          userInfo:(NSDictionary *)userInfo;
- (void)raise;
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

@interface NSFileHandle : NSObject
+ (NSFileHandle *)fileHandleWithStandardOutput;
+ (NSFileHandle *)fileHandleWithStandardError;
- (NSData *)readDataToEndOfFile;
- (void)writeData:(NSData *)data;
+ (NSFileHandle *)fileHandleWithNullDevice;
+ (NSFileHandle *)fileHandleForWritingAtPath:(NSString *)path;
@end

@interface NSPipe : NSObject
+ (NSPipe *)pipe;
- (NSFileHandle *)fileHandleForReading;
@end

/// NSTaskTerminationReason.
enum { NSTaskTerminationReasonExit = 1, NSTaskTerminationReasonUncaughtSignal = 2 };

@interface NSTask : NSObject
- (void)setLaunchPath:(NSString *)path;
- (void)setArguments:(NSArray *)arguments;
- (void)setCurrentDirectoryPath:(NSString *)path;
/// A pipe or a file handle.
- (void)setStandardOutput:(id)output;
- (NSString *)launchPath;
- (NSArray *)arguments;
- (void)launch;
- (void)waitUntilExit;
- (NSInteger)terminationReason;
- (int)terminationStatus;
- (void)setStandardError:(id)output;
@end

@interface NSThread : NSObject
+ (BOOL)isMainThread;
+ (void)detachNewThreadSelector:(SEL)selector toTarget:(id)target withObject:(id)argument;
@end

@interface NSRunLoop : NSObject
+ (NSRunLoop *)currentRunLoop;
- (void)runUntilDate:(NSDate *)end;
@end

@interface NSProcessInfo : NSObject
+ (NSProcessInfo *)processInfo;
- (NSDictionary *)environment;
- (NSString *)globallyUniqueString;
- (NSString *)operatingSystemVersionString;
@end

@interface NSBundle : NSObject
+ (NSBundle *)mainBundle;
+ (NSBundle *)bundleForClass:(Class)type;
- (NSString *)executablePath;
- (NSDictionary *)infoDictionary;
@end

@interface NSFileManager : NSObject
+ (NSFileManager *)defaultManager;
- (BOOL)createFileAtPath:(NSString *)path contents:(NSData *)contents attributes:(NSDictionary *)attributes;
- (BOOL)createDirectoryAtPath:(NSString *)path
    withIntermediateDirectories:(BOOL)intermediate
                     attributes:(NSDictionary *)attributes
                          error:(NSError **)error;
- (BOOL)removeItemAtPath:(NSString *)path error:(NSError **)error;
@end

enum : NSUInteger { NSJSONWritingPrettyPrinted = 1 };

@interface NSJSONSerialization : NSObject
+ (NSData *)dataWithJSONObject:(id)object options:(NSUInteger)options error:(NSError **)error;
+ (id)JSONObjectWithData:(NSData *)data options:(NSUInteger)options error:(NSError **)error;
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
CF_EXPORT NSString *const NSDefaultRunLoopMode;

CF_EXPORT Class NSClassFromString(NSString *name);
CF_EXPORT NSString *NSStringFromClass(Class named);
CF_EXPORT NSString *NSHomeDirectory(void);
CF_EXPORT NSString *NSTemporaryDirectory(void);

CF_EXPORT void NSLog(NSString *format, ...);

CF_EXTERN_C_END

#endif
