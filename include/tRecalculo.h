// tRecalculo: the engine. It places the services received by a head-end onto its modules.
//
// One object per recalculation, used from one thread. The caller loads it in this order (modules, output
// bitrates, services, PIDs, home channels), runs Main_Recalculo and reads Mapa_ModulosCabecera_Final,
// Mapa_ONIDs_Final and listaServiciosClonados. Diagnostics go to the system log: level 3 for the one fatal
// condition, 5 for the summary, 7 for everything else. The engine pauses with sleep() between sections of
// the log: a run takes seconds when everything fits, and long when many services are left out, for each of
// which it searches with pauses of ten seconds. A host that defines its own syslog and sleep replaces both.

#ifndef ZARVEN_TRECALCULO_H
#define ZARVEN_TRECALCULO_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Rec_ONID.h"
#include "Rec_TSID.h"
#include "tRec_Entrada.h"
#include "tRec_Modulo.h"
#include "tRec_PID.h"
#include "tRec_Salida.h"
#include "tRec_Servicio.h"

namespace zarven {

/// The engine: it places the services received by a head-end onto its modules.
struct RECALCULO_API tRecalculo {
    // Results of the operations below, besides 0 (nothing done).

    /// Done.
    static constexpr int RETURN_OK = 1;
    /// Result of `swapModulos`: the modules are not of one kind.
    static constexpr int ERROR_MODULOS_NO_COMPATIBLES = -100;
    /// Reserved: the index contradicts itself.
    static constexpr int ERROR_INDICE_INCOHERENTE = -101;
    /// Result of `addModulo`: a module with that MAC is loaded.
    static constexpr int ERROR_MODULO_YA_CARGADO = -102;
    /// Result of `configurarSalida`: no module with that MAC is loaded.
    static constexpr int ERROR_SIN_MODULO = -104;
    /// Result of `configurarSalida`: the module has no output with that number.
    static constexpr int ERROR_SIN_SALIDA = -105;
    /// Result of `addHomeChannel`: that pair is loaded.
    static constexpr int ERROR_HOME_CHANNEL_YA_CARGADO = -106;
    /// Result of `addRec_Servicio`: a clone whose parent is not in its stream.
    static constexpr int ERROR_CLON_SIN_PADRE = -109;
    /// Result of `addRec_PID`: no loaded service has the PID's `SID`.
    static constexpr int ERROR_PID_SIN_SERVICIO = -110;

    /// Every loaded service by ONID, TSID and key.
    tMapaONIDs Mapa_ONIDs_Inicial;
    /// The services not yet placed by the running pass; what is left at its end is discarded.
    tMapaONIDs Mapa_ONIDs;
    /// The loaded modules, by MAC.
    tMapaModulos Mapa_ModulosCabecera_Inicial;
    /// The modules as the running pass fills them.
    tMapaModulos Mapa_ModulosCabecera_Proceso;
    /// The home channels: ONIDs and TSIDs without services.
    tMapaONIDs Mapa_HomeChannels;
    /// An index for the caller's use; the engine leaves it alone.
    tMapaONIDs Mapa_ONIDs_Auxiliar;
    /// Every service of the loaded index, in the order of loading.
    std::vector<std::shared_ptr<tRec_Servicio>> listaServicios;
    /// The result: the modules of the best strategy, clones attached.
    tMapaModulos Mapa_ModulosCabecera_Final;
    /// The result: the services that the best strategy leaves out.
    tMapaONIDs Mapa_ONIDs_Final;
    /// The clones that wait for their parent; after a run, those that found none, or no AUX transcoder.
    std::vector<std::shared_ptr<tRec_Servicio>> listaServiciosClonados;

    tRecalculo() = default;
    // A copy would leave every pModulo naming the modules of the original; a move takes them along.
    tRecalculo(const tRecalculo&) = delete;
    tRecalculo& operator=(const tRecalculo&) = delete;
    /// Takes everything along.
    tRecalculo(tRecalculo&&) = default;
    /// Takes everything along.
    tRecalculo& operator=(tRecalculo&&) = default;

    // ---- Loading --------------------------------------------------------------------------------------

    /// Builds a module, configures it (`tRec_Modulo::configurarModelo`, which logs its dumps) and loads it.
    /// A model that is not supported is loaded all the same and stays unconfigured. The numbers of inputs and
    /// outputs may be 0, and so may the number of PIDs, which then descrambles nothing.
    /// @return 1; `ERROR_MODULO_YA_CARGADO` (the loaded one is untouched); 0 if the configuration gave 0.
    int addModulo(std::string MAC, unsigned short Modelo, unsigned short numEntradas,
                  unsigned short numSalidas, unsigned short PIDsModuloMax, bool Controlador);

    /// Sets the bitrate ceiling of an output of a loaded module, in kbit/s, narrowed to 32 bits.
    /// @return 1; `ERROR_SIN_MODULO`; `ERROR_SIN_SALIDA`.
    int configurarSalida(std::string MAC, unsigned short idSalida, unsigned long bitrate);

    /// Loads a service under its ONID, TSID and `idService`. When its stream already holds that key the
    /// service is a clone: with `Parent_SID` 0 it finds its parent under its key (under minus its `OSID` when
    /// the key is 0), takes the parent's `SID` as `Parent_SID`, and its CA PIDs are charged to the parent, up
    /// to the parent's `number_PIDs_CA_Max`; its own CA PIDs and bitrate become 0. A clone that brings its
    /// `Parent_SID` is taken as it is. Clones wait in `listaServiciosClonados`.
    /// @return 1; `ERROR_CLON_SIN_PADRE` (not stored); 0 for a null pointer. `ERROR_INDICE_INCOHERENTE` is
    /// reserved.
    int addRec_Servicio(std::shared_ptr<tRec_Servicio> s);

    /// Hands a PID to the first service with its `SID`: clones first, then the others, each in the order of
    /// loading.
    /// @return the result of `tRec_Servicio::addPID_AlServicio` (1); `ERROR_PID_SIN_SERVICIO` (the PID is
    /// destroyed); 0 for a null pointer.
    int addRec_PID(std::unique_ptr<tRec_PID> pid);

    /// Loads a home channel.
    /// @return 1; `ERROR_HOME_CHANNEL_YA_CARGADO`.
    int addHomeChannel(unsigned short ONID, unsigned short TSID);

    /// Removes a stream without services from the working index, and its network with its last stream; each
    /// removal is logged (debug). The arguments are truncated to 16 bits to look them up.
    /// @return 0 nothing removed (services remain, or no such stream); 1 the stream; 2 the network too.
    int Clear_ONID_TSID(int ONID, int TSID);

    /// Number of loaded services, clones apart, modulo 2^16.
    unsigned short num_servicios_original() const;
    /// Number of services in the working index, modulo 2^16.
    unsigned short num_servicios_procesado() const;

    // ---- Running --------------------------------------------------------------------------------------

    /// Runs the strategies MAX, MAX MIN, MIN and MIN MAX, keeps the one that leaves the fewest services out
    /// (the earliest on a tie; none runs after one that places everything), attaches the clones and logs the
    /// result. Blocks for all its pauses. The loaded maps stay, so a second call starts from them again,
    /// without the clones that the first has attached.
    /// A host ends a run by throwing from its own `syslog` or `sleep` (not from `setlogmask`), at any call.
    /// @return 1; 0 when no loaded module is the controller, or its MAC is empty or its model 0 (one error
    /// line, nothing done).
    /// @throws std::bad_alloc and whatever the host's functions throw. What was loaded is whole then, with
    /// the clones as before the run; the working and the final maps mean nothing; a further call is that of
    /// an engine that was never disturbed.
    int Main_Recalculo();

    /// One pass for one strategy over `Mapa_ModulosCabecera_Proceso` and `Mapa_ONIDs`, in place.
    /// @param option 1 MAX, 2 MAX MIN, 3 MIN, 4 MIN MAX; with any other value no input is offered a stream.
    /// @param recurso from `GetRecursoCabecera`: 1 leaves out the transcoding fill.
    void RecalculationAlgorithm(char option, int recurso);

    // ---- Queries --------------------------------------------------------------------------------------

    /// MAC of the first loaded module flagged as controller; empty when there is none.
    std::string GetMACControlador() const;
    /// Its model; 0 when there is none.
    unsigned short GetModeloControlador() const;
    /// 1 when some loaded module is of model 1 or 3, else 0. Logs the answer (debug).
    char GetRecursoCabecera() const;
    /// The module has PIDs to spare and an output with room for one more service and more than
    /// 6000 kbit/s to spare. An output whose ceiling is below 6000 kbit/s always has them.
    bool ModuleisUncomplete(const tRec_Modulo& modulo) const;
    /// Some input of the module carries no service.
    bool Module_check_empty_input(const tRec_Modulo& modulo) const;
    /// Some service of the working index has a non-zero `Transcoding`.
    bool Exist_Transcoding_Service() const;
    /// Some key of the working index is greater than 0.
    bool Exist_Service_with_idService() const;

    // ---- Placing services -----------------------------------------------------------------------------

    /// Places a service on the given input and on the module's first output with room (services, bitrate,
    /// PIDs), if the module has a transcoder for it. Each output tried is logged (debug).
    /// @param itService an entry of a services multimap; its key is the key on the input and the output.
    /// @return 1 placed; 0 refused, nothing changed.
    std::uint32_t Try_to_Insert_Service_Input_Output(tRec_Modulo& modulo, tRec_Entrada& entrada,
                                                     tMapaServicios::iterator itService);

    /// Takes a service off the given input and off the first output that carries its key, and gives its
    /// PIDs, bitrate, count and transcoder back. Every entry with the key goes, one is counted.
    /// @param itModulo an entry of `Mapa_ModulosCabecera_Proceso`.
    /// @param itEntrada an entry of that module's inputs.
    /// @param itService an entry of any services multimap, of those two as well.
    /// @return 1 removed; 0 not on the input and an output together, nothing changed.
    std::uint32_t Try_to_Delete_Service_Input_Output(tMapaModulos::iterator itModulo,
                                                     tMapaEntradas::iterator itEntrada,
                                                     tMapaServicios::iterator itService);

    /// Books a service on the module's first output with room (services, bitrate), under its `idService`;
    /// neither inputs nor module counters are touched or asked.
    /// @return the output's number; 0 when none has room, nothing changed.
    std::uint32_t Find_OutputID_to_insert_Service(tRec_Modulo& modulo,
                                                  tMapaServicios::reverse_iterator itService);

    /// Chooses a stream of the working index for an input, places what fits of its services, takes them out
    /// of the index and tunes the input if any was placed.
    /// @param modo 1 the stream with the most eligible services, 3 with the fewest; any other value: none.
    /// @param transcoding whether services that need a transcoder are eligible (and, as long as there are
    /// some, the only ones counted).
    /// @return number of services placed.
    int Asignar_listaServicios(tRec_Modulo& modulo, tRec_Entrada& entrada, char modo, bool transcoding);

    /// Places what fits of the services of the input's own stream and takes them out of the working index.
    /// @return number of services placed.
    std::uint32_t Fill_Services_in_Module_Input(tRec_Modulo& modulo, tRec_Entrada& entrada);

    /// Attaches a clone to the input and the output of `Mapa_ModulosCabecera_Final` that carry its parent.
    /// @param itServicio an element of `listaServiciosClonados`, which stays there.
    /// @return 1 attached; 0 no parent found, or no AUX transcoder left for it.
    int Try_to_Insert_Cloned_Service(std::vector<std::shared_ptr<tRec_Servicio>>::iterator itServicio);

    // ---- Re-arrangements for the caller ---------------------------------------------------------------

    /// Swaps what two modules of one kind carry: streams and services of inputs with the same number,
    /// load of outputs with the same bitrate ceiling, PID counters. Transcoder counters stay. Logged (debug).
    /// @return `RETURN_OK`; `ERROR_MODULOS_NO_COMPATIBLES`: when model, number of inputs or outputs or PID
    /// budget differ nothing has changed; when an output finds no partner the modules are left half
    /// swapped.
    int swapModulos(tRec_Modulo& modulo1, tRec_Modulo& modulo2);

    /// Evens out the number of services among the outputs of each module, pair by pair, without regard to
    /// bitrate. `NumServicios` of the outputs stays as it was. Each move is logged (debug).
    /// @param mapa the modules, for instance `&Mapa_ModulosCabecera_Final`; null counts as empty.
    /// @return 1.
    std::uint32_t Load_Balance(tMapaModulos* mapa);

    // ---- Reports --------------------------------------------------------------------------------------

    /// The placed services by module and input (notice, lines begin with "@").
    void Print_Resultado(tMapaModulos& mapa) const;
    /// The streams and services of one module (notice).
    void Print_Transponders_Resultado(tMapaModulos::iterator itModulo) const;
    /// One line per service with both names, also when they are equal (notice).
    void Print_Servicios_Resultado(tMapaServicios servicios) const;
    /// The services left out (notice).
    void Print_Descartados(tMapaONIDs& mapa) const;
    /// The loaded index (debug).
    void Print_Mapa_ONIDs() const;
    /// An index (debug).
    void Print_Mapa_ONIDs(tMapaONIDs& mapa) const;
    /// The clones that wait for their parent (debug).
    void Print_MapaServiciosClonados() const;
    /// The home channels, each ONID with its first TSID only (debug).
    void Print_Home_Channels() const;
    /// The modules of a map (debug).
    void Print_Mapa_Modulos(tMapaModulos& mapa) const;
    /// The loaded modules (debug).
    void Print_Mapa_Modulos_original() const;
};

} // namespace zarven

#endif
