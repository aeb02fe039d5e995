// Holding services while the containers under them change.
//
// An exchange takes services off outputs and stages others in the index, under the very walks that led to
// it. A walk over a live container could go on for ever, so a walk visits the services that stood there when
// it began, and passes over those that have gone by their turn.

#ifndef ZARVEN_ALGORITHM_FICHAS_H
#define ZARVEN_ALGORITHM_FICHAS_H

#include <memory>
#include <vector>

#include "tRec_Servicio.h"

namespace zarven {

// A service and the key it stood under.
struct Ficha {
    long clave;
    std::shared_ptr<tRec_Servicio> servicio;
};

// The entry of that service under that key, or the end.
tMapaServicios::iterator buscarFicha(tMapaServicios& servicios, const Ficha& ficha);

// The services in ascending key, each once however often it is entered.
std::vector<Ficha> fichar(tMapaServicios& servicios);

} // namespace zarven

#endif
