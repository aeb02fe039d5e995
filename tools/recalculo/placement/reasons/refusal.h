// Why a module does not take a service: the first of the engine's limits that stands in the way, with its
// figures, read off the final state. Every service left out is held against every module, which makes some
// millions of pairs in a large head-end; so the modules are kept as flat values, made once.

#ifndef RECALCULO_REFUSAL_H
#define RECALCULO_REFUSAL_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "placement/running/capacity.h"
#include "placement/services.h"

namespace zarven::tool {

/// In the order in which they are tried: whoever is stopped by a later one has passed the earlier.
enum class Limit {
    /// No input receives the stream and none is free.
    no_input,
    no_output,
    /// Every output carries as many services as it may.
    service_count,
    bitrate,
    pids,
    transcoders,
    /// There is a free input and room, but the engine tunes no input to this stream: it asks only for
    /// services without transcoding, and passes over LCN 0 as long as others wait.
    stream_not_chosen,
    /// Nothing is in the way: the engine's strategies did not come by.
    none,
};

/// The engine tunes a free input to a stream for the sake of such a service of it, waiting under the key. The
/// tool loads modules of model 3 only; with such a module the engine never fills inputs by services with
/// transcoding, so only fills without are asked about; where no service needs a transcoder, their kind is
/// every kind.
bool tunes_an_input_for(long key, const tRec_Servicio& service, bool positive_keys_are_left);

/// One output and what a service lacks on it.
struct OutputRoom {
    std::uint32_t number = 0;
    std::uint32_t bitrate = 0;
    std::uint32_t bitrate_max = 0;
    /// How many kbit/s must be freed at the least; 0 if the service fits.
    std::uint64_t short_by = 0;
    /// So much can be freed.
    bool can_be_freed = true;
};

/// What a module has left for a service, whatever its inputs receive.
struct Room {
    /// The engine's answer: `none`, or one from `no_output` to `transcoders`.
    Limit limit = Limit::none;
    std::uint32_t outputs = 0;
    /// Of these by the number of services.
    std::uint32_t outputs_full = 0;
    /// The one that the engine takes, or the one that lacks least. Only if not all are full.
    OutputRoom output;
    /// By the engine's count.
    std::uint32_t pids_used = 0;
    std::uint32_t pids_max = 0;
    /// How many PIDs must be freed; 0 if the service fits.
    std::uint32_t pids_short_by = 0;
    /// SD and HD share one pool; its limit depends on what is in use.
    std::uint32_t transcoders_used = 0;
    std::uint32_t transcoders_max = 0;

    /// What must be freed of `limit`, in its own unit.
    std::uint64_t short_by() const;
    /// Freeing helps; otherwise the service is too large for the module.
    bool can_be_freed(std::uint32_t pids_needed) const;
};

struct ModuleRefusal {
    std::string_view mac;
    /// Empty where it has none.
    std::string label;
    Limit limit = Limit::none;
    Room room;
    std::size_t inputs = 0;
    /// Inputs tuned to the stream of the service, and inputs that carry nothing.
    std::vector<std::uint16_t> inputs_receiving;
    std::vector<std::uint16_t> inputs_free;
    /// The module would take the service if it were empty.
    bool could_ever = true;
    /// The outputs that carry the service; with some of them, the rest tells of a second appearance.
    std::vector<std::uint32_t> carried_on;

    /// The engine would place the service here, whatever the inputs receive.
    bool engine_has_room() const { return room.limit == Limit::none; }
    /// The MAC, and the label in brackets.
    std::string name() const { return module_name(std::string(mac), label); }
    bool has_input() const { return !inputs_receiving.empty() || !inputs_free.empty(); }
};

/// The modules as the run has left them. Refers to the engine.
class FinalState {
public:
    explicit FinalState(const EngineRun& run);

    /// One answer for each module, in their order.
    std::vector<ModuleRefusal> refusals_of(const tRec_Servicio& service) const;
    /// Why no module would take it even where nothing is placed yet, as a clause; empty if one would.
    std::string why_never(const tRec_Servicio& service) const;
    /// The engine would tune a free input to the stream of the service, were it left out.
    bool chooses_stream_of(const tRec_Servicio& service) const;
    /// A service without transcoding that is filed under 0 is left out of its stream.
    bool lcn_0_waits_in_stream_of(const tRec_Servicio& service) const;

private:
    struct InputState {
        std::uint16_t number;
        Stream stream;
        bool is_tuned;
        bool is_empty;
    };

    struct OutputState {
        std::uint32_t number;
        std::uint32_t bitrate;
        std::uint32_t bitrate_max;
        std::uint32_t services;
        std::uint32_t services_max;
    };

    struct ModuleState {
        std::string_view mac;
        std::vector<InputState> inputs;
        std::vector<OutputState> outputs;
        std::uint16_t pids;
        std::uint16_t pids_max;
        std::uint16_t sd_transcoders;
        std::uint16_t hd_transcoders;
        std::uint16_t sd_transcoders_max;
        std::uint16_t hd_transcoders_max;
        std::string label = {};
    };

    static ModuleState state_of(const tRec_Modulo& module);
    static void judge_outputs(const ModuleState& module, const tRec_Servicio& service, Room& room);
    static Room room_for(const ModuleState& module, const tRec_Servicio& service);
    ModuleRefusal refusal_of(const ModuleState& module, const tRec_Servicio& service) const;
    void note_chosen_streams(const tMapaONIDs& left_out);

    std::vector<ModuleState> modules_;
    /// The same modules when they are empty.
    std::vector<ModuleCapacity> capacities_;
    /// Index of the module and number of the output, for each service on one.
    std::unordered_map<const tRec_Servicio*, std::vector<std::pair<std::size_t, std::uint32_t>>> carried_on_;
    /// The streams with a service that the engine chooses streams for.
    std::set<Stream> chosen_streams_;
    std::set<Stream> streams_with_lcn_0_;
    bool positive_keys_are_left_ = false;
};

} // namespace zarven::tool

#endif
