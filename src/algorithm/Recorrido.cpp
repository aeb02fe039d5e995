#include "Recorrido.h"

#include <algorithm>
#include <tuple>

#include "../log/Marcos.h"

namespace zarven {

namespace {

std::uint32_t codigo(unsigned short onid, unsigned short tsid) {
    return static_cast<std::uint32_t>(onid) << 16 | tsid;
}

} // namespace

Recorrido::Recorrido(tMapaModulos& mapa) : completo(marcos::seRegistra()) {
    modulos.reserve(mapa.size());
    for (auto it = mapa.begin(); it != mapa.end(); ++it)
        modulos.push_back(it);
    if (completo)
        return;
    for (std::size_t numero = 0; numero < modulos.size(); ++numero)
        anotar(numero);
    std::sort(recepciones.begin(), recepciones.end(), antes);
}

bool Recorrido::antes(const Recepcion& a, const Recepcion& b) {
    return std::tie(a.stream, a.modulo) < std::tie(b.stream, b.modulo);
}

void Recorrido::anotar(std::size_t numero) {
    for (const auto& [numEntrada, entrada] : modulos[numero]->second.mapEntradas)
        recepciones.push_back({codigo(entrada.ONID, entrada.TSID), static_cast<std::uint32_t>(numero)});
}

std::size_t Recorrido::siguiente(std::size_t desde, unsigned short onid, unsigned short tsid) const {
    if (completo)
        return desde;
    const Recepcion buscada{codigo(onid, tsid), static_cast<std::uint32_t>(desde)};
    const auto it = std::lower_bound(recepciones.begin(), recepciones.end(), buscada, antes);
    return it == recepciones.end() || it->stream != buscada.stream ? fin() : it->modulo;
}

void Recorrido::actualizar(std::size_t numero) {
    if (completo)
        return;
    const auto fuera =
        std::remove_if(recepciones.begin(), recepciones.end(),
                       [numero](const Recepcion& recepcion) { return recepcion.modulo == numero; });
    recepciones.erase(fuera, recepciones.end());
    const auto viejas = static_cast<std::ptrdiff_t>(recepciones.size());
    anotar(numero);
    std::sort(recepciones.begin() + viejas, recepciones.end(), antes);
    std::inplace_merge(recepciones.begin(), recepciones.begin() + viejas, recepciones.end(), antes);
}

} // namespace zarven
