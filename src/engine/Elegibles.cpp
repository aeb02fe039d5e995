#include "../log/SinFortify.h"

#include "Elegibles.h"

#include <algorithm>
#include <tuple>

#include "Indice.h"

namespace zarven {

Elegibles::Elegibles(tMapaONIDs& indice, bool transcoding)
    : indice_(indice), criterio_{false, false, transcoding} {
    std::size_t streams = 0;
    cadaTSID(indice_, [&](const Rec_ONID&, const Rec_TSID& stream) {
        ++streams;
        sumarTotales(stream.MapRec_Services, 1);
    });
    cuentas_.reserve(streams);
    contarTodo();
}

bool Elegibles::antes(const Cuenta& a, const Cuenta& b) {
    return std::tie(a.n, a.stream.ONID, a.stream.TSID) < std::tie(b.n, b.stream.ONID, b.stream.TSID);
}

int Elegibles::contarElegibles(const tMapaServicios& servicios) const {
    int n = 0;
    for (const auto& [clave, servicio] : servicios)
        n += reglas::cuentaParaElegir(clave, servicio->Transcoding, criterio_);
    return n;
}

void Elegibles::sumarTotales(const tMapaServicios& servicios, int signo) {
    for (const auto& [clave, servicio] : servicios) {
        conClavePositiva_ += reglas::esClavePositiva(clave) ? signo : 0;
        conTranscoding_ += reglas::necesitaTranscoding(servicio->Transcoding) ? signo : 0;
    }
}

void Elegibles::contarTodo() {
    criterio_.soloClavesPositivas = conClavePositiva_ != 0;
    criterio_.soloDeSuClase = conTranscoding_ != 0;
    cuentas_.clear();
    for (const auto& [onid, red] : indice_)
        for (const auto& [tsid, stream] : red.MapRec_TSIDs)
            if (const int n = contarElegibles(stream.MapRec_Services); n != 0)
                cuentas_.push_back({n, {onid, tsid}});
    std::sort(cuentas_.begin(), cuentas_.end(), antes);
}

std::optional<Stream> Elegibles::elegir(char modo) const {
    if (cuentas_.empty() || (modo != reglas::MODO_MAX && modo != reglas::MODO_MIN))
        return {};
    if (modo == reglas::MODO_MIN) {
        if (cuentas_.front().n >= reglas::TOPE_MIN)
            return {};
        return cuentas_.front().stream;
    }
    const Cuenta primeraDelMayor{cuentas_.back().n, {0, 0}};
    return std::lower_bound(cuentas_.begin(), cuentas_.end(), primeraDelMayor, antes)->stream;
}

void Elegibles::descontar(Stream stream, const tMapaServicios& servicios) {
    sumarTotales(servicios, -1);
    const Cuenta cuenta{contarElegibles(servicios), stream};
    cuentas_.erase(std::lower_bound(cuentas_.begin(), cuentas_.end(), cuenta, antes));
    // The engine holds most towards the end of a sweep, when few counts are left.
    if (cuentas_.size() < cuentas_.capacity() / 2)
        cuentas_.shrink_to_fit();
}

void Elegibles::contar(Stream stream, const tMapaServicios& servicios) {
    sumarTotales(servicios, 1);
    // What counts depends on what is left: with the last service of its kind a rule falls away.
    if (criterio_.soloClavesPositivas != (conClavePositiva_ != 0) ||
        criterio_.soloDeSuClase != (conTranscoding_ != 0)) {
        contarTodo();
        return;
    }
    const Cuenta cuenta{contarElegibles(servicios), stream};
    if (cuenta.n != 0)
        cuentas_.insert(std::upper_bound(cuentas_.begin(), cuentas_.end(), cuenta, antes), cuenta);
}

} // namespace zarven
