// Step by step: both are staged in the index beside the service in hand and placed from there. A step that
// fails ends the attempt and undoes nothing: what was staged is unassigned from then on, what was moved stays
// moved.

#include "../log/SinFortify.h"

#include "Permuta.h"

#include <syslog.h>
#include <unistd.h>

#include "../engine/Indice.h"
#include "../log/Marcos.h"

namespace zarven {

Permuta::Permuta(tRecalculo& motor, ServicioEnMano& enMano, const Extremos& extremos)
    : motor_(motor), enMano_(enMano),
      principal_{extremos.principal, "principal", "módulo principal", "MAC[0]", "itEntrada", "", " "},
      auxiliar_{extremos.auxiliar, "auxiliar", "Módulo auxiliar", "MAC[1]", "itEntradaAux", "_Aux", ""},
      entradaEnMano_(extremos.entradaEnMano) {}

std::optional<int> Permuta::permutar(const Ficha& principal, const Ficha& auxiliar) {
    const auto itPrincipal = apuntar(principal_, principal);
    const auto itAuxiliar = apuntar(auxiliar_, auxiliar);
    if (!quitar(principal_, itPrincipal))
        return {};
    motor_.Print_Mapa_ONIDs(motor_.Mapa_ONIDs);
    if (!quitar(auxiliar_, itAuxiliar) || !llevar(principal_, auxiliar_, itPrincipal))
        return {};
    retirar(principal.clave, principal.clave, enMano_.tsid);
    if (!llevar(auxiliar_, principal_, itAuxiliar))
        return {};
    // The line names the principal and its stream, as far as the index still knows that.
    const Rec_TSID* stream =
        buscarTSID(motor_.Mapa_ONIDs, principal.servicio->ONID, principal.servicio->TSID);
    retirar(auxiliar.clave, principal.clave, stream == nullptr ? 0 : stream->TSID);
    if (!colocarOriginal())
        return {};

    ::syslog(LOG_DEBUG, "Eliminaremos el servicio ORIGINAL %d de la lista de TSIDs ( %d )",
             static_cast<int>(enMano_.ficha.clave), enMano_.tsid);
    enMano_.servicios.erase(enMano_.ficha.clave);
    const int clear = motor_.Clear_ONID_TSID(enMano_.onid, enMano_.tsid);
    ::syslog(LOG_DEBUG, "clear = %d", clear);
    return clear;
}

tMapaServicios::iterator Permuta::apuntar(const Papel& papel, const Ficha& ficha) {
    ::syslog(LOG_DEBUG, " Añadiremos el servicio %s ( %d ) a la lista de servicios sin asignar%s",
             papel.nombre, static_cast<int>(ficha.clave), papel.blanco);
    ::syslog(LOG_DEBUG,
             " itService_Salida%s->first [%d] - itService_Salida%s->second->ONID [%d] - "
             "itService_Salida%s->second->TSID [%d]",
             papel.sufijo, static_cast<int>(ficha.clave), papel.sufijo, ficha.servicio->ONID, papel.sufijo,
             ficha.servicio->TSID);
    return enMano_.apuntar(ficha);
}

bool Permuta::quitar(const Papel& papel, tMapaServicios::iterator itService) {
    const int clave = static_cast<int>(itService->first);
    const auto [modulo, entrada] = papel.extremo;
    ::syslog(LOG_DEBUG, " Intentaremos eliminar el servicio %s del %s al que estaba asignado", papel.nombre,
             papel.modulo);
    ::syslog(LOG_DEBUG,
             "Try_to_Delete_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(%s %s), %s %d, "
             "itService_Salida%s %d)",
             papel.mac, modulo->first.c_str(), papel.entrada, entrada->first, papel.sufijo, clave);
    if (motor_.Try_to_Delete_Service_Input_Output(modulo, entrada, itService) == 0) {
        ::syslog(LOG_DEBUG, "No se ha podido eliminar el servicio %s %d", papel.nombre, clave);
        return false;
    }
    return true;
}

bool Permuta::llevar(const Papel& papel, const Papel& otro, tMapaServicios::iterator itService) {
    const int clave = static_cast<int>(itService->first);
    const auto [modulo, entrada] = otro.extremo;
    ::syslog(LOG_DEBUG, " Intentaremos añadir el servicio %s al módulo %s", papel.nombre, otro.nombre);
    ::syslog(LOG_DEBUG,
             "Try_to_Insert_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(%s %s), %s %d,  "
             "itTSID->second.MapRec_Services.find(idService_itService_Salida%s) %d)",
             otro.mac, modulo->first.c_str(), otro.entrada, entrada->first, papel.sufijo, clave);
    if (motor_.Try_to_Insert_Service_Input_Output(modulo->second, entrada->second, itService) == 0) {
        ::syslog(LOG_DEBUG, "No se ha podido añadir el servicio %s al módulo %s %d", papel.nombre,
                 otro.nombre, clave);
        return false;
    }
    return true;
}

void Permuta::retirar(long clave, long claveEnLinea, int tsidEnLinea) {
    ::syslog(LOG_DEBUG, "Eliminaremos el servicio %d de la lista de TSIDs ( %d )",
             static_cast<int>(claveEnLinea), tsidEnLinea);
    enMano_.retirar(clave);
}

bool Permuta::colocarOriginal() {
    const int clave = static_cast<int>(enMano_.ficha.clave);
    marcos::linea(" Intentaremos añadir el servicio ORIGINAL que queriamos añadir al módulo principal");
    ::sleep(1);
    ::syslog(
        LOG_DEBUG,
        "Try_to_Insert_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[0] %s), "
        "Mapa_ModulosCabecera_Proceso.find(MAC[0])->second.mapEntradas.find ( NumEntrada_Service_Out) %d,  "
        "itTSID->second.MapRec_Services.find(idService_itService_Out) %d)",
        principal_.extremo.modulo->first.c_str(), entradaEnMano_->first, clave);
    if (motor_.Try_to_Insert_Service_Input_Output(principal_.extremo.modulo->second, entradaEnMano_->second,
                                                  enMano_.it) == 0) {
        ::syslog(LOG_DEBUG, "No se ha podido añadir el servicio ORIGINAL al módulo principal %d", clave);
        return false;
    }
    return true;
}

} // namespace zarven
