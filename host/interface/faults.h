// Faults of the resolver and of the look-ups of methods.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "host/language/declaration.h"

namespace qzlhost {

/// What is returned for names of host functions and declarations of methods. Any thread.
class Faults {
public:
    void Lack(std::string_view function);
    void AnswerFrom(std::string_view function, int ask);
    void Replace(std::string_view function, void *replacement);
    /// Counts the ask. Returns `own`, its replacement, or null.
    void *Answer(std::string_view function, void *own);
    int AsksFor(std::string_view function) const;

    /// From now on look-ups of the method return this function, which may be null.
    void ReplaceMethod(std::string_view declaration, void *replacement);
    /// Returns `own`, its replacement, or null.
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
