// tRec_PID: one elementary-stream PID of a service.
//
// A service has a handful of them. Each belongs to exactly one service, which owns it and destroys it.

#ifndef ZARVEN_TREC_PID_H
#define ZARVEN_TREC_PID_H

#include <string>

#include "tRec_Version.h"

namespace zarven {

struct tRec_Servicio;

/// One elementary-stream PID of a service.
struct RECALCULO_API tRec_PID {
    /// Identity of the PID record; key in the owning service's `MapaPIDs`. 32-bit signed range.
    long idPSG = 0;
    /// Carried for the caller; nothing in the library reads it.
    unsigned short Reservado1 = 0;
    /// Carried for the caller, too.
    unsigned short Reservado2 = 0;
    /// Carried for the caller, too.
    unsigned short Reservado3 = 0;
    /// Audio language code of the component, UTF-8; empty for a component without language.
    std::string AudioCode;
    /// Order of the component within its service.
    unsigned short Orden = 0;
    /// `SID` of the service the PID belongs to; `tRecalculo::addRec_PID` finds the service by it.
    unsigned short SID = 0;
    /// The owning service; null until `tRec_Servicio::addPID_AlServicio`. Does not own.
    tRec_Servicio* pServicio = nullptr;

    /// All numbers 0, no language, no owner.
    tRec_PID() = default;
    /// Fields in the order of the arguments; no owner yet.
    tRec_PID(long idPSG, unsigned short Reservado1, unsigned short Reservado2, unsigned short Reservado3,
             std::string AudioCode, unsigned short Orden, unsigned short SID);

    /// Writes the PID block to the log (debug), headed by the running number `n`.
    void Print_PID(int n) const;
};

} // namespace zarven

#endif
