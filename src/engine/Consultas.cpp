// The questions that the driver and the pass ask about modules and about the working index.

#include "../log/SinFortify.h"

#include "tRecalculo.h"

#include <algorithm>
#include <syslog.h>

#include "../reglas/Reglas.h"
#include "Indice.h"

namespace zarven {

namespace {

// The first loaded controller; null when there is none.
const tRec_Modulo* buscarControlador(const tMapaModulos& modulos) {
    const auto it = std::find_if(modulos.begin(), modulos.end(),
                                 [](const auto& entrada) { return entrada.second.Controlador; });
    return it == modulos.end() ? nullptr : &it->second;
}

} // namespace

std::string tRecalculo::GetMACControlador() const {
    const tRec_Modulo* controlador = buscarControlador(Mapa_ModulosCabecera_Inicial);
    return controlador == nullptr ? std::string() : controlador->MAC;
}

unsigned short tRecalculo::GetModeloControlador() const {
    const tRec_Modulo* controlador = buscarControlador(Mapa_ModulosCabecera_Inicial);
    return controlador == nullptr ? static_cast<unsigned short>(0) : controlador->Modelo;
}

char tRecalculo::GetRecursoCabecera() const {
    // Models 1 and 3 differ in bit 1 only.
    const char recurso = std::any_of(Mapa_ModulosCabecera_Inicial.begin(), Mapa_ModulosCabecera_Inicial.end(),
                                     [](const auto& entrada) { return (entrada.second.Modelo & ~2) == 1; });
    ::syslog(LOG_DEBUG, "El tipo de cabecera es: %d", recurso);
    return recurso;
}

bool tRecalculo::ModuleisUncomplete(const tRec_Modulo& modulo) const {
    return reglas::sobranPIDs(modulo.PIDsModulo, modulo.PIDsModuloMax) &&
           std::any_of(modulo.mapSalidas.begin(), modulo.mapSalidas.end(),
                       [](const auto& entrada) { return reglas::tieneSitio(entrada.second); });
}

bool tRecalculo::Module_check_empty_input(const tRec_Modulo& modulo) const {
    return std::any_of(modulo.mapEntradas.begin(), modulo.mapEntradas.end(),
                       [](const auto& entrada) { return reglas::sinServicios(entrada.second); });
}

bool tRecalculo::Exist_Transcoding_Service() const {
    return algunTSID(Mapa_ONIDs, [](const Rec_ONID&, const Rec_TSID& stream) {
        return std::any_of(
            stream.MapRec_Services.begin(), stream.MapRec_Services.end(),
            [](const auto& entrada) { return reglas::necesitaTranscoding(entrada.second->Transcoding); });
    });
}

bool tRecalculo::Exist_Service_with_idService() const {
    // The keys ascend, so the last one tells.
    return algunTSID(Mapa_ONIDs, [](const Rec_ONID&, const Rec_TSID& stream) {
        return !stream.MapRec_Services.empty() &&
               reglas::esClavePositiva(stream.MapRec_Services.rbegin()->first);
    });
}

} // namespace zarven
