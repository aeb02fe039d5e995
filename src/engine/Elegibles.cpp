#include "../log/SinFortify.h"

#include "Elegibles.h"

#include <algorithm>
#include <tuple>

#include "Indice.h"

namespace zarven {

namespace {

// The search for the fewest begins below this: a stream with so many services is never taken by it.
constexpr int TOPE_MIN = 99999;

} // namespace

Elegibles::Elegibles(tMapaONIDs& indiceDeTrabajo, bool conTranscoding)
    : indice(indiceDeTrabajo), transcoding(conTranscoding) {
    std::size_t streams = 0;
    algunTSID(indice, [&](const Rec_ONID&, const Rec_TSID& stream) {
        ++streams;
        sumarTotales(stream.MapRec_Services, 1);
        return false;
    });
    cuentas.reserve(streams);
    contarTodo();
}

bool Elegibles::antes(const Cuenta& a, const Cuenta& b) {
    return std::tie(a.n, a.stream.ONID, a.stream.TSID) < std::tie(b.n, b.stream.ONID, b.stream.TSID);
}

bool Elegibles::cuenta(long clave, const tRec_Servicio& servicio) const {
    if (solo_claves_positivas && clave <= 0)
        return false;
    return !solo_de_su_clase || servicio.Transcoding == (transcoding ? 1 : 0);
}

int Elegibles::elegibles(const tMapaServicios& servicios) const {
    int n = 0;
    for (const auto& [clave, servicio] : servicios)
        n += cuenta(clave, *servicio);
    return n;
}

void Elegibles::sumarTotales(const tMapaServicios& servicios, int signo) {
    for (const auto& [clave, servicio] : servicios) {
        con_clave_positiva += clave > 0 ? signo : 0;
        con_transcoding += servicio->Transcoding != 0 ? signo : 0;
    }
}

void Elegibles::contarTodo() {
    solo_claves_positivas = con_clave_positiva != 0;
    solo_de_su_clase = con_transcoding != 0;
    cuentas.clear();
    for (const auto& [onid, rec_onid] : indice)
        for (const auto& [tsid, rec_tsid] : rec_onid.MapRec_TSIDs)
            if (const int n = elegibles(rec_tsid.MapRec_Services); n != 0)
                cuentas.push_back({n, {onid, tsid}});
    std::sort(cuentas.begin(), cuentas.end(), antes);
}

std::optional<Stream> Elegibles::elegir(char modo) const {
    if (cuentas.empty() || (modo != MODO_MAX && modo != MODO_MIN))
        return {};
    if (modo == MODO_MIN) {
        if (cuentas.front().n >= TOPE_MIN)
            return {};
        return cuentas.front().stream;
    }
    const Cuenta primeraDelMayor{cuentas.back().n, {0, 0}};
    return std::lower_bound(cuentas.begin(), cuentas.end(), primeraDelMayor, antes)->stream;
}

void Elegibles::descontar(Stream stream, const tMapaServicios& servicios) {
    sumarTotales(servicios, -1);
    const Cuenta cuenta{elegibles(servicios), stream};
    cuentas.erase(std::lower_bound(cuentas.begin(), cuentas.end(), cuenta, antes));
    // The engine holds most towards the end of a sweep, when few counts are left.
    if (cuentas.size() < cuentas.capacity() / 2)
        cuentas.shrink_to_fit();
}

void Elegibles::contar(Stream stream, const tMapaServicios& servicios) {
    sumarTotales(servicios, 1);
    // What counts depends on what is left: with the last service of its kind a rule falls away.
    if (solo_claves_positivas != (con_clave_positiva != 0) || solo_de_su_clase != (con_transcoding != 0)) {
        contarTodo();
        return;
    }
    const Cuenta cuenta{elegibles(servicios), stream};
    if (cuenta.n != 0)
        cuentas.insert(std::upper_bound(cuentas.begin(), cuentas.end(), cuenta, antes), cuenta);
}

} // namespace zarven
