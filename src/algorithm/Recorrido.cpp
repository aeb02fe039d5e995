#include "../log/SinFortify.h"

#include "Recorrido.h"

#include <algorithm>

#include "../log/Marcos.h"

namespace zarven {

namespace {

std::uint32_t codigo(unsigned short onid, unsigned short tsid) {
    return static_cast<std::uint32_t>(onid) << 16 | tsid;
}

} // namespace

Recorrido::Recorrido(tMapaModulos& mapa) : completo(marcos::seRegistra()), modulos(mapa) {
    if (completo)
        return;
    for (auto it = modulos.begin(); it != modulos.end(); ++it)
        anotar(it);
    std::sort(recepciones.begin(), recepciones.end(), antes);
}

bool Recorrido::antes(const Recepcion& a, const Recepcion& b) {
    return a.stream != b.stream ? a.stream < b.stream : a.modulo->first < b.modulo->first;
}

void Recorrido::anotar(tMapaModulos::iterator modulo) {
    for (const auto& [numero, entrada] : modulo->second.mapEntradas)
        recepciones.push_back({codigo(entrada.ONID, entrada.TSID), modulo});
}

tMapaModulos::iterator Recorrido::buscar(tMapaModulos::iterator desde, unsigned short onid,
                                         unsigned short tsid) const {
    if (desde == fin())
        return desde;
    const Recepcion buscada{codigo(onid, tsid), desde};
    const auto it = std::lower_bound(recepciones.begin(), recepciones.end(), buscada, antes);
    return it == recepciones.end() || it->stream != buscada.stream ? fin() : it->modulo;
}

void Recorrido::actualizar(tMapaModulos::iterator modulo) {
    if (completo)
        return;
    const auto fuera =
        std::remove_if(recepciones.begin(), recepciones.end(),
                       [modulo](const Recepcion& recepcion) { return recepcion.modulo == modulo; });
    recepciones.erase(fuera, recepciones.end());
    const auto viejas = static_cast<std::ptrdiff_t>(recepciones.size());
    anotar(modulo);
    // The inputs of one module are few: each goes to its place, which takes no further memory.
    for (auto it = recepciones.begin() + viejas; it != recepciones.end(); ++it)
        std::rotate(std::upper_bound(recepciones.begin(), it, *it, antes), it, it + 1);
}

} // namespace zarven
