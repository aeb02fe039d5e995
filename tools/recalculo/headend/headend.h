// A head-end as its planner writes it: the modules, what is received, and what is wished for. Plain values
// with the widths that the engine takes; nothing here has been checked against the engine yet. A head-end has
// up to some hundreds of modules and some thousands of services.

#ifndef RECALCULO_HEADEND_H
#define RECALCULO_HEADEND_H

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "tRec_Modulo.h"
#include "tRec_Servicio.h"

#include "headend/stream.h"

namespace zarven::tool {

/// Peak bitrates in kbit/s that stand in where the planner knows none.
inline constexpr std::uint32_t typical_radio_bitrate = 220;
inline constexpr std::uint32_t typical_sd_bitrate = 3500;
inline constexpr std::uint32_t typical_hd_bitrate = 8000;
inline constexpr std::uint32_t typical_uhd_bitrate = 20000;

/// Service types of digital television and digital radio sound.
inline constexpr std::uint16_t type_television = 1;
inline constexpr std::uint16_t type_radio = 2;

struct Module {
    std::string mac;
    std::uint16_t model = tRec_Modulo::MODELO_SOPORTADO;
    bool controller = false;
    std::uint16_t inputs = 0;
    /// Maximum bitrate in kbit/s of each output, in the order of the outputs, which count from 1.
    std::vector<std::uint32_t> outputs;
    std::uint16_t pids_max = 0;
    std::uint16_t sd_transcoders = 0;
    std::uint16_t hd_transcoders = 0;
    std::uint16_t aux_transcoders = 0;
    /// Where it stands or what it is called, as "Rack 1, slot 3"; empty for none.
    std::string label = {};
    /// What one costs, in any unit; for the choice between kinds.
    std::uint32_t price = 1;
};

/// How a module is called in reports: by its MAC, and its label in brackets if it has one.
std::string module_name(const std::string& mac, const std::string& label);

/// What a service and a clone of one have in common.
struct Programme {
    /// Logical channel number; the engine's key of the service within its stream, too.
    std::uint16_t lcn = 0;
    std::string name;
    std::string output_name;
    std::uint16_t onid = 0;
    std::uint16_t tsid = 0;
    std::uint16_t sid = 0;
    std::uint16_t osid = 0;
    std::uint16_t simulcast_lcn = 0;
    std::uint16_t descramble = 0;
    std::uint32_t video_bitrate = 0;
    std::uint16_t type = type_television;
    std::uint16_t video_format = 0;
    std::uint16_t forced_name = 0;
    std::uint16_t transcoding = 0;
    std::uint16_t sat_id = 0;
    std::uint16_t reserved1 = 0;
    std::uint16_t reserved2 = 0;
    std::uint16_t reserved3 = 0;
};

/// The one that it is received with.
Stream stream_of(const Programme& programme);

/// Known by its service type.
bool is_radio(const Programme& programme);
/// By the engine's rule.
bool is_hd(const Programme& programme);

/// The most that a service can be worth to its planner.
inline constexpr std::uint16_t most_value = 1000;

struct Service : Programme {
    /// Peak bitrate of the whole service, in kbit/s.
    std::uint32_t bitrate = 0;
    /// The bitrate was measured; else it is an estimate.
    bool measured = false;
    /// Of what was measured, in kbit/s; 0 where it is not known.
    std::uint32_t mean_bitrate = 0;
    std::uint16_t ca_pids = 0;
    std::uint16_t ca_pids_max = 0;
    /// Where the service comes from it is not told whether it is television, and of which kind.
    bool kind_unknown = false;
    /// What it is worth to the planner, up to `most_value`; 0: it is better left out. For the choice of what
    /// to ask for, as `must`.
    std::uint16_t value = 1;
    /// Comes before all values.
    bool must = false;
    /// The engine is asked for it.
    bool ask = true;
    /// A heading of its planner's list, for reports and selections; empty for none.
    std::string group = {};
    /// What the planner wants one of, as "Das Erste": of the services that have the same here, one is asked
    /// for. Empty for a service that stands for itself.
    std::string one_of = {};
    /// Another of its one-of group is asked for in its place; in no file.
    bool yields = false;
    /// Its place in the wish list of this run, from 1, behind all others where it has none; in no file.
    std::size_t wished_as = static_cast<std::size_t>(-1);
};

/// Those of all services, each once.
std::set<Stream> streams_of(const std::vector<Service>& services);

/// A second appearance of a service of the same stream and LCN. It stands where its parent stands.
struct Clone : Programme {
    /// 0: the engine looks the parent up.
    std::uint16_t parent_sid = 0;
};

struct Pid {
    std::int32_t id = 0;
    std::uint16_t sid = 0;
    std::string audio;
    std::uint16_t order = 0;
    std::uint16_t reserved1 = 0;
    std::uint16_t reserved2 = 0;
    std::uint16_t reserved3 = 0;
};

struct HomeChannel {
    std::uint16_t onid = 0;
    std::uint16_t tsid = 0;
};

/// Where a stream comes from, as far as it is known.
struct Reception {
    std::uint16_t onid = 0;
    std::uint16_t tsid = 0;
    /// In kHz; 0 where it is not known.
    std::uint32_t frequency = 0;
    /// H, V, L or R; empty where there is none or it is not known.
    std::string polarization;
    /// Its place in orbit, as "19.2E", or what else names it.
    std::string satellite;
    /// In symbols a second; 0 where it is not known or there are none.
    std::uint32_t symbol_rate = 0;
    /// What its transponder carries, in kbit/s; 0 where it is not known.
    std::uint32_t net_rate = 0;
    /// "DVB-S2", or another system; empty where it is not known.
    std::string delivery = {};
};

Stream stream_of(const Reception& reception);

/// "19.2E 12187.5 MHz H"; empty where nothing is known.
std::string to_string(const Reception& reception);

/// What a receiver is tuned by: the same with the symbol rate, "19.2E 12187.5 MHz H 27500 kS/s".
std::string tuning_of(const Reception& reception);

struct Headend {
    std::string name;
    std::vector<Module> modules;
    std::vector<Service> services;
    std::vector<Clone> clones;
    std::vector<Pid> pids;
    std::vector<HomeChannel> home_channels;
    /// Each stream once.
    std::vector<Reception> streams;
};

} // namespace zarven::tool

#endif
