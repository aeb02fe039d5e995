#include "../log/SinFortify.h"

#include "BusquedaDePermuta.h"

#include <iterator>
#include <syslog.h>
#include <unistd.h>

#include "../log/Marcos.h"
#include "../reglas/Reglas.h"

namespace zarven {

namespace {

// With this resource code only modules of one model exchange services.
constexpr int RECURSO_MISMO_MODELO = 3;

int pidsLibres(const Extremo& extremo) {
    const tRec_Modulo& modulo = extremo.modulo->second;
    return reglas::pidsLibres(modulo.PIDsModulo, modulo.PIDsModuloMax);
}

} // namespace

int BusquedaDePermuta::hacerSitio() {
    elegirModulos();
    ::syslog(LOG_DEBUG, " MAC 1 %s y MAC 2 %s ", mac_[0].c_str(), mac_[1].c_str());
    if (mac_[0].empty() || mac_[1].empty())
        return 0;
    extremos_.principal = extremo(mac_[0], numEntrada_[0]);
    extremos_.auxiliar = extremo(mac_[1], numEntrada_[1]);
    extremos_.entradaEnMano = extremos_.principal.modulo->second.mapEntradas.find(numEntradaEnMano_);
    libres_ = {pidsLibres(extremos_.principal), pidsLibres(extremos_.auxiliar)};
    if (extremos_.principal.modulo->second.Modelo != extremos_.auxiliar.modulo->second.Modelo)
        return 0;
    marcos::linea(" Modulos NO vacios y compatibles");
    return recorrerSalidas().value_or(0);
}

void BusquedaDePermuta::elegirModulos() {
    for (auto it = receptores_.siguiente(receptores_.principio(), enMano_.onid, enMano_.tsid);
         it != receptores_.fin(); it = receptores_.siguiente(std::next(it), enMano_.onid, enMano_.tsid)) {
        const auto& [mac, modulo] = *it;
        if (registra_)
            ::syslog(LOG_DEBUG, " itModulo %s ", mac.c_str());
        for (const auto& [numero, entrada] : modulo.mapEntradas) {
            if (registra_)
                ::syslog(LOG_DEBUG, " itModulo %s itEntradaModulo %d", mac.c_str(), numero);
            anotarEntrada(mac, numero, entrada);
        }
        // A search that found no MAC[1] is repeated for every module to come, to the same end.
        if (mac_[0].empty())
            onid_ = tsid_ = numEntrada_[0] = 0;
        else if (elegirAuxiliar() || !registra_)
            break;
    }
}

// The last input of MAC[0] that receives another stream gives the stream of the exchange.
void BusquedaDePermuta::anotarEntrada(const std::string& mac, unsigned short numero,
                                      const tRec_Entrada& entrada) {
    if (reglas::recibe(entrada, enMano_.onid, enMano_.tsid)) {
        if (!mac_[0].empty())
            return;
        mac_[0] = mac;
        numEntradaEnMano_ = numero;
        ::syslog(LOG_DEBUG, " MAC 1 %s ", mac.c_str());
    } else if (mac_[0].empty() || mac_[0] == mac) {
        onid_ = entrada.ONID;
        tsid_ = entrada.TSID;
        numEntrada_[0] = numero;
    }
}

bool BusquedaDePermuta::elegirAuxiliar() {
    ::syslog(LOG_DEBUG, " Buscaremos modulos con ONID %d  y TSID %d NumEntrada %d ", onid_, tsid_,
             numEntrada_[0]);
    const unsigned short modelo = motor_.Mapa_ModulosCabecera_Proceso.find(mac_[0])->second.Modelo;
    for (auto it = receptores_.siguiente(receptores_.principio(), onid_, tsid_); it != receptores_.fin();
         it = receptores_.siguiente(std::next(it), onid_, tsid_)) {
        const auto& [mac, modulo] = *it;
        if (registra_)
            ::syslog(LOG_DEBUG, " itModuloAux %s", mac.c_str());
        if (mac == mac_[0] || (recurso_ == RECURSO_MISMO_MODELO && modulo.Modelo != modelo))
            continue;
        for (const auto& [numero, entrada] : modulo.mapEntradas) {
            if (registra_)
                registrarEntrada(numero, entrada);
            if (!reglas::recibe(entrada, onid_, tsid_))
                continue;
            mac_[1] = mac;
            numEntrada_[1] = numero;
            ::syslog(LOG_DEBUG, " MAC 2 %s ", mac.c_str());
            return true;
        }
    }
    return false;
}

void BusquedaDePermuta::registrarEntrada(unsigned short numero, const tRec_Entrada& entrada) const {
    ::syslog(LOG_DEBUG, " ENTRADA QUE BUSCAMOS ONID %d  y TSID %d NumEntrada %d ", onid_, tsid_,
             numEntrada_[0]);
    ::syslog(LOG_DEBUG, " ENTRADA ACTUAL ONID %d  y TSID %d NumEntrada %d ", entrada.ONID, entrada.TSID,
             numero);
}

Extremo BusquedaDePermuta::extremo(const std::string& mac, unsigned short numero) const {
    const auto modulo = motor_.Mapa_ModulosCabecera_Proceso.find(mac);
    return {modulo, modulo->second.mapEntradas.find(numero)};
}

BusquedaDePermuta::Resultado BusquedaDePermuta::recorrerSalidas() {
    for (auto& [idSalida, salida] : extremos_.principal.modulo->second.mapSalidas) {
        if (registra_) {
            ::syslog(LOG_DEBUG, " MAC 1 %s itSalida %d", mac_[0].c_str(), static_cast<int>(idSalida));
            for (const auto& [clave, servicio] : salida.MapaServicios)
                ::syslog(LOG_DEBUG, "itService_Salida->first %d", static_cast<int>(clave));
        }
        ::sleep(1);
        for (auto& [idSalidaAux, salidaAux] : extremos_.auxiliar.modulo->second.mapSalidas) {
            if (registra_) {
                ::syslog(LOG_DEBUG, " MAC 2 %s itSalida_Aux %d", mac_[1].c_str(),
                         static_cast<int>(idSalidaAux));
                for (const auto& [clave, servicio] : salidaAux.MapaServicios)
                    ::syslog(LOG_DEBUG, "itService_Salida_Aux->first %d", static_cast<int>(clave));
            }
            ::sleep(10);
            if (const Resultado resultado = recorrerPrincipales(salida, salidaAux))
                return resultado;
        }
    }
    return {};
}

BusquedaDePermuta::Resultado BusquedaDePermuta::recorrerPrincipales(tRec_Salida& salida,
                                                                    tRec_Salida& salidaAux) {
    for (PaseoEstable principales(salida.MapaServicios); principales.avanzar();) {
        if (registra_)
            ::syslog(LOG_DEBUG, " Evaluando nuevo Servicio Principal %d",
                     static_cast<int>(principales.clave()));
        if (!esDelStream(*principales.servicio()))
            continue;
        if (const Resultado resultado = recorrerAuxiliares(salida, salidaAux, principales))
            return resultado;
    }
    return {};
}

// A principal that an exchange has taken off and could not place stays in hand for the auxiliars to come.
BusquedaDePermuta::Resultado BusquedaDePermuta::recorrerAuxiliares(const tRec_Salida& salida,
                                                                   tRec_Salida& salidaAux,
                                                                   PaseoEstable& principales) {
    for (PaseoEstable auxiliares(salidaAux.MapaServicios); auxiliares.avanzar();) {
        if (!examinarPareja(salida, salidaAux, principales, auxiliares) || !hayEntrada())
            continue;
        // From here on the containers under all three walks change.
        enMano_.paseo.fijar();
        principales.fijar();
        auxiliares.fijar();
        if (const Resultado resultado = Permuta(motor_, enMano_, extremos_)
                                            .permutar({principales.clave(), principales.servicio()},
                                                      {auxiliares.clave(), auxiliares.servicio()}))
            return resultado;
    }
    return {};
}

// Tells, logging and pausing between its steps, whether the two can be exchanged.
bool BusquedaDePermuta::examinarPareja(const tRec_Salida& salida, const tRec_Salida& salidaAux,
                                       const PaseoEstable& principal, const PaseoEstable& auxiliar) const {
    const tRec_Servicio& va = *principal.servicio();
    const tRec_Servicio& viene = *auxiliar.servicio();
    if (registra_)
        ::syslog(LOG_DEBUG, " Evaluando nuevo Servicio Auxiliar %d", static_cast<int>(auxiliar.clave()));
    if (!esDelStream(viene))
        return false;
    if (registra_)
        marcos::linea("if ( itService_Salida_Aux->second->TSID != TSID ) continue;");
    if (auxiliar.clave() == principal.clave())
        return false;
    if (registra_)
        marcos::linea(" Son diferentes, seguimos");
    if (!bastanPIDs(va, viene))
        return false;
    if (registra_) {
        ::syslog(
            LOG_DEBUG,
            " 1. Si el número de pids libres en el módulo .... idService %d idService_Aux %d idService_Out %d",
            static_cast<int>(principal.clave()), static_cast<int>(auxiliar.clave()),
            static_cast<int>(enMano_.ficha.clave));
        marcos::linea(" Mirar si el cambio también es viable también teniendo en cuenta los BitRate");
    }
    ::sleep(1);
    return bastaBitrate(salida, salidaAux, va, viene);
}

bool BusquedaDePermuta::esDelStream(const tRec_Servicio& servicio) const {
    return reglas::esStream(servicio.ONID, servicio.TSID, onid_, tsid_);
}

bool BusquedaDePermuta::bastanPIDs(const tRec_Servicio& va, const tRec_Servicio& viene) const {
    const tRec_Servicio& entra = *enMano_.ficha.servicio;
    return reglas::bastanPIDsAlPermutar(libres_[0], va.number_PIDs_CA,
                                        viene.number_PIDs_CA + entra.number_PIDs_CA) &&
           reglas::bastanPIDsAlPermutar(libres_[1], viene.number_PIDs_CA, va.number_PIDs_CA);
}

bool BusquedaDePermuta::bastaBitrate(const tRec_Salida& salida, const tRec_Salida& salidaAux,
                                     const tRec_Servicio& va, const tRec_Servicio& viene) const {
    const tRec_Servicio& entra = *enMano_.ficha.servicio;
    return reglas::bastaBitrateAlPermutar(salida.BitRateActual, entra.peakBitRate + viene.peakBitRate,
                                          va.peakBitRate, salida.BitRateMax) &&
           reglas::bastaBitrateAlPermutar(salidaAux.BitRateActual, va.peakBitRate, viene.peakBitRate,
                                          salidaAux.BitRateMax);
}

// Where MAC[0] receives no other stream there is none. MAC[1] was found by its input.
bool BusquedaDePermuta::hayEntrada() const {
    return extremos_.principal.entrada != extremos_.principal.modulo->second.mapEntradas.end();
}

} // namespace zarven
