// One record with a field of each kind, written and read.

#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "failure_message.h"
#include "records/document_failure.h"
#include "records/made_records.h"
#include "records/read.h"
#include "records/write.h"

namespace zarven::tool::fields_test {
namespace {

using made_records::Colour;
using made_records::Leaf;
using made_records::Painted;
using made_records::Picture;
using made_records::Tree;
using nlohmann::json;

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

} // namespace
} // namespace zarven::tool::fields_test
