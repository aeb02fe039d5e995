// A record with a field of each kind, and some others: what the tests of records write, read and describe.

#ifndef RECALCULO_MADE_RECORDS_H
#define RECALCULO_MADE_RECORDS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "records/fields.h"

namespace zarven::tool {

namespace made_records {

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

struct Painted {
    Colour colour = Colour::red;
};

} // namespace made_records

inline constexpr Word<made_records::Colour> colour_words[] = {{made_records::Colour::red, "red"},
                                                              {made_records::Colour::green, "green"},
                                                              {made_records::Colour::blue, "blue"}};

template <> struct Words<made_records::Colour> : WordTable<made_records::Colour, colour_words> {};

template <> struct Fields<made_records::Leaf> {
    static constexpr const char* name = "leaf";
    static constexpr const char* meaning = "A leaf";
    template <class Visitor, class Record> static void visit(Visitor& visit, Record& leaf) {
        visit.required("width", leaf.width, "Width in mm");
    }
};

template <> struct Fields<made_records::Tree> {
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

template <> struct Fields<made_records::Picture> {
    static constexpr const char* name = "picture";
    static constexpr const char* meaning = "A picture";
    template <class Visitor, class Record> static void visit(Visitor& visit, Record& picture) {
        visit.required("colour", picture.colour, "Its colour");
        visit.if_true("signed", picture.is_signed, "By the painter");
        visit.where(
            if_one_of("colour", picture.colour, made_records::Colour::green, made_records::Colour::blue),
            "year", picture.year, "When");
        visit.where(
            if_one_of("colour", picture.colour, made_records::Colour::green, made_records::Colour::blue),
            "month", picture.year, "When");
        visit.where(if_one_of("colour", picture.colour, made_records::Colour::red), "reason", picture.year,
                    "Why red");
        visit.where(Condition{picture.is_sold, nullptr, {}, "sale"}, "price", count(picture.price),
                    "If sold");
        visit.where(Condition{picture.is_sold, nullptr, {}, "sale"}, "leaf", picture.leaf, "If sold");
        visit.made("painted", picture.year != 0, "The year is known");
        visit.required("others", picture.others, "Two more");
    }
};

template <> struct Fields<made_records::Painted> {
    static constexpr const char* name = "painted";
    static constexpr const char* meaning = "Something painted";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& painted) {
        visit.required("colour", painted.colour, "Its colour");
    }
};

} // namespace zarven::tool

#endif
