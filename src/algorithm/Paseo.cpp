#include "../log/SinFortify.h"

#include "Paseo.h"

#include <algorithm>
#include <iterator>

namespace zarven {

tMapaServicios::iterator buscarFicha(tMapaServicios& servicios, const Ficha& ficha) {
    const auto [primero, ultimo] = servicios.equal_range(ficha.clave);
    const auto it = std::find_if(primero, ultimo,
                                 [&ficha](const auto& entrada) { return entrada.second == ficha.servicio; });
    return it == ultimo ? servicios.end() : it;
}

void quitarFicha(tMapaServicios& servicios, const Ficha& ficha) {
    for (auto it = buscarFicha(servicios, ficha); it != servicios.end(); it = buscarFicha(servicios, ficha))
        servicios.erase(it);
}

Paseo::Paseo(tMapaServicios& contenedor) : servicios(contenedor), it(contenedor.begin()) {}

bool Paseo::avanzar() {
    if (fijado) {
        do
            ++n;
        while (n < pendientes.size() && buscarFicha(servicios, pendientes[n]) == servicios.end());
        return n < pendientes.size();
    }
    if (empezado)
        ++it;
    empezado = true;
    while (it != servicios.end() && yaVisitado(it))
        ++it;
    return it != servicios.end();
}

void Paseo::fijar() {
    if (fijado)
        return;
    for (auto resto = it; resto != servicios.end(); ++resto)
        if (!yaVisitado(resto))
            pendientes.push_back({resto->first, resto->second});
    fijado = true;
}

// The same service further up under the same key.
bool Paseo::yaVisitado(tMapaServicios::iterator entrada) const {
    for (auto otra = entrada; otra != servicios.begin();) {
        --otra;
        if (otra->first != entrada->first)
            return false;
        if (otra->second == entrada->second)
            return true;
    }
    return false;
}

} // namespace zarven
