// State 5: gathering a stream that several inputs receive, so that an input comes free for another one.
//
// Two inputs of one module merge; two modules exchange their services (Candidato). An entry walks every
// ordered pair of modules once.

#include "Pasada.h"

#include <iterator>

#include "../engine/Titulos.h"
#include "../log/Marcos.h"
#include "Candidato.h"

namespace zarven {

namespace {

bool sinConfigurar(const tRec_Entrada& entrada) {
    return entrada.ONID == 0 || entrada.TSID == 0;
}

bool mismoStream(const tRec_Entrada& a, const tRec_Entrada& b) {
    return a.ONID == b.ONID && a.TSID == b.TSID;
}

void registrarSinConfigurar() {
    marcos::linea("Entradas sin configurar, no se pueden unificar");
}

void registrarIncompatible() {
    marcos::linea("Se ve claramente que este cambio no es compatible, salimos....");
}

// Gathers the inputs of one module that receive the same stream on the first of them. Tells whether any came
// free.
bool unificarConsigoMismo(tRec_Modulo& modulo) {
    marcos::linea("SI es el mismo módulo y tiene la misma entrada configurada, meterlo todo en 1 entrada");
    bool liberada = false;
    auto& entradas = modulo.mapEntradas;
    for (auto it = entradas.begin(); it != entradas.end(); ++it) {
        if (sinConfigurar(it->second)) {
            registrarSinConfigurar();
            continue;
        }
        for (auto otra = std::next(it); otra != entradas.end(); ++otra) {
            if (!mismoStream(it->second, otra->second))
                continue;
            it->second.MapaServicios.merge(otra->second.MapaServicios);
            otra->second.confEntrada(0, 0);
            liberada = true;
            marcos::linea("status_algorithm = STATUS_UNCOMPLETE_MODULES    ----  2");
        }
    }
    return liberada;
}

} // namespace

Estado Pasada::unificarEntradas() {
    marcos::linea(" RecalculationAlgorithm ---> STATUS_UNIFY_INPUTS");
    bool completar = false;
    auto& modulos = motor.Mapa_ModulosCabecera_Proceso;
    for (auto& [mac, modulo] : modulos)
        for (auto& [mac_Aux, modulo_Aux] : modulos)
            if (mac == mac_Aux ? unificarConsigoMismo(modulo) : unificarModulos(modulo, modulo_Aux))
                completar = true;

    marcos::linea(marcos::SUBRAYADO);
    marcos::linea("||                             DESPUES DE UNIFY PRINT MAPA MODULOS SALIDA"
                  "                                ||");
    marcos::linea(marcos::BLANCO);
    volcarModulosHastaElFin(motor, modulos);

    if (completar)
        return Estado::STATUS_UNCOMPLETE_MODULES;
    return quedanServicios() ? Estado::STATUS_OPTIMIZE : Estado::STATUS_END;
}

// An exchange puts copies in the place of both modules: their inputs are walked by number.
bool Pasada::unificarModulos(tRec_Modulo& modulo, tRec_Modulo& modulo_Aux) {
    bool completar = false;
    for (auto it = modulo.mapEntradas.begin(); it != modulo.mapEntradas.end();) {
        const unsigned short numero = it->first;
        if (sinConfigurar(it->second))
            registrarSinConfigurar();
        else if (unificarEntrada(modulo, numero, modulo_Aux))
            completar = true;
        it = modulo.mapEntradas.upper_bound(numero);
    }
    return completar;
}

bool Pasada::unificarEntrada(tRec_Modulo& modulo, unsigned short numero, tRec_Modulo& modulo_Aux) {
    bool completar = false;
    for (auto it = modulo_Aux.mapEntradas.begin(); it != modulo_Aux.mapEntradas.end();) {
        const unsigned short numero_Aux = it->first;
        if (sinConfigurar(it->second)) {
            registrarSinConfigurar();
        } else if (!mismoStream(modulo.mapEntradas.at(numero), it->second)) {
            // The first other stream ends the search on this module.
            registrarIncompatible();
            break;
        } else if (!Candidato(motor, modulo, numero, modulo_Aux).intercambiar()) {
            registrarIncompatible();
        } else if (quedanServicios()) {
            marcos::linea("status_algorithm = STATUS_UNCOMPLETE_MODULES    ----  1");
            completar = true;
        }
        it = modulo_Aux.mapEntradas.upper_bound(numero_Aux);
    }
    return completar;
}

} // namespace zarven
