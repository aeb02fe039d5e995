// tRec_Salida: one logical output of a module, with a bitrate ceiling and a service count ceiling.
//
// A module has a few outputs, each with at most some hundreds of services, by key as on the inputs. The two
// counters are what the placement rules read; the operations here keep `BitRateActual` only.

#ifndef ZARVEN_TREC_SALIDA_H
#define ZARVEN_TREC_SALIDA_H

#include <cstdint>
#include <map>
#include <memory>

#include "tRec_Servicio.h"

namespace zarven {

struct tRec_Modulo;

/// One logical output of a module, with a bitrate ceiling and a service count ceiling.
struct RECALCULO_API tRec_Salida {
    /// Result of `DeleteServicioALaSalida`: no entry with the service's key on this output.
    static constexpr int ERROR_SERVICIO_NO_ESTA = -300;

    /// Number of the output within its module, from 1; its key in `tRec_Modulo::mapSalidas` (widened).
    unsigned short NumSalida;
    /// Sum of `peakBitRate` of the services added, in kbit/s, modulo 2^32.
    std::uint32_t BitRateActual = 0;
    /// Bitrate ceiling in kbit/s; the load stays below it and never reaches it. 0, until configured: the
    /// output takes no ordinary service.
    std::uint32_t BitRateMax = 0;
    /// The most services the output may carry; with 0 it takes none. (Clones are not counted.)
    std::uint32_t NumServiciosMax;
    /// Services counted against `NumServiciosMax`; kept by the engine's placement rules, not by the add and
    /// delete operations here.
    std::uint32_t NumServicios = 0;
    /// The module that configured the output. Does not own; copies of the module keep naming the original.
    tRec_Modulo* pModulo = nullptr;
    /// The services on this output, by service key, ascending.
    tMapaServicios MapaServicios;

    /// An empty output without bitrate.
    tRec_Salida(unsigned short NumSalida, unsigned short NumServiciosMax);

    /// Sets the bitrate ceiling in kbit/s, narrowed to 32 bits; the present load is not checked against it.
    /// @return 1.
    int confSalida(unsigned long BitRateMax);

    /// Files the service under its `idService`, points its `pSalida` here and adds its `peakBitRate`. No
    /// limit is checked, `NumServicios` stays.
    /// @return 1; 0 for a null pointer (nothing is done).
    int addServicioALaSalida(std::shared_ptr<tRec_Servicio> s);

    /// Removes every entry with the service's key, whichever service it holds, clears the service's
    /// `pSalida` and subtracts its `peakBitRate` once. `NumServicios` stays.
    /// @return 1; `ERROR_SERVICIO_NO_ESTA` (nothing changed); 0 for a null pointer (nothing is done).
    int DeleteServicioALaSalida(std::shared_ptr<tRec_Servicio> s);

    /// Writes the short frame of the output to the log (debug).
    void Print_Info_Salida() const;
    /// Writes the frame of the output and its services to the log (debug).
    void Print_Salida() const;
    /// Writes the output's services to the log (debug), numbered from 1.
    void Print_MapaServicios() const;
};

/// Outputs by number, ascending.
using tMapaSalidas = std::map<std::uint32_t, tRec_Salida>;

} // namespace zarven

#endif
