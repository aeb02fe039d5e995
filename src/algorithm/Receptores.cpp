#include "../log/SinFortify.h"

#include "Receptores.h"

#include <algorithm>

#include "../log/Marcos.h"

namespace zarven {

namespace {

std::uint32_t codigo(unsigned short onid, unsigned short tsid) {
    return static_cast<std::uint32_t>(onid) << 16 | tsid;
}

} // namespace

Receptores::Receptores(tMapaModulos& modulos) : registra_(marcos::seRegistra()), modulos_(modulos) {
    if (registra_)
        return;
    for (auto it = modulos_.begin(); it != modulos_.end(); ++it)
        anotar(it);
    std::sort(recepciones_.begin(), recepciones_.end(), antes);
}

bool Receptores::antes(const Recepcion& a, const Recepcion& b) {
    return a.stream != b.stream ? a.stream < b.stream : a.modulo->first < b.modulo->first;
}

void Receptores::anotar(tMapaModulos::iterator modulo) {
    for (const auto& [numero, entrada] : modulo->second.mapEntradas)
        recepciones_.push_back({codigo(entrada.ONID, entrada.TSID), modulo});
}

tMapaModulos::iterator Receptores::buscar(tMapaModulos::iterator desde, unsigned short onid,
                                          unsigned short tsid) const {
    if (desde == fin())
        return desde;
    const Recepcion buscada{codigo(onid, tsid), desde};
    const auto it = std::lower_bound(recepciones_.begin(), recepciones_.end(), buscada, antes);
    const bool recibe = it != recepciones_.end() && it->stream == buscada.stream;
    return recibe ? it->modulo : fin();
}

void Receptores::actualizar(tMapaModulos::iterator modulo) {
    if (registra_)
        return;
    const auto fuera =
        std::remove_if(recepciones_.begin(), recepciones_.end(),
                       [modulo](const Recepcion& recepcion) { return recepcion.modulo == modulo; });
    recepciones_.erase(fuera, recepciones_.end());
    const auto viejas = static_cast<std::ptrdiff_t>(recepciones_.size());
    anotar(modulo);
    // The inputs of one module are few: each goes to its place, which takes no further memory.
    for (auto it = recepciones_.begin() + viejas; it != recepciones_.end(); ++it)
        std::rotate(std::upper_bound(recepciones_.begin(), it, *it, antes), it, it + 1);
}

} // namespace zarven
