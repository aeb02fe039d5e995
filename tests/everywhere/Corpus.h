// The head-ends whose runs are recorded: a few hundred small ones of every kind, and some large ones.

#ifndef ZARVEN_TESTS_CORPUS_H
#define ZARVEN_TESTS_CORPUS_H

#include <string>
#include <vector>

#include "Generador.h"

namespace corpus {

struct Pieza {
    std::string nombre;
    generador::Parametros parametros;
    bool enmascarada; // the debug level is masked
};

std::vector<Pieza> todas();

} // namespace corpus

#endif
