// Exchanging two services between two modules to make room for a third. An exchange of which a step would
// fail is where the rehearsal ends: the engine leaves services in two places then.

#include "placement/rehearsal/stage.h"

#include <algorithm>

namespace zarven::tool {

Estado Rehearsal::Stage::optimize() {
    // The way back here would be the same once more, and so on to the last round.
    if (optimized_at_ == filling_.changes())
        return Estado::STATUS_END;
    const std::uint64_t before = optimized_at_;
    optimized_at_ = filling_.changes();
    ++rounds_;
    list_placed();
    find_receivers();
    exchanges_.resize(headend_.streams.size());
    for (std::uint32_t stream = 0; stream < headend_.streams.size() && !gives_up_; ++stream) {
        Exchange exchange;
        // No exchange tunes an input, so who receives what holds for the whole sweep.
        if (filling_.waiting_begin(stream) == filling_.waiting_end(stream) ||
            !find_exchange(stream, exchange))
            continue;
        Exchange& last = exchanges_[stream];
        exchange.round = rounds_;
        const bool is_same = before != never && last.round + 1 == rounds_ && last.stream == exchange.stream &&
                             last.module[0] == exchange.module[0] && last.module[1] == exchange.module[1] &&
                             !filling_.has_changed(exchange.module[0], before) &&
                             !filling_.has_changed(exchange.module[1], before);
        last = exchange;
        if (!is_same)
            make_room(stream, exchange);
    }
    return reglas::trasOptimizar(rounds_, anything_waits());
}

void Rehearsal::Stage::make_room(std::uint32_t stream, const Exchange& exchange) {
    PartIndex next = headend_.streams[stream].first;
    while (!gives_up_) {
        const PartIndex* const end = filling_.waiting_end(stream);
        const PartIndex* const waiting = std::lower_bound(filling_.waiting_begin(stream), end, next);
        if (waiting == end)
            return;
        next = *waiting + 1;
        make_room_for(*waiting, exchange);
    }
}

/// The first module that receives the stream, its last input that receives another, and the first other
/// module that receives that one.
bool Rehearsal::Stage::find_exchange(std::uint32_t stream, Exchange& exchange) const {
    if (receivers_[stream].empty())
        return false;
    exchange.module[0] = receivers_[stream].front();
    const FlatModules::Module& first = limits(exchange.module[0]);
    bool is_found = false;
    for (std::uint32_t input = first.first_input; input < first.last_input; ++input) {
        if (stream_of(input) != stream) {
            exchange.stream = stream_of(input);
            exchange.input[0] = input;
        } else if (!is_found) {
            exchange.input_in_hand = input;
            is_found = true;
        }
    }
    if (exchange.stream == no_index)
        return false;
    const auto& receivers = receivers_[exchange.stream];
    const auto other = std::find_if(receivers.begin(), receivers.end(), [&exchange](std::uint32_t module) {
        return module != exchange.module[0];
    });
    if (other == receivers.end())
        return false;
    exchange.module[1] = *other;
    exchange.input[1] = limits(*other).first_input;
    while (stream_of(exchange.input[1]) != exchange.stream)
        ++exchange.input[1];
    return true;
}

void Rehearsal::Stage::make_room_for(PartIndex in_hand, const Exchange& exchange) {
    const FlatModules::Module& first = limits(exchange.module[0]);
    const FlatModules::Module& second = limits(exchange.module[1]);
    const std::vector<PassLoads::Module>& loads = filling_.loads().modules;
    const int free[2] = {reglas::pidsLibres(loads[exchange.module[0]].pids, first.pids_max),
                         reglas::pidsLibres(loads[exchange.module[1]].pids, second.pids_max)};
    for (std::uint32_t output = first.first_output; output < first.last_output; ++output)
        for (std::uint32_t other = second.first_output; other < second.last_output; ++other)
            for (const PartIndex leaves : on_output_[output]) {
                if (part(leaves).stream != exchange.stream)
                    continue;
                for (const PartIndex comes : on_output_[other]) {
                    if (part(comes).stream != exchange.stream || part(comes).key == part(leaves).key ||
                        !suits(exchange, free, {output, other}, leaves, comes, in_hand))
                        continue;
                    gives_up_ = !exchange_for(exchange, leaves, comes, in_hand);
                    return;
                }
            }
}

bool Rehearsal::Stage::suits(const Exchange& exchange, const int (&free)[2],
                             const std::uint32_t (&outputs)[2], PartIndex leaves, PartIndex comes,
                             PartIndex in_hand) {
    const RehearsedPart& out = part(leaves);
    const RehearsedPart& in = part(comes);
    const RehearsedPart& third = part(in_hand);
    const int comes_to[2] = {in.pids + third.pids, out.pids};
    const int leaves_from[2] = {out.pids, in.pids};
    for (const int side : {0, 1}) {
        LimitTests& tests = filling_.tests()[exchange.module[side]].pids;
        if (!reglas::bastanPIDsAlPermutar(free[side], leaves_from[side], comes_to[side])) {
            tests.failed();
            return false;
        }
        const int needed =
            filling_.loads().modules[exchange.module[side]].pids + comes_to[side] - leaves_from[side];
        tests.passed_at(static_cast<std::uint64_t>(std::max(needed, 0)));
    }
    const std::uint32_t enters[2] = {third.bitrate + in.bitrate, out.bitrate};
    const std::uint32_t goes[2] = {out.bitrate, in.bitrate};
    for (const int side : {0, 1}) {
        LimitTests& tests = filling_.bitrate_tests(exchange.module[side], outputs[side]);
        const std::uint32_t now = filling_.loads().outputs[outputs[side]].bitrate;
        const std::uint64_t needed =
            reglas::techoPara(static_cast<std::uint32_t>(now + enters[side] - goes[side]));
        if (!reglas::bastaBitrateAlPermutar(now, enters[side], goes[side],
                                            filling_.limits().outputs[outputs[side]].bitrate_max)) {
            tests.failed_under(needed);
            return false;
        }
        tests.passed_at(needed);
    }
    return true;
}

/// No service that waits in the stream has this key, which what is staged there would take along.
bool Rehearsal::Stage::is_alone(std::uint32_t stream, std::int32_t key) const {
    return std::none_of(filling_.waiting_begin(stream), filling_.waiting_end(stream),
                        [&](PartIndex waiting) { return part(waiting).key == key; });
}

bool Rehearsal::Stage::place(std::uint32_t module, std::uint32_t input, PartIndex index) {
    if (!filling_.seat(module, input, index))
        return false;
    ++filling_.loads().on_input[input];
    put(on_input_[input], index);
    put(on_output_[filling_.seating().output_of[index]], index);
    return true;
}

/// False where the engine would not find it there, or take another one along that has its key.
bool Rehearsal::Stage::take_off(std::uint32_t module, std::uint32_t input, PartIndex leaving) {
    const RehearsedPart& what = part(leaving);
    const auto has_key = [&](PartIndex other) { return part(other).key == what.key; };
    PartIndices& received = on_input_[input];
    const auto on_input = std::find(received.begin(), received.end(), leaving);
    if (on_input == received.end() || std::count_if(received.begin(), received.end(), has_key) != 1)
        return false;
    for (std::uint32_t output = limits(module).first_output; output < limits(module).last_output; ++output) {
        PartIndices& carried = on_output_[output];
        const auto keys = std::count_if(carried.begin(), carried.end(), has_key);
        if (keys == 0)
            continue;
        const auto place = std::find(carried.begin(), carried.end(), leaving);
        if (keys != 1 || place == carried.end())
            return false;
        PassLoads::Module& load = filling_.loads().modules[module];
        load.pids = static_cast<std::uint16_t>(load.pids - what.pids);
        filling_.loads().outputs[output].bitrate -= what.bitrate;
        --filling_.loads().outputs[output].services;
        --filling_.loads().on_input[input];
        carried.erase(place);
        received.erase(on_input);
        if (reglas::ocupaTranscoder(what.transcoding))
            --(what.is_hd ? load.hd : load.sd);
        return true;
    }
    return false;
}

bool Rehearsal::Stage::exchange_for(const Exchange& exchange, PartIndex leaves, PartIndex comes,
                                    PartIndex in_hand) {
    const std::uint32_t stream = part(in_hand).stream;
    if (!is_alone(stream, part(leaves).key) || !is_alone(stream, part(comes).key) ||
        !take_off(exchange.module[0], exchange.input[0], leaves) ||
        !take_off(exchange.module[1], exchange.input[1], comes) ||
        !place(exchange.module[1], exchange.input[1], leaves) ||
        !place(exchange.module[0], exchange.input[0], comes) ||
        !place(exchange.module[0], exchange.input_in_hand, in_hand))
        return false;
    filling_.take(in_hand);
    filling_.note_change(exchange.module[0]);
    filling_.note_change(exchange.module[1]);
    return true;
}

} // namespace zarven::tool
