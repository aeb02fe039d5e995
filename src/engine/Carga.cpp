// Loading the engine: modules, output bitrates, services, PIDs, home channels, and the index of services.

#include "../log/SinFortify.h"

#include "tRecalculo.h"

#include <algorithm>
#include <syslog.h>
#include <utility>

#include "../reglas/Reglas.h"
#include "Indice.h"

namespace zarven {

namespace {

// Charges the clone's CA PIDs to its parent, as far as the parent's ceiling allows, and takes its bitrate
// off: a clone travels with its parent.
void imputarClonAlPadre(tRec_Servicio& clon, tRec_Servicio& padre) {
    clon.Parent_SID = padre.SID;
    const auto suma = static_cast<unsigned short>(padre.number_PIDs_CA + clon.number_PIDs_CA);
    padre.number_PIDs_CA = std::min(suma, padre.number_PIDs_CA_Max);
    clon.number_PIDs_CA = 0;
    clon.peakBitRate = 0;
}

// The first service in the order of loading with that SID; null when there is none.
tRec_Servicio* buscarPorSID(const std::vector<std::shared_ptr<tRec_Servicio>>& lista, unsigned short sid) {
    const auto it = std::find_if(lista.begin(), lista.end(),
                                 [sid](const auto& servicio) { return servicio->SID == sid; });
    return it == lista.end() ? nullptr : it->get();
}

} // namespace

int tRecalculo::addModulo(std::string mac, unsigned short modelo, unsigned short numEntradas,
                          unsigned short numSalidas, unsigned short pidsModuloMax, bool controlador) {
    const auto [it, nuevo] = Mapa_ModulosCabecera_Inicial.try_emplace(mac, mac, controlador);
    if (!nuevo)
        return ERROR_MODULO_YA_CARGADO;
    // Configured where it will stay: its inputs and outputs keep its address.
    try {
        it->second.configurarModelo(modelo, numEntradas, numSalidas, pidsModuloMax);
    } catch (...) {
        Mapa_ModulosCabecera_Inicial.erase(it);
        throw;
    }
    return RETURN_OK;
}

int tRecalculo::configurarSalida(std::string mac, unsigned short idSalida, unsigned long bitrate) {
    const auto modulo = Mapa_ModulosCabecera_Inicial.find(mac);
    if (modulo == Mapa_ModulosCabecera_Inicial.end())
        return ERROR_SIN_MODULO;
    const auto salida = modulo->second.mapSalidas.find(idSalida);
    if (salida == modulo->second.mapSalidas.end())
        return ERROR_SIN_SALIDA;
    return salida->second.confSalida(bitrate);
}

int tRecalculo::addRec_Servicio(std::shared_ptr<tRec_Servicio> s) {
    if (!s)
        return 0;
    if (!reglas::esClonAlCargar(Mapa_ONIDs_Inicial, s->ONID, s->TSID, s->idService)) {
        listaServicios.push_back(s);
        try {
            abrirTSID(Mapa_ONIDs_Inicial, s->ONID, s->TSID).MapRec_Services.emplace(s->idService, s);
        } catch (...) {
            listaServicios.pop_back();
            cerrarTSID(Mapa_ONIDs_Inicial, s->ONID, s->TSID);
            throw;
        }
        return RETURN_OK;
    }

    tRec_Servicio* padre = nullptr;
    if (s->Parent_SID == 0) {
        // Not greater than the key of the service that is there.
        const long clavePadre = s->idService != 0 ? s->idService : -static_cast<long>(s->OSID);
        const auto it =
            buscarTSID(Mapa_ONIDs_Inicial, s->ONID, s->TSID)->MapRec_Services.lower_bound(clavePadre);
        if (it->first != clavePadre)
            return ERROR_CLON_SIN_PADRE;
        padre = it->second.get();
    }
    listaServiciosClonados.push_back(s);
    if (padre != nullptr)
        imputarClonAlPadre(*s, *padre);
    return RETURN_OK;
}

int tRecalculo::addRec_PID(std::unique_ptr<tRec_PID> pid) {
    if (!pid)
        return 0;
    // Clones first: a clone that shares its parent's SID gets the PID.
    tRec_Servicio* servicio = buscarPorSID(listaServiciosClonados, pid->SID);
    if (servicio == nullptr)
        servicio = buscarPorSID(listaServicios, pid->SID);
    if (servicio == nullptr)
        return ERROR_PID_SIN_SERVICIO;
    return servicio->addPID_AlServicio(std::move(pid));
}

int tRecalculo::addHomeChannel(unsigned short onid, unsigned short tsid) {
    if (buscarTSID(Mapa_HomeChannels, onid, tsid) != nullptr)
        return ERROR_HOME_CHANNEL_YA_CARGADO;
    try {
        abrirTSID(Mapa_HomeChannels, onid, tsid);
    } catch (...) {
        cerrarTSID(Mapa_HomeChannels, onid, tsid);
        throw;
    }
    return RETURN_OK;
}

int tRecalculo::Clear_ONID_TSID(int onid, int tsid) {
    const auto itONID = Mapa_ONIDs.find(static_cast<unsigned short>(onid));
    if (itONID == Mapa_ONIDs.end())
        return 0;
    auto& streams = itONID->second.MapRec_TSIDs;
    const auto itTSID = streams.find(static_cast<unsigned short>(tsid));
    if (itTSID == streams.end() || !itTSID->second.MapRec_Services.empty())
        return 0;

    streams.erase(itTSID);
    ::syslog(LOG_DEBUG, "ELIMINAMOS EL TSID: %d", tsid);
    if (!streams.empty())
        return 1;
    Mapa_ONIDs.erase(itONID);
    ::syslog(LOG_DEBUG, "ELIMINAMOS EL ONID: %d", onid);
    return 2;
}

unsigned short tRecalculo::num_servicios_original() const {
    return contarServicios(Mapa_ONIDs_Inicial);
}

unsigned short tRecalculo::num_servicios_procesado() const {
    return contarServicios(Mapa_ONIDs);
}

} // namespace zarven
