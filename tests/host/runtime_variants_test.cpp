// Variants: their codes, conversions and properties.
#include <cmath>

#include "tests/host/runtime_test.h"

namespace qzlhost {

namespace {

int64_t VarType(const Value &value)
{
    void *const function = HostFunction<void *(void *, const char *)>("REALLoadGlobalMethod")(
        nullptr, "VarType(value As Variant) As Integer");
    return reinterpret_cast<int64_t (*)(Instance *)>(function)(value.Boxed().ObjectPointer());
}

Instance *AsVariant(const Value &boxed)
{
    return boxed.ObjectPointer();
}

} // namespace

using Variants = RuntimeTest;

TEST_F(Variants, EveryMakerBoxesUnderItsCode)
{
    EXPECT_EQ(VarType(Value::Adopt(HostFunction<Instance *(int64_t)>("IntegerToVariant")(-7))), code::Int64);
    EXPECT_EQ(VarType(Value::Adopt(HostFunction<Instance *(uint32_t)>("UInt32ToVariant")(7))), code::Int64);
    EXPECT_EQ(VarType(Value::Adopt(HostFunction<Instance *(double)>("DoubleToVariant")(0.5))), code::Double);
    EXPECT_EQ(VarType(Value::Adopt(HostFunction<Instance *(float)>("SingleToVariant")(0.5f))), code::Single);
    EXPECT_EQ(VarType(Value::Adopt(HostFunction<Instance *(bool)>("BooleanToVariant")(true))), code::Boolean);
    EXPECT_EQ(VarType(Value::Adopt(HostFunction<Instance *(String *)>("StringToVariant")(nullptr))),
              code::String);
    EXPECT_EQ(VarType(Value::Adopt(HostFunction<Instance *(Text *)>("PluginNewVariantText")(
                  Value::TextOf("text").TextPointer()))),
              code::Text);
}

TEST_F(Variants, InstancesAreVariantsThemselves)
{
    EXPECT_EQ(VarType(Value()), code::Null);
    EXPECT_EQ(VarType(host.NewDictionary()), code::Object);
    EXPECT_EQ(VarType(host.NewDate(2024, 1, 1, 0, 0, 0)), code::Date);
    EXPECT_EQ(VarType(host.NewArray(code::String)), code::Array + code::String);
    EXPECT_EQ(VarType(Value::OfCode(code::Currency, 1.5)), code::Currency);
    EXPECT_EQ(VarType(Value::OfCode(code::Color, 255)), code::Color);
    EXPECT_EQ(VarType(Value::OfCode(code::Int32, 255)), code::Int32);
    EXPECT_EQ(VarType(Value::OfCode(21, "text")), 21);
}

TEST_F(Variants, NumbersConvert)
{
    const auto toInteger = HostFunction<int64_t(Instance *)>("VariantToInt64");
    const auto toDouble = HostFunction<double(Instance *)>("VariantToDouble");
    const auto toSingle = HostFunction<float(Instance *)>("VariantToSingle");
    EXPECT_EQ(toInteger(AsVariant(Value(int64_t{9007199254740993}).Boxed())), 9007199254740993);
    EXPECT_EQ(toInteger(AsVariant(Value(-2.9).Boxed())), -2);
    EXPECT_EQ(toInteger(AsVariant(Value("9007199254740993").Boxed())), 9007199254740993);
    EXPECT_EQ(toInteger(AsVariant(Value("12.75 kg").Boxed())), 12);
    EXPECT_EQ(toInteger(AsVariant(Value(true).Boxed())), 1);
    EXPECT_EQ(toInteger(AsVariant(Value::OfCode(code::Boolean, 256).Boxed())), 256);
    EXPECT_EQ(toInteger(nullptr), 0);
    EXPECT_EQ(toInteger(AsVariant(Value(1e300).Boxed())), INT64_MAX);
    EXPECT_EQ(toInteger(AsVariant(Value(std::nan("")).Boxed())), 0);
    EXPECT_EQ(toDouble(AsVariant(Value(3).Boxed())), 3.0);
    EXPECT_EQ(toDouble(AsVariant(Value::OfCode(code::Currency, 1.25).Boxed())), 1.25);
    EXPECT_EQ(toSingle(AsVariant(Value(0.1f).Boxed())), 0.1f);
    EXPECT_EQ(toSingle(AsVariant(Value(0.5).Boxed())), 0.5f);
}

TEST_F(Variants, EverythingConvertsToAString)
{
    const auto toString = [](const Value &value) {
        return Value::Adopt(
                   HostFunction<String *(Instance *)>("VariantToString")(value.Boxed().ObjectPointer()))
            .AsString();
    };
    EXPECT_EQ(toString(Value(-12)), "-12");
    EXPECT_EQ(toString(Value(0.1)), "0.1");
    EXPECT_EQ(toString(Value(0.1f)), "0.1");
    EXPECT_EQ(toString(Value(true)), "True");
    EXPECT_EQ(toString(Value("text")), "text");
    EXPECT_EQ(toString(Value::TextOf("text")), "text");
    EXPECT_EQ(toString(host.NewDate(2024, 2, 29, 14, 5, 9)), "2024-02-29 14:05:09");
    EXPECT_EQ(toString(Value()), "");
}

TEST_F(Variants, AStringVariantReturnsItsOwnString)
{
    const Value string = Value::StringOfBytes("\xE9", encoding::Latin1);
    const Value variant = string.Boxed();
    EXPECT_EQ(host.References(string), 2);
    const Value back =
        Value::Adopt(HostFunction<String *(Instance *)>("VariantToString")(variant.ObjectPointer()));
    EXPECT_EQ(back.StringPointer(), string.StringPointer());
    EXPECT_EQ(host.References(string), 3);
}

TEST_F(Variants, HaveTheirValueAsProperties)
{
    const Value number = Value(41).Boxed();
    int64_t integer = 0;
    double real = 0;
    float single = 0;
    String *string = nullptr;
    EXPECT_TRUE(ReadProperty("REALGetPropValueInteger", number, "Type", &integer));
    EXPECT_EQ(integer, code::Int64);
    EXPECT_TRUE(ReadProperty("REALGetPropValueInt64", number, "LongValue", &integer));
    EXPECT_EQ(integer, 41);
    EXPECT_TRUE(ReadProperty("REALGetPropValueDouble", number, "DoubleValue", &real));
    EXPECT_EQ(real, 41.0);
    EXPECT_TRUE(ReadProperty("REALGetPropValueSingle", number, "SingleValue", &single));
    EXPECT_EQ(single, 41.0f);
    EXPECT_TRUE(ReadProperty("REALGetPropValueString", number, "StringValue", &string));
    EXPECT_EQ(Value::Adopt(string).AsString(), "41");
}

TEST_F(Variants, DateValueOfADateIsTheDateWithOneReference)
{
    const Value date = host.NewDate(2024, 2, 29, 0, 0, 0);
    Instance *out = nullptr;
    EXPECT_TRUE(ReadProperty("REALGetPropValueObject", date, "DateValue", &out));
    EXPECT_EQ(out, date.ObjectPointer());
    EXPECT_EQ(host.References(date), 2);
    Value::Adopt(out);
    EXPECT_EQ(host.References(date), 1);
    int64_t type = 0;
    EXPECT_TRUE(ReadProperty("REALGetPropValueInteger", date, "Type", &type));
    EXPECT_EQ(type, code::Date);
}

TEST_F(Variants, APropertyOfAnotherTypeIsNotRead)
{
    const Value number = Value(41).Boxed();
    int64_t integer = 5;
    String *string = nullptr;
    EXPECT_FALSE(ReadProperty("REALGetPropValueInteger", number, "StringValue", &integer));
    EXPECT_FALSE(ReadProperty("REALGetPropValueInteger", number, "NoSuchProperty", &integer));
    EXPECT_FALSE(ReadProperty("REALGetPropValueString", number, "LongValue", &string));
    EXPECT_EQ(integer, 5);
    EXPECT_EQ(string, nullptr);
}

TEST_F(Variants, BooleansComeFromNumbersAndTexts)
{
    EXPECT_TRUE(Value(2).AsBoolean());
    EXPECT_FALSE(Value(0.0).AsBoolean());
    EXPECT_TRUE(Value("true").AsBoolean());
    EXPECT_FALSE(Value("no").AsBoolean());
    EXPECT_FALSE(Value().AsBoolean());
    EXPECT_TRUE(host.NewDictionary().AsBoolean());
}

} // namespace qzlhost
