// The fields of a bound. docs/bound.schema.json and the tables in docs/tool.md have what stands here.

#ifndef RECALCULO_BOUND_FIELDS_H
#define RECALCULO_BOUND_FIELDS_H

#include <array>
#include <string>
#include <vector>

#include "placement/bound.h"
#include "placement/result_fields.h"

namespace zarven::tool {

struct ToldLimit {
    const BoundKind* kind = &bound_kinds[0];
    BoundLimit limit;
};

template <> struct Words<const BoundKind*> {
    static constexpr const char* name = "";
    static std::vector<std::string> all() {
        std::vector<std::string> words;
        for (const BoundKind& kind : bound_kinds)
            words.emplace_back(kind.key);
        return words;
    }
    static const char* of(const BoundKind* kind) { return kind->key; }
};

template <> struct Fields<ToldLimit> {
    static constexpr const char* name = "limit";
    static constexpr const char* meaning = "One kind of limit, when all others are forgotten";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& told) {
        visit.required("limit", told.kind, "Kind of limit; bitrate in kbit/s, places are those on outputs");
        visit.required("capacity", count(told.limit.capacity), "Usable in all modules");
        visit.required("wanted", count(told.limit.wanted),
                       "Wanted by all services that some module could take");
        visit.required("allows", count(told.limit.allows), "Services, at most");
    }
};

/// A bound beside what the engine placed.
struct ToldBound {
    std::string name;
    Bound bound;
    Counts counts;
    std::vector<Finding> findings;
};

inline std::array<ToldLimit, std::size(bound_kinds)> limits_of(const Bound& bound) {
    std::array<ToldLimit, std::size(bound_kinds)> limits;
    for (std::size_t index = 0; index < limits.size(); ++index)
        limits[index] = {&bound_kinds[index], bound.*bound_kinds[index].member};
    return limits;
}

template <> struct Fields<ToldBound> {
    static constexpr const char* name = "bound";
    static constexpr const char* meaning =
        "How many services any arrangement could place, beside what became of them in the engine";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& told) {
        visit_name(visit, told.name);
        visit_loaded(visit, told.bound);
        visit_outcome(visit, told.counts);
        visit_not_asked_for(visit, told.counts);
        visit.required("bound", count(told.bound.most), "No arrangement places more");
        visit.required("limits", limits_of(told.bound), "What each limit alone allows");
        visit.required("impossible", told_as<ServiceWithReason>(told.bound.impossible),
                       "What no module can take");
        visit_findings(visit, told.findings);
    }
};

} // namespace zarven::tool

#endif
