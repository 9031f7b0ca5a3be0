// An object in the place of a notification centre, which writes down what it is asked to do.
#pragma once

#import <Foundation/Foundation.h>

#include <map>
#include <string>
#include <vector>

#include "tests/support/plugin_test.h"

/// Takes the messages of every kind of centre, and passes nothing on.
@interface QZLRecordingCenter : NSObject {
@public
    std::string label;
    std::map<id, std::string> *labels;
    std::vector<std::string> *messages;
    BOOL suspended;
}
@end

/// Messages that recording centres got, as text: "postNotificationName: 'AName' object: nil". Strings are in
/// quotes, a dictionary is like {'key': 'value'}, and other objects have the label that the test gave them.
class RecordedMessages {
public:
    RecordedMessages() = default;
    ~RecordedMessages();
    RecordedMessages(const RecordedMessages &) = delete;
    RecordedMessages &operator=(const RecordedMessages &) = delete;

    /// A centre that lives as long as this. With a label each of its messages begins with it and a blank.
    QZLRecordingCenter *NewCenter(const std::string &label = "");

    /// The object is written as this from now on.
    void Label(id object, const std::string &label) { labels_[object] = label; }

    /// All messages since the last call of this.
    std::vector<std::string> Take();

private:
    std::vector<QZLRecordingCenter *> centers_;
    std::map<id, std::string> labels_;
    std::vector<std::string> messages_;
};
