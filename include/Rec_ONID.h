// Rec_ONID: the transport streams of one original network in an index of services.
//
// Every walk over an index goes in ascending order of ONID, TSID and service key. A head-end receives some
// tens of streams from a few networks.

#ifndef ZARVEN_REC_ONID_H
#define ZARVEN_REC_ONID_H

#include <map>

#include "Rec_TSID.h"

namespace zarven {

/// The transport streams of one original network in an index of services.
struct RECALCULO_API Rec_ONID {
    /// Original network id; equals the key under which the record is stored.
    unsigned short ONID = 0;
    /// The streams by transport stream id, ascending.
    std::map<unsigned short, Rec_TSID> MapRec_TSIDs;
};

/// An index of services by ONID, TSID and service key.
using tMapaONIDs = std::map<unsigned short, Rec_ONID>;

} // namespace zarven

#endif
