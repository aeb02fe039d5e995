// Filling one input from the working index: choosing a stream for an untuned one, topping up a tuned one.

#include "../log/SinFortify.h"

#include "Asignar.h"

#include <iterator>
#include <syslog.h>

#include "../log/Marcos.h"
#include "Indice.h"

namespace zarven {

namespace {

// Tries one service of the index; placed, it leaves the index. Gives the entry that comes next.
tMapaServicios::iterator colocar(tRecalculo& motor, tRec_Modulo& modulo, tRec_Entrada& entrada,
                                 tMapaServicios& servicios, tMapaServicios::iterator it, int& colocados) {
    if (motor.Try_to_Insert_Service_Input_Output(modulo, entrada, it) == 0)
        return std::next(it);
    ++colocados;
    return servicios.erase(it);
}

int colocarStream(tRecalculo& motor, tRec_Modulo& modulo, tRec_Entrada& entrada, tMapaServicios& servicios,
                  bool transcoding) {
    int colocados = 0;
    for (auto it = servicios.begin(); it != servicios.end();) {
        if (reglas::entraEnRelleno(it->second->Transcoding, transcoding))
            it = colocar(motor, modulo, entrada, servicios, it, colocados);
        else
            ++it;
    }
    return colocados;
}

} // namespace

int asignarServicios(tRecalculo& motor, Elegibles& elegibles, tRec_Modulo& modulo, tRec_Entrada& entrada,
                     char modo, bool transcoding) {
    marcos::vacia();
    ::syslog(LOG_DEBUG, "exists_Transcoding_Services %d", elegibles.hayTranscoding());
    marcos::vacia();
    const std::optional<Stream> elegido = elegibles.elegir(modo);
    if (!elegido)
        return 0;
    ::syslog(LOG_DEBUG, "MAC[%s]: ONID= %d / TSID %d", modulo.MAC.c_str(), elegido->ONID, elegido->TSID);

    tMapaServicios& servicios = buscarTSID(motor.Mapa_ONIDs, elegido->ONID, elegido->TSID)->MapRec_Services;
    elegibles.descontar(*elegido, servicios);
    const int colocados = colocarStream(motor, modulo, entrada, servicios, transcoding);
    elegibles.contar(*elegido, servicios);
    if (colocados != 0)
        entrada.confEntrada(elegido->TSID, elegido->ONID);
    motor.Clear_ONID_TSID(elegido->ONID, elegido->TSID);
    return colocados;
}

int tRecalculo::Asignar_listaServicios(tRec_Modulo& modulo, tRec_Entrada& entrada, char modo,
                                       bool transcoding) {
    Elegibles elegibles(Mapa_ONIDs, transcoding);
    return asignarServicios(*this, elegibles, modulo, entrada, modo, transcoding);
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
