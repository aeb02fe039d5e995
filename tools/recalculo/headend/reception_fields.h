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
        visit.optional("symbol_rate", reception.symbol_rate, 0,
                       "In symbols a second; 0: not known, or there are none");
        visit.optional("net_rate", reception.net_rate, 0,
                       "What its transponder carries in kbit/s, after error correction; 0: not known");
        visit.optional("delivery", reception.delivery, "", "Its system, as \"DVB-S2\"");
    }
};

} // namespace zarven::tool

#endif
