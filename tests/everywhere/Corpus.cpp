#include "everywhere/Corpus.h"

#include "support/Cabeceras.h"

namespace corpus {

namespace {

using generador::Dado;
using generador::Holgura;
using generador::Parametros;

// Of every kind: networks, shared keys, streams without number, modules without inputs or outputs.
Parametros cualquiera(std::uint32_t semilla) {
    Dado dado(semilla * 2246822519U);
    Parametros p;
    p.semilla = semilla;
    p.streams = dado.entre(1, 6);
    p.serviciosPorStream = {0, dado.entre(1, 8)};
    p.redes = dado.entre(1, 3);
    p.clavesRepetidas = dado.porcentaje(40);
    p.streamSinNumero = dado.porcentaje(20);
    p.porcentajeTranscoding = dado.entre(0, 60);
    p.porcentajeClones = dado.entre(0, 40);
    p.pidsPorServicio = dado.entre(0, 3);
    p.modulos = dado.entre(1, 5);
    p.entradas = {dado.entre(0, 1), dado.entre(1, 4)};
    p.salidas = {dado.entre(0, 1), dado.entre(1, 3)};
    p.bitrateSalida = {dado.entre(4000, 20000), 38000};
    p.pidsModulo = {dado.entre(0, 10), dado.entre(10, 40)};
    p.transcoders = {0, dado.entre(0, 4)};
    p.holgura = dado.porcentaje(50)   ? Holgura::ESCASA
                : dado.porcentaje(70) ? Holgura::JUSTA
                                      : Holgura::AMPLIA;
    return p;
}

Parametros grande(unsigned servicios, Holgura holgura) {
    Parametros p;
    p.semilla = servicios;
    p.streams = servicios / 10;
    p.redes = 3;
    p.modulos = servicios * 30 / 500;
    p.porcentajeTranscoding = 20;
    p.porcentajeClones = 15;
    p.transcoders = {0, 4};
    p.holgura = holgura;
    return p;
}

} // namespace

std::vector<Pieza> todas() {
    std::vector<Pieza> piezas;
    for (const bool enmascarada : {false, true}) {
        const std::string modo = enmascarada ? "-masked" : "-logged";
        for (std::uint32_t semilla = 1; semilla <= 300; ++semilla)
            piezas.push_back(
                {"small-" + std::to_string(semilla) + modo, cabeceras::pequena(semilla), enmascarada});
        for (const std::uint32_t semilla : {cabeceras::CON_TODO, cabeceras::CON_FALLOS})
            piezas.push_back(
                {"small-" + std::to_string(semilla) + modo, cabeceras::pequena(semilla), enmascarada});
        for (std::uint32_t semilla = 1; semilla <= 300; ++semilla)
            piezas.push_back({"any-" + std::to_string(semilla) + modo, cualquiera(semilla), enmascarada});
    }
    for (const unsigned servicios : {500U, 2000U}) {
        piezas.push_back(
            {"tight-" + std::to_string(servicios) + "-masked", grande(servicios, Holgura::ESCASA), true});
        piezas.push_back(
            {"fair-" + std::to_string(servicios) + "-masked", grande(servicios, Holgura::JUSTA), true});
        piezas.push_back(
            {"roomy-" + std::to_string(servicios) + "-masked", grande(servicios, Holgura::AMPLIA), true});
    }
    for (const unsigned servicios : {100U, 300U})
        piezas.push_back(
            {"tight-" + std::to_string(servicios) + "-logged", grande(servicios, Holgura::ESCASA), false});
    return piezas;
}

} // namespace corpus
