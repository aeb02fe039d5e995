#include "placement/services.h"

#include "Reglas.h"

namespace zarven::tool {

ServiceSet set_of(const Services& services) {
    ServiceSet set;
    for (const auto& service : services)
        set.insert(service.get());
    return set;
}

Stream stream_of(const tRec_Servicio& service) {
    return {service.ONID, service.TSID};
}

ServiceSet services_on(const tRec_Salida& output) {
    ServiceSet set;
    for (const auto& [key, service] : output.MapaServicios)
        set.insert(service.get());
    return set;
}

ServiceSet services_on_outputs(const tRec_Modulo& module) {
    ServiceSet set;
    for (const auto& [number, output] : module.mapSalidas)
        set.merge(services_on(output));
    return set;
}

bool is_received(const tRec_Servicio& service, const tRec_Entrada& input) {
    return reglas::recibe(input, service.ONID, service.TSID);
}

ServiceSet placed_on(const tRec_Modulo& module) {
    const ServiceSet sent = services_on_outputs(module);
    ServiceSet placed;
    for (const auto& [number, input] : module.mapEntradas)
        for (const auto& [key, service] : input.MapaServicios)
            if (is_received(*service, input) && sent.count(service.get()) != 0)
                placed.insert(service.get());
    return placed;
}

ServiceSet placed_of(const EngineRun& run) {
    ServiceSet placed;
    for (const auto& [mac, module] : run.engine.Mapa_ModulosCabecera_Final)
        placed.merge(placed_on(module));
    return placed;
}

Services left_out_of(const EngineRun& run) {
    Services services;
    ServiceSet seen;
    for (const auto& [onid, network] : run.engine.Mapa_ONIDs_Final)
        for (const auto& [tsid, stream] : network.MapRec_TSIDs)
            for (const auto& [key, service] : stream.MapRec_Services)
                if (seen.insert(service.get()).second)
                    services.push_back(service);
    return services;
}

Services neither_of(const EngineRun& run) {
    ServiceSet known = set_of(left_out_of(run));
    known.merge(set_of(run.engine.listaServiciosClonados));
    known.merge(placed_of(run));
    Services services;
    for (const auto* loaded : {&run.engine.listaServicios, &run.clones})
        for (const auto& service : *loaded)
            if (known.count(service.get()) == 0)
                services.push_back(service);
    return services;
}

Services unplaced_of(const EngineRun& run) {
    Services services = left_out_of(run);
    for (const Services& others : {run.engine.listaServiciosClonados, neither_of(run)})
        services.insert(services.end(), others.begin(), others.end());
    return services;
}

} // namespace zarven::tool
