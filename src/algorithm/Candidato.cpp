// The steps of gathering a stream, each of which can refuse it.

#include "../log/SinFortify.h"

#include "Candidato.h"

#include <algorithm>
#include <cstdint>
#include <syslog.h>
#include <unistd.h>
#include <utility>

#include "../log/Marcos.h"
#include "../reglas/Reglas.h"

namespace zarven {

namespace {

// The first input tuned to that stream; null when there is none.
tRec_Entrada* buscarEntrada(tRec_Modulo& modulo, unsigned short onid, unsigned short tsid) {
    for (auto& [numero, entrada] : modulo.mapEntradas)
        if (reglas::recibe(entrada, onid, tsid))
            return &entrada;
    return nullptr;
}

} // namespace

Candidato::Candidato(tRecalculo& motor, tRec_Modulo& modulo, unsigned short numEntrada,
                     tRec_Modulo& moduloAux)
    : motor_(motor), principal_{"", modulo}, auxiliar_{"_Aux", moduloAux}, numEntrada_(numEntrada),
      onid_(modulo.mapEntradas.find(numEntrada)->second.ONID),
      tsid_(modulo.mapEntradas.find(numEntrada)->second.TSID) {}

bool Candidato::reunir() {
    principal_.registrarAntes();
    auxiliar_.registrarAntes();
    repartirServicios();
    if (!examinarRecursos() || !examinarBitrate() || !principal_.colocarEnCopia(motor_) ||
        !auxiliar_.colocarEnCopia(motor_) || !resintonizar())
        return false;

    ::sleep(2);
    marcos::linea("Parece que todo a ido bien. Hacemos el intercambio");
    principal_.modulo = std::move(principal_.copia);
    auxiliar_.modulo = std::move(auxiliar_.copia);
    return true;
}

void Candidato::repartirServicios() {
    for (const tRec_Modulo* modulo : {&principal_.modulo, &auxiliar_.modulo})
        for (const auto& [numero, entrada] : modulo->mapEntradas)
            for (const auto& [clave, servicio] : entrada.MapaServicios) {
                // A service goes by its own stream, whichever input it stands on.
                const bool delStream = reglas::esStream(servicio->ONID, servicio->TSID, onid_, tsid_);
                (delStream ? principal_ : auxiliar_).anadir(clave, servicio);
            }
    for (const Lado* lado : {&principal_, &auxiliar_})
        ::syslog(LOG_DEBUG, "ListaServiciosSalida_Modulo%s.size = %d", lado->sufijo,
                 static_cast<int>(lado->servicios.size()));
}

bool Candidato::bastanRecursos() const {
    return principal_.bastanPIDs() && auxiliar_.bastanPIDs() && principal_.bastanTranscoders() &&
           auxiliar_.bastanTranscoders();
}

bool Candidato::examinarRecursos() const {
    ::syslog(LOG_DEBUG,
             "(Count_PIDs (%d) <= itModulo->second.PIDsModuloMax (%d) ) && ( Count_PIDs_Aux(%d)  <= "
             "itModulo_Aux->second.PIDsModuloMax(%d) )",
             static_cast<int>(principal_.pids), principal_.modulo.PIDsModuloMax,
             static_cast<int>(auxiliar_.pids), auxiliar_.modulo.PIDsModuloMax);
    principal_.registrarTranscoding();
    auxiliar_.registrarTranscoding();
    ::sleep(1);
    if (!bastanRecursos())
        return false;
    ::sleep(2);
    marcos::linea("El intercambio no es problema para la CAM");
    marcos::linea("El intercambio no es problema para el transcoder");
    return true;
}

bool Candidato::examinarBitrate() const {
    const bool basta = principal_.bastaBitrate() && auxiliar_.bastaBitrate();
    ::syslog(LOG_DEBUG,
             " ( ( Bitrate_ListaServiciosSalida_Modulo (%d) <= Bitrate_Max_Salida_Modulo(%d) ) && ( "
             "Bitrate_ListaServiciosSalida_Modulo_Aux (%d) <= Bitrate_Max_Salida_Modulo_Aux (%d) ) ) = %d",
             static_cast<int>(principal_.bitrate), static_cast<int>(principal_.bitrateMax()),
             static_cast<int>(auxiliar_.bitrate), static_cast<int>(auxiliar_.bitrateMax()), basta);
    return basta;
}

// Every input of the first module but the candidate one is given up. What it received moves to the second
// module, where the candidate stream leaves inputs free, unless that was the candidate stream again.
bool Candidato::resintonizar() {
    for (auto& [numero, entrada] : principal_.copia.mapEntradas) {
        if (numero == numEntrada_) {
            entrada.MapaServicios = std::move(principal_.servicios);
            continue;
        }
        const unsigned short onid = entrada.ONID;
        const unsigned short tsid = entrada.TSID;
        tMapaServicios servicios = std::exchange(entrada.MapaServicios, {});
        entrada.confEntrada(0, 0);
        if (!reglas::esStream(onid, tsid, onid_, tsid_) && !pasarAlAuxiliar(onid, tsid, std::move(servicios)))
            return false;
    }
    for (auto& [numero, entrada] : auxiliar_.copia.mapEntradas)
        if (reglas::recibe(entrada, onid_, tsid_)) {
            entrada.MapaServicios.clear();
            entrada.confEntrada(0, 0);
        }
    return asegurarEnEntradas();
}

bool Candidato::pasarAlAuxiliar(unsigned short onid, unsigned short tsid, tMapaServicios servicios) {
    if (tRec_Entrada* libre = buscarEntrada(auxiliar_.copia, onid_, tsid_)) {
        libre->confEntrada(tsid, onid);
        libre->MapaServicios = std::move(servicios);
        return true;
    }
    if (servicios.empty())
        return true;
    tRec_Entrada* destino = buscarEntrada(auxiliar_.copia, onid, tsid);
    if (destino == nullptr)
        destino = buscarEntrada(auxiliar_.copia, 0, 0);
    if (destino == nullptr)
        return false;
    destino->confEntrada(tsid, onid);
    destino->MapaServicios.merge(servicios);
    return true;
}

// Inputs have moved as a whole, outputs were filled by the services' own streams: a service that stood on an
// input of another stream would stand on an output alone, and the next gathering would lose it.
bool Candidato::asegurarEnEntradas() {
    const auto& servicios = auxiliar_.servicios;
    return std::all_of(servicios.begin(), servicios.end(), [this](const auto& entrada) {
        return auxiliar_.asegurarEnEntrada({entrada.first, entrada.second});
    });
}

void Candidato::Lado::anadir(long clave, const std::shared_ptr<tRec_Servicio>& servicio) {
    servicios.emplace(clave, servicio);
    pids += servicio->number_PIDs_CA;
    bitrate += servicio->peakBitRate;
    if (reglas::necesitaTranscoding(servicio->Transcoding))
        ++(reglas::esHD(servicio->VideoFormatE) ? transcodingHD : transcodingSD);
}

std::uint32_t Candidato::Lado::bitrateMax() const {
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
             sufijo, static_cast<int>(transcodingHD), sufijo, modulo.HD_MAX_Transcoding, sufijo,
             static_cast<int>(transcodingSD), sufijo, modulo.SD_MAX_Transcoding);
}

bool Candidato::Lado::bastanPIDs() const {
    return reglas::bastaConSigno(modulo.PIDsModuloMax, pids);
}

bool Candidato::Lado::bastanTranscoders() const {
    return reglas::bastaConSigno(modulo.HD_MAX_Transcoding, transcodingHD) &&
           reglas::bastaConSigno(modulo.SD_MAX_Transcoding, transcodingSD);
}

bool Candidato::Lado::bastaBitrate() const {
    return reglas::bastaConSigno(bitrateMax(), bitrate);
}

// The outputs start empty; the services with the highest keys find their place first.
bool Candidato::Lado::colocarEnCopia(tRecalculo& motor) {
    copia = modulo;
    for (auto& [idSalida, salida] : copia.mapSalidas) {
        salida.MapaServicios.clear();
        salida.BitRateActual = 0;
        salida.NumServicios = 0;
    }
    for (auto it = servicios.rbegin(); it != servicios.rend(); ++it)
        if (motor.Find_OutputID_to_insert_Service(copia, it) == 0)
            return false;
    return true;
}

// Sees that the service stands on an input: on the one that receives its stream, if there is one.
bool Candidato::Lado::asegurarEnEntrada(const Ficha& ficha) {
    tRec_Entrada* destino = nullptr;
    bool enOtra = false;
    for (auto& [numero, entrada] : copia.mapEntradas) {
        const bool esta = buscarFicha(entrada.MapaServicios, ficha) != entrada.MapaServicios.end();
        const bool delStream = reglas::recibe(entrada, ficha.servicio->ONID, ficha.servicio->TSID);
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
