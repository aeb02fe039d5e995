// One record with a field of each kind: written, read, described in a schema and in the tables of the manual.

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "failure_message.h"
#include "records/document_failure.h"
#include "records/key_tables.h"
#include "records/read.h"
#include "records/schema.h"
#include "records/write.h"

namespace zarven::tool {
namespace {

enum class Colour { red, green, blue };

struct Leaf {
    std::uint16_t width = 0;
};

struct Tree {
    std::string name;
    std::string nickname;
    std::uint16_t model = 3;
    std::uint32_t height = 0;
    std::int32_t depth = 0;
    std::uint16_t beauty = 0;
    std::size_t rings = 0;
    bool is_old = false;
    std::uint16_t evergreen = 0;
    std::uint32_t weight = 0;
    std::string nest;
    std::uint16_t eggs = 0;
    std::vector<std::uint32_t> branches;
    std::vector<Leaf> leaves;
    std::string note;
};

} // namespace

inline constexpr Word<Colour> colour_words[] = {
    {Colour::red, "red"}, {Colour::green, "green"}, {Colour::blue, "blue"}};

template <> struct Words<Colour> : WordTable<Colour, colour_words> {};

template <> struct Fields<Leaf> {
    static constexpr const char* name = "leaf";
    static constexpr const char* meaning = "A leaf";
    template <class Visitor, class Record> static void visit(Visitor& visit, Record& leaf) {
        visit.required("width", leaf.width, "Width in mm");
    }
};

template <> struct Fields<Tree> {
    static constexpr const char* name = "tree";
    static constexpr const char* meaning = "A `tree`";
    template <class Visitor, class Record> static void visit(Visitor& visit, Record& tree) {
        visit.required("name", filled(tree.name), "Name of the tree");
        visit.optional("nickname", tree.nickname, same_as("name", tree.name), "What it is called");
        visit.optional("model", fixed(tree.model, 3), 3, "Only 3");
        visit.optional("height", tree.height, 7, "Height in m");
        visit.optional("depth", tree.depth, 0, "Depth in m");
        visit.optional("beauty", up_to(tree.beauty, 10), 0, "How nice it is");
        visit.required("rings", count(tree.rings), "One a year", Since::a_later_version);
        visit.optional("old", tree.is_old, false, "It is old");
        visit.flag("evergreen", tree.evergreen, "Like `model`");
        visit.estimated("weight", tree.weight, derived("10 a meter", 10 * tree.height), "Weight in kg");
        visit.unless_empty("nest", tree.nest, "Who lives there");
        visit.where(if_so("old", tree.is_old), "eggs", tree.eggs, "Of an old tree");
        visit.required("branches", limited(tree.branches, 2), "Lengths");
        visit.unless_empty("leaves", tree.leaves, "The leaves");
        visit.where(if_so("old", tree.is_old), "note", tree.note, "Of an old tree", Since::a_later_version);
    }
};

namespace {

/// What is only written.
struct Picture {
    Colour colour = Colour::red;
    bool is_signed = false;
    bool is_sold = false;
    std::uint16_t year = 0;
    std::optional<Leaf> leaf;
    std::optional<std::size_t> price;
    std::array<Colour, 2> others = {Colour::green, Colour::blue};
};

} // namespace

template <> struct Fields<Picture> {
    static constexpr const char* name = "picture";
    static constexpr const char* meaning = "A picture";
    template <class Visitor, class Record> static void visit(Visitor& visit, Record& picture) {
        visit.required("colour", picture.colour, "Its colour");
        visit.if_true("signed", picture.is_signed, "By the painter");
        visit.where(if_one_of("colour", picture.colour, Colour::green, Colour::blue), "year", picture.year,
                    "When");
        visit.where(if_one_of("colour", picture.colour, Colour::green, Colour::blue), "month", picture.year,
                    "When");
        visit.where(if_one_of("colour", picture.colour, Colour::red), "reason", picture.year, "Why red");
        visit.where(Condition{picture.is_sold, nullptr, {}, "sale"}, "price", count(picture.price),
                    "If sold");
        visit.where(Condition{picture.is_sold, nullptr, {}, "sale"}, "leaf", picture.leaf, "If sold");
        visit.made("painted", picture.year != 0, "The year is known");
        visit.required("others", picture.others, "Two more");
    }
};

namespace {

using nlohmann::json;
using nlohmann::ordered_json;

Tree a_tree() {
    Tree tree;
    tree.name = "Oak";
    tree.nickname = "O";
    tree.model = 4;
    tree.height = 4294967295;
    tree.depth = -1;
    tree.beauty = 10;
    tree.rings = 5;
    tree.is_old = true;
    tree.evergreen = 2;
    tree.weight = 9;
    tree.nest = "owl";
    tree.eggs = 6;
    tree.branches = {1, 2};
    tree.leaves = {{8}};
    tree.note = "n";
    return tree;
}

constexpr const char* whole_tree =
    R"({"name":"Oak","nickname":"O","model":4,"height":4294967295,"depth":-1,"beauty":10,"rings":5,"old":true,)"
    R"("evergreen":2,"weight":9,"nest":"owl","eggs":6,"branches":[1,2],"leaves":[{"width":8}],"note":"n"})";

template <UnknownKeys unknown = UnknownKeys::refused> Tree read(const std::string& text) {
    return read_record<Tree, unknown>(Document("f", text));
}

/// A tree with one member changed.
std::string with(const std::string& key, const std::string& value) {
    json tree = json::parse(whole_tree);
    tree[key] = json::parse(value);
    return tree.dump();
}

std::string without(const std::string& key) {
    json tree = json::parse(whole_tree);
    tree.erase(key);
    return tree.dump();
}

std::string complaint(const std::string& text) {
    return failure_message([&] { read(text); });
}

// ---- Writing -------------------------------------------------------------------------------------------

TEST(RecordWriter, WritesAllInTheOrderOfTheFields) {
    EXPECT_EQ(text_on_one_line(a_tree()), whole_tree);
}

TEST(RecordWriter, LeavesOutWhatIsTheDefaultOrHasNoPlace) {
    Tree tree;
    tree.name = tree.nickname = "Oak";
    tree.height = 7;
    tree.weight = 70;
    tree.eggs = 1;
    EXPECT_EQ(text_on_one_line(tree), R"({"name":"Oak","rings":0,"weight":70,"branches":[]})");
}

TEST(RecordWriter, WordsOptionalsAndConditions) {
    Picture picture;
    EXPECT_EQ(text_on_one_line(picture),
              R"({"colour":"red","reason":0,"painted":false,"others":["green","blue"]})");
    picture.colour = Colour::blue;
    picture.is_signed = picture.is_sold = true;
    picture.leaf = Leaf{3};
    EXPECT_EQ(text_on_one_line(picture), R"({"colour":"blue","signed":true,"year":0,"month":0,"price":null,)"
                                         R"("leaf":{"width":3},"painted":false,"others":["green","blue"]})");
}

TEST(RecordWriter, AValueWithoutAWordIsAMistake) {
    EXPECT_THROW(text_on_one_line(static_cast<Colour>(3)), std::logic_error);
}

TEST(RecordWriter, ADocumentIsIndentedAndEndsItsLine) {
    EXPECT_EQ(document_text(Leaf{1}), "{\n  \"width\": 1\n}\n");
}

// ---- Reading -------------------------------------------------------------------------------------------

TEST(RecordReader, WhatIsWrittenComesBack) {
    EXPECT_EQ(text_on_one_line(read(whole_tree)), whole_tree);
}

struct Painted {
    Colour colour = Colour::red;
};

} // namespace

template <> struct Fields<Painted> {
    static constexpr const char* name = "painted";
    static constexpr const char* meaning = "Something painted";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& painted) {
        visit.required("colour", painted.colour, "Its colour");
    }
};

namespace {

TEST(RecordReader, AWordIsOneOfThoseKnown) {
    const auto read = [](const std::string& text) {
        return read_record<Painted, UnknownKeys::refused>(Document("f", text)).colour;
    };
    EXPECT_EQ(read(R"({"colour": "green"})"), Colour::green);
    EXPECT_EQ(failure_message([&] { read(R"({"colour": "grene"})"); }),
              "f: /colour: found \"grene\", expected a known word, such as \"green\"");
    EXPECT_EQ(failure_message([&] { read(R"({"colour": 1})"); }), "f: /colour: found 1, expected text");
}

TEST(RecordReader, WhatIsAbsentHasItsDefault) {
    const Tree tree = read(R"({"name": "Oak", "branches": []})");
    EXPECT_EQ(tree.nickname, "Oak");
    EXPECT_EQ(tree.model, 3);
    EXPECT_EQ(tree.height, 7u);
    EXPECT_EQ(tree.weight, 70u);
    EXPECT_FALSE(tree.is_old);
    EXPECT_EQ(tree.nest, "");
    EXPECT_TRUE(tree.leaves.empty());
}

TEST(RecordReader, AFlagIsANumberOrATruth) {
    EXPECT_EQ(read(with("evergreen", "true")).evergreen, 1);
    EXPECT_EQ(read(with("evergreen", "false")).evergreen, 0);
    EXPECT_EQ(read(with("evergreen", "65535")).evergreen, 65535);
    EXPECT_EQ(complaint(with("evergreen", "65536")),
              "f: /evergreen: found 65536, expected true, false or a whole number from 0 to 65535");
}

TEST(RecordReader, AWrongValueIsToldWithItsPlace) {
    const std::pair<std::string, std::string> cases[] = {
        {with("name", "1"), "/name: found 1, expected text"},
        {with("model", "-1"), "/model: found -1, expected a whole number from 0 to 65535"},
        {with("height", "4294967296"),
         "/height: found 4294967296, expected a whole number from 0 to 4294967295"},
        {with("depth", "-2147483649"),
         "/depth: found -2147483649, expected a whole number from -2147483648 to 2147483647"},
        {with("beauty", "11"), "/beauty: found 11, expected a whole number from 0 to 10"},
        {with("rings", "0.5"), "/rings: found 0.5, expected a whole number from 0 to 4294967295"},
        {with("old", "1"), "/old: found 1, expected true or false"},
        {with("nest", "null"), "/nest: found null, expected text"},
        {with("branches", "[1, 2, 3]"), "/branches: found a list of 3 entries, expected a list of at most 2"},
        {with("branches", R"([1, "a"])"),
         "/branches/1: found \"a\", expected a whole number from 0 to 4294967295"},
        {with("leaves", "3"), "/leaves: found 3, expected a list"},
        {with("leaves", R"([{"width": "a"}])"),
         "/leaves/0/width: found \"a\", expected a whole number from 0 to 65535"},
        {with("leaves", "[3]"), "/leaves/0: found 3, expected an object"},
        {"[]", "top level: found a list of 0 entries, expected an object"}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(complaint(text), "f: " + expected);
}

TEST(RecordReader, WhatIsRequiredIsMissed) {
    EXPECT_EQ(complaint(without("name")), "f: top level: found no \"name\", expected text");
    EXPECT_EQ(complaint(without("branches")), "f: top level: found no \"branches\", expected a list");
    EXPECT_EQ(complaint(with("leaves", "[{}]")),
              "f: /leaves/0: found no \"width\", expected a whole number from 0 to 65535");
}

TEST(RecordReader, WhatCameInALaterVersionIsNot) {
    EXPECT_EQ(read(without("rings")).rings, 0u);
    EXPECT_EQ(read(without("note")).note, "");
}

TEST(RecordReader, WhatHasAConditionIsReadWhereThatHolds) {
    EXPECT_EQ(complaint(without("eggs")),
              "f: top level: found no \"eggs\", expected a whole number from 0 to 65535");
    EXPECT_EQ(read(without("old")).eggs, 0);
    // In a later version's field the value counts, where it stands.
    EXPECT_EQ(read(without("old")).note, "n");
}

TEST(RecordReader, UnknownKeysAreRefusedOrPassedOver) {
    const std::string text = with("branch", "1");
    EXPECT_EQ(complaint(text),
              "f: top level: found the unknown key \"branch\", expected a known one, such as \"branches\"");
    EXPECT_EQ(text_on_one_line(read<UnknownKeys::passed_over>(text)), whole_tree);
    EXPECT_EQ(failure_message([] { read<UnknownKeys::passed_over>("3"); }),
              "f: top level: found 3, expected an object");
}

TEST(RecordReader, AFailureHasItsPlaceAsData) {
    try {
        read(with("leaves", R"([{"width": "a"}])"));
        FAIL();
    } catch (const DocumentFailure& failure) {
        EXPECT_EQ(failure.misfit.file, "f");
        EXPECT_EQ(failure.misfit.place, "/leaves/0/width");
        EXPECT_EQ(failure.misfit.found, "\"a\"");
        EXPECT_EQ(failure.misfit.expected, "a whole number from 0 to 65535");
    }
}

TEST(DocumentFailure, IsWithinAPlaceAndWhatHoldsIt) {
    const Misfit misfit{"f", "/leaves/10/width", "", ""};
    for (const char* place : {"/leaves", "/leaves/10", "/leaves/10/width"})
        EXPECT_TRUE(misfit.is_within(place)) << place;
    for (const char* place : {"/leaves/1", "/leaves/10/widths", "/branches", "/leaves/10/width/0"})
        EXPECT_FALSE(misfit.is_within(place)) << place;
    EXPECT_FALSE((Misfit{"f", "", "", ""}).is_within("/leaves"));
}

TEST(DocumentFailure, ThePrefixStandsBeforeTheMessage) {
    EXPECT_STREQ(DocumentFailure({"f", "/a", "b", "c"}, "p: ").what(), "p: f: /a: found b, expected c");
}

// ---- The schema ----------------------------------------------------------------------------------------

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

// ---- The manual ----------------------------------------------------------------------------------------

TEST(KeyTable, TellsDefaultsAndRanges) {
    EXPECT_EQ(key_table(description_of<Tree>()), R"(| key | default | meaning |
|---|---|---|
| `name` | required | name of the tree |
| `nickname` | `name` | what it is called |
| `model` | 3 | only 3 |
| `height` | 7 | height in m, 0 to 4294967295 |
| `depth` | 0 | depth in m, -2147483648 to 2147483647 |
| `beauty` | 0 | how nice it is, 0 to 10 |
| `rings` | required | one a year |
| `old` | false | it is old |
| `evergreen` | 0 | like `model` |
| `weight` | 10 a meter | weight in kg, 0 to 4294967295 |
| `nest` | empty | who lives there |
| `eggs` | empty | of an old tree |
| `branches` | required | list: lengths, 0 to 4294967295 |
| `leaves` | empty | the leaves |
| `note` | empty | of an old tree |
)");
}

TEST(KeyTable, OfOthersHasWhatTheKnownRecordDoesNotTellAlike) {
    RecordDescription known = description_of<Tree>();
    known.fields.erase(known.fields.begin());
    known.fields.front().fallback_words = "nest";
    EXPECT_EQ(key_table_of_others(description_of<Tree>(), known), R"(| key | default | meaning |
|---|---|---|
| `name` | required | name of the tree |
| `nickname` | `name` | what it is called |
)");
}

TEST(MemberTables, TellTheDocumentAndTheRecordsWithin) {
    EXPECT_EQ(member_tables(description_of<Picture>()), R"(| member | value | meaning |
|---|---|---|
| `colour` | `red`, `green`, `blue` | its colour |
| `signed` | true | by the painter |
| `year`, `month` | number | when |
| `reason` | number | why red |
| `price` | number or null | if sold |
| `leaf` | **leaf** or null | if sold |
| `painted` | true or false | the year is known |
| `others` | list of `red`, `green`, `blue` | two more |

**leaf**: a leaf.

| member | value | meaning |
|---|---|---|
| `width` | number | width in mm |
)");
}

} // namespace
} // namespace zarven::tool
