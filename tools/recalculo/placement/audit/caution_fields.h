// The fields of a caution, in several documents.

#ifndef RECALCULO_CAUTION_FIELDS_H
#define RECALCULO_CAUTION_FIELDS_H

#include "placement/audit/caution.h"
#include "records/fields.h"

namespace zarven::tool {

inline constexpr Word<CautionKind> caution_words[] = {{CautionKind::no_room_for_tables, "no_room_for_tables"},
                                                      {CautionKind::lcn_on_output, "lcn_on_output"},
                                                      {CautionKind::name_on_output, "name_on_output"},
                                                      {CautionKind::sid_in_network, "sid_in_network"},
                                                      {CautionKind::lcn_in_network, "lcn_in_network"},
                                                      {CautionKind::name_in_network, "name_in_network"}};

template <> struct Words<CautionKind> : WordTable<CautionKind, caution_words> {};

template <> struct Fields<Caution> {
    static constexpr const char* name = "caution";
    static constexpr const char* meaning = "What a placement that works will be asked about on the air";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& caution) {
        visit.required("kind", caution.kind, "What it is");
        visit.required("subject", caution.subject, "The module, number or name that it is about");
        visit.required("problem", caution.problem, "What there is to say of it");
        visit.required("modules", caution.macs, "MACs of the modules that the problem names");
    }
};

/// They follow from the placement, so that nobody reads them.
template <class Visitor> void visit_cautions(Visitor& visit, const std::vector<Caution>& cautions) {
    visit.made(
        "cautions", cautions,
        "Outputs without room for tables, and numbers and names that stand twice; nothing of it is broken");
}

} // namespace zarven::tool

#endif
