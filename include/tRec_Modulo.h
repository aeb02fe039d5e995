// tRec_Modulo: one processing module of the head-end, a card with inputs, outputs and limited resources.
//
// A head-end has from two to some hundreds of modules. They are values: the engine copies the whole map of
// them for every strategy; a copy has its own inputs, outputs and counters and shares the services.

#ifndef ZARVEN_TREC_MODULO_H
#define ZARVEN_TREC_MODULO_H

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "tRec_Entrada.h"
#include "tRec_Salida.h"

namespace zarven {

/// One processing module of the head-end: a card with inputs, outputs and limited resources.
struct RECALCULO_API tRec_Modulo {
    // Results of the operations below, besides 1 (done).

    /// Result of `configurarModelo`: the module has its model already.
    static constexpr int ERROR_YA_CONFIGURADO = -201;
    /// Result of `configurarModelo`: no such model.
    static constexpr int ERROR_MODELO_NO_SOPORTADO = -202;
    /// The module has no input with that number.
    static constexpr int ERROR_SIN_ENTRADA = -203;
    /// The module has no output with that number.
    static constexpr int ERROR_SIN_SALIDA = -204;

    /// `Modelo` of a module that is not configured yet.
    static constexpr unsigned short MODELO_SIN_CONFIGURAR = 99;
    /// The only model number that `configurarModelo` accepts.
    static constexpr unsigned short MODELO_SOPORTADO = 3;
    /// `NumServiciosMax` of every output that `configurarModelo` builds.
    static constexpr unsigned short SERVICIOS_POR_SALIDA = 512;

    /// Identity of the module: MAC address of its network interface, as text.
    std::string MAC = "XX:XX:XX:XX:XX";
    /// The module is the head-end controller.
    bool Controlador = false;
    /// Model number.
    unsigned short Modelo = MODELO_SIN_CONFIGURAR;
    /// PIDs in use: the sum of `number_PIDs_CA` of the services placed, modulo 2^16.
    unsigned short PIDsModulo = 0;
    /// PID budget: the number of PIDs that the module can descramble at once. 0: it descrambles nothing.
    unsigned short PIDsModuloMax = 0;
    // Transcoder pools: ceilings and transcoders in use, all of them numbers of transcoders. No operation
    // sets the ceilings: the caller writes them on the loaded module
    // (`tRecalculo::Mapa_ModulosCabecera_Inicial`) before the run.

    /// Ceiling of the pool that SD and HD share, as long as there is no HD transcoding; 0: no transcoding.
    /// Set by the caller.
    unsigned short SD_MAX_Transcoding = 0;
    /// Transcoders in use for SD services.
    unsigned short SD_Transcoding = 0;
    /// Ceiling of the shared pool as soon as there is an HD transcoding, which itself came under
    /// `SD_MAX_Transcoding`; with 0 no other follows it. Set by the caller.
    unsigned short HD_MAX_Transcoding = 0;
    /// Transcoders in use for HD services.
    unsigned short HD_Transcoding = 0;
    /// Ceiling of the pool that serves clones; 0: no clone is transcoded. Set by the caller.
    unsigned short AUX_MAX_Transcoding = 0;
    /// Transcoders in use for clones.
    unsigned short AUX_Transcoding = 0;
    /// The inputs by number, ascending.
    tMapaEntradas mapEntradas;
    /// The logical outputs by number, ascending.
    tMapaSalidas mapSalidas;

    /// An unconfigured module without identity.
    tRec_Modulo() = default;
    /// An unconfigured module.
    explicit tRec_Modulo(std::string MAC);
    /// An unconfigured module, the controller or another.
    tRec_Modulo(std::string MAC, bool Controlador);

    /// Gives the module its model, inputs 1..`numEntradas`, outputs 1..`numSalidas` and PID budget, and logs
    /// the dumps of its inputs and outputs (debug). Inputs and outputs already there are kept. The module
    /// must stay where it is from now on for `pModulo` of its inputs and outputs to be of use.
    /// @return 1; `ERROR_YA_CONFIGURADO` or `ERROR_MODELO_NO_SOPORTADO`, with nothing changed or logged.
    int configurarModelo(unsigned short Modelo, unsigned short numEntradas, unsigned short numSalidas,
                         unsigned short PIDsModuloMax);

    /// Puts a service on an input and an output and charges its PIDs. No limit is checked; the transcoders
    /// and the output's `NumServicios` stay.
    /// @return 1; `ERROR_SIN_ENTRADA` (nothing changed); `ERROR_SIN_SALIDA` (the service stays on the input,
    /// nothing is charged); 0 for a null pointer (nothing is done).
    int addService(std::shared_ptr<tRec_Servicio> s, unsigned short NumEntrada, unsigned short NumSalida);

    /// Takes a service off an input and an output and gives its PIDs back, modulo 2^16, also when it was on
    /// neither.
    /// @return 1; `ERROR_SIN_ENTRADA` (nothing changed); `ERROR_SIN_SALIDA` (the input's removal stands);
    /// 0 for a null pointer (nothing is done).
    int deleteService(std::shared_ptr<tRec_Servicio> s, unsigned short NumEntrada, unsigned short NumSalida);

    /// Writes the short frame of the module to the log (debug).
    void Print_Info_Modulo() const;
    /// Writes the frame of the module, its inputs and its outputs to the log (debug).
    void Print_Modulo() const;
    /// Writes the inputs with their services to the log (debug).
    void Print_MapaEntradas() const;
    /// Writes the outputs with their services to the log (debug).
    void Print_MapaSalidas() const;
};

/// Modules by MAC, ascending byte by byte.
using tMapaModulos = std::map<std::string, tRec_Modulo>;

} // namespace zarven

#endif
