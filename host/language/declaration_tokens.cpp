// The words, numbers, texts and signs that a declaration consists of.
#include "host/language/declaration_tokens.h"

#include <charconv>
#include <cstdint>

#include "host/language/declaration_error.h"

namespace qzlhost {

namespace {

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsHexDigit(char c)
{
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool IsWordStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool IsWordPart(char c)
{
    return IsWordStart(c) || IsDigit(c);
}

bool IsHexNumber(std::string_view digits)
{
    return digits.size() > 2 && digits[0] == '&' && (digits[1] == 'h' || digits[1] == 'H');
}

class Tokenizer {
public:
    explicit Tokenizer(std::string_view text) : text_(text) {}

    Token Next()
    {
        Skip(IsBlank);
        const size_t start = offset_;
        if (start == text_.size())
            return {TokenKind::End, {}, start};
        const TokenKind kind = Advance();
        return {kind, text_.substr(start, offset_ - start), start};
    }

private:
    TokenKind Advance()
    {
        const char first = Peek();
        if (IsWordStart(first)) {
            Skip(IsWordPart);
            return TokenKind::Word;
        }
        if (IsDigit(first) || first == '-' || first == '&')
            return AdvanceNumber();
        switch (first) {
        case '"':
            return AdvanceString();
        case '(':
            return AdvanceSign(TokenKind::Open);
        case ')':
            return AdvanceSign(TokenKind::Close);
        case ',':
            return AdvanceSign(TokenKind::Comma);
        case '=':
            return AdvanceSign(TokenKind::Equals);
        default:
            Fail("a name, a constant or a sign");
        }
    }

    TokenKind AdvanceSign(TokenKind kind)
    {
        ++offset_;
        return kind;
    }

    TokenKind AdvanceNumber()
    {
        Accept("-");
        if (Accept("&")) {
            if (!Accept("hH"))
                Fail("the h of a hexadecimal number");
            Require(IsHexDigit, "a hexadecimal digit");
        } else {
            Require(IsDigit, "a digit");
            if (Accept("."))
                Require(IsDigit, "a digit");
            if (Accept("eE")) {
                Accept("+-");
                Require(IsDigit, "a digit");
            }
        }
        if (IsWordPart(Peek()))
            Fail("the end of the number");
        return TokenKind::Number;
    }

    TokenKind AdvanceString()
    {
        do {
            const size_t end = text_.find('"', offset_ + 1);
            if (end == std::string_view::npos) {
                offset_ = text_.size();
                Fail("a quotation mark");
            }
            offset_ = end + 1;
        } while (Peek() == '"');
        return TokenKind::String;
    }

    /// The next character; 0 at the end.
    char Peek() const { return offset_ < text_.size() ? text_[offset_] : '\0'; }

    bool Accept(std::string_view characters)
    {
        if (offset_ == text_.size() || characters.find(text_[offset_]) == std::string_view::npos)
            return false;
        ++offset_;
        return true;
    }

    void Skip(bool (*belongs)(char))
    {
        while (offset_ < text_.size() && belongs(text_[offset_]))
            ++offset_;
    }

    void Require(bool (*belongs)(char), std::string_view expected)
    {
        if (!belongs(Peek()))
            Fail(expected);
        Skip(belongs);
    }

    [[noreturn]] void Fail(std::string_view expected) const
    {
        size_t end = offset_ + 1;
        while (end < text_.size() && IsContinuation(text_[end]))
            ++end;
        throw DeclarationError(text_, offset_, expected, text_.substr(offset_, end - offset_));
    }

    std::string_view text_;
    size_t offset_ = 0;
};

} // namespace

std::vector<Token> Tokenize(std::string_view text)
{
    Tokenizer tokenizer(text);
    std::vector<Token> tokens;
    do {
        tokens.push_back(tokenizer.Next());
    } while (tokens.back().kind != TokenKind::End);
    return tokens;
}

Literal NumberValue(std::string_view text, const Token &token)
{
    const bool negative = token.text.front() == '-';
    const std::string_view digits = token.text.substr(negative ? 1 : 0);
    const bool hex = IsHexNumber(digits);
    const char *const first = digits.data() + (hex ? 2 : 0);
    const char *const end = digits.data() + digits.size();

    Literal literal;
    std::from_chars_result read{};
    if (!hex && digits.find_first_of(".eE") != std::string_view::npos) {
        literal.kind = Literal::Kind::Number;
        read = std::from_chars(first, end, literal.number);
        literal.number = negative ? -literal.number : literal.number;
    } else {
        literal.kind = Literal::Kind::Integer;
        uint64_t magnitude = 0;
        read = std::from_chars(first, end, magnitude, hex ? 16 : 10);
        // A hexadecimal number gives the 64 bits themselves; a decimal number must be in range.
        const uint64_t largest = static_cast<uint64_t>(INT64_MAX) + (negative ? 1 : 0);
        if (!hex && magnitude > largest)
            read.ec = std::errc::result_out_of_range;
        literal.integer = static_cast<int64_t>(negative ? uint64_t{0} - magnitude : magnitude);
    }
    if (read.ec != std::errc{})
        throw DeclarationError(text, token.offset, "a number of 64 bits", token.text);
    return literal;
}

Literal StringValue(const Token &token)
{
    Literal literal;
    literal.kind = Literal::Kind::String;
    const std::string_view content = token.text.substr(1, token.text.size() - 2);
    for (size_t i = 0; i < content.size(); ++i) {
        literal.string += content[i];
        // A quotation mark inside the text is doubled.
        i += content[i] == '"' ? 1 : 0;
    }
    return literal;
}

} // namespace qzlhost
