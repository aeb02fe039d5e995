#include "placement/choosing/engine_chain.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "headend/stream.h"
#include "placement/choosing/goal.h"

namespace zarven::tool {

namespace {

/// In services of the mean value.
constexpr double climbing_temperature = 0.3;
constexpr std::uint64_t runs_of_epoch = 400;

} // namespace

EngineChain::EngineChain(Judge& judge, std::uint64_t seed) : judge_(judge), numbers_(seed) {
    const EngineTrial& trial = judge.trial();
    std::map<Stream, std::vector<std::size_t>> streams;
    double sum = 0;
    std::size_t number = 0;
    for (std::size_t index = 0; index < trial.askable().size(); ++index)
        if (trial.askable()[index]) {
            const Service& service = trial.headend().services[index];
            streams[stream_of(service)].push_back(index);
            sum += service.value;
            ++number;
        }
    for (auto& [stream, services] : streams)
        streams_.push_back(std::move(services));
    unit_ = number == 0 ? 1 : std::max(1.0, sum / static_cast<double>(number));
}

double EngineChain::height_of(const ChoiceWorth& worth) const {
    return static_cast<double>(must_in_services) * unit_ * static_cast<double>(worth.musts) +
           static_cast<double>(worth.value) - 0.1 * unit_ * static_cast<double>(worth.moved);
}

/// One to three services, or a stream as a whole.
void EngineChain::change(std::vector<bool>& asked) {
    const auto any_stream = [this]() -> const std::vector<std::size_t>& {
        return streams_[static_cast<std::size_t>(numbers_.below(streams_.size()))];
    };
    const std::uint64_t kind = numbers_.below(6);
    if (kind == 0) {
        const bool are_asked = numbers_.below(2) == 0;
        for (const std::size_t service : any_stream())
            if (are_asked)
                judge_.trial().ask_instead(service, asked);
            else
                asked[service] = false;
        return;
    }
    for (std::uint64_t change = 0; change < (kind + 1) / 2; ++change) {
        const std::vector<std::size_t>& stream = any_stream();
        const std::size_t service = stream[static_cast<std::size_t>(numbers_.below(stream.size()))];
        if (asked[service])
            asked[service] = false;
        else
            judge_.trial().ask_instead(service, asked);
    }
}

TriedChoice EngineChain::run(std::uint64_t runs, const TriedChoice& best) {
    TriedChoice found = best;
    for (std::uint64_t run = 0; run < runs; ++run, --until_begun_anew_) {
        if (until_begun_anew_ == 0) {
            until_begun_anew_ = runs_of_epoch;
            now_ = found;
        }
        TriedChoice next{now_.asked, {}};
        change(next.asked);
        if (next.asked == now_.asked)
            continue;
        next.outcome = judge_.run(next.asked);
        const double gain = height_of(next.outcome.worth) - height_of(now_.outcome.worth);
        // What breaks something is no height to come down from.
        if (!next.outcome.is_sound ||
            (now_.outcome.is_sound && gain < 0 &&
             gain < climbing_temperature * unit_ * std::log(1 - numbers_.fraction())))
            continue;
        if (!found.outcome.is_sound || is_better(next.outcome.worth, found.outcome.worth))
            found = next;
        now_ = std::move(next);
    }
    return found;
}

} // namespace zarven::tool
