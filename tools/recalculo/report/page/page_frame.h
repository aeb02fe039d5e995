// What the pages for a browser share: the frame with summary, links and search, and how figures and services
// are shown in it. Each page fills the frame with a template and facts of its own.

#ifndef RECALCULO_PAGE_FRAME_H
#define RECALCULO_PAGE_FRAME_H

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <kainjow/mustache.hpp>

#include "placement/audit/caution.h"
#include "placement/result.h"

namespace zarven::tool {

/// What stands around the content.
struct PageFrame {
    std::string title;
    /// Of the link for those who go by keyboard.
    std::string skip;
    std::string eyebrow;
    /// The heading: names, with an arrow between two.
    std::vector<std::string> names;
    std::string verdict;
    bool is_good = false;
    /// A sentence below the verdict; empty for none.
    std::string remark{};
    kainjow::mustache::list tiles{};
    kainjow::mustache::list sections{};
    /// Stand before the content.
    kainjow::mustache::list audits{};
    /// Stand behind the content.
    kainjow::mustache::list notes{};
    std::string footer;
};

/// The whole page, in UTF-8: the frame around a template that is filled with facts. The names of the frame
/// are not for the facts.
std::string framed(const PageFrame& frame, const char* content, kainjow::mustache::data facts);

/// A figure of the summary; `share` is of 100, or `false`.
kainjow::mustache::data tile(const std::string& label, const std::string& figure, const std::string& note,
                             kainjow::mustache::data share);

/// A link to a section; `number` is of its entries, or `false`.
kainjow::mustache::data section_link(const char* anchor, const char* title, kainjow::mustache::data number);

/// Adds a section of what is broken, before the content, or of what is only counted, behind it, and a link
/// to it; nothing without findings. `anchors` leads from the names of modules in a finding to theirs.
using Anchors = std::map<std::string, std::string>;
void add_broken(PageFrame& frame, const char* anchor, const char* title, const std::vector<Finding>& findings,
                const Anchors& anchors = {});
void add_notes(PageFrame& frame, const char* anchor, const char* title, const std::vector<Finding>& findings,
               const Anchors& anchors = {});

/// Adds a section of cautions, behind the content, and a link to it: a few of each kind, the others folded.
void add_cautions(PageFrame& frame, const char* anchor, const char* title,
                  const std::vector<Caution>& cautions, const Anchors& anchors = {});

/// Adds a link to a section that has entries.
void link_section(kainjow::mustache::list& sections, const char* anchor, const char* title,
                  std::size_t number);

/// What stands above a list or table of its own.
struct Heading {
    const char* anchor;
    const char* title;
    std::string explanation;
};

/// Adds a list or table, with the number of its entries under its heading, and a link to it; nothing without
/// entries.
void add_listing(kainjow::mustache::list& listings, kainjow::mustache::list& sections, const Heading& heading,
                 std::size_t number, kainjow::mustache::data listing);

/// With commas between the thousands.
std::string grouped(std::uint64_t number);

std::string counted(std::uint64_t number, std::string_view one, std::string_view many);

/// How much of the most is used, of 100 and never more.
double share(std::uint64_t used, std::uint64_t max);
std::string share_text(std::uint64_t used, std::uint64_t max);

/// Not bounded by 100 %, unlike a share: what does not add up is to be seen.
std::string percentage(std::uint64_t used, std::uint64_t max);

kainjow::mustache::data text_or_nothing(const std::string& text);

/// What sets a service apart from a free SD programme.
kainjow::mustache::list tags_of(const ServiceResult& service);

} // namespace zarven::tool

#endif
