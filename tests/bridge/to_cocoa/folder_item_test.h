// A test that converts host folder items, on a host whose references the test chooses.
#pragma once

#include <CoreServices/CoreServices.h>

#include <algorithm>
#include <cstring>

#include "tests/bridge/to_cocoa/member_conversion.h"

/// One request to the host for a folder item's reference.
struct Question {
    bool asksForName = false;
    /// Whether all 512 bytes of the name were zero.
    bool isNameZeroed = false;
};

/// The host's answers, and the requests that it got.
struct FolderItems {
    /// Whether the item itself has a reference, and the path that it refers to; nothing for no path.
    bool hasItself = false;
    std::string itself = {};
    /// The same for the parent.
    bool hasParent = true;
    std::string parent = "/tmp";
    std::u16string leaf = u"leaf";

    static inline std::vector<Question> questions;
};

inline FolderItems gItems;

inline void Refer(const std::string &path, FSRef *reference)
{
    *reference = {};
    if (!path.empty())
        CFURLGetFSRef((CFURLRef)[NSURL fileURLWithPath:@(path.c_str())], reference);
}

/// Replaces REALFSRefFromFolderItem.
inline bool AnswerFolderItem(qzlhost::Instance *item, FSRef *reference, HFSUniStr255 *name)
{
    static_assert(sizeof(HFSUniStr255) == 512);
    Question question;
    question.asksForName = name != nullptr;
    const HFSUniStr255 zeros = {};
    question.isNameZeroed = name != nullptr && std::memcmp(name, &zeros, sizeof zeros) == 0;
    FolderItems::questions.push_back(question);
    EXPECT_NE(item, nullptr);
    EXPECT_NE(reference, nullptr);
    if (name == nullptr) {
        Refer(gItems.itself, reference);
        return gItems.hasItself;
    }
    Refer(gItems.parent, reference);
    name->length = static_cast<uint16_t>(gItems.leaf.size());
    std::copy(gItems.leaf.begin(), gItems.leaf.end(), name->unicode);
    return gItems.hasParent;
}

inline std::string URLOf(id converted)
{
    return [converted isKindOfClass:[NSURL class]] ? [[converted absoluteString] UTF8String] : "no URL";
}

class FolderItemTest : public MemberConversion {
protected:
    /// A host that gives these answers for every folder item.
    qzlhost::Host &StartAnswering(const FolderItems &items)
    {
        gItems = items;
        return Start({}, [](qzlhost::Host &unloaded) {
            unloaded.Replace("REALFSRefFromFolderItem", reinterpret_cast<void *>(&AnswerFolderItem));
        });
    }

    std::string ConvertItem() { return URLOf(Convert(host().NewFolderItem("/any"))); }

    void ExpectQuestions(const std::vector<bool> &forNames)
    {
        std::vector<bool> asked;
        for (const Question &question : FolderItems::questions)
            asked.push_back(question.asksForName);
        EXPECT_EQ(asked, forNames);
    }
};
