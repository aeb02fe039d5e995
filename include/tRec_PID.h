// tRec_PID: one elementary-stream PID of a service.
//
// A service has a handful of them. Each belongs to exactly one service, which owns it and destroys it.

#ifndef ZARVEN_TREC_PID_H
#define ZARVEN_TREC_PID_H

#include <string>
#include <utility>

#include "tRec_Version.h"

namespace zarven {

struct tRec_Servicio;

/// One elementary-stream PID of a service.
struct RECALCULO_API tRec_PID {
    /// Identity of the PID record; key in the owning service's `MapaPIDs`. 32-bit signed range.
    long idPSG = 0;
    /// Any value, 0 when it is not used: carried for the caller, nothing in the library reads it.
    unsigned short Reservado1 = 0;
    /// Any value, too.
    unsigned short Reservado2 = 0;
    /// Any value, too.
    unsigned short Reservado3 = 0;
    /// Audio language code of the component (ISO 639, for instance "spa"), UTF-8; empty for a component
    /// without language.
    std::string AudioCode;
    /// Order of the component within its service, the caller's own. Written to the log, else not read.
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

    // The fields by name, one after the other, where a constructor with all of them invites mistakes:
    // pid->conIdPSG(100).conSID(21).conAudioCode("spa"). Each gives the PID back.

    /// Sets `idPSG`.
    tRec_PID& conIdPSG(long valor) { return con(idPSG, valor); }
    /// Sets `AudioCode`.
    tRec_PID& conAudioCode(std::string valor) { return con(AudioCode, std::move(valor)); }
    /// Sets `Orden`.
    tRec_PID& conOrden(unsigned short valor) { return con(Orden, valor); }
    /// Sets `SID`.
    tRec_PID& conSID(unsigned short valor) { return con(SID, valor); }
    /// Sets `Reservado1`.
    tRec_PID& conReservado1(unsigned short valor) { return con(Reservado1, valor); }
    /// Sets `Reservado2`.
    tRec_PID& conReservado2(unsigned short valor) { return con(Reservado2, valor); }
    /// Sets `Reservado3`.
    tRec_PID& conReservado3(unsigned short valor) { return con(Reservado3, valor); }

    /// Writes the PID block to the log (debug), headed by the running number `n`.
    void Print_PID(int n) const;

private:
    template <class T> tRec_PID& con(T& campo, T valor) {
        campo = std::move(valor);
        return *this;
    }
};

} // namespace zarven

#endif
