// Which modules a search has to visit.
//
// A search that logs its steps visits every module. Where nobody reads the log, it visits the modules that
// receive a stream it looks for: the others could not change what it finds. The search itself is the same.
//
// Made for one sweep and thrown away with it. A large head-end has a thousand modules with a few inputs each;
// who receives what stands in one flat array, sorted by stream and module.

#ifndef ZARVEN_ALGORITHM_RECORRIDO_H
#define ZARVEN_ALGORITHM_RECORRIDO_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tRec_Modulo.h"

namespace zarven {

class Recorrido {
public:
    // `modulos` keeps its modules for as long as this lives.
    explicit Recorrido(tMapaModulos& modulos);

    // The modules are numbered in the order of their MACs.
    std::size_t fin() const { return modulos.size(); }
    tMapaModulos::iterator modulo(std::size_t numero) const { return modulos[numero]; }

    // The steps are logged, so every module is visited.
    bool registra() const { return completo; }

    // The first module at or after `desde` to visit for a stream; fin() when there is none.
    std::size_t siguiente(std::size_t desde, unsigned short onid, unsigned short tsid) const;

    // Has to be told when the inputs of a module have been tuned anew.
    void actualizar(std::size_t numero);

private:
    struct Recepcion {
        std::uint32_t stream;
        std::uint32_t modulo;
    };
    static bool antes(const Recepcion& a, const Recepcion& b);
    void anotar(std::size_t numero);

    const bool completo;
    std::vector<tMapaModulos::iterator> modulos;
    std::vector<Recepcion> recepciones;
};

} // namespace zarven

#endif
