#include "placement/sizing/mixing.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "placement/sizing/further_modules.h"

namespace zarven::tool {

Mixing::Mixing(const Headend& headend, const std::vector<Module>& kinds, const Wanted& wanted,
               const SizingOptions& options)
    : headend_(headend), wanted_(wanted), options_(options) {
    for (const Module& kind : kinds)
        mix_.kinds.push_back({kind, {}});
    candidates_.push({0, 0, Numbers(kinds.size(), 0), 0});
}

bool Mixing::Later::operator()(const Candidate& one, const Candidate& other) const {
    return std::tie(one.price, one.modules, other.numbers) >
           std::tie(other.price, other.modules, one.numbers);
}

std::optional<Mixing::Candidate> Mixing::next() {
    if (candidates_.empty())
        return {};
    Candidate candidate = candidates_.top();
    candidates_.pop();
    if (candidate.modules < options_.most)
        for (std::size_t kind = candidate.next_kind; kind < mix_.kinds.size(); ++kind) {
            Candidate larger = candidate;
            larger.price += mix_.kinds[kind].module.price;
            ++larger.modules;
            ++larger.numbers[kind];
            larger.next_kind = kind;
            candidates_.push(std::move(larger));
        }
    return candidate;
}

/// Passes over those that the bound rules out.
std::optional<Mixing::Candidate> Mixing::next_possible(const Runner& runner) {
    std::optional<Candidate> candidate = next();
    while (candidate && !runner.is_stopped() && wanted_.are_too_few(candidate->numbers))
        candidate = next();
    return runner.is_stopped() ? std::nullopt : candidate;
}

void Mixing::take(const Candidate& candidate, const Attempt& attempt) {
    mix_.outcome = attempt;
    mix_.price = candidate.price;
    for (std::size_t kind = 0; kind < mix_.kinds.size(); ++kind)
        mix_.kinds[kind].number = candidate.numbers[kind];
}

/// In waves, as further modules of one kind are looked for.
Mix Mixing::mix(Runner& runner, const Result& now) && {
    if (const Attempt attempt = wanted_.attempt_of(0, {now, {}}); suffices(attempt)) {
        take(candidates_.top(), attempt);
        return std::move(mix_);
    }
    // So many of each that no mix has more of anything.
    if (wanted_.are_too_few(Numbers(mix_.kinds.size(), options_.most)))
        return std::move(mix_);
    while (!runner.is_stopped()) {
        std::vector<Candidate> wave;
        while (wave.size() < options_.jobs) {
            std::optional<Candidate> candidate = next_possible(runner);
            if (!candidate)
                break;
            wave.push_back(std::move(*candidate));
        }
        if (wave.empty())
            break;
        if (!mix_.at_least)
            mix_.at_least = wave.front().price;
        std::vector<std::optional<Attempt>> attempts(wave.size());
        std::vector<std::vector<ServiceResult>> withheld(wave.size());
        runner.plan(wave.size());
        runner.in_parallel(wave.size(), [&](std::size_t at) {
            if (runner.is_stopped())
                return;
            Headend changed = headend_;
            for (std::size_t kind = 0; kind < mix_.kinds.size(); ++kind)
                changed = with_modules(changed, mix_.kinds[kind].module, wave[at].numbers[kind]);
            if (auto trial = runner.trial(changed)) {
                attempts[at] = wanted_.attempt_of(wave[at].modules, *trial);
                withheld[at] = std::move(trial->withheld);
            }
        });
        for (std::size_t at = 0; at < wave.size() && attempts[at]; ++at) {
            ++mix_.tried;
            if (suffices(*attempts[at])) {
                take(wave[at], *attempts[at]);
                mix_.withheld = std::move(withheld[at]);
                return std::move(mix_);
            }
        }
    }
    return std::move(mix_);
}

} // namespace zarven::tool
