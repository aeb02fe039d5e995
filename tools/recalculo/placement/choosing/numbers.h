// Random numbers for chains: the same on every platform for the same seed, and quick to draw. SplitMix64, by
// Steele, Lea and Flood.

#ifndef RECALCULO_CHOOSING_NUMBERS_H
#define RECALCULO_CHOOSING_NUMBERS_H

#include <cstdint>

namespace zarven::tool {

class Numbers {
public:
    explicit Numbers(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next() {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31);
    }

    /// From 0 up to the one before `end`, which is above 0 and below 2^32.
    std::uint64_t below(std::uint64_t end) { return ((next() >> 32) * end) >> 32; }

    /// Below 1, and 0 at least.
    double fraction() { return static_cast<double>(next() >> 11) * 0x1p-53; }

private:
    std::uint64_t state_;
};

} // namespace zarven::tool

#endif
