// A logical output: its load, its services, its frame in the dumps.

#include "../log/SinFortify.h"

#include "tRec_Salida.h"

#include "../log/Marcos.h"
#include "Servicios.h"

namespace zarven {

tRec_Salida::tRec_Salida(unsigned short numSalida, unsigned short numServiciosMax)
    : NumSalida(numSalida), NumServiciosMax(numServiciosMax) {}

int tRec_Salida::confSalida(unsigned long bitRateMax) {
    BitRateMax = static_cast<std::uint32_t>(bitRateMax);
    return 1;
}

int tRec_Salida::addServicioALaSalida(std::shared_ptr<tRec_Servicio> s) {
    if (!s)
        return 0;
    MapaServicios.emplace(s->idService, s);
    s->pSalida = this;
    BitRateActual += s->peakBitRate;
    return 1;
}

int tRec_Salida::DeleteServicioALaSalida(std::shared_ptr<tRec_Servicio> s) {
    if (!s)
        return 0;
    if (MapaServicios.erase(s->idService) == 0)
        return ERROR_SERVICIO_NO_ESTA;
    s->pSalida = nullptr;
    BitRateActual -= s->peakBitRate;
    return 1;
}

void tRec_Salida::Print_Info_Salida() const {
    if (!marcos::seRegistra())
        return;
    marcos::linea(marcos::SALIDA_CORTA_BORDE);
    marcos::linea(marcos::SALIDA_CORTA_BLANCO);
    ::syslog(LOG_DEBUG,
             "             $$                              [SALIDA %d] BitRateMax: %d  --> BitRate Actual:%d"
             "                       $$",
             NumSalida, static_cast<int>(BitRateMax), static_cast<int>(BitRateActual));
    marcos::linea(marcos::SALIDA_CORTA_BLANCO);
    marcos::linea(marcos::SALIDA_CORTA_BORDE);
}

void tRec_Salida::Print_Salida() const {
    if (!marcos::seRegistra())
        return;
    marcos::linea(marcos::BLANCO);
    marcos::linea(marcos::SALIDA_BORDE);
    marcos::linea(marcos::SALIDA_BLANCO);
    ::syslog(
        LOG_DEBUG,
        "|| $$                              [SALIDA %d] BitRateMax: %d  --> BitRate Actual:%d\t\t  $$ ||",
        NumSalida, static_cast<int>(BitRateMax), static_cast<int>(BitRateActual));
    marcos::linea(marcos::SALIDA_BLANCO);
    marcos::linea(marcos::SALIDA_BORDE);
    Print_MapaServicios();
}

void tRec_Salida::Print_MapaServicios() const {
    volcarServicios(MapaServicios);
}

} // namespace zarven
