#include "placement/choosing/moves.h"

#include <algorithm>
#include <numeric>

namespace zarven::tool {

namespace {

/// After so many moves their chances are drawn up anew, and what they gained before counts half.
constexpr unsigned between_renewals = 2000;
/// No kind is drawn less often than this share of an even one.
constexpr double least_share = 0.25;

} // namespace

Moves::Moves(const RehearsedHeadend& model, const Goal& goal, Numbers& numbers)
    : model_(model), goal_(goal), numbers_(numbers) {
    uses_.fill(1);
    gains_.fill(1);
    renew_chances();
}

void Moves::renew_chances() {
    std::array<double, number_of_kinds> rates{};
    for (std::size_t kind = 0; kind < number_of_kinds; ++kind)
        rates[kind] = gains_[kind] / uses_[kind];
    const double mean = std::accumulate(rates.begin(), rates.end(), 0.0) / static_cast<double>(rates.size());
    double total = 0;
    for (double& rate : rates)
        total += rate = std::max(rate, least_share * mean) + 1e-12;
    double sum = 0;
    for (std::size_t kind = 0; kind < number_of_kinds; ++kind) {
        sum += rates[kind];
        chances_[kind] = static_cast<std::uint64_t>(sum / total * 0x1p32);
        gains_[kind] /= 2;
        uses_[kind] = std::max(uses_[kind] / 2, 1.0);
    }
    until_renewed_ = between_renewals;
}

Moves::Kind Moves::drawn() {
    if (until_renewed_-- == 0)
        renew_chances();
    const std::uint64_t number = numbers_.next() >> 32;
    const auto chance = std::upper_bound(chances_.begin(), chances_.end(), number);
    return static_cast<Kind>(std::min<std::ptrdiff_t>(chance - chances_.begin(), number_of_kinds - 1));
}

void Moves::reward(double gain) {
    uses_[last_] += 1;
    gains_[last_] += gain;
}

std::uint32_t Moves::any_stream() {
    return static_cast<std::uint32_t>(numbers_.below(model_.streams.size()));
}

void Moves::turn(AskedParts& asked, PartIndex part) {
    if (!asked.is_asked(part))
        for (const PartIndex rival : goal_.rivals_of(part))
            if (asked.is_asked(rival)) {
                asked.ask(rival, false);
                changed_.push_back(rival);
            }
    asked.ask(part, !asked.is_asked(part));
    changed_.push_back(part);
}

void Moves::take_back(AskedParts& asked) const {
    for (auto part = changed_.rbegin(); part != changed_.rend(); ++part)
        asked.ask(*part, !asked.is_asked(*part));
}

void Moves::ask(AskedParts& asked, std::uint32_t stream, std::uint32_t number) {
    const RehearsedStream& range = model_.streams[stream];
    for (PartIndex place = range.first; place < range.last && number != 0; ++place)
        if (!asked.is_asked(goal_.cheapest_first()[place])) {
            turn(asked, goal_.cheapest_first()[place]);
            --number;
        }
}

void Moves::withhold(AskedParts& asked, std::uint32_t stream, std::uint32_t number) {
    const RehearsedStream& range = model_.streams[stream];
    for (PartIndex place = range.last; place > range.first && number != 0; --place)
        if (asked.is_asked(goal_.cheapest_first()[place - 1])) {
            turn(asked, goal_.cheapest_first()[place - 1]);
            --number;
        }
}

/// Those of a stream that are placed on such outputs.
void Moves::withhold_where(AskedParts& asked, const Seating& seating, std::uint32_t stream,
                           OutputRange outputs) {
    const RehearsedStream& range = model_.streams[stream];
    for (PartIndex part = range.first; part < range.last; ++part) {
        const std::uint32_t output = seating.output_of[part];
        if (asked.is_asked(part) && output >= outputs.first && output <= outputs.last)
            turn(asked, part);
    }
}

void Moves::withhold_on_module(AskedParts& asked, const Seating& seating) {
    const std::uint32_t output = seating.output_of[any_part()];
    if (output == no_index)
        return;
    const auto module =
        std::find_if(model_.flat.modules.begin(), model_.flat.modules.end(),
                     [&](const FlatModules::Module& one) { return output < one.last_output; });
    const std::uint32_t inputs = module->last_input - module->first_input;
    const std::uint32_t stream =
        seating.stream_of[module->first_input + static_cast<std::uint32_t>(numbers_.below(inputs))];
    if (stream != no_index)
        withhold_where(asked, seating, stream, {module->first_output, module->last_output - 1});
}

void Moves::exchange(AskedParts& asked, std::uint32_t stream) {
    const RehearsedStream& range = model_.streams[stream];
    const std::uint32_t size = range.last - range.first;
    const auto one = range.first + static_cast<PartIndex>(numbers_.below(size));
    const auto other = range.first + static_cast<PartIndex>(numbers_.below(size));
    if (asked.is_asked(one) == asked.is_asked(other))
        return;
    turn(asked, one);
    turn(asked, other);
}

bool Moves::make(AskedParts& asked, const Seating& seating) {
    changed_.clear();
    last_ = drawn();
    make(asked, seating, last_);
    return !changed_.empty();
}

void Moves::make(AskedParts& asked, const Seating& seating, Kind kind) {
    const std::uint32_t stream = any_stream();
    const RehearsedStream& range = model_.streams[stream];
    const std::uint32_t size = range.last - range.first;
    const std::uint32_t number = asked.count_of(stream);
    switch (kind) {
    case ask_one:
        return ask(asked, stream, 1);
    case withhold_one:
        return withhold(asked, stream, 1);
    case ask_two:
        return ask(asked, stream, 2);
    case withhold_two:
        return withhold(asked, stream, 2);
    case shift_one:
        withhold(asked, stream, 1);
        return ask(asked, any_stream(), 1);
    case exchange_in_stream:
        return exchange(asked, stream);
    case ask_half:
        return ask(asked, stream, (size - number + 1) / 2);
    case withhold_half:
        return withhold(asked, stream, (number + 1) / 2);
    case withhold_all:
        return withhold(asked, stream, number);
    case ask_all:
        return ask(asked, stream, size - number);
    case withhold_on_one_module:
        return withhold_on_module(asked, seating);
    case withhold_left_out:
        return withhold_where(asked, seating, stream, {no_index, no_index});
    case turn_any:
    case number_of_kinds:
        return turn(asked, any_part());
    }
}

} // namespace zarven::tool
