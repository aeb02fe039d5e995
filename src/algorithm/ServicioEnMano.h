// An unassigned service in hand, while the optimize phase looks for an exchange that makes room for it.

#ifndef ZARVEN_ALGORITHM_SERVICIOENMANO_H
#define ZARVEN_ALGORITHM_SERVICIOENMANO_H

#include "PaseoEstable.h"

namespace zarven {

struct ServicioEnMano {
    // Where it stands in the working index.
    const unsigned short onid;
    const unsigned short tsid;
    tMapaServicios& servicios;
    // The walk over these services that has it in hand.
    PaseoEstable& paseo;
    const Ficha ficha{paseo.clave(), paseo.servicio()};
    tMapaServicios::iterator it = buscarFicha(servicios, ficha);

    // Stages another service beside it.
    tMapaServicios::iterator apuntar(const Ficha& otra) {
        return servicios.emplace(otra.clave, otra.servicio);
    }

    // Takes a staged service out. Erasing by key takes every entry with that key along; the service in hand
    // must not get lost that way.
    void retirar(long clave) {
        servicios.erase(clave);
        if (clave == ficha.clave)
            it = apuntar(ficha);
    }
};

} // namespace zarven

#endif
