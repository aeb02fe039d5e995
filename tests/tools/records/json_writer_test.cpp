// Documents as text, against the library that reads them: what is told comes back, laid out as the library
// does it.

#include "records/json_writer.h"

#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "records/write.h"

namespace zarven::tool {

namespace json_writer_test {

struct Twig {
    int length = 0;
    std::vector<int> buds;
};

struct Bush {
    std::string name;
    std::vector<Twig> twigs;
    std::vector<Twig> fallen;
};

} // namespace json_writer_test

template <> struct Fields<json_writer_test::Twig> {
    static constexpr const char* name = "twig";
    static constexpr const char* meaning = "A twig";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& twig) {
        visit.optional("length", twig.length, 0, "Length");
        visit.unless_empty("buds", twig.buds, "Buds");
    }
};

template <> struct Fields<json_writer_test::Bush> {
    static constexpr const char* name = "bush";
    static constexpr const char* meaning = "A bush";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& bush) {
        visit.required("name", bush.name, "Name");
        visit.required("twigs", bush.twigs, "Twigs");
        visit.required("fallen", bush.fallen, "Twigs that fell");
    }
};

namespace json_writer_test {
namespace {

using nlohmann::ordered_json;

const Bush bush{"a\nb", {{-3, {1, 2}}, {}}, {}};
const std::string on_one_line = R"({"name":"a\nb","twigs":[{"length":-3,"buds":[1,2]},{}],"fallen":[]})";

std::string written(const std::string& text) {
    return text_on_one_line(text);
}

TEST(JsonWriter, OnOneLineOrOnLinesAsTheLibraryHasIt) {
    EXPECT_EQ(text_on_one_line(bush), on_one_line);
    EXPECT_EQ(text_on_one_line(bush), ordered_json::parse(on_one_line).dump());
    EXPECT_EQ(document_text(bush), ordered_json::parse(on_one_line).dump(2) + "\n");
    EXPECT_EQ(json_text(std::vector<int>(), {}), "[]");
    EXPECT_EQ(json_text(Twig(), {}), "{}");
}

TEST(JsonWriter, LevelsOnLinesAndTheRestOnOne) {
    EXPECT_EQ(json_text(bush, {0}),
              R"({ "name": "a\nb", "twigs": [{ "length": -3, "buds": [1, 2] }, {}], "fallen": [] })");
    EXPECT_EQ(json_text(bush, {1}),
              "{\n  \"name\": \"a\\nb\",\n  \"twigs\": [{ \"length\": -3, \"buds\": [1, 2] }, {}],\n"
              "  \"fallen\": []\n}");
    EXPECT_EQ(json_text(bush, {2}), "{\n  \"name\": \"a\\nb\",\n  \"twigs\": [\n"
                                    "    { \"length\": -3, \"buds\": [1, 2] },\n    {}\n"
                                    "  ],\n  \"fallen\": []\n}");
}

TEST(JsonWriter, TextsComeBackAsTheyWere) {
    std::string all;
    for (char byte = 1; byte != 0x7F; ++byte)
        all += byte;
    for (const std::string& text :
         {all, std::string("\x00z", 2), std::string("\u00C1\u0416\u4E2D\U0001F600"), std::string()}) {
        EXPECT_EQ(ordered_json::parse(written(text)).get<std::string>(), text);
        EXPECT_EQ(written(text), ordered_json(text).dump());
    }
}

TEST(JsonWriter, WhatATerminalWouldObeyIsEscaped) {
    EXPECT_EQ(written("a\x7F~"), R"("a\u007f~")");
    EXPECT_EQ(written("\u0080\u009F\u00A0"), "\"\\u0080\\u009f\u00A0\"");
    EXPECT_EQ(written("\u2027\u2028\u202E\u202F"), "\"\u2027\\u2028\\u202e\u202F\"");
    EXPECT_EQ(written("\u2065\u2066\u2069\u206A"), "\"\u2065\\u2066\\u2069\u206A\"");
    // Cut short, as no document has it: nothing is read beyond the end.
    EXPECT_EQ(written("\xE2\x80"), "\"\xE2\x80\"");
    EXPECT_EQ(written("\xC2"), "\"\xC2\"");
}

TEST(JsonWriter, AnOpenedListIsLaidOutAsTheWholeDocument) {
    const OpenedList list = opened_at("twigs", Bush{bush.name, {}, bush.twigs});
    const std::string whole = document_text(Bush{bush.name, bush.twigs, bush.twigs});
    EXPECT_EQ(list.begin + entry_of_opened(bush.twigs[0]) + "," + entry_of_opened(bush.twigs[1]) + list.end,
              whole);
    EXPECT_EQ(opened_at("fallen", bush).end, "\n  ]\n}\n");
}

TEST(JsonWriter, AListThatIsNotThereIsNotOpened) {
    EXPECT_THROW(opened_at("leaves", bush), std::logic_error);
}

} // namespace
} // namespace json_writer_test
} // namespace zarven::tool
