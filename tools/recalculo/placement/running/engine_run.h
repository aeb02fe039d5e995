// The engine at work on a head-end: everything loaded into it, each answer looked at, and one recalculation.

#ifndef RECALCULO_ENGINE_RUN_H
#define RECALCULO_ENGINE_RUN_H

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "headend/receptions.h"
#include "tRecalculo.h"

namespace zarven::tool {

/// The service that is asked for of a one-of group.
struct AskedVariant {
    std::string one_of;
    const tRec_Servicio* service = nullptr;
    /// Among the variants, the best of which is 1.
    std::size_t place = 1;
    std::size_t variants = 1;
};

/// A loaded engine.
struct EngineRun {
    tRecalculo engine;
    /// All clones, in the order of loading; the engine's own list forgets those that it attaches.
    std::vector<std::shared_ptr<tRec_Servicio>> clones;
    /// The record of each of `Headend::services`; null for one that is not asked for.
    std::vector<const tRec_Servicio*> services;
    /// What the engine does not need to know: of the modules that have a label this, by MAC, and where
    /// streams are received.
    std::map<std::string, std::string> labels;
    Receptions receptions;
    /// The records of services whose bitrate was measured, and the mean of each in kbit/s; 0: not known.
    std::map<const tRec_Servicio*, std::uint32_t> measured;
    /// The groups of the services that are asked for, in the order of the head-end, and of each record in one
    /// the place of its group there.
    std::vector<std::string> groups;
    std::map<const tRec_Servicio*, std::size_t> group_of;
    /// What is asked for of each one-of group.
    std::vector<AskedVariant> variants;
    /// The records of services marked as `must`, and how many are wanted: a group of which one is a must
    /// wants one, whichever is asked for.
    std::set<const tRec_Servicio*> musts;
    std::size_t musts_wanted = 0;
    /// Services of the head-end that the engine is not asked for.
    std::size_t not_asked_for = 0;
};

/// A module as reports call it.
std::string name_in(const EngineRun& run, const std::string& mac);

/// What a return code of the loading operations means, in words.
std::string meaning_of_refusal(int code);

/// Loads all of a head-end that it asks for. Throws `Failure` at the first refusal; `file` is for messages.
EngineRun load_engine(const Headend& headend, const std::string& file);

/// Runs the recalculation. Throws `Failure` with `ExitCode::engine_did_not_run` if the engine could not.
void run_engine(EngineRun& run, const std::string& file);

} // namespace zarven::tool

#endif
