// Rec_TSID: the services of one transport stream in an index of services.
//
// A stream has from one to some tens of services.

#ifndef ZARVEN_REC_TSID_H
#define ZARVEN_REC_TSID_H

#include "tRec_Servicio.h"

namespace zarven {

/// The services of one transport stream in an index of services.
struct RECALCULO_API Rec_TSID {
    /// Transport stream id; equals the key under which the record is stored.
    unsigned short TSID = 0;
    /// The services by the `idService` they had when they were filed, ascending; equal keys keep the order
    /// of insertion.
    tMapaServicios MapRec_Services;
};

} // namespace zarven

#endif
