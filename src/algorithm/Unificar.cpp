// State 5: gathering a stream that several inputs receive, so that an input comes free for another one.
//
// Two inputs of one module merge; two modules exchange their services (Candidato). An entry walks every
// ordered pair of modules once.

#include "Pasada.h"

#include <algorithm>
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
    std::size_t siguientePareja(std::size_t desde, std::size_t n) const;
    void unificarConsigoMismo(std::size_t n);
    void unificarModulos(std::size_t n, std::size_t n_Aux);
    void unificarEntrada(std::size_t n, unsigned short numero, std::size_t n_Aux);

    tRecalculo& motor;
    Recorrido recorrido;
    bool completar = false;
};

bool Unificacion::recorrer() {
    for (std::size_t n = 0; n != recorrido.fin(); ++n)
        for (std::size_t n_Aux = siguientePareja(0, n); n_Aux != recorrido.fin();
             n_Aux = siguientePareja(n_Aux + 1, n)) {
            if (n == n_Aux)
                unificarConsigoMismo(n);
            else
                unificarModulos(n, n_Aux);
        }
    return completar;
}

// Besides the module itself, only those that receive one of its streams can have anything to exchange.
std::size_t Unificacion::siguientePareja(std::size_t desde, std::size_t n) const {
    if (recorrido.registra())
        return desde;
    std::size_t pareja = desde <= n ? n : recorrido.fin();
    for (const auto& [numero, entrada] : recorrido.modulo(n)->second.mapEntradas)
        if (!sinConfigurar(entrada))
            pareja = std::min(pareja, recorrido.siguiente(desde, entrada.ONID, entrada.TSID));
    return pareja;
}

// Gathers the inputs of one module that receive the same stream on the first of them.
void Unificacion::unificarConsigoMismo(std::size_t n) {
    marcos::linea("SI es el mismo módulo y tiene la misma entrada configurada, meterlo todo en 1 entrada");
    auto& entradas = recorrido.modulo(n)->second.mapEntradas;
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
            recorrido.actualizar(n);
            completar = true;
            marcos::linea("status_algorithm = STATUS_UNCOMPLETE_MODULES    ----  2");
        }
    }
}

// An exchange puts copies in the place of both modules: their inputs are walked by number.
void Unificacion::unificarModulos(std::size_t n, std::size_t n_Aux) {
    auto& entradas = recorrido.modulo(n)->second.mapEntradas;
    for (auto it = entradas.begin(); it != entradas.end();) {
        const unsigned short numero = it->first;
        if (sinConfigurar(it->second))
            registrarSinConfigurar();
        else
            unificarEntrada(n, numero, n_Aux);
        it = entradas.upper_bound(numero);
    }
}

void Unificacion::unificarEntrada(std::size_t n, unsigned short numero, std::size_t n_Aux) {
    tRec_Modulo& modulo = recorrido.modulo(n)->second;
    tRec_Modulo& modulo_Aux = recorrido.modulo(n_Aux)->second;
    auto& entradas_Aux = modulo_Aux.mapEntradas;
    for (auto it = entradas_Aux.begin(); it != entradas_Aux.end();) {
        const unsigned short numero_Aux = it->first;
        if (sinConfigurar(it->second)) {
            registrarSinConfigurar();
        } else if (!mismoStream(modulo.mapEntradas.find(numero)->second, it->second)) {
            // The first other stream ends the search on this module.
            registrarIncompatible();
            break;
        } else if (!Candidato(motor, modulo, numero, modulo_Aux).intercambiar()) {
            registrarIncompatible();
        } else {
            recorrido.actualizar(n);
            recorrido.actualizar(n_Aux);
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
