// The steps of a candidate exchange, each of which can refuse it.

#include "../log/SinFortify.h"

#include "Candidato.h"

#include <algorithm>
#include <cstdint>
#include <syslog.h>
#include <unistd.h>
#include <utility>

#include "../log/Marcos.h"

namespace zarven {

namespace {

bool alcanza(std::uint32_t maximo, std::uint32_t cuenta) {
    return static_cast<std::int32_t>(maximo) >= static_cast<std::int32_t>(cuenta);
}

// The first input tuned to that stream; null when there is none.
tRec_Entrada* buscarEntrada(tRec_Modulo& modulo, unsigned short onid, unsigned short tsid) {
    for (auto& [numero, entrada] : modulo.mapEntradas)
        if (entrada.ONID == onid && entrada.TSID == tsid)
            return &entrada;
    return nullptr;
}

} // namespace

Candidato::Candidato(tRecalculo& engine, tRec_Modulo& modulo, unsigned short numero, tRec_Modulo& modulo_Aux)
    : motor(engine), principal{"", modulo}, auxiliar{"_Aux", modulo_Aux}, numEntrada(numero),
      ONID(modulo.mapEntradas.find(numero)->second.ONID), TSID(modulo.mapEntradas.find(numero)->second.TSID) {
}

bool Candidato::intercambiar() {
    principal.registrarAntes();
    auxiliar.registrarAntes();
    reunirListas();
    if (!cabeEnRecursos() || !cabeEnBitrate() || !principal.colocarEnCopia(motor) ||
        !auxiliar.colocarEnCopia(motor) || !resintonizar())
        return false;

    ::sleep(2);
    marcos::linea("Parece que todo a ido bien. Hacemos el intercambio");
    principal.modulo = std::move(principal.copia);
    auxiliar.modulo = std::move(auxiliar.copia);
    return true;
}

void Candidato::reunirListas() {
    for (const tRec_Modulo* modulo : {&principal.modulo, &auxiliar.modulo})
        for (const auto& [numero, entrada] : modulo->mapEntradas)
            for (const auto& [clave, servicio] : entrada.MapaServicios) {
                // A service goes by its own stream, whichever input it stands on.
                const bool delStream = servicio->ONID == ONID && servicio->TSID == TSID;
                (delStream ? principal : auxiliar).anadir(clave, servicio);
            }
    for (const Lado* lado : {&principal, &auxiliar})
        ::syslog(LOG_DEBUG, "ListaServiciosSalida_Modulo%s.size = %d", lado->sufijo,
                 static_cast<int>(lado->ListaServiciosSalida.size()));
}

bool Candidato::cabeEnRecursos() const {
    ::syslog(LOG_DEBUG,
             "(Count_PIDs (%d) <= itModulo->second.PIDsModuloMax (%d) ) && ( Count_PIDs_Aux(%d)  <= "
             "itModulo_Aux->second.PIDsModuloMax(%d) )",
             static_cast<int>(principal.Count_PIDs), principal.modulo.PIDsModuloMax,
             static_cast<int>(auxiliar.Count_PIDs), auxiliar.modulo.PIDsModuloMax);
    principal.registrarTranscoding();
    auxiliar.registrarTranscoding();
    ::sleep(1);
    if (!principal.bastanPIDs() || !auxiliar.bastanPIDs() || !principal.bastanTranscoders() ||
        !auxiliar.bastanTranscoders())
        return false;
    ::sleep(2);
    marcos::linea("El intercambio no es problema para la CAM");
    marcos::linea("El intercambio no es problema para el transcoder");
    return true;
}

bool Candidato::cabeEnBitrate() const {
    const std::uint32_t maximo = principal.Bitrate_Max_Salida();
    const std::uint32_t maximo_Aux = auxiliar.Bitrate_Max_Salida();
    const bool cabe = alcanza(maximo, principal.Bitrate_ListaServiciosSalida) &&
                      alcanza(maximo_Aux, auxiliar.Bitrate_ListaServiciosSalida);
    ::syslog(LOG_DEBUG,
             " ( ( Bitrate_ListaServiciosSalida_Modulo (%d) <= Bitrate_Max_Salida_Modulo(%d) ) && ( "
             "Bitrate_ListaServiciosSalida_Modulo_Aux (%d) <= Bitrate_Max_Salida_Modulo_Aux (%d) ) ) = %d",
             static_cast<int>(principal.Bitrate_ListaServiciosSalida), static_cast<int>(maximo),
             static_cast<int>(auxiliar.Bitrate_ListaServiciosSalida), static_cast<int>(maximo_Aux), cabe);
    return cabe;
}

// Every input of the first module but the candidate one is given up. What it received moves to the second
// module, where the candidate stream leaves inputs free, unless that was the candidate stream again.
bool Candidato::resintonizar() {
    for (auto& [numero, entrada] : principal.copia.mapEntradas) {
        if (numero == numEntrada) {
            entrada.MapaServicios = std::move(principal.ListaServiciosSalida);
            continue;
        }
        const unsigned short onid = entrada.ONID;
        const unsigned short tsid = entrada.TSID;
        tMapaServicios servicios = std::exchange(entrada.MapaServicios, {});
        entrada.confEntrada(0, 0);
        if ((onid != ONID || tsid != TSID) && !pasarAlAuxiliar(onid, tsid, std::move(servicios)))
            return false;
    }
    for (auto& [numero, entrada] : auxiliar.copia.mapEntradas)
        if (entrada.ONID == ONID && entrada.TSID == TSID) {
            entrada.MapaServicios.clear();
            entrada.confEntrada(0, 0);
        }
    return recogerEnEntradas();
}

bool Candidato::pasarAlAuxiliar(unsigned short onid, unsigned short tsid, tMapaServicios servicios) {
    if (tRec_Entrada* libre = buscarEntrada(auxiliar.copia, ONID, TSID)) {
        libre->confEntrada(tsid, onid);
        libre->MapaServicios = std::move(servicios);
        return true;
    }
    if (servicios.empty())
        return true;
    tRec_Entrada* destino = buscarEntrada(auxiliar.copia, onid, tsid);
    if (destino == nullptr)
        destino = buscarEntrada(auxiliar.copia, 0, 0);
    if (destino == nullptr)
        return false;
    destino->confEntrada(tsid, onid);
    destino->MapaServicios.merge(servicios);
    return true;
}

// Inputs have moved as a whole, outputs were filled by the services' own streams: a service that stood on an
// input of another stream would stand on an output alone, and the next exchange would lose it.
bool Candidato::recogerEnEntradas() {
    const auto& servicios = auxiliar.ListaServiciosSalida;
    return std::all_of(servicios.begin(), servicios.end(), [this](const auto& entrada) {
        return auxiliar.recogerEnEntrada({entrada.first, entrada.second});
    });
}

void Candidato::Lado::anadir(long clave, const std::shared_ptr<tRec_Servicio>& servicio) {
    ListaServiciosSalida.emplace(clave, servicio);
    Count_PIDs += servicio->number_PIDs_CA;
    Bitrate_ListaServiciosSalida += servicio->peakBitRate;
    if (servicio->Transcoding != 0)
        ++(servicio->VideoFormatE == tRec_Servicio::VIDEO_HD ? Transcoding_HD : Transcoding_SD);
}

std::uint32_t Candidato::Lado::Bitrate_Max_Salida() const {
    std::uint32_t suma = 0;
    for (const auto& [idSalida, salida] : modulo.mapSalidas)
        suma += salida.BitRateMax;
    return suma;
}

void Candidato::Lado::registrarAntes() const {
    ::syslog(
        LOG_DEBUG,
        "ANTES: itModulo%s->second.HD_Transcoding (%d)  <=  itModulo%s->second.HD_MAX_Transcoding (%d) ) && "
        "( itModulo%s->second.SD_Transcoding (%d) <= itModulo%s->second.SD_MAX_Transcoding (%d)",
        sufijo, modulo.HD_Transcoding, sufijo, modulo.HD_MAX_Transcoding, sufijo, modulo.SD_Transcoding,
        sufijo, modulo.SD_MAX_Transcoding);
}

void Candidato::Lado::registrarTranscoding() const {
    ::syslog(LOG_DEBUG,
             "Transcoding_HD_Modulo%s (%d)  <=  itModulo%s->second.HD_MAX_Transcoding (%d) ) && ( "
             "Transcoding_SD_Modulo%s (%d) <= itModulo%s->second.SD_MAX_Transcoding (%d)",
             sufijo, static_cast<int>(Transcoding_HD), sufijo, modulo.HD_MAX_Transcoding, sufijo,
             static_cast<int>(Transcoding_SD), sufijo, modulo.SD_MAX_Transcoding);
}

bool Candidato::Lado::bastanPIDs() const {
    return alcanza(modulo.PIDsModuloMax, Count_PIDs);
}

bool Candidato::Lado::bastanTranscoders() const {
    return alcanza(modulo.HD_MAX_Transcoding, Transcoding_HD) &&
           alcanza(modulo.SD_MAX_Transcoding, Transcoding_SD);
}

// The outputs start empty; the services with the highest keys find their place first.
bool Candidato::Lado::colocarEnCopia(tRecalculo& engine) {
    copia = modulo;
    for (auto& [idSalida, salida] : copia.mapSalidas) {
        salida.MapaServicios.clear();
        salida.BitRateActual = 0;
        salida.NumServicios = 0;
    }
    for (auto it = ListaServiciosSalida.rbegin(); it != ListaServiciosSalida.rend(); ++it)
        if (engine.Find_OutputID_to_insert_Service(copia, it) == 0)
            return false;
    return true;
}

// Sees that the service stands on an input: on the one that receives its stream, if there is one.
bool Candidato::Lado::recogerEnEntrada(const Ficha& ficha) {
    tRec_Entrada* destino = nullptr;
    bool enOtra = false;
    for (auto& [numero, entrada] : copia.mapEntradas) {
        const bool esta = buscarFicha(entrada.MapaServicios, ficha) != entrada.MapaServicios.end();
        const bool delStream = entrada.ONID == ficha.servicio->ONID && entrada.TSID == ficha.servicio->TSID;
        if (esta && delStream)
            return true;
        if (delStream && destino == nullptr)
            destino = &entrada;
        enOtra = enOtra || esta;
    }
    if (destino == nullptr)
        return enOtra;
    for (auto& [numero, entrada] : copia.mapEntradas)
        quitarFicha(entrada.MapaServicios, ficha);
    destino->MapaServicios.emplace(ficha.clave, ficha.servicio);
    return true;
}

} // namespace zarven
