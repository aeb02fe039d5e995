// How many eligible services each stream of the working index holds, for choosing the next stream to fill.
//
// A fill sweep offers the index to every free input of the head-end. Counting all services again for each of
// them would cost inputs times services; so a sweep counts once and keeps the counts up to date with what it
// places. Thrown away with the sweep: the index is public, and may change between calls.
//
// Large head-ends have one or two thousand streams. The counts stand in one flat array, sorted by count and
// then in the order of the index, so that the fewest and the most are found at its ends.

#ifndef ZARVEN_ENGINE_ELEGIBLES_H
#define ZARVEN_ENGINE_ELEGIBLES_H

#include <cstdint>
#include <optional>
#include <vector>

#include "Rec_ONID.h"

#include "../reglas/Reglas.h"

namespace zarven {

struct Stream {
    unsigned short ONID;
    unsigned short TSID;
};

class Elegibles {
public:
    // `transcoding`: as long as the index holds services that need a transcoder, the kind that counts.
    Elegibles(tMapaONIDs& indice, bool transcoding);

    bool hayTranscoding() const { return conTranscoding_ != 0; }

    // The stream with the most (MODO_MAX) or fewest (MODO_MIN) services that count, and at least one; the
    // first of equals. Nothing when there is none, or for another modo.
    std::optional<Stream> elegir(char modo) const;

    // To be called before and after services are taken out of the stream that elegir has given.
    void descontar(Stream stream, const tMapaServicios& servicios);
    void contar(Stream stream, const tMapaServicios& servicios);

private:
    struct Cuenta {
        int n;
        Stream stream;
    };
    static bool antes(const Cuenta& a, const Cuenta& b);

    int contarElegibles(const tMapaServicios& servicios) const;
    void sumarTotales(const tMapaServicios& servicios, int signo);
    void contarTodo();

    tMapaONIDs& indice_;
    // Services of the whole index whose key is positive, and that need a transcoder.
    int conClavePositiva_ = 0;
    int conTranscoding_ = 0;
    // What the counts were made with.
    reglas::Criterio criterio_;
    std::vector<Cuenta> cuentas_;
};

} // namespace zarven

#endif
