// Modules of any size, for tests that make head-ends at random: small, so that every limit is met often.

#ifndef RECALCULO_RANDOM_HEADEND_H
#define RECALCULO_RANDOM_HEADEND_H

#include <cstdint>
#include <random>
#include <string>

#include "headend/headend.h"

namespace zarven::tool {

/// The numbers from `least` to `most`, in steps.
struct Span {
    unsigned least = 0;
    unsigned most = 0;
    unsigned step = 1;
};

/// The same numbers from the same seed, on every machine.
class Dice {
public:
    explicit Dice(unsigned seed) : random_(seed) {}

    std::uint16_t up_to(unsigned most) { return static_cast<std::uint16_t>(random_() % (most + 1)); }
    std::uint16_t one_of(Span span) {
        return static_cast<std::uint16_t>(span.least +
                                          span.step * up_to((span.most - span.least) / span.step));
    }
    bool once_in(unsigned times) { return up_to(times - 1) == 0; }

private:
    std::mt19937 random_;
};

struct ModuleSizes {
    Span inputs;
    Span outputs;
    /// Of an output, in kbit/s.
    Span bitrate;
    Span pids;
    /// Of SD and HD, and of the clones.
    Span transcoders;
    Span aux_transcoders;
};

inline Module random_module(Dice& dice, const std::string& mac, bool is_controller,
                            const ModuleSizes& sizes) {
    Module made;
    made.mac = mac;
    made.controller = is_controller;
    made.inputs = dice.one_of(sizes.inputs);
    for (unsigned outputs = dice.one_of(sizes.outputs); outputs != 0; --outputs)
        made.outputs.push_back(dice.one_of(sizes.bitrate));
    made.pids_max = dice.one_of(sizes.pids);
    made.sd_transcoders = dice.one_of(sizes.transcoders);
    made.hd_transcoders = dice.one_of(sizes.transcoders);
    made.aux_transcoders = dice.one_of(sizes.aux_transcoders);
    return made;
}

/// A, B, ...
inline std::string letter(unsigned number) {
    return std::string(1, static_cast<char>('A' + number));
}

} // namespace zarven::tool

#endif
