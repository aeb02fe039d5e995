// A run that explodes shows in the index of what is left out: a failed exchange leaves two services there
// once more, under the stream of the service that it was to make room for.

#include "placement/running/bounded_run.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include <fmt/format.h>

#include "base/counted.h"
#include "base/failure.h"
#include "base/utf8.h"
#include "placement/running/capacity.h"
#include "placement/running/host.h"
#include "placement/running/progress.h"
#include "placement/services.h"

namespace zarven::tool {

namespace {

/// So many entries take some hundred megabytes; a run that ends has as many as it has services left.
constexpr std::size_t most_entries = 1000000;
/// More are counted only.
constexpr std::size_t services_named = 3;

/// What stood in the index when the run was ended.
struct Congestion {
    std::size_t entries = 0;
    std::size_t services = 0;
    /// The stream under which most of it stands, and its own services there.
    Stream stream;
    std::vector<const tRec_Servicio*> tried;
};

Congestion congestion_of(const tMapaONIDs& index) {
    Congestion found;
    ServiceSet services;
    std::size_t most = 0;
    for (const auto& [onid, network] : index)
        for (const auto& [tsid, stream] : network.MapRec_TSIDs) {
            found.entries += stream.MapRec_Services.size();
            for (const auto& [key, service] : stream.MapRec_Services)
                services.insert(service.get());
            if (stream.MapRec_Services.size() <= most)
                continue;
            most = stream.MapRec_Services.size();
            found.stream = {onid, tsid};
            found.tried.clear();
            for (const auto& [key, service] : stream.MapRec_Services)
                if (stream_of(*service) == found.stream &&
                    (found.tried.empty() || found.tried.back() != service.get()))
                    found.tried.push_back(service.get());
        }
    found.services = services.size();
    return found;
}

/// "LCN 1 "Uno", LCN 2 "Dos", LCN 3 "Tres" and 7 more"
std::string named(const std::vector<const tRec_Servicio*>& services) {
    std::vector<std::string> names;
    for (std::size_t index = 0; index < std::min(services.size(), services_named); ++index)
        names.push_back(
            fmt::format("LCN {} \"{}\"", services[index]->LCN, shortened(services[index]->NombreEntrada)));
    return fmt::format("{}{}", fmt::join(names, ", "),
                       services.size() <= services_named
                           ? ""
                           : fmt::format(" and {} more", services.size() - services_named));
}

/// Those that no module could ever take are to blame, if there are any.
std::string blame(const EngineRun& run, const Congestion& congestion) {
    const std::vector<ModuleCapacity> modules = capacities_of(run);
    std::vector<const tRec_Servicio*> impossible;
    std::copy_if(
        congestion.tried.begin(), congestion.tried.end(), std::back_inserter(impossible),
        [&modules](const tRec_Servicio* service) { return !why_none_could_take(modules, *service).empty(); });
    if (impossible.empty())
        return named(congestion.tried);
    return fmt::format("{}, which no module could ever take ({})", named(impossible),
                       why_none_could_take(modules, *impossible.front()));
}

/// Between two strategies the index is that of the next, and the one that exploded may have been kept.
std::string what_happened(const EngineRun& run) {
    const Congestion now = congestion_of(run.engine.Mapa_ONIDs);
    const Congestion kept = congestion_of(run.engine.Mapa_ONIDs_Final);
    const Congestion& congestion = now.entries < kept.entries ? kept : now;
    if (congestion.tried.empty() || congestion.entries <= 2 * congestion.services)
        return "";
    return fmt::format(
        "; exchanges that fail one after the other have left {} entries of {}, to make room for "
        "services of stream {}: {}. Do not ask for them: \"ask\": false in the head-end",
        congestion.entries, counted(congestion.services, "service"), to_string(congestion.stream),
        blame(run, congestion));
}

} // namespace

void run_bounded(const EngineRun& run, const std::string& file, const std::function<void()>& go) {
    const std::function<void()> look = [&run] {
        if (services_left(run.engine) > most_entries)
            throw host::RunStopped(fmt::format("its index has more than {} entries", most_entries));
    };
    const host::Bounded bounded(look);
    try {
        go();
    } catch (const host::RunStopped& stopped) {
        throw EngineStopped(
            fmt::format("{}: the engine was stopped: {}{}", file, stopped.what(), what_happened(run)));
    }
}

} // namespace zarven::tool
