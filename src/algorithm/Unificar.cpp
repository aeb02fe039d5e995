// State 5: gathering a stream that several inputs receive, so that an input comes free for another one.
//
// Two inputs of one module merge; of two modules one gathers the stream (Candidato). An entry walks every
// ordered pair of modules once.

#include "../log/SinFortify.h"

#include "Pasada.h"

#include <iterator>

#include "../engine/Titulos.h"
#include "../log/Marcos.h"
#include "../reglas/Reglas.h"
#include "Candidato.h"
#include "Receptores.h"

namespace zarven {

namespace {

bool sinConfigurar(const tRec_Entrada& entrada) {
    return !reglas::conAmbosNumeros(entrada.ONID, entrada.TSID);
}

bool mismoStream(const tRec_Entrada& a, const tRec_Entrada& b) {
    return reglas::recibe(a, b.ONID, b.TSID);
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
    explicit Unificacion(tRecalculo& motor)
        : motor_(motor), receptores_(motor.Mapa_ModulosCabecera_Proceso) {}

    // Tells whether what was gathered asks for the uncomplete phase.
    bool recorrer();

private:
    using Modulo = tMapaModulos::iterator;

    Modulo siguientePareja(Modulo desde, Modulo modulo) const;
    void unificarConsigoMismo(Modulo modulo);
    void unificarModulos(Modulo modulo, Modulo moduloAux);
    void unificarEntrada(Modulo modulo, unsigned short numero, Modulo moduloAux);

    tRecalculo& motor_;
    Receptores receptores_;
    bool completar_ = false;
};

bool Unificacion::recorrer() {
    for (Modulo itModulo = receptores_.principio(); itModulo != receptores_.fin(); ++itModulo)
        for (Modulo itModuloAux = siguientePareja(receptores_.principio(), itModulo);
             itModuloAux != receptores_.fin();
             itModuloAux = siguientePareja(std::next(itModuloAux), itModulo)) {
            if (itModulo == itModuloAux)
                unificarConsigoMismo(itModulo);
            else
                unificarModulos(itModulo, itModuloAux);
        }
    return completar_;
}

// Besides the module itself, only those that receive one of its streams can have anything to gather.
Unificacion::Modulo Unificacion::siguientePareja(Modulo desde, Modulo modulo) const {
    if (receptores_.registra() || desde == receptores_.fin())
        return desde;
    Modulo pareja = desde->first <= modulo->first ? modulo : receptores_.fin();
    for (const auto& [numero, entrada] : modulo->second.mapEntradas) {
        if (sinConfigurar(entrada))
            continue;
        const Modulo otra = receptores_.siguiente(desde, entrada.ONID, entrada.TSID);
        if (pareja == receptores_.fin() || (otra != receptores_.fin() && otra->first < pareja->first))
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
            completar_ = true;
            marcos::linea("status_algorithm = STATUS_UNCOMPLETE_MODULES    ----  2");
        }
    }
}

// Gathering puts copies in the place of both modules: their inputs are walked by number.
void Unificacion::unificarModulos(Modulo modulo, Modulo moduloAux) {
    auto& entradas = modulo->second.mapEntradas;
    for (auto it = entradas.begin(); it != entradas.end();) {
        const unsigned short numero = it->first;
        if (sinConfigurar(it->second))
            registrarSinConfigurar();
        else
            unificarEntrada(modulo, numero, moduloAux);
        it = entradas.upper_bound(numero);
    }
}

void Unificacion::unificarEntrada(Modulo modulo, unsigned short numero, Modulo moduloAux) {
    auto& entradasAux = moduloAux->second.mapEntradas;
    for (auto it = entradasAux.begin(); it != entradasAux.end();) {
        const unsigned short numeroAux = it->first;
        if (sinConfigurar(it->second)) {
            registrarSinConfigurar();
        } else if (!mismoStream(modulo->second.mapEntradas.find(numero)->second, it->second)) {
            // The first other stream ends the search on this module.
            registrarIncompatible();
            break;
        } else if (!Candidato(motor_, modulo->second, numero, moduloAux->second).reunir()) {
            registrarIncompatible();
        } else {
            // Only the second module receives streams now that it did not receive before.
            receptores_.actualizar(moduloAux);
            if (!motor_.Mapa_ONIDs.empty()) {
                marcos::linea("status_algorithm = STATUS_UNCOMPLETE_MODULES    ----  1");
                completar_ = true;
            }
        }
        it = entradasAux.upper_bound(numeroAux);
    }
}

} // namespace

Estado Pasada::unificarEntradas() {
    marcos::linea(" RecalculationAlgorithm ---> STATUS_UNIFY_INPUTS");
    const bool completar = Unificacion(motor_).recorrer();

    marcos::linea(marcos::SUBRAYADO);
    marcos::linea("||                             DESPUES DE UNIFY PRINT MAPA MODULOS SALIDA"
                  "                                ||");
    marcos::linea(marcos::BLANCO);
    volcarModulosHastaElFin(motor_, motor_.Mapa_ModulosCabecera_Proceso);

    return reglas::trasUnificar(completar, quedanServicios());
}

} // namespace zarven
