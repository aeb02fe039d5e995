#include "Fichas.h"

#include <algorithm>

namespace zarven {

tMapaServicios::iterator buscarFicha(tMapaServicios& servicios, const Ficha& ficha) {
    const auto [primero, ultimo] = servicios.equal_range(ficha.clave);
    const auto it = std::find_if(primero, ultimo,
                                 [&ficha](const auto& entrada) { return entrada.second == ficha.servicio; });
    return it == ultimo ? servicios.end() : it;
}

std::vector<Ficha> fichar(tMapaServicios& servicios) {
    std::vector<Ficha> fichas;
    fichas.reserve(servicios.size());
    for (auto it = servicios.begin(); it != servicios.end(); ++it) {
        Ficha ficha{it->first, it->second};
        if (buscarFicha(servicios, ficha) == it)
            fichas.push_back(std::move(ficha));
    }
    return fichas;
}

} // namespace zarven
