#include "support/Cabeceras.h"

namespace cabeceras {

using generador::Dado;
using generador::Holgura;
using generador::Parametros;

Parametros pequena(std::uint32_t semilla) {
    Dado dado(semilla * 2654435761U);
    Parametros p;
    p.semilla = semilla;
    p.streams = dado.entre(2, 3);
    p.serviciosPorStream = {1, 4};
    p.modulos = dado.entre(2, 3);
    p.entradas = {1, 2};
    p.salidas = {1, 2};
    p.bitrateSalida = {8000, 38000};
    p.pidsModulo = {10, 30};
    p.porcentajeTranscoding = dado.entre(0, 50);
    p.transcoders = {0, 3};
    p.porcentajeClones = dado.entre(10, 50);
    p.clavesRepetidas = dado.porcentaje(10);
    p.pidsPorServicio = dado.entre(0, 1);
    p.holgura = dado.porcentaje(50) ? Holgura::JUSTA : Holgura::ESCASA;
    return p;
}

} // namespace cabeceras
