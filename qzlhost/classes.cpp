// The classes of a library, for people and for programs to read.
#include "qzlhost/classes.h"

#include <algorithm>
#include <array>

#include <nlohmann/json.hpp>

namespace qzlhost {

namespace {

using Json = nlohmann::ordered_json;

/// The cells of one row of a table.
using Row = std::array<std::string, 4>;

std::string TypeText(const Type &type)
{
    return type.kind == TypeKind::Array ? type.name + "()" : type.name;
}

std::string Access(const PropertyRecord &property)
{
    if (property.getter == kFieldAccess && property.setter == kFieldAccess)
        return "field";
    return property.setter == nullptr ? "read-only" : "read-write";
}

std::string Access(const MethodRecord &method)
{
    return method.setter == nullptr ? "read-only" : "read-write";
}

std::vector<Row> MemberRows(const ClassRecord &record)
{
    std::vector<Row> rows;
    for (const PropertyRecord &property : record.properties) {
        rows.push_back({"property", std::to_string(property.flags), Access(property),
                        property.name + " as " + TypeText(property.type)});
    }
    for (const MethodRecord &method : record.methods) {
        const bool computed = method.declaration.computedProperty;
        rows.push_back({computed ? "computed property" : "method", std::to_string(method.flags),
                        computed ? Access(method) : "", method.text});
    }
    for (const EventRecord &event : record.events)
        rows.push_back({"event", "", "", event.text});
    for (const ConstantRecord &constant : record.constants)
        rows.push_back({"constant", "", "", constant.text});
    for (const MethodRecord &method : record.sharedMethods)
        rows.push_back({"shared method", std::to_string(method.flags), "", method.text});
    return rows;
}

std::string ClassLine(const ClassRecord &record)
{
    return "  super " + (record.superName.empty() ? "none" : record.superName) + ", data size " +
           std::to_string(record.dataSize) + ", version " + std::to_string(record.version) + ", flags " +
           std::to_string(record.flags) + ", constructor " +
           (record.constructor == nullptr ? "none" : "present") + ", destructor " +
           (record.destructor == nullptr ? "none" : "present") + "\n";
}

/// The rows in columns, each but the last as wide as its widest cell.
std::string Columns(const std::vector<Row> &rows)
{
    std::array<size_t, std::tuple_size<Row>::value - 1> widths{};
    for (const Row &row : rows)
        for (size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    std::string text;
    for (const Row &row : rows) {
        text += "  ";
        for (size_t i = 0; i < widths.size(); ++i)
            text += row[i] + std::string(widths[i] - row[i].size() + 2, ' ');
        text += row.back() + "\n";
    }
    return text;
}

std::string DescribeClass(const ClassRecord &record)
{
    std::string text = record.name + "\n" + ClassLine(record);
    std::vector<Row> rows = MemberRows(record);
    if (!rows.empty()) {
        rows.insert(rows.begin(), {"kind", "flags", "access", "declaration"});
        text += Columns(rows);
    }
    for (const std::string &fault : record.faults)
        text += "  fault: " + fault + "\n";
    return text;
}

Json Accessor(const void *function)
{
    if (function == nullptr)
        return nullptr;
    return function == kFieldAccess ? "field" : "function";
}

Json ValueOf(const Literal &literal)
{
    switch (literal.kind) {
    case Literal::Kind::Null:
        break;
    case Literal::Kind::Boolean:
        return literal.boolean;
    case Literal::Kind::Integer:
        return literal.integer;
    case Literal::Kind::Number:
        return literal.number;
    case Literal::Kind::String:
        return literal.string;
    }
    return nullptr;
}

Json ToJson(const PropertyRecord &property)
{
    return {{"name", property.name},
            {"type", TypeText(property.type)},
            {"flags", property.flags},
            {"getter", Accessor(property.getter)},
            {"setter", Accessor(property.setter)},
            {"parameter", property.parameter}};
}

Json ToJson(const MethodRecord &method)
{
    return {{"declaration", method.text}, {"flags", method.flags}, {"setter", method.setter != nullptr}};
}

Json ToJson(const EventRecord &event)
{
    return Json::object({{"declaration", event.text}});
}

Json ToJson(const ConstantRecord &constant)
{
    return {{"declaration", constant.text},
            {"name", constant.declaration.name},
            {"value", ValueOf(constant.declaration.value)}};
}

template <typename Member>
Json ToJson(const std::vector<Member> &members)
{
    Json list = Json::array();
    for (const Member &member : members)
        list.push_back(ToJson(member));
    return list;
}

Json ToJson(const ClassRecord &record)
{
    return {{"name", record.name},
            {"super", record.superName.empty() ? Json() : Json(record.superName)},
            {"version", record.version},
            {"dataSize", record.dataSize},
            {"flags", record.flags},
            {"constructor", record.constructor != nullptr},
            {"destructor", record.destructor != nullptr},
            {"properties", ToJson(record.properties)},
            {"methods", ToJson(record.methods)},
            {"events", ToJson(record.events)},
            {"constants", ToJson(record.constants)},
            {"sharedMethods", ToJson(record.sharedMethods)},
            {"faults", record.faults}};
}

} // namespace

std::string DescribeAsTable(const std::vector<ClassRecord> &classes)
{
    std::string text;
    for (const ClassRecord &record : classes)
        text += (text.empty() ? "" : "\n") + DescribeClass(record);
    return text;
}

std::string DescribeAsJson(const std::vector<ClassRecord> &classes)
{
    Json list = Json::array();
    for (const ClassRecord &record : classes)
        list.push_back(ToJson(record));
    return list.dump(2, ' ', false, Json::error_handler_t::replace);
}

} // namespace qzlhost
