// The words, numbers, texts and signs that a declaration consists of.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "host/language/declared_types.h"

namespace qzlhost {

enum class TokenKind { Word, Number, String, Open, Close, Comma, Equals, End };

struct Token {
    TokenKind kind = TokenKind::End;
    /// A part of the declaration's text. A String token includes its quotation marks.
    std::string_view text;
    size_t offset = 0;
};

/// The tokens of `text`, which must outlive them; the last one is End. Throws DeclarationError.
std::vector<Token> Tokenize(std::string_view text);

/// The value of a Number token: an integer of 64 bits, or a double where it has a point or an exponent.
/// Throws DeclarationError, which quotes `text`, for a value out of range.
Literal NumberValue(std::string_view text, const Token &token);

/// The content of a String token.
Literal StringValue(const Token &token);

} // namespace qzlhost
