// Two results side by side: which services one places and the other does not, which stand elsewhere, and what
// became of inputs and limits. Some thousands of services.

#ifndef RECALCULO_COMPARISON_H
#define RECALCULO_COMPARISON_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "placement/audit/caution.h"
#include "placement/places.h"

namespace zarven::tool {

/// A service in both results, or in one of them.
struct ServiceChange {
    ServiceResult service;
    /// Where one is empty, its absence tells why.
    std::vector<Place> before;
    std::vector<Place> after;
    Absence absence_before = Absence::left_out;
    Absence absence_after = Absence::left_out;
};

struct InputChange {
    std::string mac;
    std::uint16_t number = 0;
    bool was_tuned = false;
    Stream before;
    bool is_tuned = false;
    Stream after;
};

enum class TightKind { inputs, pids, bitrate };

/// A limit that has little left: an output or a PID budget with 95 % in use, a module without free input.
struct TightLimit {
    TightKind kind = TightKind::inputs;
    std::string mac;
    /// The output; 0 for a limit of the module.
    std::uint32_t output = 0;
    std::uint64_t used = 0;
    std::uint64_t max = 0;
};

/// It has little left.
bool is_tight(const TightLimit& limit);

/// A service that stays where it is under another name, output name, LCN or SID.
struct ServiceRename {
    ServiceResult before;
    ServiceResult after;
};

/// One input is tuned anew, tuned for the first time, or given up.
struct ChangeStep {
    InputChange input;
    /// Placed on both sides, and on the air again by a later step.
    std::vector<ServiceResult> goes_off;
    std::vector<ServiceResult> comes_back;
    /// After this step.
    std::size_t off_air = 0;
};

/// How the first placement becomes the second.
struct ChangeOrder {
    std::vector<ChangeStep> steps;
    /// Services off the air at a time.
    std::size_t most_off_air = 0;
    /// It is proven that no other order of the steps has fewer.
    bool is_least = true;
};

/// What a comparison keeps of each result.
struct Side {
    std::string name;
    Counts counts;
    std::vector<Finding> findings;
    std::vector<Caution> cautions = {};
};

struct Comparison {
    Side before;
    Side after;
    std::vector<ServiceChange> gained;
    std::vector<ServiceChange> lost;
    /// Placed by one side, of the line-up of which alone they are.
    std::vector<ServiceChange> added;
    std::vector<ServiceChange> removed;
    std::vector<ServiceChange> moved;
    std::size_t unmoved = 0;
    /// Some of the unmoved.
    std::vector<ServiceRename> renamed;
    /// Those that only one result has count, too.
    std::size_t never_placed = 0;
    std::vector<std::string> modules_gone;
    std::vector<std::string> modules_new;
    std::vector<InputChange> inputs_freed;
    std::vector<InputChange> inputs_taken;
    std::vector<InputChange> inputs_retuned;
    std::vector<TightLimit> became_tight;
    /// Still there in the second result.
    std::vector<TightLimit> relaxed;
    ChangeOrder order;
    /// Of the modules that have one, by MAC; where both sides have one, that after.
    Labels labels;

    /// How a module is called in the reports.
    std::string name_of(const std::string& mac) const;
};

/// The order of the changes takes longer than all else, and can be asked for apart.
enum class OrderOfSteps { told, omitted };

/// Compares two results. A service is the same in both if stream, LCN and SID are; of those then left, if the
/// name is and no other has it. Clones stand with their parents and are not told apart. A module is the same
/// in both if its MAC is, however it is spelled; it is told as it is spelled after.
Comparison compare(const Result& before, const Result& after, OrderOfSteps order = OrderOfSteps::told);

} // namespace zarven::tool

#endif
