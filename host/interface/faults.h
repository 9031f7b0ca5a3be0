// How the resolver answers, and which host functions fail.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "host/language/declaration.h"

namespace qzlhost {

/// The resolver's answers for the names of host functions. Any thread.
class Faults {
public:
    void Lack(std::string_view function);
    void AnswerFrom(std::string_view function, int ask);
    void Replace(std::string_view function, void *replacement);
    /// Counts the ask. Answers `own`, its replacement, or null.
    void *Answer(std::string_view function, void *own);
    int AsksFor(std::string_view function) const;

    void LackMethod(std::string_view declaration);
    void ReplaceMethod(std::string_view declaration, void *replacement);
    /// `own`, its replacement, or null.
    void *AnswerMethod(const Declaration &declaration, void *own) const;

private:
    struct Row {
        bool lacks = false;
        int answersFrom = 1;
        void *replacement = nullptr;
        int asks = 0;
    };
    struct MethodRow {
        Declaration declaration;
        void *replacement;
    };

    mutable std::mutex mutex_;
    std::map<std::string, Row, std::less<>> rows_;
    std::vector<MethodRow> methods_;
};

} // namespace qzlhost
