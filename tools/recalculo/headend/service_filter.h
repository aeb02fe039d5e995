// Which services of a head-end are wanted: by what they are, by stream, by LCN, by name, or by a list of
// names and LCNs. Commands read it from their options and ask it for each service.

#ifndef RECALCULO_SERVICE_FILTER_H
#define RECALCULO_SERVICE_FILTER_H

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "headend/headend.h"

namespace zarven::tool {

/// What each of a list of terms may be, for people.
inline constexpr const char* meaning_of_terms =
    "one of: tv, radio, hd, sd, scrambled, free, unknown, a stream as 1/1002, LCNs as 12 or 100-199, "
    "name=PATTERN, group=PATTERN; with commas between them";

/// Terms with commas between them, of which one must hold: `tv`, `radio`, `hd`, `sd`, `scrambled`, `free`,
/// `unknown`, a stream `1/1002`, an LCN `12` or several `100-199`, a name `name=*Sport*` with * for anything
/// and ? for one character, whatever the case of the letters A to Z, and a group `group=Sport` likewise.
class ServiceTerms {
public:
    /// Throws `Failure`; `option` is for messages.
    ServiceTerms(const std::string& option, std::string_view text);

    bool hold_for(const Service& service) const;

private:
    using Term = std::function<bool(const Service&)>;

    static Term term_of(const std::string& option, std::string_view text);

    std::vector<Term> terms_;
};

/// A list of names and LCNs, whatever the case of the letters A to Z. Some thousand lines.
class ServiceSelection {
public:
    struct Line {
        std::size_t number = 0;
        std::string text;
    };

    explicit ServiceSelection(std::vector<Line> lines) : lines_(std::move(lines)) {}

    bool has(const Service& service) const;

    /// The lines that name none of the services.
    std::vector<Line> without_service(const std::vector<Service>& services) const;

private:
    static bool names(const Line& line, const Service& service);

    std::vector<Line> lines_;
};

/// All that the options ask for.
struct ServiceFilter {
    /// All must hold.
    std::vector<ServiceTerms> only;
    /// None may hold.
    std::vector<ServiceTerms> exclude;
    /// Each service must stand in one; empty for no such wish.
    std::vector<ServiceSelection> selections;

    bool wants(const Service& service) const;
    bool wants_all() const { return only.empty() && exclude.empty() && selections.empty(); }
};

} // namespace zarven::tool

#endif
