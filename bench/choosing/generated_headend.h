// Head-ends of the generator as the tool reads them.

#ifndef RECALCULO_BENCH_GENERATED_HEADEND_H
#define RECALCULO_BENCH_GENERATED_HEADEND_H

#include <string>

#include "Generador.h"
#include "headend/headend.h"

namespace zarven::tool {

/// Clones are already charged to their parents there, so they are left away.
Headend generated_headend(const std::string& name, const generador::Parametros& parameters);

/// About eight services a stream, on modules with two inputs or more: too few for half of them.
Headend crowded_headend(unsigned services);

} // namespace zarven::tool

#endif
