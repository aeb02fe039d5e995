// What inputs, outputs and the index have in common: each keeps its services in a multimap by key.

#ifndef ZARVEN_MODEL_SERVICIOS_H
#define ZARVEN_MODEL_SERVICIOS_H

#include "tRec_Servicio.h"

#include "../log/Marcos.h"

namespace zarven {

// Dumps the services in the order of the multimap, numbered from `n` + 1; gives the last number used.
inline int volcarServicios(const tMapaServicios& servicios, int n = 0) {
    if (!marcos::seRegistra())
        return n;
    for (const auto& [idService, servicio] : servicios)
        servicio->Print_Servicio(++n);
    return n;
}

} // namespace zarven

#endif
