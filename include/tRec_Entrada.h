// tRec_Entrada: one input of a module, tuned to one transport stream.
//
// A module has a few inputs, each with up to some tens of services. The services stand in a multimap by
// key: equal keys are allowed (clones share their parent's) and keep the order of insertion.

#ifndef ZARVEN_TREC_ENTRADA_H
#define ZARVEN_TREC_ENTRADA_H

#include <map>
#include <memory>

#include "tRec_Servicio.h"

namespace zarven {

struct tRec_Modulo;

/// One input of a module, tuned to one transport stream.
struct RECALCULO_API tRec_Entrada {
    /// Result of `DeleteServicioALaEntrada`: no entry with the service's key on this input.
    static constexpr int ERROR_SERVICIO_NO_ESTA = -400;

    /// Number of the input within its module, from 1; its key in `tRec_Modulo::mapEntradas`.
    unsigned short NumEntrada;
    /// Original network id of the stream the input is tuned to; 0 while untuned.
    unsigned short ONID = 0;
    /// Transport stream id; 0 while untuned.
    unsigned short TSID = 0;
    /// The module that configured the input. Does not own; copies of the module keep naming the original.
    tRec_Modulo* pModulo = nullptr;
    /// The services on this input, by service key, ascending.
    tMapaServicios MapaServicios;

    /// An untuned, empty input.
    explicit tRec_Entrada(unsigned short NumEntrada);

    /// Tunes the input. Mind the order: the transport stream id comes first.
    /// @return 1.
    int confEntrada(unsigned short TSID, unsigned short ONID);

    /// Satellite the input receives, as told by its service with the smallest key.
    /// @return its `SatId`; 0 for an input without services.
    unsigned short getSatIdfromService() const;

    /// Files the service under its `idService` and points its `pEntrada` here. No limit is checked.
    /// @return 1; 0 for a null pointer (nothing is done).
    int addServicioALaEntrada(std::shared_ptr<tRec_Servicio> s);

    /// Removes every entry with the service's key, whichever service it holds, and clears the service's
    /// `pSalida` (its `pEntrada` stays).
    /// @return 1; `ERROR_SERVICIO_NO_ESTA` (nothing changed); 0 for a null pointer (nothing is done).
    int DeleteServicioALaEntrada(std::shared_ptr<tRec_Servicio> s);

    /// Writes the short frame of the input to the log (debug).
    void Print_Info_Entrada() const;
    /// Writes the frame of the input and its services to the log (debug).
    void Print_Entrada() const;
    /// Writes the input's services to the log (debug), numbered from 1.
    void Print_MapaServicios() const;
};

/// Inputs by number, ascending.
using tMapaEntradas = std::map<unsigned short, tRec_Entrada>;

} // namespace zarven

#endif
