// Records as a schema describes them.

#include "records/schema.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "records/describe.h"
#include "records/made_records.h"

namespace zarven::tool::schema_test {
namespace {

using made_records::Leaf;
using made_records::Picture;
using made_records::Tree;
using nlohmann::json;

TEST(SchemaText, TellsEachKindOfField) {
    const json schema = json::parse(schema_text(description_of<Tree>(), "Trees"));
    EXPECT_EQ(schema.at("title"), "Trees");
    EXPECT_EQ(schema.at("description"), "A tree");
    EXPECT_EQ(schema.at("additionalProperties"), false);
    EXPECT_EQ(schema.at("required"), json({"name", "rings", "branches"}));
    const std::pair<const char*, const char*> properties[] = {
        {"name", R"({"type": "string", "description": "Name of the tree", "minLength": 1})"},
        {"nickname", R"({"type": "string", "description": "What it is called; by default the name"})"},
        {"model", R"({"const": 3, "description": "Only 3", "default": 3})"},
        {"height",
         R"({"allOf": [{"$ref": "#/definitions/number32"}], "description": "Height in m", "default": 7})"},
        {"depth", R"({"type": "integer", "minimum": -2147483648, "maximum": 2147483647,
                      "description": "Depth in m", "default": 0})"},
        {"beauty", R"({"type": "integer", "minimum": 0, "maximum": 10, "description": "How nice it is",
                       "default": 0})"},
        {"rings", R"({"allOf": [{"$ref": "#/definitions/count"}], "description": "One a year"})"},
        {"old", R"({"type": "boolean", "description": "It is old", "default": false})"},
        {"evergreen",
         R"({"allOf": [{"$ref": "#/definitions/flag"}], "description": "Like model", "default": 0})"},
        {"weight", R"({"allOf": [{"$ref": "#/definitions/number32"}],
                       "description": "Weight in kg; by default 10 a meter"})"},
        {"nest", R"({"type": "string", "description": "Who lives there"})"},
        {"eggs", R"({"allOf": [{"$ref": "#/definitions/number16"}], "description": "Of an old tree"})"},
        {"branches", R"({"type": "array", "description": "Lengths", "maxItems": 2,
                         "items": {"$ref": "#/definitions/number32"}})"},
        {"leaves",
         R"({"type": "array", "description": "The leaves", "items": {"$ref": "#/definitions/leaf"}})"},
        {"note", R"({"type": "string", "description": "Of an old tree"})"}};
    EXPECT_EQ(schema.at("properties").size(), std::size(properties));
    for (const auto& [key, rule] : properties)
        EXPECT_EQ(schema.at("properties").at(key), json::parse(rule)) << key;
    EXPECT_EQ(schema.at("if"), json::parse(R"({"properties": {"old": {"const": true}}})"));
    EXPECT_EQ(schema.at("then"), json::parse(R"({"required": ["eggs", "note"]})"));
    EXPECT_EQ(schema.at("else"),
              json::parse(R"({"not": {"anyOf": [{"required": ["eggs"]}, {"required": ["note"]}]}})"));
    EXPECT_EQ(schema.at("definitions"), json::parse(R"({
        "number16": {"type": "integer", "minimum": 0, "maximum": 65535},
        "number32": {"type": "integer", "minimum": 0, "maximum": 4294967295},
        "count": {"type": "integer", "minimum": 0},
        "flag": {"anyOf": [{"$ref": "#/definitions/number16"}, {"type": "boolean"}]},
        "leaf": {"type": "object", "description": "A leaf", "required": ["width"],
                 "additionalProperties": false,
                 "properties": {"width": {"allOf": [{"$ref": "#/definitions/number16"}],
                                          "description": "Width in mm"}}}})"));
}

TEST(SchemaText, TellsWordsAndSeveralConditions) {
    const json schema = json::parse(schema_text(description_of<Picture>(), "Pictures"));
    EXPECT_EQ(schema.at("properties").at("colour").at("enum"), json({"red", "green", "blue"}));
    EXPECT_EQ(schema.at("properties").at("signed").at("const"), true);
    EXPECT_EQ(schema.at("properties").at("price").at("anyOf"),
              json::parse(R"([{"$ref": "#/definitions/count"}, {"type": "null"}])"));
    EXPECT_EQ(schema.at("properties").at("others").at("minItems"), 2);
    EXPECT_EQ(schema.at("properties").at("others").at("maxItems"), 2);
    EXPECT_EQ(schema.at("dependencies"), json::parse(R"({"price": ["leaf"], "leaf": ["price"]})"));
    EXPECT_EQ(schema.at("allOf"), json::parse(R"([
        {"if": {"properties": {"colour": {"enum": ["green", "blue"]}}}, "then": {"required": ["year", "month"]},
         "else": {"not": {"anyOf": [{"required": ["year"]}, {"required": ["month"]}]}}},
        {"if": {"properties": {"colour": {"const": "red"}}}, "then": {"required": ["reason"]},
         "else": {"not": {"required": ["reason"]}}}])"));
    EXPECT_EQ(schema.count("if"), 0u);
}

TEST(SchemaText, WhatFitsIsOnOneLine) {
    const std::string text = schema_text(description_of<Tree>(), "Trees");
    EXPECT_NE(text.find("\n    \"name\": { \"type\": \"string\", \"description\": \"Name of the tree\", "
                        "\"minLength\": 1 },\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\n    \"branches\": {\n      \"type\": \"array\",\n"), std::string::npos) << text;
    for (std::size_t begin = 0; begin < text.size(); begin = text.find('\n', begin) + 1)
        EXPECT_LE(text.find('\n', begin) - begin, 120u) << text.substr(begin, 130);
}

TEST(SchemaText, TwoRecordsWithOneNameAreAMistake) {
    RecordDescription inner{"leaf", "Another", {}};
    FieldDescription one;
    one.key = "one";
    one.value.kind = ValueKind::record;
    one.value.record = &description_of<Leaf>();
    FieldDescription other = one;
    other.key = "other";
    other.value.record = &inner;
    const RecordDescription document{"document", "", {one, other}};
    EXPECT_THROW(schema_text(document, "t"), std::logic_error);
}

} // namespace
} // namespace zarven::tool::schema_test
