// The fields of remedies, in explanations.

#ifndef RECALCULO_REMEDY_FIELDS_H
#define RECALCULO_REMEDY_FIELDS_H

#include "placement/remedy/remedy.h"
#include "placement/result_fields.h"

namespace zarven::tool {

inline constexpr Word<RemedyKind> remedy_kind_words[] = {{RemedyKind::raised_limit, "raised_limit"},
                                                         {RemedyKind::withheld_service, "withheld_service"},
                                                         {RemedyKind::further_module, "further_module"}};

template <> struct Words<RemedyKind> : WordTable<RemedyKind, remedy_kind_words> {};

/// Not the one that is explained.
struct OtherService {
    ServiceResult service;
};

template <> struct Fields<OtherService> {
    static constexpr const char* name = "other_service";
    static constexpr const char* meaning = "Another service";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& other) {
        visit_identity_of(visit, other.service);
    }
};

template <> struct Fields<Remedy> {
    static constexpr const char* name = "remedy";
    static constexpr const char* meaning =
        "A change with which the engine places the service and breaks no limit";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& remedy) {
        visit.required("kind", remedy.kind, "What is changed");
        visit.where(if_one_of("kind", remedy.kind, RemedyKind::raised_limit), "raise", remedy.raise,
                    "The limit");
        visit.where(if_one_of("kind", remedy.kind, RemedyKind::withheld_service), "withheld",
                    OtherService{remedy.withheld}, "The service that is not asked for");
        visit.where(if_one_of("kind", remedy.kind, RemedyKind::further_module), "like", remedy.like,
                    "MAC of the module that the further one is like");
        visit.unless_empty("label", remedy.label, "Label of that module, if the head-end tells");
        visit.unless_empty("set", remedy.setting, "The change as `--set` takes it, where it can");
        visit.required("placed", count(remedy.placed), "Services then placed");
        visit.required("lost", told_as<OtherService>(remedy.lost), "Placed now and not any more");
    }
};

template <> struct Fields<Remedies> {
    static constexpr const char* name = "remedies";
    static constexpr const char* meaning = "What would place a service";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& remedies) {
        visit.required("tried", count(remedies.tried), "Changes that were run");
        visit.required(
            "found", remedies.found,
            "Of each kind, the smallest kind first, the smallest, and if that costs other services the smallest that "
            "does not");
    }
};

} // namespace zarven::tool

#endif
