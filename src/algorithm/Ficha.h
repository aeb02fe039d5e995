// A service and the key it stood under, held for as long as it is in hand: the entry it came from may go.

#ifndef ZARVEN_ALGORITHM_FICHA_H
#define ZARVEN_ALGORITHM_FICHA_H

#include <algorithm>
#include <memory>

#include "tRec_Servicio.h"

namespace zarven {

struct Ficha {
    long clave;
    std::shared_ptr<tRec_Servicio> servicio;
};

// The entry of that service under that key, or the end.
inline tMapaServicios::iterator buscarFicha(tMapaServicios& servicios, const Ficha& ficha) {
    const auto [primero, ultimo] = servicios.equal_range(ficha.clave);
    const auto it = std::find_if(primero, ultimo,
                                 [&ficha](const auto& entrada) { return entrada.second == ficha.servicio; });
    return it == ultimo ? servicios.end() : it;
}

// Takes out every entry of that service under that key.
inline void quitarFicha(tMapaServicios& servicios, const Ficha& ficha) {
    for (auto it = buscarFicha(servicios, ficha); it != servicios.end(); it = buscarFicha(servicios, ficha))
        servicios.erase(it);
}

} // namespace zarven

#endif
