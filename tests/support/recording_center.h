// Replaces a notification centre by an object that records its messages.
#pragma once

#import <Foundation/Foundation.h>

#include <map>
#include <string>
#include <vector>

#include "tests/support/plugin_test.h"

/// Accepts the messages of every kind of centre, and posts nothing.
@interface QZLRecordingCenter : NSObject {
@public
    std::string label;
    std::map<id, std::string> *labels;
    std::vector<std::string> *messages;
    BOOL suspended;
}
@end

/// The messages to recording centres as text: "postNotificationName: 'AName' object: nil". Strings are in
/// quotes, a dictionary reads {'key': 'value'}, and other objects have the label that the test gave them.
class RecordedMessages {
public:
    RecordedMessages() = default;
    ~RecordedMessages();
    RecordedMessages(const RecordedMessages &) = delete;
    RecordedMessages &operator=(const RecordedMessages &) = delete;

    /// A centre that lives as long as this. A label and a blank begin each of its messages.
    QZLRecordingCenter *NewCenter(const std::string &label = "");

    /// From now on the object is written as this label.
    void Label(id object, const std::string &label) { labels_[object] = label; }

    /// The messages since the last call.
    std::vector<std::string> Take();

private:
    std::vector<QZLRecordingCenter *> centers_;
    std::map<id, std::string> labels_;
    std::vector<std::string> messages_;
};
