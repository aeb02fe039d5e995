// Exchanging two services between two modules to make room for a third. An exchange of which a step would
// fail is where the rehearsal ends: the engine leaves services in two places then.

#include "placement/rehearsal/stage.h"

#include <algorithm>

namespace zarven::tool {

Estado Rehearsal::Stage::optimize() {
    // The way back here would be the same once more, and so on to the last round.
    if (optimized_at_ == changes_)
        return Estado::STATUS_END;
    optimized_at_ = changes_;
    ++rounds_;
    find_receivers();
    for (std::size_t stream = 0; stream < headend_.streams.size() && !gives_up_; ++stream)
        for (std::size_t at = headend_.streams[stream].first;
             at < headend_.streams[stream].last && waiting_of_[stream] != 0 && !gives_up_; ++at)
            if (waits_[at] != 0)
                make_room(static_cast<ServiceNumber>(at));
    return reglas::trasOptimizar(rounds_, anything_waits());
}

/// The first module that receives the stream, its last input that receives another, and the first other
/// module that receives that one.
bool Rehearsal::Stage::find_exchange(std::size_t stream, Exchange& exchange) const {
    if (receivers_[stream].empty())
        return false;
    exchange.module[0] = receivers_[stream].front();
    const auto& inputs = modules_[exchange.module[0]].inputs;
    bool is_found = false;
    for (std::size_t at = 0; at < inputs.size(); ++at) {
        if (inputs[at].stream != stream) {
            exchange.stream = inputs[at].stream;
            exchange.input[0] = at;
        } else if (!is_found) {
            exchange.input_in_hand = at;
            is_found = true;
        }
    }
    if (exchange.stream == no_stream)
        return false;
    const auto& receivers = receivers_[exchange.stream];
    const auto other = std::find_if(receivers.begin(), receivers.end(),
                                    [&exchange](std::size_t module) { return module != exchange.module[0]; });
    if (other == receivers.end())
        return false;
    exchange.module[1] = *other;
    const auto& others = modules_[*other].inputs;
    exchange.input[1] = static_cast<std::size_t>(
        std::find_if(others.begin(), others.end(),
                     [&exchange](const Input& input) { return input.stream == exchange.stream; }) -
        others.begin());
    return true;
}

void Rehearsal::Stage::make_room(ServiceNumber in_hand) {
    Exchange exchange;
    if (!find_exchange(service(in_hand).stream, exchange))
        return;
    const Module& first = modules_[exchange.module[0]];
    const Module& second = modules_[exchange.module[1]];
    const int free[2] = {reglas::pidsLibres(first.pids, (*limits_)[exchange.module[0]].pids_max),
                         reglas::pidsLibres(second.pids, (*limits_)[exchange.module[1]].pids_max)};
    for (std::size_t output = 0; output < first.outputs.size(); ++output)
        for (std::size_t other = 0; other < second.outputs.size(); ++other)
            for (const ServiceNumber leaves : first.outputs[output].services) {
                if (service(leaves).stream != exchange.stream)
                    continue;
                for (const ServiceNumber comes : second.outputs[other].services) {
                    if (service(comes).stream != exchange.stream ||
                        service(comes).key == service(leaves).key ||
                        !suits(exchange, free, output, other, leaves, comes, in_hand))
                        continue;
                    gives_up_ = !exchange_for(exchange, leaves, comes, in_hand);
                    return;
                }
            }
}

bool Rehearsal::Stage::suits(const Exchange& exchange, const int (&free)[2], std::size_t output,
                             std::size_t other_output, ServiceNumber leaves, ServiceNumber comes,
                             ServiceNumber in_hand) {
    const RehearsedService& out = service(leaves);
    const RehearsedService& in = service(comes);
    const RehearsedService& third = service(in_hand);
    const int comes_to[2] = {in.pids + third.pids, out.pids};
    const int leaves_from[2] = {out.pids, in.pids};
    for (const int side : {0, 1}) {
        LimitTests& tests = tests_[exchange.module[side]].pids;
        if (!reglas::bastanPIDsAlPermutar(free[side], leaves_from[side], comes_to[side])) {
            tests.failed();
            return false;
        }
        const int needed = modules_[exchange.module[side]].pids + comes_to[side] - leaves_from[side];
        tests.passed_at(static_cast<std::uint64_t>(std::max(needed, 0)));
    }
    const std::size_t outputs[2] = {output, other_output};
    const std::uint32_t enters[2] = {third.bitrate + in.bitrate, out.bitrate};
    const std::uint32_t goes[2] = {out.bitrate, in.bitrate};
    for (const int side : {0, 1}) {
        const std::size_t module = exchange.module[side];
        LimitTests& tests = tests_[module].bitrate[outputs[side]];
        const std::uint32_t now = modules_[module].outputs[outputs[side]].bitrate;
        const std::uint64_t needed =
            reglas::techoPara(static_cast<std::uint32_t>(now + enters[side] - goes[side]));
        if (!reglas::bastaBitrateAlPermutar(now, enters[side], goes[side],
                                            (*limits_)[module].outputs[outputs[side]].bitrate_max)) {
            tests.failed_under(needed);
            return false;
        }
        tests.passed_at(needed);
    }
    return true;
}

/// No service that waits in the stream has this key, which what is staged there would take along.
bool Rehearsal::Stage::is_alone(std::size_t stream, long key) const {
    for (std::size_t at = headend_.streams[stream].first; at < headend_.streams[stream].last; ++at)
        if (waits_[at] != 0 && headend_.services[at].key == key)
            return false;
    return true;
}

/// False where the engine would not find it there, or take another one along that has its key.
bool Rehearsal::Stage::take_off(std::size_t number, std::size_t input, ServiceNumber leaving) {
    const RehearsedService& what = service(leaving);
    Module& module = modules_[number];
    const auto has_key = [&](ServiceNumber other) { return service(other).key == what.key; };
    auto& received = module.inputs[input].services;
    const auto on_input = std::find(received.begin(), received.end(), leaving);
    if (on_input == received.end() || std::count_if(received.begin(), received.end(), has_key) != 1)
        return false;
    for (Output& output : module.outputs) {
        const auto keys = std::count_if(output.services.begin(), output.services.end(), has_key);
        if (keys == 0)
            continue;
        const auto place = std::find(output.services.begin(), output.services.end(), leaving);
        if (keys != 1 || place == output.services.end())
            return false;
        module.pids = static_cast<std::uint16_t>(module.pids - what.pids);
        output.bitrate -= what.bitrate;
        --output.count;
        output.services.erase(place);
        received.erase(on_input);
        if (reglas::ocupaTranscoder(what.transcoding))
            --(what.is_hd ? module.hd : module.sd);
        return true;
    }
    return false;
}

bool Rehearsal::Stage::exchange_for(const Exchange& exchange, ServiceNumber leaves, ServiceNumber comes,
                                    ServiceNumber in_hand) {
    const std::size_t stream = service(in_hand).stream;
    if (!is_alone(stream, service(leaves).key) || !is_alone(stream, service(comes).key) ||
        !take_off(exchange.module[0], exchange.input[0], leaves) ||
        !take_off(exchange.module[1], exchange.input[1], comes) ||
        !place(exchange.module[1], exchange.input[1], leaves) ||
        !place(exchange.module[0], exchange.input[0], comes) ||
        !place(exchange.module[0], exchange.input_in_hand, in_hand))
        return false;
    take(in_hand);
    return true;
}

} // namespace zarven::tool
