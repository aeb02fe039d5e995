// State 5: gathering a stream that several inputs receive, so that an input comes free for another one.
//
// Two inputs of one module merge; two modules exchange their services (Candidato). An entry walks every
// ordered pair of modules once.

#include "../log/SinFortify.h"

#include "Pasada.h"

#include <iterator>

#include "../engine/Titulos.h"
#include "../log/Marcos.h"
#include "Candidato.h"
#include "Recorrido.h"

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

// One entry into the state.
class Unificacion {
public:
    explicit Unificacion(tRecalculo& engine)
        : motor(engine), recorrido(engine.Mapa_ModulosCabecera_Proceso) {}

    // Tells whether what was gathered asks for the uncomplete phase.
    bool recorrer();

private:
    using Modulo = tMapaModulos::iterator;

    Modulo siguientePareja(Modulo desde, Modulo modulo) const;
    void unificarConsigoMismo(Modulo modulo);
    void unificarModulos(Modulo modulo, Modulo modulo_Aux);
    void unificarEntrada(Modulo modulo, unsigned short numero, Modulo modulo_Aux);

    tRecalculo& motor;
    Recorrido recorrido;
    bool completar = false;
};

bool Unificacion::recorrer() {
    for (Modulo itModulo = recorrido.principio(); itModulo != recorrido.fin(); ++itModulo)
        for (Modulo itModulo_Aux = siguientePareja(recorrido.principio(), itModulo);
             itModulo_Aux != recorrido.fin();
             itModulo_Aux = siguientePareja(std::next(itModulo_Aux), itModulo)) {
            if (itModulo == itModulo_Aux)
                unificarConsigoMismo(itModulo);
            else
                unificarModulos(itModulo, itModulo_Aux);
        }
    return completar;
}

// Besides the module itself, only those that receive one of its streams can have anything to exchange.
Unificacion::Modulo Unificacion::siguientePareja(Modulo desde, Modulo modulo) const {
    if (recorrido.registra() || desde == recorrido.fin())
        return desde;
    Modulo pareja = desde->first <= modulo->first ? modulo : recorrido.fin();
    for (const auto& [numero, entrada] : modulo->second.mapEntradas) {
        if (sinConfigurar(entrada))
            continue;
        const Modulo otra = recorrido.siguiente(desde, entrada.ONID, entrada.TSID);
        if (pareja == recorrido.fin() || (otra != recorrido.fin() && otra->first < pareja->first))
            pareja = otra;
    }
    return pareja;
}

// Gathers the inputs of one module that receive the same stream on the first of them.
void Unificacion::unificarConsigoMismo(Modulo modulo) {
    marcos::linea("SI es el mismo módulo y tiene la misma entrada configurada, meterlo todo en 1 entrada");
    auto& entradas = modulo->second.mapEntradas;
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
            completar = true;
            marcos::linea("status_algorithm = STATUS_UNCOMPLETE_MODULES    ----  2");
        }
    }
}

// An exchange puts copies in the place of both modules: their inputs are walked by number.
void Unificacion::unificarModulos(Modulo modulo, Modulo modulo_Aux) {
    auto& entradas = modulo->second.mapEntradas;
    for (auto it = entradas.begin(); it != entradas.end();) {
        const unsigned short numero = it->first;
        if (sinConfigurar(it->second))
            registrarSinConfigurar();
        else
            unificarEntrada(modulo, numero, modulo_Aux);
        it = entradas.upper_bound(numero);
    }
}

void Unificacion::unificarEntrada(Modulo modulo, unsigned short numero, Modulo modulo_Aux) {
    auto& entradas_Aux = modulo_Aux->second.mapEntradas;
    for (auto it = entradas_Aux.begin(); it != entradas_Aux.end();) {
        const unsigned short numero_Aux = it->first;
        if (sinConfigurar(it->second)) {
            registrarSinConfigurar();
        } else if (!mismoStream(modulo->second.mapEntradas.find(numero)->second, it->second)) {
            // The first other stream ends the search on this module.
            registrarIncompatible();
            break;
        } else if (!Candidato(motor, modulo->second, numero, modulo_Aux->second).intercambiar()) {
            registrarIncompatible();
        } else {
            // Only the second module receives streams now that it did not receive before.
            recorrido.actualizar(modulo_Aux);
            if (!motor.Mapa_ONIDs.empty()) {
                marcos::linea("status_algorithm = STATUS_UNCOMPLETE_MODULES    ----  1");
                completar = true;
            }
        }
        it = entradas_Aux.upper_bound(numero_Aux);
    }
}

} // namespace

Estado Pasada::unificarEntradas() {
    marcos::linea(" RecalculationAlgorithm ---> STATUS_UNIFY_INPUTS");
    const bool completar = Unificacion(motor).recorrer();

    marcos::linea(marcos::SUBRAYADO);
    marcos::linea("||                             DESPUES DE UNIFY PRINT MAPA MODULOS SALIDA"
                  "                                ||");
    marcos::linea(marcos::BLANCO);
    volcarModulosHastaElFin(motor, motor.Mapa_ModulosCabecera_Proceso);

    if (completar)
        return Estado::STATUS_UNCOMPLETE_MODULES;
    return quedanServicios() ? Estado::STATUS_OPTIMIZE : Estado::STATUS_END;
}

} // namespace zarven
