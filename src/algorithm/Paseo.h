// Walking over services while the container under the walk may change.
//
// An exchange takes services off outputs and stages others in the index, under the very walks that led to
// it. A walk over the live container could go on for ever, so a walk visits the services that stood there
// when it began, each once however often it is entered, and passes over those that have gone by their turn.
//
// Most walks see no change at all. So a walk reads the container in place until it is told that a change is
// coming, and only then sets the rest of its services down (`fijar`).

#ifndef ZARVEN_ALGORITHM_PASEO_H
#define ZARVEN_ALGORITHM_PASEO_H

#include <cstddef>
#include <memory>
#include <vector>

#include "tRec_Servicio.h"

namespace zarven {

// A service and the key it stood under, held for as long as it is in hand.
struct Ficha {
    long clave;
    std::shared_ptr<tRec_Servicio> servicio;
};

// The entry of that service under that key, or the end.
tMapaServicios::iterator buscarFicha(tMapaServicios& servicios, const Ficha& ficha);

// Takes out every entry of that service under that key.
void quitarFicha(tMapaServicios& servicios, const Ficha& ficha);

class Paseo {
public:
    explicit Paseo(tMapaServicios& servicios);

    // Goes on to the next service; false at the end.
    bool avanzar();

    long clave() const { return fijado ? pendientes[n].clave : it->first; }
    const std::shared_ptr<tRec_Servicio>& servicio() const {
        return fijado ? pendientes[n].servicio : it->second;
    }

    // To be called before the container changes. The service in hand stays in hand.
    void fijar();

private:
    bool yaVisitado(tMapaServicios::iterator entrada) const;

    tMapaServicios& servicios;
    tMapaServicios::iterator it;
    bool empezado = false;
    bool fijado = false;
    // From the service in hand on, once the walk is set down.
    std::vector<Ficha> pendientes;
    std::size_t n = 0;
};

} // namespace zarven

#endif
