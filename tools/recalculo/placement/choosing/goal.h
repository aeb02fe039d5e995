// What a placement is worth, part by part of a model, in whole numbers that a chain adds up while it fills.

#ifndef RECALCULO_CHOOSING_GOAL_H
#define RECALCULO_CHOOSING_GOAL_H

#include <cstdint>
#include <vector>

#include "placement/choosing/choosing.h"
#include "placement/one_of.h"
#include "placement/rehearsal/filling.h"
#include "placement/rehearsal/rehearsed_headend.h"

namespace zarven::tool {

/// A must weighs as much to a chain as so many services of the mean value: it has to get across the loss of
/// some.
inline constexpr std::int64_t must_in_services = 30;

/// What a fill is worth.
struct FillWorth {
    std::size_t musts = 0;
    std::uint64_t value = 0;
    std::size_t moved = 0;
    /// One number for all of it, in which a chain climbs.
    std::int64_t height = 0;
};

bool is_better(const FillWorth& one, const FillWorth& other);

class Goal {
public:
    /// `services`: of each part, the places in `Headend::services` that it stands for.
    Goal(const Headend& headend, const StaysPut& stays, const RehearsedHeadend& model,
         std::vector<std::vector<std::size_t>> services, const std::vector<OneOf>& groups = {});

    FillWorth worth_of(const Seating& seating) const;

    /// The height of a service of the mean value.
    double unit() const { return unit_; }

    const std::vector<std::size_t>& services_of(PartIndex part) const { return services_[part]; }

    /// The parts of which one at the most is asked for together with this one, without itself.
    const std::vector<PartIndex>& rivals_of(PartIndex part) const { return rivals_[part]; }
    /// Of several rivals asked for, the best alone is left.
    std::vector<std::uint8_t> one_of_each(std::vector<std::uint8_t> asked) const;

    /// The parts of each stream, from the place of its first on, those first that give most for what they
    /// take.
    const std::vector<PartIndex>& cheapest_first() const { return cheapest_first_; }

    /// Whether to ask for each part: of those that give most for what they take, but no more than so many of
    /// a stream, as many as need such a share of what the modules have. The musts are among them.
    std::vector<std::uint8_t> best_for(double share, std::uint32_t most_of_stream) const;

private:
    struct Part {
        std::uint32_t musts = 0;
        std::uint32_t value = 0;
        /// The outputs on which it has not moved: from the first up to the one before the last.
        std::uint32_t first_output = 0;
        std::uint32_t last_output = 0;
        /// The inputs likewise.
        std::uint32_t first_input = 0;
        std::uint32_t last_input = 0;
        std::int64_t height = 0;
        std::uint32_t stream = 0;
        /// What it takes, as shares of what the modules have.
        double bitrate = 0;
        double pids = 0;
    };

    void find_rivals(const std::vector<OneOf>& groups);
    void find_heights();
    void find_places(const StaysPut& stays, const RehearsedHeadend& model);
    void find_costs(const RehearsedHeadend& model);
    void sort_by_cost(double weight_of_pids);
    std::vector<std::uint8_t> best_within(double share, std::uint32_t most_of_stream) const;
    std::int64_t height_of(const std::vector<std::uint8_t>& asked) const;

    std::vector<Part> parts_;
    std::vector<std::vector<std::size_t>> services_;
    std::vector<std::vector<PartIndex>> rivals_;
    /// Of each group the parts, the best first.
    std::vector<std::vector<PartIndex>> groups_;
    std::vector<PartIndex> cheapest_first_;
    /// All of them, whatever their stream.
    std::vector<PartIndex> order_;
    std::size_t streams_ = 0;
    double unit_ = 1;
};

} // namespace zarven::tool

#endif
