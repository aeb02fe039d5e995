// What somebody wishes for, as plain values, whatever the form of the file: services in the order of their
// priority. Lists have from a dozen to some thousand wishes.

#ifndef RECALCULO_WISH_LIST_H
#define RECALCULO_WISH_LIST_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zarven::tool {

enum class WishFormat { bouquet, csv, names };

const char* to_string(WishFormat format);

/// What a service is known by where it is received.
struct WishedIds {
    /// Not every list tells it.
    std::optional<std::uint16_t> onid;
    std::uint16_t tsid = 0;
    std::uint16_t sid = 0;
    /// As "19.2E"; empty where the list does not tell.
    std::string satellite;
};

struct Wish {
    /// Lines count from 1.
    std::size_t line = 0;
    std::optional<WishedIds> ids;
    std::string name;
    std::optional<std::uint16_t> lcn;
    /// In its list, from 1, as receivers number a list without LCNs.
    std::size_t place = 0;
    std::optional<std::uint16_t> value;
    std::optional<bool> must;
    std::string output_name;
    std::string group;
    std::string one_of;
};

struct WishList {
    std::string file;
    WishFormat format = WishFormat::names;
    std::vector<Wish> wishes;
    /// Why lines could not be taken, each with the file and the line.
    std::vector<std::string> unreadable;
    /// What is no wish for a service of a head-end, by kind.
    std::map<std::string, std::size_t> skipped;
    /// Places that the list numbers, those of what is skipped or unreadable among them.
    std::size_t places = 0;
};

/// Reads a list of the form that the text shows; `file` is for messages. Throws `Failure` where nothing in it
/// is a wish.
WishList read_wish_list(const std::string& file, std::string_view text);

/// The readers of each form. They give what they find, and be it nothing.
WishList read_bouquet(const std::string& file, std::string_view text);
WishList read_wish_table(const std::string& file, std::string_view text);
WishList read_wished_names(const std::string& file, std::string_view text);

bool is_bouquet(std::string_view text);
/// The first line that has something on it is the heading of such a table.
bool is_wish_table(std::string_view text);

/// What a heading of such a table may have.
inline constexpr const char* wish_columns = "onid,tsid,sid,lcn,name,value,must,output_name,group,one_of";

/// A line of a list of names with the heading above it; nothing for a blank line, a remark and a heading.
struct NamedLine {
    std::size_t number = 0;
    std::string text;
    std::string heading;
};

/// A name or an LCN a line. `[Sport]` is a heading; lines that begin with # are remarks.
std::vector<NamedLine> named_lines_of(std::string_view text);

} // namespace zarven::tool

#endif
