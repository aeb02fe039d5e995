// Putting one service on a module and taking it off again, with every limit and every counter.

#include "../log/SinFortify.h"

#include "tRecalculo.h"

#include <algorithm>
#include <syslog.h>

#include "../log/Marcos.h"
#include "../reglas/Reglas.h"

namespace zarven {

namespace {

void registrarIntento(std::uint32_t idSalida, const tRec_Modulo& modulo, const tRec_Salida& salida,
                      const tRec_Servicio& servicio) {
    const auto actual = static_cast<int>(salida.BitRateActual);
    const auto maximo = static_cast<int>(salida.BitRateMax);
    ::syslog(LOG_DEBUG, "Salida %d BitrateActual %d BitrateMax %d", static_cast<int>(idSalida), actual,
             maximo);
    ::syslog(LOG_DEBUG,
             "if ( ( (itSalida->second.BitRateActual (%d) + itService->second->peakBitRate (%d) ) < "
             "itSalida->second.BitRateMax (%d) ) &&  )",
             actual, static_cast<int>(servicio.peakBitRate), maximo);
    ::syslog(LOG_DEBUG,
             "if ( && ( itModulo->second.PIDsModulo (%d) + itService->second->number_PIDs_CA (%d) <= "
             "itModulo->second.PIDsModuloMax (%d) ) )",
             modulo.PIDsModulo, servicio.number_PIDs_CA, modulo.PIDsModuloMax);
}

// The transcoders in use that a service of this kind is counted among.
unsigned short& transcodersDeSuTipo(tRec_Modulo& modulo, const tRec_Servicio& servicio) {
    return reglas::esHD(servicio.VideoFormatE) ? modulo.HD_Transcoding : modulo.SD_Transcoding;
}

} // namespace

std::uint32_t tRecalculo::Try_to_Insert_Service_Input_Output(tRec_Modulo& modulo, tRec_Entrada& entrada,
                                                             tMapaServicios::iterator itService) {
    const tRec_Servicio& servicio = *itService->second;
    const bool registra = marcos::seRegistra();
    auto itSalida = modulo.mapSalidas.begin();
    for (; itSalida != modulo.mapSalidas.end(); ++itSalida) {
        if (registra)
            registrarIntento(itSalida->first, modulo, itSalida->second, servicio);
        if (reglas::cabe(modulo, itSalida->second, servicio))
            break;
    }
    if (itSalida == modulo.mapSalidas.end())
        return 0;

    if (reglas::ocupaTranscoder(servicio.Transcoding)) {
        // The pool is the module's: where it is spent, no other output helps.
        if (!reglas::quedaTranscoder(modulo))
            return 0;
        ++transcodersDeSuTipo(modulo, servicio);
    }

    tRec_Salida& salida = itSalida->second;
    salida.BitRateActual += servicio.peakBitRate;
    modulo.PIDsModulo = static_cast<unsigned short>(modulo.PIDsModulo + servicio.number_PIDs_CA);
    entrada.MapaServicios.emplace(itService->first, itService->second);
    salida.MapaServicios.emplace(itService->first, itService->second);
    ++salida.NumServicios;
    ::syslog(LOG_DEBUG, "He añadido el servicio: %d", static_cast<int>(itService->first));
    return 1;
}

std::uint32_t tRecalculo::Try_to_Delete_Service_Input_Output(tMapaModulos::iterator itModulo,
                                                             tMapaEntradas::iterator itEntrada,
                                                             tMapaServicios::iterator itService) {
    tRec_Modulo& modulo = itModulo->second;
    tMapaServicios& enEntrada = itEntrada->second.MapaServicios;
    // Held here, because the entry in hand may be one of those erased.
    const long idService = itService->first;
    const std::shared_ptr<tRec_Servicio> servicio = itService->second;

    if (enEntrada.find(idService) == enEntrada.end())
        return 0;
    const auto itSalida =
        std::find_if(modulo.mapSalidas.begin(), modulo.mapSalidas.end(), [idService](const auto& salida) {
            return salida.second.MapaServicios.find(idService) != salida.second.MapaServicios.end();
        });
    if (itSalida == modulo.mapSalidas.end())
        return 0;

    tRec_Salida& salida = itSalida->second;
    modulo.PIDsModulo = static_cast<unsigned short>(modulo.PIDsModulo - servicio->number_PIDs_CA);
    salida.BitRateActual -= servicio->peakBitRate;
    // Every entry with the key goes, one is counted.
    enEntrada.erase(idService);
    salida.MapaServicios.erase(idService);
    --salida.NumServicios;
    if (reglas::ocupaTranscoder(servicio->Transcoding))
        --transcodersDeSuTipo(modulo, *servicio);
    return 1;
}

std::uint32_t tRecalculo::Find_OutputID_to_insert_Service(tRec_Modulo& modulo,
                                                          tMapaServicios::reverse_iterator itService) {
    const std::shared_ptr<tRec_Servicio>& servicio = itService->second;
    for (auto& [idSalida, salida] : modulo.mapSalidas) {
        if (reglas::cabePorResto(salida, *servicio)) {
            salida.MapaServicios.emplace(servicio->idService, servicio);
            salida.BitRateActual += servicio->peakBitRate;
            ++salida.NumServicios;
            return idSalida;
        }
    }
    return 0;
}

} // namespace zarven
