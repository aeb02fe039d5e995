// A walk over services that stays sound while the container under it changes.
//
// An exchange takes services off outputs and stages others in the index, under the very walks that led to
// it. A walk over the live container could go on for ever, so this one visits the services that stood there
// when it began, each once however often it is entered, and passes over those that have gone by their turn.
//
// Most walks see no change at all. So a walk reads the container in place until it is told that a change is
// coming, and only then sets the rest of its services down (`fijar`).

#ifndef ZARVEN_ALGORITHM_PASEOESTABLE_H
#define ZARVEN_ALGORITHM_PASEOESTABLE_H

#include <cstddef>
#include <memory>
#include <vector>

#include "Ficha.h"

namespace zarven {

class PaseoEstable {
public:
    explicit PaseoEstable(tMapaServicios& servicios);

    // Goes on to the next service; false at the end.
    bool avanzar();

    long clave() const { return fijado_ ? pendientes_[n_].clave : it_->first; }
    const std::shared_ptr<tRec_Servicio>& servicio() const {
        return fijado_ ? pendientes_[n_].servicio : it_->second;
    }

    // To be called before the container changes. The service in hand stays in hand.
    void fijar();

private:
    bool yaVisitado(tMapaServicios::iterator entrada) const;

    tMapaServicios& servicios_;
    tMapaServicios::iterator it_;
    bool empezado_ = false;
    bool fijado_ = false;
    // From the service in hand on, once the walk is set down.
    std::vector<Ficha> pendientes_;
    std::size_t n_ = 0;
};

} // namespace zarven

#endif
