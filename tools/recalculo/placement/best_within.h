// The most that some things are worth together if what they take of a resource stays within a ceiling: the
// knapsack problem, solved by dynamic programming. Some dozens of things, one ceiling after the other.
//
// Sizes are counted in as many units as there are cells, and rounded down. So the answer is exact where all
// together take no more than that, as PIDs do, and else may be too high, never too low.

#ifndef RECALCULO_BEST_WITHIN_H
#define RECALCULO_BEST_WITHIN_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zarven::tool {

class BestWithin {
public:
    /// Units at the most, in which all sizes together are told.
    static constexpr std::uint64_t most_units = 128;

    struct Thing {
        /// Over 0.
        double worth = 0;
        std::uint32_t size = 0;
    };

    /// From now on about these.
    void assign(std::vector<Thing> things);

    double worth(std::uint64_t ceiling) const { return worths_[units(ceiling)]; }
    /// The places of those that come to it, the last one first.
    std::vector<std::size_t> chosen(std::uint64_t ceiling) const;

    std::uint64_t size_of_all() const { return size_of_all_; }

private:
    std::size_t units(std::uint64_t ceiling) const;

    std::vector<Thing> things_;
    std::uint64_t size_of_all_ = 0;
    std::uint64_t unit_ = 1;
    std::size_t cells_ = 1;
    /// By the units of the ceiling.
    std::vector<double> worths_;
    /// Whether the thing is among them, thing by thing, when those before it are all there is.
    std::vector<bool> is_chosen_;
};

} // namespace zarven::tool

#endif
