// The exchange of a principal and an auxiliar service, step by step.
//
// Both are staged in the index beside the service in hand and placed from there. A step that fails ends the
// attempt and undoes nothing: what was staged is unassigned from then on, what was moved stays moved.

#include "../log/SinFortify.h"

#include "ServicioEnMano.h"

#include <syslog.h>
#include <unistd.h>

#include "../engine/Indice.h"
#include "../log/Marcos.h"

namespace zarven {

ServicioEnMano::Resultado ServicioEnMano::permutar(const Ficha& principal, const Ficha& auxiliar) {
    const auto itPrincipal = prepararPrincipal(principal);
    const auto itAuxiliar = prepararAuxiliar(auxiliar);
    if (!quitarPrincipal(itPrincipal) || !quitarAuxiliar(itAuxiliar) || !llevarPrincipal(itPrincipal) ||
        !traerAuxiliar(itAuxiliar, principal) || !colocarOriginal())
        return {};

    ::syslog(LOG_DEBUG, "Eliminaremos el servicio ORIGINAL %d de la lista de TSIDs ( %d )",
             static_cast<int>(ficha_Out.clave), tsid_Out);
    servicios_Out.erase(ficha_Out.clave);
    const int clear = motor.Clear_ONID_TSID(onid_Out, tsid_Out);
    ::syslog(LOG_DEBUG, "clear = %d", clear);
    return clear;
}

tMapaServicios::iterator ServicioEnMano::prepararPrincipal(const Ficha& principal) {
    ::syslog(LOG_DEBUG, " Añadiremos el servicio principal ( %d ) a la lista de servicios sin asignar ",
             static_cast<int>(principal.clave));
    ::syslog(LOG_DEBUG,
             " itService_Salida->first [%d] - itService_Salida->second->ONID [%d] - "
             "itService_Salida->second->TSID [%d]",
             static_cast<int>(principal.clave), principal.servicio->ONID, principal.servicio->TSID);
    return servicios_Out.emplace(principal.clave, principal.servicio);
}

tMapaServicios::iterator ServicioEnMano::prepararAuxiliar(const Ficha& auxiliar) {
    ::syslog(LOG_DEBUG, " Añadiremos el servicio auxiliar ( %d ) a la lista de servicios sin asignar",
             static_cast<int>(auxiliar.clave));
    ::syslog(LOG_DEBUG,
             " itService_Salida_Aux->first [%d] - itService_Salida_Aux->second->ONID [%d] - "
             "itService_Salida_Aux->second->TSID [%d]",
             static_cast<int>(auxiliar.clave), auxiliar.servicio->ONID, auxiliar.servicio->TSID);
    return servicios_Out.emplace(auxiliar.clave, auxiliar.servicio);
}

bool ServicioEnMano::quitarPrincipal(tMapaServicios::iterator itPrincipal) {
    const int clave = static_cast<int>(itPrincipal->first);
    marcos::linea(" Intentaremos eliminar el servicio principal del módulo principal al que estaba asignado");
    ::syslog(
        LOG_DEBUG,
        "Try_to_Delete_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[0] %s), itEntrada %d, "
        "itService_Salida %d)",
        MAC[0].c_str(), NumEntrada, clave);
    if (motor.Try_to_Delete_Service_Input_Output(extremos[0].modulo, extremos[0].entrada, itPrincipal) == 0) {
        ::syslog(LOG_DEBUG, "No se ha podido eliminar el servicio principal %d", clave);
        return false;
    }
    motor.Print_Mapa_ONIDs(motor.Mapa_ONIDs);
    return true;
}

bool ServicioEnMano::quitarAuxiliar(tMapaServicios::iterator itAuxiliar) {
    const int clave = static_cast<int>(itAuxiliar->first);
    marcos::linea(" Intentaremos eliminar el servicio auxiliar del Módulo auxiliar al que estaba asignado");
    ::syslog(
        LOG_DEBUG,
        "Try_to_Delete_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[1] %s), itEntradaAux %d, "
        "itService_Salida_Aux %d)",
        MAC[1].c_str(), NumEntradaAux, clave);
    if (motor.Try_to_Delete_Service_Input_Output(extremos[1].modulo, extremos[1].entrada, itAuxiliar) == 0) {
        ::syslog(LOG_DEBUG, "No se ha podido eliminar el servicio auxiliar %d", clave);
        return false;
    }
    return true;
}

bool ServicioEnMano::llevarPrincipal(tMapaServicios::iterator itPrincipal) {
    const long clave = itPrincipal->first;
    marcos::linea(" Intentaremos añadir el servicio principal al módulo auxiliar");
    ::syslog(
        LOG_DEBUG,
        "Try_to_Insert_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[1] %s), itEntradaAux %d,  "
        "itTSID->second.MapRec_Services.find(idService_itService_Salida) %d)",
        MAC[1].c_str(), NumEntradaAux, static_cast<int>(clave));
    if (motor.Try_to_Insert_Service_Input_Output(extremos[1].modulo->second, extremos[1].entrada->second,
                                                 itPrincipal) == 0) {
        ::syslog(LOG_DEBUG, "No se ha podido añadir el servicio principal al módulo auxiliar %d",
                 static_cast<int>(clave));
        return false;
    }
    ::syslog(LOG_DEBUG, "Eliminaremos el servicio %d de la lista de TSIDs ( %d )", static_cast<int>(clave),
             tsid_Out);
    retirar(clave);
    return true;
}

bool ServicioEnMano::traerAuxiliar(tMapaServicios::iterator itAuxiliar, const Ficha& principal) {
    const long clave = itAuxiliar->first;
    marcos::linea(" Intentaremos añadir el servicio auxiliar al módulo principal");
    ::syslog(
        LOG_DEBUG,
        "Try_to_Insert_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[0] %s), itEntrada %d,  "
        "itTSID->second.MapRec_Services.find(idService_itService_Salida_Aux) %d)",
        MAC[0].c_str(), NumEntrada, static_cast<int>(clave));
    if (motor.Try_to_Insert_Service_Input_Output(extremos[0].modulo->second, extremos[0].entrada->second,
                                                 itAuxiliar) == 0) {
        ::syslog(LOG_DEBUG, "No se ha podido añadir el servicio auxiliar al módulo principal %d",
                 static_cast<int>(clave));
        return false;
    }
    // The line names the principal and its stream, as far as the index still knows that.
    const Rec_TSID* stream = buscarTSID(motor.Mapa_ONIDs, principal.servicio->ONID, principal.servicio->TSID);
    ::syslog(LOG_DEBUG, "Eliminaremos el servicio %d de la lista de TSIDs ( %d )",
             static_cast<int>(principal.clave), stream == nullptr ? 0 : stream->TSID);
    retirar(clave);
    return true;
}

bool ServicioEnMano::colocarOriginal() {
    tRec_Modulo& modulo = extremos[0].modulo->second;
    const int clave = static_cast<int>(ficha_Out.clave);
    marcos::linea(" Intentaremos añadir el servicio ORIGINAL que queriamos añadir al módulo principal");
    ::sleep(1);
    ::syslog(
        LOG_DEBUG,
        "Try_to_Insert_Service_Input_Output (Mapa_ModulosCabecera_Proceso.find(MAC[0] %s), "
        "Mapa_ModulosCabecera_Proceso.find(MAC[0])->second.mapEntradas.find ( NumEntrada_Service_Out) %d,  "
        "itTSID->second.MapRec_Services.find(idService_itService_Out) %d)",
        MAC[0].c_str(), NumEntrada_Service_Out, clave);
    tRec_Entrada& entrada = modulo.mapEntradas.find(NumEntrada_Service_Out)->second;
    if (motor.Try_to_Insert_Service_Input_Output(modulo, entrada, itService_Out) == 0) {
        ::syslog(LOG_DEBUG, "No se ha podido añadir el servicio ORIGINAL al módulo principal %d", clave);
        return false;
    }
    return true;
}

// Erasing by key takes every entry with that key along; the service in hand must not get lost that way.
void ServicioEnMano::retirar(long clave) {
    servicios_Out.erase(clave);
    if (clave == ficha_Out.clave)
        itService_Out = servicios_Out.emplace(ficha_Out.clave, ficha_Out.servicio);
}

} // namespace zarven
