// The exchange of two services between two modules, which makes room for a third one on the first module.
//
// The principal service leaves the first module for the second, the auxiliar one the second for the first;
// both are of the stream that the two modules receive. PIDs and bitrate come free for the service in hand.

#ifndef ZARVEN_ALGORITHM_PERMUTA_H
#define ZARVEN_ALGORITHM_PERMUTA_H

#include <optional>

#include "tRecalculo.h"

#include "ServicioEnMano.h"

namespace zarven {

// One of the two modules, known as MAC[0] and MAC[1] in the log.
struct Extremo {
    tMapaModulos::iterator modulo;
    // The input that receives the stream of the two services; there may be none on the first module.
    tMapaEntradas::iterator entrada;
};

struct Extremos {
    Extremo principal;
    Extremo auxiliar;
    // The input of the first module that receives the stream of the service in hand.
    tMapaEntradas::iterator entradaEnMano;
};

class Permuta {
public:
    Permuta(tRecalculo& motor, ServicioEnMano& enMano, const Extremos& extremos);

    // Makes the exchange and places the service in hand. Gives what Clear_ONID_TSID removed from the index
    // then; nothing when a step failed, and what had been done by then stays.
    std::optional<int> permutar(const Ficha& principal, const Ficha& auxiliar);

private:
    // One of the two modules, and how the log calls it and the service that leaves it.
    struct Papel {
        Extremo extremo;
        const char* nombre;
        const char* modulo;
        const char* mac;
        const char* entrada;
        const char* sufijo;
        const char* blanco; // at the end of a line
    };

    tMapaServicios::iterator apuntar(const Papel& papel, const Ficha& ficha);
    bool quitar(const Papel& papel, tMapaServicios::iterator itService);
    // Takes the service of one module to the other one.
    bool llevar(const Papel& papel, const Papel& otro, tMapaServicios::iterator itService);
    void retirar(long clave, long claveEnLinea, int tsidEnLinea);
    bool colocarOriginal();

    tRecalculo& motor_;
    ServicioEnMano& enMano_;
    const Papel principal_;
    const Papel auxiliar_;
    const tMapaEntradas::iterator entradaEnMano_;
};

} // namespace zarven

#endif
