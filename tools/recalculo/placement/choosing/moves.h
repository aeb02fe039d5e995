// The steps of a chain: small changes of what is asked for, of a kind that is drawn the more often the more
// it has gained of late. They change how many services of a stream are asked for, because the engine chooses
// streams by their counts, and go by what a service takes, the cheapest first.

#ifndef RECALCULO_CHOOSING_MOVES_H
#define RECALCULO_CHOOSING_MOVES_H

#include <array>
#include <cstdint>
#include <vector>

#include "placement/choosing/goal.h"
#include "placement/choosing/numbers.h"
#include "placement/rehearsal/asked_parts.h"
#include "placement/rehearsal/filling.h"

namespace zarven::tool {

class Moves {
public:
    /// All must outlive this.
    Moves(const RehearsedHeadend& model, const Goal& goal, Numbers& numbers);

    /// Changes what is asked for, and gives whether it did. `seating`: what the engine made of it before.
    bool make(AskedParts& asked, const Seating& seating);
    /// Takes the last move back.
    void take_back(AskedParts& asked) const;

    /// What came of the last move: 0 unless it was for the better.
    void reward(double gain);

private:
    enum Kind {
        ask_one,
        withhold_one,
        ask_two,
        withhold_two,
        shift_one,
        exchange_in_stream,
        ask_half,
        withhold_half,
        withhold_all,
        ask_all,
        withhold_on_one_module,
        withhold_left_out,
        turn_any,
        number_of_kinds
    };

    /// Both ends count. `no_index` is where the parts are that are not placed.
    struct OutputRange {
        std::uint32_t first;
        std::uint32_t last;
    };

    void make(AskedParts& asked, const Seating& seating, Kind kind);
    Kind drawn();
    std::uint32_t any_stream();
    PartIndex any_part() { return static_cast<PartIndex>(numbers_.below(model_.parts.size())); }
    void turn(AskedParts& asked, PartIndex part);
    void ask(AskedParts& asked, std::uint32_t stream, std::uint32_t number);
    void withhold(AskedParts& asked, std::uint32_t stream, std::uint32_t number);
    void withhold_where(AskedParts& asked, const Seating& seating, std::uint32_t stream, OutputRange outputs);
    void withhold_on_module(AskedParts& asked, const Seating& seating);
    void exchange(AskedParts& asked, std::uint32_t stream);
    void renew_chances();

    const RehearsedHeadend& model_;
    const Goal& goal_;
    Numbers& numbers_;
    std::vector<PartIndex> changed_;
    Kind last_ = ask_one;
    std::array<double, number_of_kinds> gains_{};
    std::array<double, number_of_kinds> uses_{};
    /// Each the sum of the chances up to it, in 2^32ths.
    std::array<std::uint64_t, number_of_kinds> chances_{};
    unsigned until_renewed_ = 0;
};

} // namespace zarven::tool

#endif
