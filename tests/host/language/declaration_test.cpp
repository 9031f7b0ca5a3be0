// Declarations of the host language: parsed, printed in normal form, compared, refused.
#include "host/language/declaration.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "host/language/names.h"

namespace qzlhost {
namespace {

using testing::HasSubstr;

/// The text of the exception that reading throws; empty for none.
template <typename Result>
std::string ErrorOf(Result (*read)(std::string_view), std::string_view text)
{
    try {
        read(text);
    } catch (const DeclarationError &error) {
        return error.what();
    }
    return "";
}

std::string Repeated(std::string_view text, size_t times)
{
    std::string repeated;
    repeated.reserve(text.size() * times);
    for (size_t i = 0; i < times; ++i)
        repeated += text;
    return repeated;
}

// Members as libraries and the host declare them

struct Member {
    const char *text;
    const char *normalForm;
    size_t required;
    bool computed;
};

const Member kMembers[] = {
    // Observers
    {"Constructor", "Constructor()", 0, false},
    {"Destructor", "Destructor()", 0, false},
    {"GotNotification(notification as NSNotificationQZL)",
     "GotNotification(notification As NSNotificationQZL)", 1, false},
    // Notifications
    {"_exception as NSExceptionQZL", "_exception As NSExceptionQZL", 0, true},
    {"Print", "Print()", 0, false},
    {"Constructor(handle as integer)", "Constructor(handle As Integer)", 1, false},
    {"Constructor(name as string, theObject as variant = nil, userInfo as dictionary = nil)",
     "Constructor(name As String, theObject As Variant = Nil, userInfo As dictionary = Nil)", 1, false},
    {"notificationWithName(name as string, theObject as variant = nil, userInfo as dictionary = nil) as "
     "NSNotificationQZL",
     "notificationWithName(name As String, theObject As Variant = Nil, userInfo As dictionary = Nil) As "
     "NSNotificationQZL",
     1, false},
    // Centres
    {"postNotificationName(name as string)", "postNotificationName(name As String)", 1, false},
    {"postNotificationName(name as string, theObject as variant)",
     "postNotificationName(name As String, theObject As Variant)", 2, false},
    {"postNotificationName(name as string, theObject as variant, userInfo as dictionary)",
     "postNotificationName(name As String, theObject As Variant, userInfo As dictionary)", 3, false},
    {"postNotification(notification as NSNotificationQZL)",
     "postNotification(notification As NSNotificationQZL)", 1, false},
    {"removeObserver(observer as NSNotificationObserverQZL)",
     "removeObserver(observer As NSNotificationObserverQZL)", 1, false},
    {"removeObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant=nil)",
     "removeObserver(observer As NSNotificationObserverQZL, name As String, theObject As Variant = Nil)", 2,
     false},
    {"addObserver(observer as NSNotificationObserverQZL, name as string=\"\", theObject as variant=nil)",
     "addObserver(observer As NSNotificationObserverQZL, name As String = \"\", theObject As Variant = Nil)",
     1, false},
    {"defaultCenter as NSNotificationCenterQZL", "defaultCenter As NSNotificationCenterQZL", 0, true},
    // Distributed centres
    {"postNotificationName(name as string, theObject as string, userInfo as dictionary, options as UInt32)",
     "postNotificationName(name As String, theObject As String, userInfo As dictionary, options As UInt32)",
     4, false},
    {"postNotificationName(name as string, theObject as string, userInfo as dictionary, deliverImmediately "
     "as boolean)",
     "postNotificationName(name As String, theObject As String, userInfo As dictionary, deliverImmediately "
     "As Boolean)",
     4, false},
    {"suspended as boolean", "suspended As Boolean", 0, true},
    {"addObserver(observer as NSNotificationObserverQZL, name as string, theObject as variant, "
     "suspensionBehavior as integer)",
     "addObserver(observer As NSNotificationObserverQZL, name As String, theObject As Variant, "
     "suspensionBehavior As Integer)",
     4, false},
    {"NSLocalNotificationCenterType as string", "NSLocalNotificationCenterType As String", 0, true},
    {"defaultCenter as NSDistributedNotificationCenterQZL",
     "defaultCenter As NSDistributedNotificationCenterQZL", 0, true},
    {"notificationCenterForType(name as string) as NSDistributedNotificationCenterQZL",
     "notificationCenterForType(name As String) As NSDistributedNotificationCenterQZL", 1, false},
    // Methods of the host's own classes and its global methods
    {"LenB( s as string ) as integer", "LenB(s As String) As Integer", 1, false},
    {"VarType(value As Variant) As Integer", "VarType(value As Variant) As Integer", 1, false},
    {"GetTrueFolderItem(path As String, pathMode As Integer) As FolderItem",
     "GetTrueFolderItem(path As String, pathMode As Integer) As FolderItem", 2, false},
    {"Operator_Convert() As Ptr", "Operator_Convert() As Ptr", 0, false},
    {"Constructor(bytes as Integer)", "Constructor(bytes As Integer)", 1, false},
    {"Value(key As Variant, Assigns _value As Variant)", "Value(key As Variant, Assigns _value As Variant)",
     2, false},
    {"Value(key As Variant) As Variant", "Value(key As Variant) As Variant", 1, false},
    {"Key(index As Integer) As Variant", "Key(index As Integer) As Variant", 1, false},
    {"TrueItem(Index as integer) as Folderitem", "TrueItem(Index As Integer) As Folderitem", 1, false},
    {"Year as Integer, Month as Integer = 1, Day as Integer = 1, hour as Integer = 0, minute as Integer = 0, "
     "second as Integer = 0",
     "Constructor(Year As Integer, Month As Integer = 1, Day As Integer = 1, hour As Integer = 0, minute As "
     "Integer = 0, second As Integer = 0)",
     1, false},
    // Forms that programs use
    {"f()", "f()", 0, false},
    {"\tf ( a\r\n As  Integer )AS   Integer ", "f(a As Integer) As Integer", 1, false},
    {"F(A AS INTEGER,B AS STRING)AS BOOLEAN", "F(A As Integer, B As String) As Boolean", 2, false},
    {"f(values() as Integer) as String()", "f(values() As Integer) As String()", 1, false},
    {"f(values as Variant()) as NSImageQZL( )", "f(values() As Variant) As NSImageQZL()", 1, false},
    {"names as String()", "names As String()", 0, true},
    {"names() as String", "names() As String", 0, false},
    {"f(ByVal a as Integer, ByRef b as String)", "f(a As Integer, ByRef b As String)", 2, false},
    {"f(byref assigns a as Integer)", "f(Assigns ByRef a As Integer)", 1, false},
    {"f(optional a as Integer, Optional b as String, optional c as Double, optional d as Boolean, "
     "optional e as Dictionary)",
     "f(a As Integer = 0, b As String = \"\", c As Double = 0.0, d As Boolean = False, e As Dictionary = "
     "Nil)",
     0, false},
    {"f(optional a as Integer = 7, optional b() as Integer)", "f(a As Integer = 7, b() As Integer = Nil)", 0,
     false},
    {"f(a as Integer = 1, b as Integer, c as Integer = 2)",
     "f(a As Integer = 1, b As Integer, c As Integer = 2)", 2, false},
    {"f(optional as Integer, byref as Integer, assigns as Integer)",
     "f(optional As Integer, byref As Integer, assigns As Integer)", 3, false},
    {"byref as Boolean", "byref As Boolean", 0, true},
    {"Optional", "Optional()", 0, false},
    {"ByRef(a as Integer)", "ByRef(a As Integer)", 1, false},
    // A comma, a default or a modifier makes a list of parameters of what would be a computed property
    {"a as Integer, b as Integer", "Constructor(a As Integer, b As Integer)", 2, false},
    {"a as Integer = 5", "Constructor(a As Integer = 5)", 0, false},
    {"theObject as variant=nil", "Constructor(theObject As Variant = Nil)", 0, false},
    {"byref a as Integer", "Constructor(ByRef a As Integer)", 1, false},
    {"a() as Integer, b as String", "Constructor(a() As Integer, b As String)", 2, false},
    // Defaults
    {"f(a as Boolean = TRUE, b as Boolean = false)", "f(a As Boolean = True, b As Boolean = False)", 0,
     false},
    {"f(a as Integer = -1, b as Integer = &hFF, c as Integer = -&H10)",
     "f(a As Integer = -1, b As Integer = 255, c As Integer = -16)", 0, false},
    {"f(a as Double = 1.5, b as Double = -2e3, c as Double = 1.0)",
     "f(a As Double = 1.5, b As Double = -2000.0, c As Double = 1.0)", 0, false},
    {"f(a as String = \"say \"\"x\"\", (y)\")", "f(a As String = \"say \"\"x\"\", (y)\")", 0, false},
    {"f(a as String = \"\"\"\")", "f(a As String = \"\"\"\")", 0, false},
    {"f(a as String = \"Gr\xC3\xBC\xC3\x9F\x65\")", "f(a As String = \"Gr\xC3\xBC\xC3\x9F\x65\")", 0, false},
};

void PrintTo(const Member &member, std::ostream *stream)
{
    *stream << member.text;
}

class DeclaredMember : public testing::TestWithParam<Member> {};

TEST_P(DeclaredMember, IsRead)
{
    const Declaration declaration = ParseDeclaration(GetParam().text);

    EXPECT_EQ(declaration.ToString(), GetParam().normalForm);
    EXPECT_EQ(declaration.RequiredArguments(), GetParam().required);
    EXPECT_EQ(declaration.computedProperty, GetParam().computed);
}

TEST_P(DeclaredMember, IsTheSameMemberInItsNormalForm)
{
    const Declaration declaration = ParseDeclaration(GetParam().text);

    const Declaration again = ParseDeclaration(declaration.ToString());

    EXPECT_TRUE(SameSignature(declaration, again));
    EXPECT_EQ(again.ToString(), declaration.ToString());
    EXPECT_EQ(again.RequiredArguments(), declaration.RequiredArguments());
    EXPECT_EQ(again.computedProperty, declaration.computedProperty);
}

TEST_P(DeclaredMember, CannotBeReadWhenItIsCutInsideParenthesesOrATextConstant)
{
    const std::string text = GetParam().text;
    int open = 0;
    bool quoted = false;
    for (size_t length = 1; length <= text.size(); ++length) {
        const char last = text[length - 1];
        quoted ^= last == '"';
        open += quoted ? 0 : last == '(' ? 1 : last == ')' ? -1 : 0;
        if (open > 0 || quoted) {
            EXPECT_THROW(ParseDeclaration(text.substr(0, length)), DeclarationError)
                << text.substr(0, length);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Declarations, DeclaredMember, testing::ValuesIn(kMembers));

TEST(Declaration, ReadsEveryPartOfAParameter)
{
    const Declaration declaration =
        ParseDeclaration("f(a as UInt32, byref b() as Single = nil, Assigns c as NSNotificationQZL)");

    ASSERT_EQ(declaration.parameters.size(), 3u);
    const Parameter &first = declaration.parameters[0];
    EXPECT_EQ(first.name, "a");
    EXPECT_EQ(first.type.kind, TypeKind::Integer);
    EXPECT_EQ(first.type.native, NativeType::UInt32);
    EXPECT_FALSE(first.byReference || first.assigns || first.defaultValue);
    const Parameter &second = declaration.parameters[1];
    EXPECT_EQ(second.name, "b");
    EXPECT_EQ(second.type.kind, TypeKind::Array);
    EXPECT_EQ(second.type.native, NativeType::Pointer);
    EXPECT_EQ(second.type.name, "Single");
    EXPECT_TRUE(second.byReference);
    EXPECT_FALSE(second.assigns);
    ASSERT_TRUE(second.defaultValue);
    EXPECT_EQ(second.defaultValue->kind, Literal::Kind::Null);
    const Parameter &third = declaration.parameters[2];
    EXPECT_EQ(third.type.name, "NSNotificationQZL");
    EXPECT_EQ(third.type.kind, TypeKind::Object);
    EXPECT_TRUE(third.assigns);
    EXPECT_FALSE(third.byReference);
    EXPECT_EQ(declaration.result.kind, TypeKind::Nothing);
    EXPECT_EQ(declaration.result.native, NativeType::Nothing);
}

// Types

struct NamedType {
    const char *text;
    TypeKind kind;
    NativeType native;
    const char *name;
};

const NamedType kTypes[] = {
    {"Integer", TypeKind::Integer, NativeType::Int64, "Integer"},
    {"Int64", TypeKind::Integer, NativeType::Int64, "Int64"},
    {"UInt64", TypeKind::Integer, NativeType::UInt64, "UInt64"},
    {"Int32", TypeKind::Integer, NativeType::Int32, "Int32"},
    {"UInt32", TypeKind::Integer, NativeType::UInt32, "UInt32"},
    {"Int16", TypeKind::Integer, NativeType::Int16, "Int16"},
    {"UInt16", TypeKind::Integer, NativeType::UInt16, "UInt16"},
    {"Int8", TypeKind::Integer, NativeType::Int8, "Int8"},
    {"UInt8", TypeKind::Integer, NativeType::UInt8, "UInt8"},
    {"Byte", TypeKind::Integer, NativeType::UInt8, "Byte"},
    {"Boolean", TypeKind::Boolean, NativeType::Boolean, "Boolean"},
    {"Single", TypeKind::Single, NativeType::Single, "Single"},
    {"Double", TypeKind::Double, NativeType::Double, "Double"},
    {"Currency", TypeKind::Currency, NativeType::Int64, "Currency"},
    {"Color", TypeKind::Color, NativeType::UInt32, "Color"},
    {"String", TypeKind::String, NativeType::Pointer, "String"},
    {"Text", TypeKind::Text, NativeType::Pointer, "Text"},
    {"Variant", TypeKind::Variant, NativeType::Pointer, "Variant"},
    {"Ptr", TypeKind::Pointer, NativeType::Pointer, "Ptr"},
    {"Object", TypeKind::Object, NativeType::Pointer, "Object"},
    {"Dictionary", TypeKind::Object, NativeType::Pointer, "Dictionary"},
    {"NSNotificationQZL", TypeKind::Object, NativeType::Pointer, "NSNotificationQZL"},
    {"Integers", TypeKind::Object, NativeType::Pointer, "Integers"},
    {"Variant()", TypeKind::Array, NativeType::Pointer, "Variant"},
    {"NSImageQZL ( )", TypeKind::Array, NativeType::Pointer, "NSImageQZL"},
    {"Boolean()", TypeKind::Array, NativeType::Pointer, "Boolean"},
    {"iNTEGER", TypeKind::Integer, NativeType::Int64, "iNTEGER"},
    {" uint8 ", TypeKind::Integer, NativeType::UInt8, "uint8"},
    {"BOOLEAN", TypeKind::Boolean, NativeType::Boolean, "BOOLEAN"},
};

void PrintTo(const NamedType &type, std::ostream *stream)
{
    *stream << type.text;
}

class DeclaredType : public testing::TestWithParam<NamedType> {};

TEST_P(DeclaredType, IsKnownByItsName)
{
    const Type type = ParseType(GetParam().text);

    EXPECT_EQ(type.kind, GetParam().kind);
    EXPECT_EQ(type.native, GetParam().native);
    EXPECT_EQ(type.name, GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(Declarations, DeclaredType, testing::ValuesIn(kTypes));

TEST(Declaration, RefusesATypeThatIsNoName)
{
    for (const char *text : {"", " ", "()", "1", "a b", "Integer(", "Integer)", "Integer()()", "Integer(3)",
                             "as", "Integer, Integer", "\"Integer\""})
        EXPECT_NE(ErrorOf(ParseType, text), "") << text;
}

// Constants

TEST(Declaration, ReadsIntegerConstants)
{
    struct Row {
        const char *text;
        const char *name;
        int64_t value;
    };
    const Row rows[] = {
        {"NSNotificationSuspensionBehaviorDrop = 1", "NSNotificationSuspensionBehaviorDrop", 1},
        {"NSNotificationSuspensionBehaviorCoalesce = 2", "NSNotificationSuspensionBehaviorCoalesce", 2},
        {"NSNotificationSuspensionBehaviorHold = 3", "NSNotificationSuspensionBehaviorHold", 3},
        {"NSNotificationSuspensionBehaviorDeliverImmediately = 4",
         "NSNotificationSuspensionBehaviorDeliverImmediately", 4},
        {"NSNotificationDeliverImmediately = 1", "NSNotificationDeliverImmediately", 1},
        {"NSNotificationPostToAllSessions = 2", "NSNotificationPostToAllSessions", 2},
        {"X=0", "X", 0},
        {" x =\t-7 ", "x", -7},
        {"k = 9223372036854775807", "k", INT64_MAX},
        {"k = -9223372036854775808", "k", INT64_MIN},
        {"k = &h0", "k", 0},
        {"k = &hffffFFFF", "k", 4294967295},
        {"k = &HFFFFFFFFFFFFFFFF", "k", -1},
        {"k = &h8000000000000000", "k", INT64_MIN},
        {"k = 007", "k", 7},
    };
    for (const Row &row : rows) {
        const ConstantDeclaration constant = ParseConstant(row.text);
        EXPECT_EQ(constant.name, row.name) << row.text;
        EXPECT_EQ(constant.value.kind, Literal::Kind::Integer) << row.text;
        EXPECT_EQ(constant.value.integer, row.value) << row.text;
    }
}

TEST(Declaration, ReadsConstantsThatAreNoIntegers)
{
    EXPECT_EQ(ParseConstant("k = nil").value.kind, Literal::Kind::Null);
    EXPECT_EQ(ParseConstant("k = False").value.kind, Literal::Kind::Boolean);
    EXPECT_FALSE(ParseConstant("k = False").value.boolean);
    EXPECT_TRUE(ParseConstant("k = true").value.boolean);
    EXPECT_EQ(ParseConstant("k = 0.5").value.kind, Literal::Kind::Number);
    EXPECT_EQ(ParseConstant("k = 0.5").value.number, 0.5);
    EXPECT_EQ(ParseConstant("k = -1.7976931348623157e308").value.number, -1.7976931348623157e308);
    EXPECT_EQ(ParseConstant("k = 25E-1").value.number, 2.5);
    EXPECT_EQ(ParseConstant("k = \"\"").value.kind, Literal::Kind::String);
    EXPECT_EQ(ParseConstant("k = \"\"").value.string, "");
    EXPECT_EQ(ParseConstant("k = \"a \"\"b\"\" = 'c'\"").value.string, "a \"b\" = 'c'");
}

TEST(Declaration, RefusesWhatIsNoConstant)
{
    for (const char *text : {"",
                             "X",
                             "X =",
                             "= 1",
                             "X 1",
                             "X = 1 2",
                             "X = Y",
                             "X == 1",
                             "X = 1,",
                             "X() = 1",
                             "1 = 1",
                             "X = -",
                             "X = - 1",
                             "X = &",
                             "X = &h",
                             "X = &hG",
                             "X = &b1",
                             "X = 1x",
                             "X = 1.",
                             "X = .5",
                             "X = 1e",
                             "X = 1e+",
                             "X = --1",
                             "X = \"",
                             "X = \"a",
                             "X = \"a\"\"",
                             "X = 'a'",
                             "X as Integer = 1",
                             "X = +1",
                             "X = 9223372036854775808",
                             "X = -9223372036854775809",
                             "X = &h10000000000000000",
                             "X = 1e999"})
        EXPECT_NE(ErrorOf(ParseConstant, text), "") << text;
}

// What is no declaration

TEST(Declaration, RefusesHostileTexts)
{
    for (const char *text : {"",
                             " ",
                             "\n",
                             "(",
                             ")",
                             "()",
                             ",",
                             "=",
                             "as",
                             "as as Integer",
                             "f(",
                             "f)",
                             "f(()",
                             "f())",
                             "f(a)",
                             "f(a as)",
                             "f(as Integer)",
                             "f(a as Integer",
                             "f(a as Integer,",
                             "f(a as Integer,)",
                             "f(,a as Integer)",
                             "f(a as Integer b as Integer)",
                             "f(a as Integer = )",
                             "f(a as Integer = x)",
                             "f(a Integer)",
                             "f(a as Integer))",
                             "f(a as Integer) as",
                             "f(a as Integer) Integer",
                             "f(a as Integer) as Integer as Integer",
                             "f(a as Integer) as Integer x",
                             "f as",
                             "f g",
                             "f 1",
                             "1f()",
                             "f(1 as Integer)",
                             "f(a as 1)",
                             "f(a() as Integer())",
                             "f(a(2) as Integer)",
                             "f(a as Integer) = 3",
                             "f(assigns a as Integer, b as Integer)",
                             "f(byref)",
                             "f(byref 1 as Integer)",
                             "a as Integer,",
                             ", a as Integer",
                             "a as Integer = 1, b",
                             "a as Integer), (b as Integer",
                             "f[0]",
                             "f;",
                             "f.g",
                             "f'",
                             "f\"",
                             "\"f\"",
                             "f(a as \"Integer\")",
                             "\x80",
                             "f\xC3\xBC()",
                             "f(a as Integer = \"x)"})
        EXPECT_NE(ErrorOf(ParseDeclaration, text), "") << text;
}

TEST(Declaration, RefusesANulCharacter)
{
    using namespace std::string_view_literals;

    EXPECT_THAT(ErrorOf(ParseDeclaration, "f(a as\0 Integer)"sv), HasSubstr("f(a as\\x00 Integer)"));
}

TEST(Declaration, ErrorsSayWhatWasExpectedWhereAndWhatIsThere)
{
    EXPECT_EQ(ErrorOf(ParseDeclaration, ""),
              "\"\" is no declaration: expected a member's name at position 1, found the end");
    EXPECT_EQ(ErrorOf(ParseDeclaration, "f(a as "),
              "\"f(a as \" is no declaration: expected a type at position 8, found the end");
    EXPECT_EQ(
        ErrorOf(ParseDeclaration, "f(a as Integer b as Integer)"),
        "\"f(a as Integer b as Integer)\" is no declaration: expected a comma or a closing parenthesis at "
        "position 16, found \"b\"");
    EXPECT_EQ(ErrorOf(ParseDeclaration, "f(a, b)"),
              "\"f(a, b)\" is no declaration: expected the word As at position 4, found \",\"");
    EXPECT_EQ(ErrorOf(ParseConstant, "k = 1x"),
              "\"k = 1x\" is no declaration: expected the end of the number at position 6, found \"x\"");
    EXPECT_EQ(
        ErrorOf(ParseConstant, "k = 99999999999999999999"),
        "\"k = 99999999999999999999\" is no declaration: expected a number of 64 bits at position 5, found "
        "\"99999999999999999999\"");
    EXPECT_EQ(ErrorOf(ParseType, "Integer String"),
              "\"Integer String\" is no declaration: expected the end at position 9, found \"String\"");
}

TEST(Declaration, ErrorsQuoteTheBeginningOfALongText)
{
    const std::string text = "f(a" + Repeated("\xC3\xBC", 500000);

    const std::string error = ErrorOf(ParseDeclaration, text);

    EXPECT_EQ(error,
              "\"f(a" + Repeated("\xC3\xBC", 48) +
                  "...\" is no declaration: expected a name, a constant or a sign at position 4, found "
                  "\"\xC3\xBC\"");
}

TEST(Declaration, ReadsAMegabyteOfParameters)
{
    const std::string text = "f(" + Repeated("parameter as Integer, ", 50000) + "last as Integer) as Integer";
    ASSERT_GT(text.size(), size_t{1} << 20);

    const Declaration declaration = ParseDeclaration(text);

    EXPECT_EQ(declaration.parameters.size(), 50001u);
    EXPECT_EQ(declaration.parameters.back().name, "last");
}

TEST(Declaration, ReadsAMegabyteOfName)
{
    const std::string name(size_t{1} << 20, 'n');

    EXPECT_EQ(ParseDeclaration(name).name, name);
}

TEST(Declaration, ReadsAMegabyteOfTextConstant)
{
    const std::string quotationMarks(size_t{1} << 20, '"');

    EXPECT_EQ(ParseConstant("k = " + quotationMarks).value.string, std::string((size_t{1} << 19) - 1, '"'));
}

TEST(Declaration, RefusesMegabytesOfRubbish)
{
    constexpr size_t kMegabyte = size_t{1} << 20;

    for (const char *piece : {"(", ")", ",", "=", "\"", " ", "a ", "()", "a as ", "f(a as Integer)", "-",
                              "&h", "9", "1e", "byref ", "\x7F", "a,", "a() as "}) {
        const std::string text = Repeated(piece, kMegabyte / std::string_view(piece).size() + 1);
        EXPECT_LT(ErrorOf(ParseDeclaration, text).size(), 600u) << piece;
        EXPECT_NE(ErrorOf(ParseDeclaration, text), "") << piece;
        EXPECT_NE(ErrorOf(ParseConstant, "k = " + text), "") << piece;
    }
}

// Comparing

TEST(SameSignature, IgnoresCaseParameterNamesAndDefaults)
{
    EXPECT_TRUE(SameSignature(ParseDeclaration("LenB( s as string ) as integer"),
                              ParseDeclaration("lenb(text As String = \"x\") As INTEGER")));
    EXPECT_TRUE(SameSignature(ParseDeclaration("Constructor"), ParseDeclaration("constructor()")));
    EXPECT_TRUE(SameSignature(ParseDeclaration("defaultCenter as NSNotificationCenterQZL"),
                              ParseDeclaration("defaultCenter() as nsnotificationcenterqzl")));
    EXPECT_TRUE(SameSignature(ParseDeclaration("a as Integer, b() as String = nil"),
                              ParseDeclaration("Constructor(x as Integer, y as String())")));
}

TEST(SameSignature, TellsMembersAndOverloadsApart)
{
    const char *const texts[] = {
        "f",
        "g",
        "f as Integer",
        "f as Integer()",
        "f as Int64",
        "f(a as Integer)",
        "f(a as Integer, b as Integer)",
        "f(a as UInt32)",
        "f(a as String)",
        "f(a as Variant)",
        "f(a as Dictionary)",
        "f(a() as Variant)",
        "f(a() as Dictionary)",
        "f(Assigns a as Integer)",
        "f(a as Integer, Assigns b as Integer)",
        "f(ByRef a as Integer)",
        "f(a as Integer) as Integer",
        "f(a as Integer) as Object",
    };
    for (const char *a : texts)
        for (const char *b : texts)
            EXPECT_EQ(SameSignature(ParseDeclaration(a), ParseDeclaration(b)), a == b) << a << " / " << b;
}

TEST(SameName, IgnoresTheCaseOfAsciiLettersOnly)
{
    EXPECT_TRUE(SameName("", ""));
    EXPECT_TRUE(SameName("GotNotification", "gOTnOTIFICATION"));
    EXPECT_TRUE(SameName("_az", "_AZ"));
    EXPECT_FALSE(SameName("a", ""));
    EXPECT_FALSE(SameName("abc", "abcd"));
    EXPECT_FALSE(SameName("abc", "abd"));
    EXPECT_FALSE(SameName("@", "`"));
    EXPECT_FALSE(SameName("[", "{"));
    EXPECT_FALSE(SameName("\xC3\xBC", "\xC3\x9C"));
}

} // namespace
} // namespace qzlhost
