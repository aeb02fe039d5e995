// Filling one input from the working index: choosing a stream for an untuned one, topping up a tuned one.

#include "tRecalculo.h"

#include <iterator>
#include <syslog.h>

#include "../log/Marcos.h"
#include "Indice.h"

namespace zarven {

namespace {

constexpr char MODO_MAX = 1;
constexpr char MODO_MIN = 3;

// What makes a service count when a stream is chosen.
struct Criterio {
    bool solo_claves_positivas; // some key is positive: keys of 0 and below do not count
    bool hay_transcoding;       // some service needs a transcoder: only those of the kind asked for count
    bool transcoding;           // the kind asked for

    bool cuenta(long clave, const tRec_Servicio& servicio) const {
        if (solo_claves_positivas && clave <= 0)
            return false;
        return !hay_transcoding || servicio.Transcoding == (transcoding ? 1 : 0);
    }
    int contar(const tMapaServicios& servicios) const {
        int n = 0;
        for (const auto& [clave, servicio] : servicios)
            n += cuenta(clave, *servicio);
        return n;
    }
};

struct Eleccion {
    unsigned short ONID;
    unsigned short TSID;
    Rec_TSID* stream; // null: none chosen
};

// The stream with the most (MODO_MAX) or fewest (MODO_MIN) services that count, and at least one; the first
// of equals.
Eleccion elegirStream(tMapaONIDs& indice, char modo, const Criterio& criterio) {
    Eleccion elegido{0, 0, nullptr};
    int mejor = modo == MODO_MAX ? 0 : 99999;
    for (auto& [onid, rec_onid] : indice)
        for (auto& [tsid, stream] : rec_onid.MapRec_TSIDs) {
            const int n = criterio.contar(stream.MapRec_Services);
            if (n != 0 && (modo == MODO_MAX ? n > mejor : n < mejor)) {
                mejor = n;
                elegido = {onid, tsid, &stream};
            }
        }
    return elegido;
}

// Tries one service of the index; placed, it leaves the index. Gives the entry that comes next.
tMapaServicios::iterator colocar(tRecalculo& motor, tRec_Modulo& modulo, tRec_Entrada& entrada,
                                 tMapaServicios& servicios, tMapaServicios::iterator it, int& colocados) {
    if (motor.Try_to_Insert_Service_Input_Output(modulo, entrada, it) == 0)
        return std::next(it);
    ++colocados;
    return servicios.erase(it);
}

} // namespace

int tRecalculo::Asignar_listaServicios(tRec_Modulo& modulo, tRec_Entrada& entrada, char modo,
                                       bool transcoding) {
    const Criterio criterio{Exist_Service_with_idService(), Exist_Transcoding_Service(), transcoding};
    marcos::vacia();
    ::syslog(LOG_DEBUG, "exists_Transcoding_Services %d", criterio.hay_transcoding);
    marcos::vacia();
    if (modo != MODO_MAX && modo != MODO_MIN)
        return 0;

    const Eleccion elegido = elegirStream(Mapa_ONIDs, modo, criterio);
    if (elegido.stream == nullptr)
        return 0;
    ::syslog(LOG_DEBUG, "MAC[%s]: ONID= %d / TSID %d", modulo.MAC.c_str(), elegido.ONID, elegido.TSID);

    tMapaServicios& servicios = elegido.stream->MapRec_Services;
    int colocados = 0;
    for (auto it = servicios.begin(); it != servicios.end();) {
        // Services that need no transcoder ride along in both fills.
        const unsigned short necesita = it->second->Transcoding;
        if (necesita == 0 || (necesita == 1 && transcoding))
            it = colocar(*this, modulo, entrada, servicios, it, colocados);
        else
            ++it;
    }
    if (colocados != 0)
        entrada.confEntrada(elegido.TSID, elegido.ONID);
    Clear_ONID_TSID(elegido.ONID, elegido.TSID);
    return colocados;
}

std::uint32_t tRecalculo::Fill_Services_in_Module_Input(tRec_Modulo& modulo, tRec_Entrada& entrada) {
    Rec_TSID* stream = buscarTSID(Mapa_ONIDs, entrada.ONID, entrada.TSID);
    if (stream == nullptr)
        return 0;
    tMapaServicios& servicios = stream->MapRec_Services;
    int colocados = 0;
    for (auto it = servicios.begin(); it != servicios.end();) {
        it->second->Print_Servicio(0);
        it = colocar(*this, modulo, entrada, servicios, it, colocados);
    }
    if (colocados != 0)
        Clear_ONID_TSID(entrada.ONID, entrada.TSID);
    return static_cast<std::uint32_t>(colocados);
}

} // namespace zarven
