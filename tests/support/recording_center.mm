// Records the messages to a notification centre.
#include "tests/support/recording_center.h"

namespace {

std::string Quoted(NSString *string)
{
    return std::string("'") + [string UTF8String] + "'";
}

} // namespace

@interface QZLRecordingCenter (Texts)
- (const char *)text:(id)object;
- (void)note:(NSString *)format, ... NS_FORMAT_FUNCTION(1, 2);
@end

@implementation QZLRecordingCenter (Texts)

/// The object as text, which the autorelease pool owns.
- (const char *)text:(id)object
{
    std::string text;
    if (object == nil) {
        text = "nil";
    } else if (const auto found = labels->find(object); found != labels->end()) {
        text = found->second;
    } else if ([object isKindOfClass:[NSString class]]) {
        text = Quoted(object);
    } else if ([object isKindOfClass:[NSDictionary class]]) {
        for (id key in [object allKeys])
            text += (text.empty() ? "{" : ", ") + std::string([self text:key]) + ": " +
                    [self text:[object objectForKey:key]];
        text += "}";
    } else {
        text = std::string("an unknown ") + class_getName([object class]);
    }
    return [[NSString stringWithUTF8String:text.c_str()] UTF8String];
}

- (void)note:(NSString *)format, ...
{
    va_list arguments;
    va_start(arguments, format);
    NSString *const text = [[[NSString alloc] initWithFormat:format arguments:arguments] autorelease];
    va_end(arguments);
    messages->push_back((label.empty() ? "" : label + " ") + [text UTF8String]);
}

@end

@implementation QZLRecordingCenter

- (void)postNotification:(NSNotification *)notification
{
    [self note:@"postNotification: %s", [self text:notification]];
}

- (void)postNotificationName:(NSString *)name object:(id)object
{
    [self note:@"postNotificationName: %s object: %s", [self text:name], [self text:object]];
}

- (void)postNotificationName:(NSString *)name object:(id)object userInfo:(NSDictionary *)userInfo
{
    [self note:@"postNotificationName: %s object: %s userInfo: %s", [self text:name], [self text:object],
               [self text:userInfo]];
}

- (void)postNotificationName:(NSString *)name
                      object:(NSString *)object
                    userInfo:(NSDictionary *)userInfo
                     options:(NSUInteger)options
{
    [self note:@"postNotificationName: %s object: %s userInfo: %s options: %lu", [self text:name],
               [self text:object], [self text:userInfo], options];
}

- (void)postNotificationName:(NSString *)name
                      object:(NSString *)object
                    userInfo:(NSDictionary *)userInfo
          deliverImmediately:(BOOL)deliverImmediately
{
    [self note:@"postNotificationName: %s object: %s userInfo: %s deliverImmediately: %d", [self text:name],
               [self text:object], [self text:userInfo], deliverImmediately];
}

- (void)addObserver:(id)observer selector:(SEL)selector name:(NSString *)name object:(id)object
{
    [self note:@"addObserver: %s selector: %s name: %s object: %s", [self text:observer],
               sel_getName(selector), [self text:name], [self text:object]];
}

- (void)addObserver:(id)observer
              selector:(SEL)selector
                  name:(NSString *)name
                object:(NSString *)object
    suspensionBehavior:(NSInteger)behavior
{
    [self note:@"addObserver: %s selector: %s name: %s object: %s suspensionBehavior: %ld",
               [self text:observer], sel_getName(selector), [self text:name], [self text:object], behavior];
}

- (void)removeObserver:(id)observer
{
    [self note:@"removeObserver: %s", [self text:observer]];
}

- (void)removeObserver:(id)observer name:(NSString *)name object:(id)object
{
    [self note:@"removeObserver: %s name: %s object: %s", [self text:observer], [self text:name],
               [self text:object]];
}

- (BOOL)suspended
{
    [self note:@"suspended"];
    return suspended;
}

- (void)setSuspended:(BOOL)value
{
    [self note:@"setSuspended: %d", value];
    suspended = value;
}

@end

QZLRecordingCenter *RecordedMessages::NewCenter(const std::string &label)
{
    QZLRecordingCenter *const center = [[QZLRecordingCenter alloc] init];
    center->label = label;
    center->labels = &labels_;
    center->messages = &messages_;
    centers_.push_back(center);
    return center;
}

std::vector<std::string> RecordedMessages::Take()
{
    return std::exchange(messages_, {});
}

RecordedMessages::~RecordedMessages()
{
    for (QZLRecordingCenter *const center : centers_)
        [center release];
}
