// The head-ends that are measured: ten services a stream, modules with two inputs, two outputs of 38000 and a
// budget of 30 PIDs, thirty modules for every 500 services.

#ifndef ZARVEN_BENCH_MEDIDA_H
#define ZARVEN_BENCH_MEDIDA_H

#include "Generador.h"

namespace medida {

inline generador::Parametros cabecera(unsigned servicios, generador::Holgura holgura) {
    generador::Parametros parametros;
    parametros.streams = servicios / 10;
    parametros.modulos = servicios * 30 / 500;
    parametros.holgura = holgura;
    return parametros;
}

} // namespace medida

#endif
