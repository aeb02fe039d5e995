// The services of the engine after a run, by what became of them. Services are told apart by their object:
// the engine may hold one object in several places, and two services with the same numbers.

#ifndef RECALCULO_SERVICES_H
#define RECALCULO_SERVICES_H

#include <memory>
#include <set>
#include <vector>

#include "headend/stream.h"
#include "placement/running/engine_run.h"

namespace zarven::tool {

using Services = std::vector<std::shared_ptr<tRec_Servicio>>;
using ServiceSet = std::set<const tRec_Servicio*>;

ServiceSet set_of(const Services& services);

/// The one that the service is received with.
Stream stream_of(const tRec_Servicio& service);

/// Services and clones on an output, each once.
ServiceSet services_on(const tRec_Salida& output);

/// Services and clones on the outputs of a module.
ServiceSet services_on_outputs(const tRec_Modulo& module);

/// The input is tuned to the stream of the service.
bool is_received(const tRec_Servicio& service, const tRec_Entrada& input);

/// Services and clones on an output of a module that has them on an input tuned to their stream.
ServiceSet placed_on(const tRec_Modulo& module);
ServiceSet placed_of(const EngineRun& run);

/// The services that a run has left out, by stream and each once.
Services left_out_of(const EngineRun& run);

/// Those that the engine's exchanges have lost: neither placed nor left out, and clones neither attached nor
/// waiting. They are on no output, or on one of a module that does not receive them. In the order of loading.
Services neither_of(const EngineRun& run);

/// The services left out, then the clones that wait, then those that are neither.
Services unplaced_of(const EngineRun& run);

} // namespace zarven::tool

#endif
