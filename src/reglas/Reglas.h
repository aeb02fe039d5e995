// What fits: every limit that a service meets on a module, on an output and on an input, the order in which
// services are asked for, and the strategies, with what the driver does for each. Nothing but the numbers: no
// function here logs or waits.
//
// The engine tests some limits in more than one way, and its results depend on it; so each way has a name.
// "strict": the sum must stay under the ceiling. "by the rest": what is left of the ceiling must be more than
// the service, so that an output loaded beyond its ceiling wraps around and takes anything. "with sign": sums
// of 32 bits compared as signed numbers. Sums of bitrates wrap at 32 bits, those of 16-bit counters do not.
//
// Each rule takes plain numbers; those asked most also take the records. The tool and the tests read this
// header, too, so that no rule stands twice.

#ifndef ZARVEN_REGLAS_REGLAS_H
#define ZARVEN_REGLAS_REGLAS_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "Rec_ONID.h"
#include "tRec_Entrada.h"
#include "tRec_Modulo.h"
#include "tRec_Salida.h"
#include "tRec_Servicio.h"

namespace zarven::reglas {

// ---- Ceilings -----------------------------------------------------------------------------------------

// A load that does not wrap.
constexpr bool bajoTecho(std::uint64_t carga, std::uint32_t maximo) {
    return carga < maximo;
}

// A number that may reach its ceiling: of services, PIDs or transcoders.
constexpr bool hastaTecho(std::uint64_t numero, std::uint32_t maximo) {
    return numero <= maximo;
}

// ---- The bitrate of an output -------------------------------------------------------------------------

// Placing a service: strict.
constexpr bool cabeBitrate(std::uint32_t actual, std::uint32_t pedido, std::uint32_t maximo) {
    return bajoTecho(static_cast<std::uint32_t>(actual + pedido), maximo);
}

// What has to come free before the service can be placed; 0 when it can.
constexpr std::uint64_t faltaBitrate(std::uint32_t actual, std::uint32_t pedido, std::uint32_t maximo) {
    return cabeBitrate(actual, pedido, maximo)
               ? 0
               : std::uint64_t{static_cast<std::uint32_t>(actual + pedido)} - maximo + 1;
}

// So much can come free of what the output carries. One without ceiling takes nothing, however empty.
constexpr bool puedeLiberarse(std::uint64_t falta, std::uint32_t actual, std::uint32_t maximo) {
    return falta == 0 || (bajoTecho(0, maximo) && falta <= actual);
}

// The largest load that a ceiling allows.
constexpr std::uint32_t cargaMaxima(std::uint32_t maximo) {
    return maximo == 0 ? 0 : maximo - 1;
}

// The least ceiling that allows a load.
constexpr std::uint64_t techoPara(std::uint64_t carga) {
    return carga + 1;
}

// Booking a service on a copy: by the rest.
constexpr bool cabeBitratePorResto(std::uint32_t actual, std::uint32_t pedido, std::uint32_t maximo) {
    return static_cast<std::uint32_t>(maximo - actual) > pedido;
}

// Exchanging services: strict, and a balance below zero becomes a large one and fails.
constexpr bool bastaBitrateAlPermutar(std::uint32_t actual, std::uint32_t entra, std::uint32_t sale,
                                      std::uint32_t maximo) {
    return static_cast<std::uint32_t>(actual + entra - sale) < maximo;
}

// Bitrate that an output must have to spare to count as having room.
inline constexpr std::uint32_t MARGEN_BITRATE = 6000;

// Having room. A ceiling below the margin wraps around: such an output always has bitrate to spare.
constexpr bool sobraBitrate(std::uint32_t actual, std::uint32_t maximo) {
    return actual < static_cast<std::uint32_t>(maximo - MARGEN_BITRATE);
}

// Gathering a stream: whether a sum over the whole module is within its ceiling, with sign.
constexpr bool bastaConSigno(std::uint32_t maximo, std::uint32_t suma) {
    return static_cast<std::int32_t>(maximo) >= static_cast<std::int32_t>(suma);
}

// ---- The services of an output ------------------------------------------------------------------------

constexpr bool cabeOtroServicio(std::uint32_t servicios, std::uint32_t maximo) {
    return servicios < maximo;
}

inline bool cabeOtroServicio(const tRec_Salida& salida) {
    return cabeOtroServicio(salida.NumServicios, salida.NumServiciosMax);
}

// ---- The PIDs of a module -----------------------------------------------------------------------------

// Placing a service: the sum may reach the budget.
constexpr bool cabenPIDs(std::uint16_t enUso, std::uint16_t pedidos, std::uint16_t maximo) {
    return hastaTecho(std::uint64_t{enUso} + pedidos, maximo);
}

// How many have to come free before the service can be placed; 0 when it can.
constexpr std::uint32_t faltanPIDs(std::uint16_t enUso, std::uint16_t pedidos, std::uint16_t maximo) {
    return cabenPIDs(enUso, pedidos, maximo) ? 0 : static_cast<std::uint32_t>(enUso + pedidos - maximo);
}

// Having room: at least one to spare.
constexpr bool sobranPIDs(std::uint16_t enUso, std::uint16_t maximo) {
    return enUso < maximo;
}

// What is left of the budget; below zero on a module that is charged beyond it.
constexpr int pidsLibres(std::uint16_t enUso, std::uint16_t maximo) {
    return maximo - enUso;
}

// Exchanging services: the balance of what is left, what leaves and what enters, with sign.
constexpr bool bastanPIDsAlPermutar(int libres, int salen, int entran) {
    return libres + salen - entran >= 0;
}

// ---- The transcoders of a module ----------------------------------------------------------------------

// Placing a service takes a transcoder.
constexpr bool ocupaTranscoder(std::uint16_t transcoding) {
    return transcoding == 1;
}

// The service is of the kind with transcoding, whatever the value: such services are counted and chosen
// apart.
constexpr bool necesitaTranscoding(std::uint16_t transcoding) {
    return transcoding != 0;
}

constexpr bool esHD(std::uint16_t videoFormatE) {
    return videoFormatE == tRec_Servicio::VIDEO_HD;
}

// SD and HD share one pool; one HD transcoding on the module is enough to bound it by the HD ceiling.
constexpr std::uint16_t limiteTranscoders(bool hayHD, std::uint16_t maximoSD, std::uint16_t maximoHD) {
    return hayHD ? maximoHD : maximoSD;
}

// One more than those in use is within the limit of the pool.
constexpr bool quedaTranscoder(std::uint32_t enUso, std::uint32_t limite) {
    return enUso < limite;
}

// How many have to come free before one more can be taken; 0 when it can.
constexpr std::uint64_t faltanTranscoders(std::uint32_t enUso, std::uint32_t limite) {
    return quedaTranscoder(enUso, limite) ? 0 : std::uint64_t{enUso} + 1 - limite;
}

// Placing a service that takes one. The service itself is not asked whether it is HD.
constexpr bool quedaTranscoder(std::uint16_t enUsoSD, std::uint16_t enUsoHD, std::uint16_t maximoSD,
                               std::uint16_t maximoHD) {
    return quedaTranscoder(std::uint32_t{enUsoSD} + enUsoHD,
                           limiteTranscoders(enUsoHD != 0, maximoSD, maximoHD));
}

inline bool quedaTranscoder(const tRec_Modulo& modulo) {
    return quedaTranscoder(modulo.SD_Transcoding, modulo.HD_Transcoding, modulo.SD_MAX_Transcoding,
                           modulo.HD_MAX_Transcoding);
}

// The most that an empty module comes to. The SD ceiling lets the first begin, so without it none does; after
// that the larger ceiling is what can be reached.
constexpr std::uint16_t masTranscoders(std::uint16_t maximoSD, std::uint16_t maximoHD) {
    if (!quedaTranscoder(0, 0, maximoSD, maximoHD))
        return 0;
    return std::max(limiteTranscoders(false, maximoSD, maximoHD),
                    limiteTranscoders(true, maximoSD, maximoHD));
}

// Attaching a clone: it takes one of the AUX pool when it is of the kind with transcoding.
constexpr bool cabeClon(std::uint16_t transcoding, std::uint16_t enUsoAUX, std::uint16_t maximoAUX) {
    return !necesitaTranscoding(transcoding) || enUsoAUX < maximoAUX;
}

inline bool cabeClon(const tRec_Modulo& modulo, const tRec_Servicio& clon) {
    return cabeClon(clon.Transcoding, modulo.AUX_Transcoding, modulo.AUX_MAX_Transcoding);
}

// The parent is known by its OSID, although Parent_SID was taken from its SID: the two agree unless the
// head-end renumbers its services.
inline bool esPadre(const tRec_Servicio& servicio, const tRec_Servicio& clon) {
    return servicio.OSID == clon.Parent_SID;
}

// ---- Loading ------------------------------------------------------------------------------------------

// A service is a clone when its stream has one of its key by then.
inline bool esClonAlCargar(const tMapaONIDs& indice, std::uint16_t onid, std::uint16_t tsid, long clave) {
    const auto red = indice.find(onid);
    if (red == indice.end())
        return false;
    const auto stream = red->second.MapRec_TSIDs.find(tsid);
    return stream != red->second.MapRec_TSIDs.end() && stream->second.MapRec_Services.count(clave) != 0;
}

// ---- An output as a whole -----------------------------------------------------------------------------

// What stops a service from being placed, in the order of the tests.
enum class Limite {
    servicios,
    bitrate,
    PIDs,
    transcoders,
    ninguno, // it fits
};

// The first of the tests that fails.
constexpr Limite primerLimite(bool cabeOtro, bool cabeSuBitrate, bool cabenSusPIDs, bool hayTranscoder) {
    return !cabeOtro        ? Limite::servicios
           : !cabeSuBitrate ? Limite::bitrate
           : !cabenSusPIDs  ? Limite::PIDs
           : !hayTranscoder ? Limite::transcoders
                            : Limite::ninguno;
}

// Placing a service, but for its transcoder.
constexpr bool cabe(bool cabeOtro, bool cabeSuBitrate, bool cabenSusPIDs) {
    return primerLimite(cabeOtro, cabeSuBitrate, cabenSusPIDs, true) == Limite::ninguno;
}

inline bool cabe(const tRec_Modulo& modulo, const tRec_Salida& salida, const tRec_Servicio& servicio) {
    return cabe(cabeOtroServicio(salida),
                cabeBitrate(salida.BitRateActual, servicio.peakBitRate, salida.BitRateMax),
                cabenPIDs(modulo.PIDsModulo, servicio.number_PIDs_CA, modulo.PIDsModuloMax));
}

// Booking a service on a copy: the module is not asked.
inline bool cabePorResto(const tRec_Salida& salida, const tRec_Servicio& servicio) {
    return cabeOtroServicio(salida) &&
           cabeBitratePorResto(salida.BitRateActual, servicio.peakBitRate, salida.BitRateMax);
}

constexpr bool tieneSitio(std::uint32_t servicios, std::uint32_t maximoServicios, std::uint32_t actual,
                          std::uint32_t maximo) {
    return cabeOtroServicio(servicios, maximoServicios) && sobraBitrate(actual, maximo);
}

inline bool tieneSitio(const tRec_Salida& salida) {
    return tieneSitio(salida.NumServicios, salida.NumServiciosMax, salida.BitRateActual, salida.BitRateMax);
}

// ---- An input -----------------------------------------------------------------------------------------

// 0 and 0 is what an untuned input has, and may be a stream.
constexpr bool esStream(std::uint16_t onid, std::uint16_t tsid, std::uint16_t otroOnid,
                        std::uint16_t otroTsid) {
    return onid == otroOnid && tsid == otroTsid;
}

inline bool recibe(const tRec_Entrada& entrada, std::uint16_t onid, std::uint16_t tsid) {
    return esStream(entrada.ONID, entrada.TSID, onid, tsid);
}

// Filling offers a stream to inputs without services, tuned or not.
inline bool sinServicios(const tRec_Entrada& entrada) {
    return entrada.MapaServicios.empty();
}

// Topping up: one of the two numbers is enough for the input to have a stream.
constexpr bool conAlgunNumero(std::uint16_t onid, std::uint16_t tsid) {
    return onid != 0 || tsid != 0;
}

// It has a stream or services.
inline bool sintonizada(const tRec_Entrada& entrada) {
    return conAlgunNumero(entrada.ONID, entrada.TSID) || !sinServicios(entrada);
}

// Gathering, and the first input: it takes both.
constexpr bool conAmbosNumeros(std::uint16_t onid, std::uint16_t tsid) {
    return onid != 0 && tsid != 0;
}

// ---- Which services are asked for ---------------------------------------------------------------------

// A service without LCN is filed under 0 or below.
constexpr bool esClavePositiva(long clave) {
    return clave > 0;
}

// What counts when a stream is chosen, by what the working index holds.
struct Criterio {
    // A key is positive somewhere: the others do not count.
    bool soloClavesPositivas;
    // A service is of the kind with transcoding somewhere: only the kind of the fill counts.
    bool soloDeSuClase;
    // The kind of the fill.
    bool transcoding;
};

constexpr bool cuentaParaElegir(long clave, std::uint16_t transcoding, const Criterio& criterio) {
    return (!criterio.soloClavesPositivas || esClavePositiva(clave)) &&
           (!criterio.soloDeSuClase || transcoding == (criterio.transcoding ? 1 : 0));
}

// Once a stream is chosen: services that need no transcoder ride along in both fills.
constexpr bool entraEnRelleno(std::uint16_t transcoding, bool rellenoConTranscoding) {
    return !necesitaTranscoding(transcoding) || (ocupaTranscoder(transcoding) && rellenoConTranscoding);
}

// The search for the fewest begins below this: a stream with so many services is never taken by it.
inline constexpr int TOPE_MIN = 99999;

// ---- The strategies -----------------------------------------------------------------------------------

// How an input chooses among the streams: the one with the most services that count, or the fewest.
inline constexpr char MODO_MAX = 1;
inline constexpr char MODO_MIN = 3;
// The input is offered nothing.
inline constexpr char NO_SE_OFRECE = 0;

struct Estrategia {
    // The option of a pass.
    char opcion;
    std::string_view nombre;
    // The modes of inputs 1 and 2 and of all others.
    char primera;
    char segunda;
    char otras;
};

// In the order in which the driver tries them. The mixed ones tell inputs 1 and 2 apart and leave the others
// alone.
inline constexpr std::array<Estrategia, 4> ESTRATEGIAS = {{
    {1, "MAX", MODO_MAX, MODO_MAX, MODO_MAX},
    {2, "MAX MIN", MODO_MAX, MODO_MIN, NO_SE_OFRECE},
    {3, "MIN", MODO_MIN, MODO_MIN, MODO_MIN},
    {4, "MIN MAX", MODO_MIN, MODO_MAX, NO_SE_OFRECE},
}};

inline constexpr std::string_view INICIO_ROTULO = "BEGIN OPTION: ";
inline constexpr std::size_t ANCHO_ROTULO = 72;

// What the driver logs before the pass: this beginning, the name, and an arrow that fills the line.
constexpr std::array<char, ANCHO_ROTULO + 1> rotulo(const Estrategia& estrategia) {
    std::array<char, ANCHO_ROTULO + 1> linea{};
    std::size_t n = 0;
    for (const std::string_view parte : {INICIO_ROTULO, estrategia.nombre, std::string_view(" ")})
        for (const char letra : parte)
            linea[n++] = letra;
    while (n + 1 < ANCHO_ROTULO)
        linea[n++] = '-';
    linea[n] = '>';
    return linea;
}

// Whether the line begins as that of the strategy, up to the arrow.
constexpr bool anuncia(std::string_view linea, const Estrategia& estrategia) {
    const std::size_t hastaFlecha = INICIO_ROTULO.size() + estrategia.nombre.size() + 2;
    return linea.substr(0, hastaFlecha) == std::string_view(rotulo(estrategia).data(), hastaFlecha);
}

constexpr char modoDeEntrada(const Estrategia& estrategia, std::uint16_t numEntrada) {
    return numEntrada == 1 ? estrategia.primera : numEntrada == 2 ? estrategia.segunda : estrategia.otras;
}

// Of a pass by its option; with an option that is no strategy's, nothing is offered.
constexpr char modoDeEntrada(char opcion, std::uint16_t numEntrada) {
    for (const Estrategia& estrategia : ESTRATEGIAS)
        if (estrategia.opcion == opcion)
            return modoDeEntrada(estrategia, numEntrada);
    return NO_SE_OFRECE;
}

// A pass works on copies of what was loaded. (Of the engine, which not all who read this header know.)
template <class Motor> void prepararPasada(Motor& motor) {
    motor.Mapa_ModulosCabecera_Proceso = motor.Mapa_ModulosCabecera_Inicial;
    motor.Mapa_ONIDs = motor.Mapa_ONIDs_Inicial;
}

// What it has come to becomes the result.
template <class Motor> void guardarPasada(Motor& motor) {
    motor.Mapa_ModulosCabecera_Final = std::exchange(motor.Mapa_ModulosCabecera_Proceso, {});
    motor.Mapa_ONIDs_Final = std::exchange(motor.Mapa_ONIDs, {});
}

// By the index that it leaves. No other option can do better then, and none is tried. The count of services
// left out does not tell: it is 0 for 65,536 as well.
inline bool colocaTodo(const tMapaONIDs& indice) {
    return indice.empty();
}

// ---- The states of a pass ------------------------------------------------------------------------------

enum class Estado {
    STATUS_END = 0,
    STATUS_FILL_INPUTS_SERVICE_TRANSCODING = 1,
    STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING = 2,
    STATUS_CHECK_EMPTY_INPUT = 3,
    STATUS_UNCOMPLETE_MODULES = 4,
    STATUS_UNIFY_INPUTS = 5,
    STATUS_OPTIMIZE = 6
};

// Where a pass begins, and where every return to filling goes: a head-end of resource 1 never runs the
// transcoding fill.
constexpr Estado estadoDeRelleno(int recurso) {
    return recurso == 1 ? Estado::STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING
                        : Estado::STATUS_FILL_INPUTS_SERVICE_TRANSCODING;
}

// After a fill that placed so many services.
constexpr Estado trasRellenar(int colocados, Estado siguiente) {
    return colocados == 0 ? Estado::STATUS_UNIFY_INPUTS : siguiente;
}

// After looking for empty inputs. Any module will do for those, not only the uncomplete ones.
constexpr Estado trasComprobar(bool quedanServicios, bool hayIncompleto, bool hayEntradaVacia, int recurso) {
    return !quedanServicios || !hayIncompleto ? Estado::STATUS_UNIFY_INPUTS
           : hayEntradaVacia                  ? estadoDeRelleno(recurso)
                                              : Estado::STATUS_UNCOMPLETE_MODULES;
}

// After topping up a module with a free input, which is worth another fill if the last one got anywhere.
constexpr Estado trasEntradaLibre(int colocados, int recurso) {
    return colocados != 0 ? estadoDeRelleno(recurso) : Estado::STATUS_OPTIMIZE;
}

// After gathering streams: `completar` where a module may have room now.
constexpr Estado trasUnificar(bool completar, bool quedanServicios) {
    return completar         ? Estado::STATUS_UNCOMPLETE_MODULES
           : quedanServicios ? Estado::STATUS_OPTIMIZE
                             : Estado::STATUS_END;
}

// Entries into optimize after which the pass goes on.
inline constexpr int VUELTAS_MAX = 3;

constexpr bool quedanVueltas(int vueltas) {
    return vueltas <= VUELTAS_MAX;
}

constexpr Estado trasOptimizar(int vueltas, bool quedanServicios) {
    return quedanVueltas(vueltas) && quedanServicios ? Estado::STATUS_CHECK_EMPTY_INPUT : Estado::STATUS_END;
}

// ---- The driver's choice --------------------------------------------------------------------------------

// An option against the best so far.
enum class Comparacion {
    mejor,
    igual, // the earlier one stays
    peor,
};

// By the services that the two leave out.
template <class Numero> constexpr Comparacion comparar(Numero fuera, Numero fueraDelMejor) {
    return fuera < fueraDelMejor    ? Comparacion::mejor
           : fuera == fueraDelMejor ? Comparacion::igual
                                    : Comparacion::peor;
}

} // namespace zarven::reglas

#endif
