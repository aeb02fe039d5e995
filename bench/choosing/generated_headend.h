// Head-ends of the generator as the tool reads them.

#ifndef RECALCULO_BENCH_GENERATED_HEADEND_H
#define RECALCULO_BENCH_GENERATED_HEADEND_H

#include <cstdint>
#include <string>

#include "Generador.h"
#include "headend/headend.h"

namespace zarven::tool {

/// Clones are already charged to their parents there, so they are left away.
Headend generated_headend(const std::string& name, const generador::Parametros& parameters);

/// Modules of one kind, as a head-end has them as a rule.
struct AlikeModules {
    unsigned number;
    std::uint16_t inputs;
    unsigned outputs;
    std::uint16_t pids;
};

/// 1,234 services as satellites carry them: streams of a dozen SD services, some with a few radios, of some
/// HD services, and of dozens of radios. Nearly half of the streams are scrambled, for the larger part.
Headend line_up(const std::string& name, std::uint32_t seed, const AlikeModules& modules);

/// About eight services a stream, on modules with two inputs or more: too few for half of them.
Headend crowded_headend(unsigned services);

} // namespace zarven::tool

#endif
