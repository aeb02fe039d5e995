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

std::optional<int> Permuta::permutar(const Ficha& principal, const Ficha& auxiliar) {
    const auto itPrincipal = apuntarPrincipal(principal);
    const auto itAuxiliar = apuntarAuxiliar(auxiliar);
    if (!quitarPrincipal(itPrincipal) || !quitarAuxiliar(itAuxiliar) || !llevarPrincipal(itPrincipal) ||
        !traerAuxiliar(itAuxiliar, principal) || !colocarOriginal())
        return {};

    ::syslog(LOG_DEBUG, "Eliminaremos el servicio ORIGINAL %d de la lista de TSIDs ( %d )",
             static_cast<int>(enMano_.ficha.clave), enMano_.tsid);
    enMano_.servicios.erase(enMano_.ficha.clave);
    const int clear = motor_.Clear_ONID_TSID(enMano_.onid, enMano_.tsid);
    ::syslog(LOG_DEBUG, "clear = %d", clear);
    return clear;
}

tMapaServicios::iterator Permuta::apuntarPrincipal(const Ficha& principal) {
    ::syslog(LOG_DEBUG, " Añadiremos el servicio principal ( %d ) a la lista de servicios sin asignar ",
             static_cast<int>(principal.clave));
    ::syslog(LOG_DEBUG,
             " itService_Salida->first [%d] - itService_Salida->second->ONID [%d] - "
             "itService_Salida->second->TSID [%d]",
             static_cast<int>(principal.clave), principal.servicio->ONID, principal.servicio->TSID);
    return enMano_.apuntar(principal);
}

tMapaServicios::iterator Permuta::apuntarAuxiliar(const Ficha& auxiliar) {
    ::syslog(LOG_DEBUG, " Añadiremos el servicio auxiliar ( %d ) a la lista de servicios sin asignar",
             static_cast<int>(auxiliar.clave));
    ::syslog(LOG_DEBUG,
             " itService_Salida_Aux->first [%d] - itService_Salida_Aux->second->ONID [%d] - "
             "itService_Salida_Aux->second->TSID [%d]",
             static_cast<int>(auxiliar.clave), auxiliar.servicio->ONID, auxiliar.servicio->TSID);
    return enMano_.apuntar(auxiliar);
}

bool Permuta::quitarPrincipal(tMapaServicios::iterator itPrincipal) {
    const int clave = static_cast<int>(itPrincipal->first);
    marcos::linea(" Intentaremos eliminar el servicio principal del módulo principal al que estaba asignado");
    ::syslog(
        LOG_DEBUG,
        "Try_to_Delete_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[0] %s), itEntrada %d, "
        "itService_Salida %d)",
        principal_.modulo->first.c_str(), principal_.entrada->first, clave);
    if (motor_.Try_to_Delete_Service_Input_Output(principal_.modulo, principal_.entrada, itPrincipal) == 0) {
        ::syslog(LOG_DEBUG, "No se ha podido eliminar el servicio principal %d", clave);
        return false;
    }
    motor_.Print_Mapa_ONIDs(motor_.Mapa_ONIDs);
    return true;
}

bool Permuta::quitarAuxiliar(tMapaServicios::iterator itAuxiliar) {
    const int clave = static_cast<int>(itAuxiliar->first);
    marcos::linea(" Intentaremos eliminar el servicio auxiliar del Módulo auxiliar al que estaba asignado");
    ::syslog(
        LOG_DEBUG,
        "Try_to_Delete_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[1] %s), itEntradaAux %d, "
        "itService_Salida_Aux %d)",
        auxiliar_.modulo->first.c_str(), auxiliar_.entrada->first, clave);
    if (motor_.Try_to_Delete_Service_Input_Output(auxiliar_.modulo, auxiliar_.entrada, itAuxiliar) == 0) {
        ::syslog(LOG_DEBUG, "No se ha podido eliminar el servicio auxiliar %d", clave);
        return false;
    }
    return true;
}

bool Permuta::llevarPrincipal(tMapaServicios::iterator itPrincipal) {
    const long clave = itPrincipal->first;
    marcos::linea(" Intentaremos añadir el servicio principal al módulo auxiliar");
    ::syslog(
        LOG_DEBUG,
        "Try_to_Insert_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[1] %s), itEntradaAux %d,  "
        "itTSID->second.MapRec_Services.find(idService_itService_Salida) %d)",
        auxiliar_.modulo->first.c_str(), auxiliar_.entrada->first, static_cast<int>(clave));
    if (motor_.Try_to_Insert_Service_Input_Output(auxiliar_.modulo->second, auxiliar_.entrada->second,
                                                  itPrincipal) == 0) {
        ::syslog(LOG_DEBUG, "No se ha podido añadir el servicio principal al módulo auxiliar %d",
                 static_cast<int>(clave));
        return false;
    }
    ::syslog(LOG_DEBUG, "Eliminaremos el servicio %d de la lista de TSIDs ( %d )", static_cast<int>(clave),
             enMano_.tsid);
    enMano_.retirar(clave);
    return true;
}

bool Permuta::traerAuxiliar(tMapaServicios::iterator itAuxiliar, const Ficha& principal) {
    const long clave = itAuxiliar->first;
    marcos::linea(" Intentaremos añadir el servicio auxiliar al módulo principal");
    ::syslog(
        LOG_DEBUG,
        "Try_to_Insert_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[0] %s), itEntrada %d,  "
        "itTSID->second.MapRec_Services.find(idService_itService_Salida_Aux) %d)",
        principal_.modulo->first.c_str(), principal_.entrada->first, static_cast<int>(clave));
    if (motor_.Try_to_Insert_Service_Input_Output(principal_.modulo->second, principal_.entrada->second,
                                                  itAuxiliar) == 0) {
        ::syslog(LOG_DEBUG, "No se ha podido añadir el servicio auxiliar al módulo principal %d",
                 static_cast<int>(clave));
        return false;
    }
    // The line names the principal and its stream, as far as the index still knows that.
    const Rec_TSID* stream =
        buscarTSID(motor_.Mapa_ONIDs, principal.servicio->ONID, principal.servicio->TSID);
    ::syslog(LOG_DEBUG, "Eliminaremos el servicio %d de la lista de TSIDs ( %d )",
             static_cast<int>(principal.clave), stream == nullptr ? 0 : stream->TSID);
    enMano_.retirar(clave);
    return true;
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
        principal_.modulo->first.c_str(), entradaEnMano_->first, clave);
    if (motor_.Try_to_Insert_Service_Input_Output(principal_.modulo->second, entradaEnMano_->second,
                                                  enMano_.it) == 0) {
        ::syslog(LOG_DEBUG, "No se ha podido añadir el servicio ORIGINAL al módulo principal %d", clave);
        return false;
    }
    return true;
}

} // namespace zarven
