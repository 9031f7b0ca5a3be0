// The host language's declarations of members, parsed.
#include "host/language/declaration.h"

#include <algorithm>
#include <iterator>

#include "host/language/declaration_tokens.h"
#include "host/language/names.h"

namespace qzlhost {

namespace {

class Parser {
public:
    explicit Parser(std::string_view text) : text_(text), tokens_(Tokenize(text)) {}

    Declaration ParseMember()
    {
        Declaration declaration;
        if (IsBareParameterList()) {
            declaration.name = "Constructor";
            declaration.parameters = ParseParameters();
        } else {
            declaration.name = ExpectName("a member's name");
            const bool parentheses = Accept(TokenKind::Open);
            if (parentheses && !Accept(TokenKind::Close)) {
                declaration.parameters = ParseParameters();
                Expect(TokenKind::Close, "a comma or a closing parenthesis");
            }
            if (AcceptWord("As")) {
                declaration.result = ParseType(true);
                declaration.computedProperty = !parentheses;
            }
        }
        Expect(TokenKind::End, "the end");
        return declaration;
    }

    ConstantDeclaration ParseConstant()
    {
        ConstantDeclaration constant;
        constant.name = ExpectName("a constant's name");
        Expect(TokenKind::Equals, "an equals sign");
        constant.value = ParseLiteral();
        Expect(TokenKind::End, "the end");
        return constant;
    }

    Type ParseTypeAlone()
    {
        Type type = ParseType(true);
        Expect(TokenKind::End, "the end");
        return type;
    }

private:
    /// A member has commas and equals signs inside its parentheses only, and no modifier before its name.
    bool IsBareParameterList() const
    {
        if (IsModifier(0))
            return true;
        int depth = 0;
        for (const Token &token : tokens_) {
            depth += token.kind == TokenKind::Open ? 1 : token.kind == TokenKind::Close ? -1 : 0;
            if (depth == 0 && (token.kind == TokenKind::Comma || token.kind == TokenKind::Equals))
                return true;
        }
        return false;
    }

    std::vector<Parameter> ParseParameters()
    {
        std::vector<Parameter> parameters;
        do {
            parameters.push_back(ParseParameter());
        } while (!parameters.back().assigns && Accept(TokenKind::Comma));
        return parameters;
    }

    Parameter ParseParameter()
    {
        Parameter parameter;
        bool optional = false;
        for (; IsModifier(next_); ++next_) {
            parameter.assigns |= IsWord(next_, "Assigns");
            parameter.byReference |= IsWord(next_, "ByRef");
            optional |= IsWord(next_, "Optional");
        }
        parameter.name = ExpectName("a parameter's name");
        const bool array = AcceptArrayParentheses();
        if (!AcceptWord("As"))
            Fail("the word As");
        parameter.type = ParseType(!array);
        if (array)
            parameter.type = MakeType(parameter.type.name, true);
        if (Accept(TokenKind::Equals))
            parameter.defaultValue = ParseLiteral();
        else if (optional)
            parameter.defaultValue = EmptyValue(parameter.type);
        return parameter;
    }

    Type ParseType(bool mayBeArray)
    {
        const std::string name = ExpectName("a type");
        return MakeType(name, mayBeArray && AcceptArrayParentheses());
    }

    Literal ParseLiteral()
    {
        const Token &token = Peek();
        Literal literal;
        if (token.kind == TokenKind::Number) {
            literal = NumberValue(text_, token);
        } else if (token.kind == TokenKind::String) {
            literal = StringValue(token);
        } else if (IsWord(next_, "True") || IsWord(next_, "False")) {
            literal.kind = Literal::Kind::Boolean;
            literal.boolean = IsWord(next_, "True");
        } else if (!IsWord(next_, "Nil")) {
            Fail("a constant");
        }
        ++next_;
        return literal;
    }

    const Token &Peek() const { return tokens_[next_]; }

    bool IsWord(size_t index, std::string_view word) const
    {
        return tokens_[index].kind == TokenKind::Word && SameName(tokens_[index].text, word);
    }

    /// A modifier stands before another word that it can modify; else it is a name itself.
    bool IsModifier(size_t index) const
    {
        constexpr std::string_view kModifiers[] = {"Assigns", "ByRef", "ByVal", "Optional"};
        return std::any_of(std::begin(kModifiers), std::end(kModifiers),
                           [&](std::string_view modifier) { return IsWord(index, modifier); }) &&
               tokens_[index + 1].kind == TokenKind::Word && !IsWord(index + 1, "As");
    }

    bool Accept(TokenKind kind)
    {
        const bool accepted = Peek().kind == kind;
        next_ += accepted ? 1 : 0;
        return accepted;
    }

    bool AcceptWord(std::string_view word)
    {
        const bool accepted = IsWord(next_, word);
        next_ += accepted ? 1 : 0;
        return accepted;
    }

    bool AcceptArrayParentheses()
    {
        const bool accepted = Peek().kind == TokenKind::Open && tokens_[next_ + 1].kind == TokenKind::Close;
        next_ += accepted ? 2 : 0;
        return accepted;
    }

    void Expect(TokenKind kind, std::string_view expected)
    {
        if (Peek().kind != kind)
            Fail(expected);
        // The last token stays, so that there is always one to look at.
        next_ += kind == TokenKind::End ? 0 : 1;
    }

    std::string ExpectName(std::string_view expected)
    {
        const Token token = Peek();
        if (IsWord(next_, "As"))
            Fail(expected);
        Expect(TokenKind::Word, expected);
        return std::string(token.text);
    }

    [[noreturn]] void Fail(std::string_view expected) const
    {
        throw DeclarationError(text_, Peek().offset, expected, Peek().text);
    }

    std::string_view text_;
    std::vector<Token> tokens_;
    size_t next_ = 0;
};

} // namespace

Type ParseType(std::string_view text)
{
    return Parser(text).ParseTypeAlone();
}

Declaration ParseDeclaration(std::string_view text)
{
    return Parser(text).ParseMember();
}

ConstantDeclaration ParseConstant(std::string_view text)
{
    return Parser(text).ParseConstant();
}

} // namespace qzlhost
