// A choice of services to ask for, told to a planner: what it brings against asking for everything, by
// service; which services that must be placed are not, and why; and how much any placement could reach. The
// figures are read off runs of the engine that are made here, whatever the search has promised. Some
// thousands of services.

#ifndef RECALCULO_CHOICE_H
#define RECALCULO_CHOICE_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "headend/headend.h"
#include "placement/audit/caution.h"
#include "placement/audit/reserve.h"
#include "placement/change/comparison.h"
#include "placement/choosing/choosing.h"

namespace zarven::tool {

/// What one run of the engine comes to.
struct ChoiceSide {
    Counts counts;
    std::vector<Finding> findings;
    /// Services that must be placed, and are.
    std::size_t musts = 0;
    /// The sum of the values of the services that are placed.
    std::uint64_t value = 0;
    /// The engine did not end within its limits: nothing is placed.
    bool is_stopped = false;
    std::vector<Caution> cautions = {};
};

/// It ended, and breaks nothing: it is a placement that counts.
bool is_sound(const ChoiceSide& side);

/// What there is, and how much of it any placement could reach.
struct Reach {
    std::uint64_t wanted = 0;
    std::uint64_t most = 0;
};

struct ValuedService {
    ServiceResult service;
    std::uint16_t value = 0;
    bool must = false;
};

/// A service that is placed in one of the two runs. Where one side is empty, it is withheld or left out
/// there.
struct ValuedChange {
    ValuedService service;
    std::vector<Place> places;
    bool is_withheld = false;
};

/// A service that must be placed and is not; with its reason.
struct MissedMust {
    ServiceResult service;
    bool is_withheld = false;
    /// No module could take it, even if it were empty.
    bool is_impossible = false;
};

/// Against a placement that is to be kept.
struct MovesAgainstKept {
    std::vector<ServiceChange> moved;
    std::size_t unmoved = 0;
    /// Placed there, and not by the choice.
    std::size_t gone = 0;
};

struct ChoiceReport {
    std::string name;
    ChoiceSide all;
    ChoiceSide chosen;
    Reach musts;
    Reach value;
    /// In the order of the head-end.
    std::vector<ValuedService> withheld;
    /// In the order of the groups; without those that are withheld.
    std::vector<VariantResult> variants;
    std::vector<ValuedChange> gained;
    std::vector<ValuedChange> lost;
    std::vector<MissedMust> missed;
    std::optional<MovesAgainstKept> moves;
    std::uint64_t states = 0;
    std::uint64_t engine_runs = 0;
    /// One-of groups of which another variant is asked for than with everything asked for.
    std::size_t exchanged_variants = 0;
    /// Some are not worth 1; else value and number of services are the same.
    bool has_values = false;
    bool is_interrupted = false;
    /// Each service withheld was tried to be given back.
    bool is_given_back = true;
    Labels labels;
};

/// The services withheld that no choice asks for, as they are of value 0 and no must.
std::size_t never_asked_for(const ChoiceReport& report);

/// With everything asked for, those among them, more is reached: nothing is broken there but is by the
/// choice, or there are more musts, or as many and a greater value.
bool is_less_than_all(const ChoiceReport& report);

/// Some that are withheld might be given back without loss.
bool is_to_be_given_back(const ChoiceReport& report);

/// Where the services of the head-end stand in a result.
StaysPut stays_put(const Headend& headend, const Result& kept);

/// The head-end with `ask` as chosen, and no variant settled on; all else as it is.
Headend with_choice(Headend headend, const Choice& choice);

/// How many of the services that must be placed any placement could place, and how much value it could reach,
/// whatever of the head-end is asked for.
Reach reach_of_musts(const Headend& headend, const std::string& file);
Reach reach_of_value(const Headend& headend, const std::string& file);

/// Runs the head-end as it is, its variants settled, and as chosen, and tells the two apart. `kept` may be
/// null. The log must be masked.
ChoiceReport report_of(const Headend& headend, const Choice& choice, const Result* kept,
                       const std::string& file, Reserve reserve = {});

} // namespace zarven::tool

#endif
