// The outcome of a recalculation as plain values: built from the engine once, shown as text or as JSON. Some
// hundreds of modules and some thousands of services.

#ifndef RECALCULO_RESULT_H
#define RECALCULO_RESULT_H

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "headend/receptions.h"
#include "placement/advice.h"
#include "placement/audit/finding.h"
#include "placement/reasons/cause.h"
#include "placement/services.h"

namespace zarven::tool {

struct ServiceResult {
    Stream stream;
    std::uint16_t lcn = 0;
    std::uint16_t sid = 0;
    std::uint16_t osid = 0;
    std::string name;
    std::string output_name;
    std::uint32_t bitrate = 0;
    bool is_hd = false;
    bool is_radio = false;
    /// The bitrate was measured; else it is an estimate.
    bool is_measured = false;
    /// Of a measured one, in kbit/s; 0: not known.
    std::uint32_t mean_bitrate = 0;
    /// Empty for a service in none.
    std::string group = {};
    bool is_scrambled = false;
    std::uint16_t ca_pids = 0;
    bool is_transcoded = false;
    bool is_clone = false;
    /// What the engine looks for: a service with this `osid`.
    std::uint16_t parent_sid = 0;
    /// None for a service that is not placed.
    std::vector<std::uint32_t> outputs;
    std::string reason;
    /// Of a service that is not placed, where reasons are told.
    Cause cause = Cause::none;
    /// MAC of the module that is nearest to taking it; empty where none is nearer than the others.
    std::string nearest = {};
};

struct InputResult {
    std::uint16_t number = 0;
    bool is_tuned = false;
    Stream stream;
    std::vector<ServiceResult> services;
    /// What the transponder of its stream carries, in kbit/s; 0 where it is not known.
    std::uint32_t net_rate = 0;
};

/// What the head-end carries from an input, in kbit/s: the services of the stream that the input receives
/// which stand on an output of the module, each once. Clones add nothing, and a service of another stream,
/// which is not received there, does not count.
std::uint64_t carried_from(const InputResult& input);

struct OutputResult {
    std::uint32_t number = 0;
    std::uint32_t bitrate = 0;
    std::uint32_t bitrate_max = 0;
    std::uint32_t service_count = 0;
    std::uint32_t service_max = 0;
    std::vector<ServiceResult> services;
    /// What is to stay free for tables, in kbit/s; the engine does not know of it.
    std::uint32_t reserve = 0;
};

struct Usage {
    std::uint16_t used = 0;
    std::uint16_t max = 0;
};

struct ModuleResult {
    std::string mac;
    /// Empty for none.
    std::string label;
    std::uint16_t model = 0;
    bool is_controller = false;
    std::uint32_t pids = 0;
    std::uint32_t pids_max = 0;
    /// After the engine has gathered a stream on a module this may lag behind `pids`.
    std::uint32_t pids_counted = 0;
    Usage sd_transcoders;
    Usage hd_transcoders;
    Usage aux_transcoders;
    std::vector<InputResult> inputs;
    std::vector<OutputResult> outputs;
    /// The engine's exchanges may leave such a service.
    std::vector<ServiceResult> without_input;
};

/// The pool that SD and HD transcoders share.
struct TranscoderPool {
    std::uint32_t used = 0;
    std::uint32_t max = 0;
    /// "1 SD, 1 HD" where HD ones are in use; "limit 2 with HD" where it will then be another.
    std::string note;
};

TranscoderPool transcoder_pool(const ModuleResult& module);

struct StreamResult {
    Stream stream;
    std::vector<ServiceResult> services;
};

/// On what the bitrates of the services rest that are placed. All 0 where the head-end has no measured one.
struct RateCounts {
    /// Placed or not.
    std::size_t measured_loaded = 0;
    std::size_t measured = 0;
    std::size_t estimated = 0;
    /// Of all of them, in kbit/s, and of the estimated ones.
    std::size_t bitrate = 0;
    std::size_t estimated_bitrate = 0;
};

struct Counts {
    std::size_t loaded = 0;
    std::size_t placed = 0;
    std::size_t left_out = 0;
    std::size_t neither = 0;
    std::size_t clones_attached = 0;
    std::size_t clones_waiting = 0;
    /// Services of the head-end that were not asked for; no other number counts them.
    std::size_t not_asked_for = 0;
    /// Services marked as `must`; of one of several one counts.
    std::size_t musts = 0;
    std::size_t musts_placed = 0;
    RateCounts rates = {};
};

/// A heading of the planner's list, and what became of its services.
struct GroupResult {
    std::string name;
    std::size_t loaded = 0;
    std::size_t placed = 0;
};

/// What is asked for of a one-of group, and what became of it.
struct VariantResult {
    std::string one_of;
    ServiceResult service;
    bool is_placed = false;
    /// Among the variants, the best of which is 1.
    std::size_t place = 1;
    std::size_t variants = 1;
};

struct Result {
    std::string name;
    std::vector<ModuleResult> modules;
    std::vector<StreamResult> left_out;
    std::vector<ServiceResult> clones_waiting;
    std::vector<ServiceResult> neither;
    Counts counts;
    /// Each stream once.
    std::vector<Reception> streams;
    /// In the order of the head-end; clones do not count.
    std::vector<GroupResult> groups;
    std::vector<VariantResult> variants;
    /// Which limit to raise; a run does not tell it of itself.
    Advice advice;
    /// What the audit found; first what is broken.
    std::vector<Finding> findings;
};

/// The engine takes an input that carries no service for free, whatever it is tuned to.
bool is_free(const InputResult& input);

/// Inputs of a module, or of all.
struct InputCounts {
    std::size_t used = 0;
    std::size_t all = 0;
};

/// ONID/TSID, and in brackets where it is received, if that is known.
std::string described(Stream stream, const Receptions& receptions);

InputCounts inputs_of(const ModuleResult& module);
InputCounts inputs_of(const Result& result);

/// What is broken; for sizing and the like, which look for placements that work.
Broken broken_in(const Result& result);
bool has_broken(const Result& result);

/// What is known of a service wherever it stands.
ServiceResult describe(const tRec_Servicio& service, bool is_clone);
/// With what the run knows of it beside its record.
ServiceResult describe(const EngineRun& run, const tRec_Servicio& service, bool is_clone);

/// What tells the services of one result apart: LCN, ONID, TSID, SID, and whether it is a clone.
using ServiceKey = std::tuple<std::uint16_t, std::uint16_t, std::uint16_t, std::uint16_t, bool>;

ServiceKey key_of(const ServiceResult& service);

/// Whether a result tells why services are left out. It takes long where many are.
enum class Reasons { told, omitted };

/// Reads the result off an engine that has run.
Result result_of(const EngineRun& run, const std::string& headend_name, Reasons reasons = Reasons::told);

} // namespace zarven::tool

#endif
