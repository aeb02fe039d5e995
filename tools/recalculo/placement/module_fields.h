// What names a module in every document.

#ifndef RECALCULO_MODULE_FIELDS_H
#define RECALCULO_MODULE_FIELDS_H

namespace zarven::tool {

inline constexpr const char* meaning_of_label = "Where it stands or what it is called, if the head-end tells";

template <class Visitor, class Record> void visit_mac(Visitor& visit, Record& record) {
    visit.required("mac", record.mac, "Identity of the module");
}

} // namespace zarven::tool

#endif
