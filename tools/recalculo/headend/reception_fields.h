// The fields of where a stream is received: a head-end tells them, and so does its result.

#ifndef RECALCULO_RECEPTION_FIELDS_H
#define RECALCULO_RECEPTION_FIELDS_H

#include "headend/headend.h"
#include "records/fields.h"

namespace zarven::tool {

template <> struct Fields<Reception> {
    static constexpr const char* name = "reception";
    static constexpr const char* meaning = "Where a stream is received";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& reception) {
        visit.required("onid", reception.onid, "Original network id");
        visit.required("tsid", reception.tsid, "Transport stream id");
        visit.optional("frequency", reception.frequency, 0, "In kHz; 0: not known");
        visit.optional("polarization", reception.polarization, "", "H, V, L or R on a satellite");
        visit.optional("satellite", reception.satellite, "",
                       "Its place in orbit, as \"19.2E\", or any other name");
    }
};

} // namespace zarven::tool

#endif
