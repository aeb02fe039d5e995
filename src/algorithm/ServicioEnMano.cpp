// Choosing the two modules and the two services of an exchange.

#include "../log/SinFortify.h"

#include "ServicioEnMano.h"

#include <iterator>
#include <syslog.h>
#include <unistd.h>

#include "../log/Marcos.h"

namespace zarven {

namespace {

// With this resource code only modules of one model exchange services.
constexpr int RECURSO_MISMO_MODELO = 3;

int pidsLibres(const tRec_Modulo& modulo) {
    return modulo.PIDsModuloMax - modulo.PIDsModulo;
}

} // namespace

ServicioEnMano::ServicioEnMano(tRecalculo& engine, const Recorrido& modulos, int recursoCabecera,
                               unsigned short onid, unsigned short tsid, tMapaServicios& servicios,
                               Paseo& paseo)
    : motor(engine), recorrido(modulos), recurso(recursoCabecera), registra(modulos.registra()),
      onid_Out(onid), tsid_Out(tsid), servicios_Out(servicios),
      paseo_Out(paseo), ficha_Out{paseo.clave(), paseo.servicio()},
      itService_Out(buscarFicha(servicios, ficha_Out)) {}

int ServicioEnMano::hacerSitio() {
    elegirModulos();
    ::syslog(LOG_DEBUG, " MAC 1 %s y MAC 2 %s ", MAC[0].c_str(), MAC[1].c_str());
    if (MAC[0].empty() || MAC[1].empty())
        return 0;
    extremos = {extremo(MAC[0], NumEntrada), extremo(MAC[1], NumEntradaAux)};
    if (extremos[0].modulo->second.Modelo != extremos[1].modulo->second.Modelo)
        return 0;
    marcos::linea(" Modulos NO vacios y compatibles");
    return recorrerSalidas().value_or(0);
}

void ServicioEnMano::elegirModulos() {
    for (auto it = recorrido.siguiente(recorrido.principio(), onid_Out, tsid_Out); it != recorrido.fin();
         it = recorrido.siguiente(std::next(it), onid_Out, tsid_Out)) {
        const auto& [mac, modulo] = *it;
        if (registra)
            ::syslog(LOG_DEBUG, " itModulo %s ", mac.c_str());
        for (const auto& [numero, entrada] : modulo.mapEntradas) {
            if (registra)
                ::syslog(LOG_DEBUG, " itModulo %s itEntradaModulo %d", mac.c_str(), numero);
            anotarEntrada(mac, numero, entrada);
        }
        // A search that found no MAC[1] is repeated for every module to come, to the same end.
        if (MAC[0].empty())
            ONID = TSID = NumEntrada = 0;
        else if (elegirAuxiliar() || !registra)
            break;
    }
}

// The last input of MAC[0] that receives another stream gives the exchange stream.
void ServicioEnMano::anotarEntrada(const std::string& mac, unsigned short numero,
                                   const tRec_Entrada& entrada) {
    if (entrada.ONID == onid_Out && entrada.TSID == tsid_Out) {
        if (!MAC[0].empty())
            return;
        MAC[0] = mac;
        NumEntrada_Service_Out = numero;
        ::syslog(LOG_DEBUG, " MAC 1 %s ", mac.c_str());
    } else if (MAC[0].empty() || MAC[0] == mac) {
        ONID = entrada.ONID;
        TSID = entrada.TSID;
        NumEntrada = numero;
    }
}

bool ServicioEnMano::elegirAuxiliar() {
    ::syslog(LOG_DEBUG, " Buscaremos modulos con ONID %d  y TSID %d NumEntrada %d ", ONID, TSID, NumEntrada);
    const unsigned short modelo = motor.Mapa_ModulosCabecera_Proceso.find(MAC[0])->second.Modelo;
    for (auto it = recorrido.siguiente(recorrido.principio(), ONID, TSID); it != recorrido.fin();
         it = recorrido.siguiente(std::next(it), ONID, TSID)) {
        const auto& [mac, modulo] = *it;
        if (registra)
            ::syslog(LOG_DEBUG, " itModuloAux %s", mac.c_str());
        if (mac == MAC[0] || (recurso == RECURSO_MISMO_MODELO && modulo.Modelo != modelo))
            continue;
        for (const auto& [numero, entrada] : modulo.mapEntradas) {
            if (registra)
                registrarBusqueda(numero, entrada);
            if (entrada.ONID != ONID || entrada.TSID != TSID)
                continue;
            MAC[1] = mac;
            NumEntradaAux = numero;
            ::syslog(LOG_DEBUG, " MAC 2 %s ", mac.c_str());
            return true;
        }
    }
    return false;
}

void ServicioEnMano::registrarBusqueda(unsigned short numero, const tRec_Entrada& entrada) const {
    ::syslog(LOG_DEBUG, " ENTRADA QUE BUSCAMOS ONID %d  y TSID %d NumEntrada %d ", ONID, TSID, NumEntrada);
    ::syslog(LOG_DEBUG, " ENTRADA ACTUAL ONID %d  y TSID %d NumEntrada %d ", entrada.ONID, entrada.TSID,
             numero);
}

ServicioEnMano::Extremo ServicioEnMano::extremo(const std::string& mac, unsigned short numero) const {
    const auto modulo = motor.Mapa_ModulosCabecera_Proceso.find(mac);
    return {modulo, modulo->second.mapEntradas.find(numero), pidsLibres(modulo->second)};
}

ServicioEnMano::Resultado ServicioEnMano::recorrerSalidas() {
    for (auto& [idSalida, salida] : extremos[0].modulo->second.mapSalidas) {
        if (registra) {
            ::syslog(LOG_DEBUG, " MAC 1 %s itSalida %d", MAC[0].c_str(), static_cast<int>(idSalida));
            for (const auto& [clave, servicio] : salida.MapaServicios)
                ::syslog(LOG_DEBUG, "itService_Salida->first %d", static_cast<int>(clave));
        }
        ::sleep(1);
        for (auto& [idSalida_Aux, salida_Aux] : extremos[1].modulo->second.mapSalidas) {
            if (registra) {
                ::syslog(LOG_DEBUG, " MAC 2 %s itSalida_Aux %d", MAC[1].c_str(),
                         static_cast<int>(idSalida_Aux));
                for (const auto& [clave, servicio] : salida_Aux.MapaServicios)
                    ::syslog(LOG_DEBUG, "itService_Salida_Aux->first %d", static_cast<int>(clave));
            }
            ::sleep(10);
            if (const Resultado resultado = recorrerPrincipales(salida, salida_Aux))
                return resultado;
        }
    }
    return {};
}

ServicioEnMano::Resultado ServicioEnMano::recorrerPrincipales(tRec_Salida& salida, tRec_Salida& salida_Aux) {
    for (Paseo principales(salida.MapaServicios); principales.avanzar();) {
        if (registra)
            ::syslog(LOG_DEBUG, " Evaluando nuevo Servicio Principal %d",
                     static_cast<int>(principales.clave()));
        if (!esDeIntercambio(*principales.servicio()))
            continue;
        if (const Resultado resultado = recorrerAuxiliares(salida, salida_Aux, principales))
            return resultado;
    }
    return {};
}

// A principal that an exchange has taken off and could not place stays in hand for the auxiliars to come.
ServicioEnMano::Resultado ServicioEnMano::recorrerAuxiliares(const tRec_Salida& salida,
                                                             tRec_Salida& salida_Aux, Paseo& principales) {
    for (Paseo auxiliares(salida_Aux.MapaServicios); auxiliares.avanzar();) {
        if (registra)
            ::syslog(LOG_DEBUG, " Evaluando nuevo Servicio Auxiliar %d",
                     static_cast<int>(auxiliares.clave()));
        if (!esViable(salida, salida_Aux, principales, auxiliares) || !hayEntradas())
            continue;
        // From here on the containers under all three walks change.
        paseo_Out.fijar();
        principales.fijar();
        auxiliares.fijar();
        if (const Resultado resultado = permutar({principales.clave(), principales.servicio()},
                                                 {auxiliares.clave(), auxiliares.servicio()}))
            return resultado;
    }
    return {};
}

bool ServicioEnMano::esDeIntercambio(const tRec_Servicio& servicio) const {
    return servicio.ONID == ONID && servicio.TSID == TSID;
}

// Where MAC[0] receives no other stream NumEntrada is 0. MAC[1] was found by its input.
bool ServicioEnMano::hayEntradas() const {
    return extremos[0].entrada != extremos[0].modulo->second.mapEntradas.end();
}

// PIDs are weighed as signed numbers, bitrates modulo 2^32: a sum below zero becomes a large one and fails.
bool ServicioEnMano::esViable(const tRec_Salida& salida, const tRec_Salida& salida_Aux,
                              const Paseo& principal, const Paseo& auxiliar) const {
    const tRec_Servicio& va = *principal.servicio();
    const tRec_Servicio& viene = *auxiliar.servicio();
    const tRec_Servicio& entra = *ficha_Out.servicio;

    if (!esDeIntercambio(viene))
        return false;
    if (registra)
        marcos::linea("if ( itService_Salida_Aux->second->TSID != TSID ) continue;");
    if (auxiliar.clave() == principal.clave())
        return false;
    if (registra)
        marcos::linea(" Son diferentes, seguimos");

    if (extremos[0].libres + va.number_PIDs_CA - viene.number_PIDs_CA - entra.number_PIDs_CA < 0 ||
        extremos[1].libres + viene.number_PIDs_CA - va.number_PIDs_CA < 0)
        return false;
    if (registra) {
        ::syslog(
            LOG_DEBUG,
            " 1. Si el número de pids libres en el módulo .... idService %d idService_Aux %d idService_Out %d",
            static_cast<int>(principal.clave()), static_cast<int>(auxiliar.clave()),
            static_cast<int>(ficha_Out.clave));
        marcos::linea(" Mirar si el cambio también es viable también teniendo en cuenta los BitRate");
    }
    ::sleep(1);

    return salida.BitRateActual + entra.peakBitRate - va.peakBitRate + viene.peakBitRate <
               salida.BitRateMax &&
           salida_Aux.BitRateActual + va.peakBitRate - viene.peakBitRate < salida_Aux.BitRateMax;
}

} // namespace zarven
