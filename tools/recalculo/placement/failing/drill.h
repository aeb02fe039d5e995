// A drill: each module and each input of a head-end, and each stream where that is wanted, is taken out in
// turn, and a new run of the engine on what is left tells who comes back and who moves. A head-end has up to
// some thousands of such parts; where one takes nothing off the air, nothing is run.

#ifndef RECALCULO_DRILL_H
#define RECALCULO_DRILL_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "headend/headend.h"
#include "placement/change/comparison.h"
#include "placement/result.h"

namespace zarven::tool {

struct DrillOptions {
    /// Streams fail, too.
    bool has_streams = false;
    /// The kind of spare module to look for a number of; none if nobody asks.
    std::optional<Module> spare;
    std::uint32_t most = 8;
    unsigned jobs = 1;
    /// Called after each run with the runs done and those planned so far; one call at a time.
    std::function<void(std::size_t done, std::size_t planned)> progress = [](std::size_t, std::size_t) {};
    /// Asked before each run, from all threads: true ends the drill with what has been found by then.
    std::function<bool()> is_stopped = [] { return false; };
};

enum class PartKind { module, input, stream };

/// What is taken out.
struct FailedPart {
    PartKind kind = PartKind::module;
    /// Of a module or an input; the label may be empty.
    std::string mac = {};
    std::string label = {};
    std::uint16_t input = 0;
    /// Of a stream, and of an input what it receives.
    Stream stream = {};
    /// It is the only controller, so that another module is taken for it.
    bool is_controller = false;
};

/// Whether there is a new placement. Where there is none, the services that are on the air stay where they
/// are.
enum class NewRun {
    usable,
    /// The audit finds something broken in it.
    broken,
    /// It exploded.
    stopped,
    /// No module is left.
    impossible
};

struct DrilledService {
    ServiceResult service;
    bool must = false;
};

/// A failure that takes services off the air. Clones do not count.
struct DrilledFailure {
    FailedPart part;
    NewRun run = NewRun::usable;
    /// Why it was stopped.
    std::string problem = {};
    /// On the part and nowhere else, and placed again by the new run, or not.
    std::vector<DrilledService> saved = {};
    std::vector<DrilledService> lost = {};
    /// Not on the part alone, and yet without a place after the new run.
    std::vector<DrilledService> lost_besides = {};
    /// Without a place before, and placed by the new run.
    std::vector<DrilledService> gained = {};
    /// Not on the part alone, and elsewhere after the new run.
    std::size_t moved = 0;

    std::size_t off_air() const { return saved.size() + lost.size(); }
    std::size_t all_lost() const { return lost.size() + lost_besides.size(); }
    std::size_t musts_lost() const;
};

struct PartCounts {
    std::size_t modules = 0;
    std::size_t inputs = 0;
    std::size_t streams = 0;

    std::size_t all() const { return modules + inputs + streams; }
};

/// The head-end with a number of spares, drilled. Streams do not count, as no module replaces one.
struct SpareAttempt {
    std::size_t number = 0;
    /// Services to be kept that it does not place even while nothing has failed.
    std::size_t missing = 0;
    /// Failures that lose services to be kept, and how many the worst of them loses.
    std::size_t failures = 0;
    std::size_t worst = 0;
    /// Without any failure the engine places nothing that works.
    bool is_broken = false;
};

struct Spare {
    Module kind;
    std::size_t most = 0;
    /// Services placed now, of those marked as `must` if any are.
    std::size_t kept = 0;
    /// None if no number up to the most suffices.
    std::optional<std::size_t> number;
    std::vector<SpareAttempt> attempts;
};

struct Drill {
    std::string name;
    /// Of the head-end as it is.
    Counts now;
    std::vector<Finding> findings;
    /// Services marked as `must`, and how many of them are placed now.
    std::size_t musts = 0;
    std::size_t musts_placed = 0;
    /// It was stopped before its end.
    bool is_partial = false;
    /// All that were taken out, and those of them without which nothing goes off the air.
    PartCounts taken_out;
    PartCounts harmless;
    /// All others, the worst first: the most musts lost, then services lost, off the air, moved.
    std::vector<DrilledFailure> failures;
    /// Of the modules that have one.
    Labels labels;
    /// The services that the first of them moves.
    std::vector<ServiceChange> worst_moved;
    std::optional<Spare> spare;
};

/// `file` is for messages. The log must be masked. Throws `Failure`.
Drill drill_headend(const Headend& headend, const std::string& file, const DrillOptions& options);

/// The head-end without the part. Of a module one input less is all that the engine can be told of a failed
/// one.
Headend without(Headend headend, const FailedPart& part);

} // namespace zarven::tool

#endif
