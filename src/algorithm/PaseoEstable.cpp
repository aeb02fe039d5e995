#include "../log/SinFortify.h"

#include "PaseoEstable.h"

namespace zarven {

PaseoEstable::PaseoEstable(tMapaServicios& servicios) : servicios_(servicios), it_(servicios.begin()) {}

bool PaseoEstable::avanzar() {
    if (fijado_) {
        do
            ++n_;
        while (n_ < pendientes_.size() && buscarFicha(servicios_, pendientes_[n_]) == servicios_.end());
        return n_ < pendientes_.size();
    }
    if (empezado_)
        ++it_;
    empezado_ = true;
    while (it_ != servicios_.end() && yaVisitado(it_))
        ++it_;
    return it_ != servicios_.end();
}

void PaseoEstable::fijar() {
    if (fijado_)
        return;
    for (auto resto = it_; resto != servicios_.end(); ++resto)
        if (!yaVisitado(resto))
            pendientes_.push_back({resto->first, resto->second});
    fijado_ = true;
}

// The same service further up under the same key.
bool PaseoEstable::yaVisitado(tMapaServicios::iterator entrada) const {
    for (auto otra = entrada; otra != servicios_.begin();) {
        --otra;
        if (otra->first != entrada->first)
            return false;
        if (otra->second == entrada->second)
            return true;
    }
    return false;
}

} // namespace zarven
