// Head-ends of the generator as the tool reads them.

#ifndef RECALCULO_BENCH_GENERATED_HEADEND_H
#define RECALCULO_BENCH_GENERATED_HEADEND_H

#include <string>

#include "Generador.h"
#include "headend/headend.h"

namespace zarven::tool {

/// Clones are already charged to their parents there, so they are left away.
Headend generated_headend(const std::string& name, const generador::Parametros& parameters);

} // namespace zarven::tool

#endif
