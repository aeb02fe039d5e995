// A module input: its tuning, its services, its frame in the dumps.

#include "../log/SinFortify.h"

#include "tRec_Entrada.h"

#include "../log/Marcos.h"
#include "Servicios.h"

namespace zarven {

tRec_Entrada::tRec_Entrada(unsigned short numEntrada) : NumEntrada(numEntrada) {}

int tRec_Entrada::confEntrada(unsigned short tsid, unsigned short onid) {
    TSID = tsid;
    ONID = onid;
    return 1;
}

unsigned short tRec_Entrada::getSatIdfromService() const {
    return MapaServicios.empty() ? static_cast<unsigned short>(0) : MapaServicios.begin()->second->SatId;
}

int tRec_Entrada::addServicioALaEntrada(std::shared_ptr<tRec_Servicio> s) {
    if (!s)
        return 0;
    MapaServicios.emplace(s->idService, s);
    s->pEntrada = this;
    return 1;
}

int tRec_Entrada::DeleteServicioALaEntrada(std::shared_ptr<tRec_Servicio> s) {
    if (!s)
        return 0;
    if (MapaServicios.erase(s->idService) == 0)
        return ERROR_SERVICIO_NO_ESTA;
    // The output's back-reference goes, the input's stays.
    s->pSalida = nullptr;
    return 1;
}

void tRec_Entrada::Print_Info_Entrada() const {
    if (!marcos::seRegistra())
        return;
    marcos::linea(marcos::ENTRADA_CORTA_BORDE);
    marcos::linea(marcos::ENTRADA_CORTA_BLANCO);
    ::syslog(LOG_DEBUG,
             "    --               [ENTRADA %d] TSID: %d  --> ONID:%d"
             "                                                    --",
             NumEntrada, TSID, ONID);
    marcos::linea(marcos::ENTRADA_CORTA_BLANCO);
    marcos::linea(marcos::ENTRADA_CORTA_BORDE);
}

void tRec_Entrada::Print_Entrada() const {
    if (!marcos::seRegistra())
        return;
    marcos::linea(marcos::BLANCO);
    marcos::linea(marcos::ENTRADA_BORDE);
    marcos::linea(marcos::ENTRADA_BLANCO);
    ::syslog(LOG_DEBUG, "|| --               [ENTRADA %d] TSID: %d  --> ONID:%d\t\t\t\t\t\t  -- ||",
             NumEntrada, TSID, ONID);
    marcos::linea(marcos::ENTRADA_BLANCO);
    marcos::linea(marcos::ENTRADA_BORDE);
    Print_MapaServicios();
}

void tRec_Entrada::Print_MapaServicios() const {
    volcarServicios(MapaServicios);
}

} // namespace zarven
