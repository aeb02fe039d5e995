// The service record: how it is built, how it takes over its PIDs, and its block in the dumps.

#include "../log/SinFortify.h"

#include "tRec_Servicio.h"

#include <utility>

#include "../log/Marcos.h"
#include "../reglas/Reglas.h"

namespace zarven {

tRec_Servicio::tRec_Servicio(unsigned short osid, unsigned short sid, unsigned short idService_LCN,
                             unsigned short reservado1, unsigned short simulcastLCN, unsigned short descifrar,
                             unsigned short pidsCA, unsigned short pidsCAMax, unsigned long videoPeak,
                             unsigned long peak, unsigned short tipo, unsigned short videoFormat,
                             unsigned short reservado2, std::string nombreEntrada, std::string nombreSalida,
                             unsigned short nombreForzado, unsigned short transcoding, unsigned short onid,
                             unsigned short tsid, unsigned short reservado3, unsigned short satId)
    : idService(idService_LCN), OSID(osid), SID(sid), LCN(idService_LCN), Reservado1(reservado1),
      SimulcastLCN(simulcastLCN), Descifrar(descifrar), number_PIDs_CA(pidsCA), number_PIDs_CA_Max(pidsCAMax),
      peakBitRate(static_cast<std::uint32_t>(peak)), videoPeakBitRate(static_cast<std::uint32_t>(videoPeak)),
      Tipo(tipo), VideoFormatE(videoFormat), Reservado2(reservado2), NombreEntrada(std::move(nombreEntrada)),
      NombreSalida(std::move(nombreSalida)), NombreForzado(nombreForzado), Transcoding(transcoding),
      Reservado3(reservado3), SatId(satId), ONID(onid), TSID(tsid) {}

tRec_Servicio::tRec_Servicio(unsigned short osid, unsigned short sid, unsigned short idService_LCN,
                             unsigned short reservado1, unsigned short simulcastLCN, unsigned short descifrar,
                             unsigned short tipo, unsigned short videoFormat, unsigned short reservado2,
                             std::string nombreEntrada, std::string nombreSalida, unsigned long videoPeak,
                             unsigned short nombreForzado, unsigned short transcoding, unsigned short onid,
                             unsigned short tsid, unsigned short reservado3, unsigned short parentSID,
                             unsigned short satId)
    : tRec_Servicio(osid, sid, idService_LCN, reservado1, simulcastLCN, descifrar, 0, 0, videoPeak, 0, tipo,
                    videoFormat, reservado2, std::move(nombreEntrada), std::move(nombreSalida), nombreForzado,
                    transcoding, onid, tsid, reservado3, satId) {
    Parent_SID = parentSID;
}

int tRec_Servicio::addPID_AlServicio(std::unique_ptr<tRec_PID> pid) {
    if (!pid)
        return 0;
    pid->pServicio = this;
    const long idPSG = pid->idPSG;
    // A duplicate is not kept, and destroyed in this call.
    MapaPIDs.emplace(idPSG, std::move(pid));
    ::syslog(LOG_DEBUG, "Añadimos PID al servicio %i", SID);
    return 1;
}

void tRec_Servicio::Print_Servicio(int n) const {
    if (!marcos::seRegistra())
        return;
    marcos::linea(marcos::SERVICIO_APERTURA);
    if (Parent_SID != 0)
        ::syslog(LOG_DEBUG,
                 "|| ||                                   [ -%d- ] ---> Parent_SID: %d"
                 "                                     || ||",
                 n, Parent_SID);
    else
        ::syslog(LOG_DEBUG,
                 "|| ||                                           [ -%d- ]"
                 "                                                  || ||",
                 n);
    if (reglas::ocupaTranscoder(Transcoding))
        marcos::linea("|| ||"
                      "········································"
                      "TRANSCODING ACTIVADO"
                      "········································"
                      "|| ||");
    ::syslog(
        LOG_DEBUG,
        "|| ||   NombreEntrada: %s  --> NombreSalida:%s   --> NombreForzado: %d  Tipo %i    VideoFormatE: %d"
        "                             || ||",
        NombreEntrada.c_str(), NombreSalida.c_str(), NombreForzado, Tipo, VideoFormatE);
    ::syslog(LOG_DEBUG, "|| ||   idService: %d  --> OSID:%d   --> SID: %d || ||", static_cast<int>(idService),
             OSID, SID);
    ::syslog(
        LOG_DEBUG,
        "|| ||   Descifrar: %d --> Nº PIDs CA:%d / %d --> LCN: %d --> SimulcastLCN: %d --> PeakBitarte: %d"
        "       || ||",
        Descifrar, number_PIDs_CA, number_PIDs_CA_Max, LCN, SimulcastLCN, static_cast<int>(peakBitRate));
    ::syslog(LOG_DEBUG,
             "|| ||   Video Peak BitRate: %i"
             "                                                                            || ||",
             static_cast<int>(videoPeakBitRate));
    marcos::linea(marcos::SERVICIO_BLANCO);
    Print_MapaPIDs();
    marcos::linea(marcos::SERVICIO_CIERRE);
}

void tRec_Servicio::Print_MapaPIDs() const {
    if (!marcos::seRegistra())
        return;
    marcos::linea(marcos::PIDS_BORDE);
    marcos::linea("|| ||  % %                                     PIDs Bloqueados"
                  "                                       % % || ||");
    marcos::linea(marcos::PIDS_BLANCO);
    if (MapaPIDs.empty())
        return;
    int n = 0;
    for (const auto& [idPSG, pid] : MapaPIDs)
        pid->Print_PID(++n);
    marcos::linea(marcos::PIDS_BLANCO);
    marcos::linea(marcos::PIDS_BORDE);
}

} // namespace zarven
