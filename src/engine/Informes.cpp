// The reports: the result and the discarded services at level 5, the framed dumps of the maps at level 7.

#include "../log/SinFortify.h"

#include "tRecalculo.h"

#include <syslog.h>

#include "../log/Marcos.h"
#include "../model/Servicios.h"
#include "Indice.h"

namespace zarven {

namespace {

void cabeceraStream(unsigned short onid, unsigned short tsid) {
    ::syslog(LOG_NOTICE, "@ ---- ONID %d | TSID %d ", onid, tsid);
    ::syslog(LOG_NOTICE, "@ ----------------------------------");
}

void separador() {
    ::syslog(LOG_NOTICE, "@ -----------------------------------------");
}

// Both names, also when they are equal: every line of the report has the same form.
void nombres(const tMapaServicios& servicios) {
    for (const auto& [idService, servicio] : servicios)
        ::syslog(LOG_NOTICE, "@ --------- Name : %s --> %s", servicio->NombreEntrada.c_str(),
                 servicio->NombreSalida.c_str());
}

// The two dumps of an index differ by one blank line under the title.
void volcarIndice(const tMapaONIDs& indice, bool blancoTrasTitulo) {
    if (!marcos::seRegistra())
        return;
    int n = 0;
    cadaTSID(indice, [&](const Rec_ONID& onid, const Rec_TSID& stream) {
        marcos::linea(marcos::IGUALES);
        ::syslog(LOG_DEBUG,
                 "||                                       [ONID: %d |-| TSID: %d ]"
                 "                                          ||",
                 onid.ONID, stream.TSID);
        if (blancoTrasTitulo)
            marcos::linea(marcos::BLANCO);
        marcos::linea(marcos::BARRAS);
        n = volcarServicios(stream.MapRec_Services, n);
        marcos::linea(marcos::BARRAS);
        marcos::linea(marcos::IGUALES);
    });
}

void volcarModulos(const tMapaModulos& modulos) {
    if (!marcos::seRegistra())
        return;
    for (const auto& [mac, modulo] : modulos)
        modulo.Print_Modulo();
}

} // namespace

void tRecalculo::Print_Resultado(tMapaModulos& mapa) const {
    ::syslog(LOG_NOTICE, "@ SAT MODULES:");
    separador();
    for (auto it = mapa.begin(); it != mapa.end(); ++it) {
        ::syslog(LOG_NOTICE, "@ MAC: %s ", it->second.MAC.c_str());
        Print_Transponders_Resultado(it);
    }
}

void tRecalculo::Print_Transponders_Resultado(tMapaModulos::iterator itModulo) const {
    ::syslog(LOG_NOTICE, "@ ----- TRANSPONDERS");
    separador();
    for (const auto& [numero, entrada] : itModulo->second.mapEntradas) {
        cabeceraStream(entrada.ONID, entrada.TSID);
        nombres(entrada.MapaServicios);
    }
}

void tRecalculo::Print_Servicios_Resultado(tMapaServicios servicios) const {
    nombres(servicios);
}

void tRecalculo::Print_Descartados(tMapaONIDs& mapa) const {
    ::syslog(LOG_NOTICE, "@");
    ::syslog(LOG_NOTICE, "@");
    ::syslog(LOG_NOTICE, "@ DISCARDED SERVICES:");
    cadaTSID(mapa, [](const Rec_ONID& onid, const Rec_TSID& stream) {
        cabeceraStream(onid.ONID, stream.TSID);
        nombres(stream.MapRec_Services);
    });
}

void tRecalculo::Print_Mapa_ONIDs() const {
    volcarIndice(Mapa_ONIDs_Inicial, false);
}

void tRecalculo::Print_Mapa_ONIDs(tMapaONIDs& mapa) const {
    volcarIndice(mapa, true);
}

void tRecalculo::Print_MapaServiciosClonados() const {
    if (!marcos::seRegistra())
        return;
    marcos::linea(marcos::IGUALES);
    marcos::linea("||                                 [SERVICIOS CLONADOS SIN ASIGNAR ]"
                  "                                        ||");
    marcos::linea(marcos::BARRAS);
    int n = 0;
    for (const auto& clon : listaServiciosClonados)
        clon->Print_Servicio(++n);
    marcos::linea(marcos::BARRAS);
    marcos::linea(marcos::IGUALES);
}

void tRecalculo::Print_Home_Channels() const {
    if (!marcos::seRegistra())
        return;
    marcos::linea(marcos::MODULO_CORTO_BORDE);
    marcos::linea("    ~~                           Lista de Home Channels Configurados"
                  "                                       ~~");
    marcos::linea(marcos::MODULO_CORTO_BLANCO);
    int n = 0;
    for (const auto& [onid, red] : Mapa_HomeChannels) {
        // A network's first stream stands for all of them.
        const int tsid = red.MapRec_TSIDs.empty() ? 0 : red.MapRec_TSIDs.begin()->first;
        ::syslog(
            LOG_DEBUG,
            "    ~~  \t\t\t%d.  ONID: %d || TSID: %d                                                   ~~",
            ++n, onid, tsid);
        marcos::linea(marcos::MODULO_CORTO_BLANCO);
    }
    marcos::linea(marcos::MODULO_CORTO_BORDE);
}

void tRecalculo::Print_Mapa_Modulos(tMapaModulos& mapa) const {
    volcarModulos(mapa);
}

void tRecalculo::Print_Mapa_Modulos_original() const {
    volcarModulos(Mapa_ModulosCabecera_Inicial);
}

} // namespace zarven
