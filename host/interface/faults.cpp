// Faults of the resolver and of the look-ups of methods.
#include "host/interface/faults.h"

namespace qzlhost {

void Faults::Lack(std::string_view function)
{
    std::lock_guard lock(mutex_);
    rows_[std::string(function)].lacks = true;
}

void Faults::AnswerFrom(std::string_view function, int ask)
{
    std::lock_guard lock(mutex_);
    rows_[std::string(function)].answersFrom = ask;
}

void Faults::Replace(std::string_view function, void *replacement)
{
    std::lock_guard lock(mutex_);
    rows_[std::string(function)].replacement = replacement;
}

void *Faults::Answer(std::string_view function, void *own)
{
    std::lock_guard lock(mutex_);
    Row &row = rows_[std::string(function)];
    ++row.asks;
    if (row.lacks || row.asks < row.answersFrom)
        return nullptr;
    return row.replacement ? row.replacement : own;
}

int Faults::AsksFor(std::string_view function) const
{
    std::lock_guard lock(mutex_);
    const auto found = rows_.find(function);
    return found == rows_.end() ? 0 : found->second.asks;
}

void Faults::ReplaceMethod(std::string_view declaration, void *replacement)
{
    Declaration parsed = ParseDeclaration(declaration);
    std::lock_guard lock(mutex_);
    methods_.push_back({std::move(parsed), replacement});
}

void *Faults::AnswerMethod(const Declaration &declaration, void *own) const
{
    std::lock_guard lock(mutex_);
    void *answer = own;
    for (const MethodRow &row : methods_)
        if (SameSignature(row.declaration, declaration))
            answer = row.replacement;
    return answer;
}

} // namespace qzlhost
