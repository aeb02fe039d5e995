// Which modules receive a stream, and so which ones a search has to visit.
//
// A search that logs its steps visits every module. Where nobody reads the log, it visits the modules that
// receive a stream it looks for: the others could not change what it finds. The search itself is the same.
//
// Made for one sweep and thrown away with it. A large head-end has a thousand modules with a few inputs each;
// who receives what stands in one flat array, sorted by stream and MAC, and only where it is of use.

#ifndef ZARVEN_ALGORITHM_RECEPTORES_H
#define ZARVEN_ALGORITHM_RECEPTORES_H

#include <cstdint>
#include <vector>

#include "tRec_Modulo.h"

namespace zarven {

class Receptores {
public:
    // `modulos` keeps its modules for as long as this lives.
    explicit Receptores(tMapaModulos& modulos);

    tMapaModulos::iterator principio() const { return modulos_.begin(); }
    tMapaModulos::iterator fin() const { return modulos_.end(); }

    // The steps are logged, so every module is visited.
    bool registra() const { return registra_; }

    // The first module at or after `desde` to visit for a stream; fin() when there is none.
    tMapaModulos::iterator siguiente(tMapaModulos::iterator desde, unsigned short onid,
                                     unsigned short tsid) const {
        return registra_ ? desde : buscar(desde, onid, tsid);
    }

    // Has to be told when a module receives a stream that it did not receive before. One that has lost a
    // stream is visited in vain, no more.
    void actualizar(tMapaModulos::iterator modulo);

private:
    struct Recepcion {
        std::uint32_t stream;
        tMapaModulos::iterator modulo;
    };
    static bool antes(const Recepcion& a, const Recepcion& b);
    void anotar(tMapaModulos::iterator modulo);
    tMapaModulos::iterator buscar(tMapaModulos::iterator desde, unsigned short onid,
                                  unsigned short tsid) const;

    const bool registra_;
    tMapaModulos& modulos_;
    std::vector<Recepcion> recepciones_;
};

} // namespace zarven

#endif
