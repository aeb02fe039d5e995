// States 3 and 4 and the fix-up at the end of a pass: whether to fill again, topping up modules with room,
// and moving a stream onto a first input that stayed empty.

#include "../log/SinFortify.h"

#include "Pasada.h"

#include <algorithm>
#include <iterator>
#include <syslog.h>
#include <unistd.h>

#include "../log/Marcos.h"
#include "../reglas/Reglas.h"

namespace zarven {

bool Pasada::hayModuloIncompleto() const {
    const auto& modulos = motor_.Mapa_ModulosCabecera_Proceso;
    return std::any_of(modulos.begin(), modulos.end(),
                       [this](const auto& modulo) { return motor_.ModuleisUncomplete(modulo.second); });
}

bool Pasada::hayModuloConEntradaVacia() const {
    const auto& modulos = motor_.Mapa_ModulosCabecera_Proceso;
    return std::any_of(modulos.begin(), modulos.end(),
                       [this](const auto& modulo) { return motor_.Module_check_empty_input(modulo.second); });
}

Estado Pasada::comprobarEntradasVacias() {
    marcos::linea(" RecalculationAlgorithm ---> STATUS_CHECK_EMPTY_INPUT");
    return reglas::trasComprobar(quedanServicios(), hayModuloIncompleto(), hayModuloConEntradaVacia(),
                                 recurso_);
}

Estado Pasada::completarModulos() {
    marcos::linea(" RecalculationAlgorithm ---> STATUS_UNCOMPLETE_MODULES");
    Estado propuesto = Estado::STATUS_UNIFY_INPUTS;
    for (auto& [mac, modulo] : motor_.Mapa_ModulosCabecera_Proceso) {
        if (!quedanServicios())
            break;
        if (motor_.ModuleisUncomplete(modulo))
            propuesto = completarEntradas(modulo, propuesto);
    }
    return propuesto;
}

Estado Pasada::completarEntradas(tRec_Modulo& modulo, Estado propuesto) {
    for (auto& [numero, entrada] : modulo.mapEntradas) {
        if (!quedanServicios())
            break;
        if (reglas::conAlgunNumero(entrada.ONID, entrada.TSID))
            motor_.Fill_Services_in_Module_Input(modulo, entrada);
        else
            propuesto = reglas::trasEntradaLibre(colocados_, recurso_);
    }
    return propuesto;
}

namespace {

// Gives the input that can stand in for an empty first one, with the line and pause of that; null when the
// first needs no help or there is none.
tRec_Entrada* examinarEntradas(tRec_Modulo& modulo) {
    for (auto& [numero, entrada] : modulo.mapEntradas) {
        if (numero == 1) {
            if (reglas::conAmbosNumeros(entrada.ONID, entrada.TSID))
                return nullptr;
            ::sleep(2);
            marcos::linea("PRIMERA ENTRADA VACIA");
        } else if (!reglas::sinServicios(entrada)) {
            return &entrada;
        }
    }
    return nullptr;
}

} // namespace

void Pasada::corregirPrimerasEntradas() {
    for (auto& [mac, modulo] : motor_.Mapa_ModulosCabecera_Proceso) {
        const auto primera = modulo.mapEntradas.find(1);
        if (primera == modulo.mapEntradas.end())
            continue;
        tRec_Entrada* sustituta = examinarEntradas(modulo);
        if (sustituta == nullptr)
            continue;
        ::sleep(2);
        marcos::linea("SUSTITUIMOS CON OTRA ENTRADA");
        primera->second.confEntrada(sustituta->TSID, sustituta->ONID);
        primera->second.MapaServicios.merge(sustituta->MapaServicios);
        sustituta->confEntrada(0, 0);
    }
}

} // namespace zarven
