#include "support/Huella.h"

using namespace zarven;

namespace huella {

namespace {

template <class... Numeros> void numeros(Huella& h, Numeros... n) {
    (h.numero(static_cast<std::int64_t>(n)), ...);
}

void anadir(Huella& h, const tRec_Servicio& s) {
    numeros(h, s.idService, s.OSID, s.SID, s.LCN, s.number_PIDs_CA, s.number_PIDs_CA_Max, s.peakBitRate,
            s.videoPeakBitRate, s.VideoFormatE, s.Transcoding, s.Parent_SID, s.SatId, s.ONID, s.TSID,
            s.MapaPIDs.size());
    h.texto(s.NombreEntrada);
    h.texto(s.NombreSalida);
    for (const auto& [idPSG, pid] : s.MapaPIDs) {
        numeros(h, idPSG, pid->idPSG, pid->Orden, pid->SID, pid->pServicio == &s);
        h.texto(pid->AudioCode);
    }
}

// With an entry that holds nothing told apart.
void anadir(Huella& h, const std::shared_ptr<tRec_Servicio>& s) {
    numeros(h, s != nullptr);
    if (s != nullptr)
        anadir(h, *s);
}

void anadir(Huella& h, const tMapaServicios& servicios) {
    numeros(h, servicios.size());
    for (const auto& [clave, servicio] : servicios) {
        numeros(h, clave);
        anadir(h, servicio);
    }
}

template <class Lista> void anadirLista(Huella& h, const Lista& lista) {
    numeros(h, lista.size());
    for (const auto& servicio : lista)
        anadir(h, servicio);
}

void anadir(Huella& h, const tMapaONIDs& indice) {
    numeros(h, indice.size());
    for (const auto& [onid, rec_onid] : indice) {
        numeros(h, onid, rec_onid.ONID, rec_onid.MapRec_TSIDs.size());
        for (const auto& [tsid, rec_tsid] : rec_onid.MapRec_TSIDs) {
            numeros(h, tsid, rec_tsid.TSID);
            anadir(h, rec_tsid.MapRec_Services);
        }
    }
}

void anadir(Huella& h, const tMapaModulos& modulos) {
    numeros(h, modulos.size());
    for (const auto& [mac, m] : modulos) {
        h.texto(mac);
        h.texto(m.MAC);
        numeros(h, m.Controlador, m.Modelo, m.PIDsModulo, m.PIDsModuloMax, m.SD_MAX_Transcoding,
                m.SD_Transcoding, m.HD_MAX_Transcoding, m.HD_Transcoding, m.AUX_MAX_Transcoding,
                m.AUX_Transcoding, m.mapEntradas.size(), m.mapSalidas.size());
        for (const auto& [numero, e] : m.mapEntradas) {
            numeros(h, numero, e.NumEntrada, e.ONID, e.TSID);
            anadir(h, e.MapaServicios);
        }
        for (const auto& [id, s] : m.mapSalidas) {
            numeros(h, id, s.NumSalida, s.BitRateActual, s.BitRateMax, s.NumServiciosMax, s.NumServicios);
            anadir(h, s.MapaServicios);
        }
    }
}

} // namespace

std::uint64_t cargado(const tRecalculo& motor) {
    Huella h;
    anadir(h, motor.Mapa_ModulosCabecera_Inicial);
    anadir(h, motor.Mapa_ONIDs_Inicial);
    anadir(h, motor.Mapa_HomeChannels);
    anadirLista(h, motor.listaServicios);
    anadirLista(h, motor.listaServiciosClonados);
    return h.valor();
}

std::uint64_t resultado(const tRecalculo& motor) {
    Huella h;
    anadir(h, motor.Mapa_ModulosCabecera_Final);
    anadir(h, motor.Mapa_ONIDs_Final);
    anadirLista(h, motor.listaServiciosClonados);
    return h.valor();
}

std::uint64_t modulos(const tMapaModulos& mapa) {
    Huella h;
    anadir(h, mapa);
    return h.valor();
}

} // namespace huella
