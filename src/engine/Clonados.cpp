// Attaching a clone to its parent in the finished result.

#include "../log/SinFortify.h"

#include "tRecalculo.h"

#include <syslog.h>

#include "../reglas/Reglas.h"

namespace zarven {

namespace {

// Puts the clone beside the first entry of its parent on an output for which it finds a transcoder, should
// it need one.
bool transferirALaSalida(tRec_Modulo& modulo, tRec_Entrada& entrada,
                         const std::shared_ptr<tRec_Servicio>& clon) {
    for (auto& [idSalida, salida] : modulo.mapSalidas)
        for (const auto& [clave, servicio] : salida.MapaServicios) {
            if (!reglas::esPadre(*servicio, *clon))
                continue;
            ::syslog(LOG_DEBUG, "Encontrado el Servicio Padre: %d en la Salida", clon->Parent_SID);
            if (!reglas::cabeClon(modulo, *clon))
                continue;
            if (reglas::necesitaTranscoding(clon->Transcoding))
                ++modulo.AUX_Transcoding;
            entrada.MapaServicios.emplace(clon->idService, clon);
            salida.MapaServicios.emplace(clon->idService, clon);
            return true;
        }
    return false;
}

bool transferirALaEntrada(tRec_Modulo& modulo, tRec_Entrada& entrada,
                          const std::shared_ptr<tRec_Servicio>& clon) {
    for (const auto& [clave, servicio] : entrada.MapaServicios) {
        ::syslog(LOG_DEBUG, "SID a analizar:%d, Parent_SID que buscamos: %d", servicio->OSID,
                 clon->Parent_SID);
        if (!reglas::esPadre(*servicio, *clon))
            continue;
        ::syslog(LOG_DEBUG, "Encontrado el Servicio Padre: %d en la Entrada", clon->Parent_SID);
        if (transferirALaSalida(modulo, entrada, clon))
            return true;
    }
    return false;
}

} // namespace

int tRecalculo::Try_to_Insert_Cloned_Service(
    std::vector<std::shared_ptr<tRec_Servicio>>::iterator itServicio) {
    const std::shared_ptr<tRec_Servicio> clon = *itServicio;
    for (auto& [mac, modulo] : Mapa_ModulosCabecera_Final)
        for (auto& [numero, entrada] : modulo.mapEntradas)
            if (reglas::recibe(entrada, clon->ONID, clon->TSID) &&
                transferirALaEntrada(modulo, entrada, clon))
                return 1;
    return 0;
}

} // namespace zarven
