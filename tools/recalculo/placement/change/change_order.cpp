// A walk through an order knows what each output and each PID budget has to carry at every step: a service
// whose new input is there waits until there is room on its new outputs, too. The order that does best
// without such limits is no worse than any with them; where it has to wait, single steps are moved for as
// long as that helps.

#include "placement/change/change_order.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "Reglas.h"
#include "placement/change/order_search.h"
#include "placement/change/step_order.h"

namespace zarven::tool {

namespace {

/// Orders that are tried, each as much work as it has steps and services that move.
constexpr std::size_t most_walked = 20'000'000;

/// Where a load is counted: an output of a module, or with 0 its PIDs.
using LoadKey = std::pair<std::string, std::uint32_t>;

struct Load {
    bool is_pids = false;
    std::int64_t used = 0;
    std::uint32_t max = 0;
    /// In the second placement. What does not pass there is for the audit to tell.
    std::int64_t finally = 0;

    bool is_kept() const {
        if (used <= finally)
            return true;
        const auto sum = static_cast<std::uint64_t>(used);
        return is_pids ? reglas::hastaTecho(sum, max) : reglas::bajoTecho(sum, max);
    }
};

/// How much of which load.
using Charge = std::pair<std::size_t, std::int64_t>;

/// All loads of both placements, by number.
class Loads {
public:
    Loads(const Result& before, const Result& after) {
        take_limits(before, &Load::used);
        // Where a limit is another, the later one holds.
        take_limits(after, &Load::finally);
    }

    /// A service is charged to the PIDs of a module once.
    std::vector<Charge> charges(const ServiceResult& service, const std::vector<Place>& places) {
        std::vector<Charge> charges;
        for (const Place& place : places) {
            const Charge pids{number(place.mac, 0), service.ca_pids};
            if (std::find(charges.begin(), charges.end(), pids) == charges.end())
                charges.push_back(pids);
            for (const std::uint32_t output : place.outputs)
                charges.emplace_back(number(place.mac, output), service.bitrate);
        }
        return charges;
    }

    void add(const std::vector<Charge>& charges, int sign) {
        for (const auto& [number, amount] : charges)
            all_[number].used += sign * amount;
    }

    bool keep(const std::vector<Charge>& charges) const {
        return std::all_of(charges.begin(), charges.end(),
                           [this](const Charge& charge) { return all_[charge.first].is_kept(); });
    }

private:
    void take_limits(const Result& result, std::int64_t Load::*carried) {
        for (const ModuleResult& module : result.modules) {
            at(module.mac, 0).*carried = module.pids;
            at(module.mac, 0).max = module.pids_max;
            for (const OutputResult& output : module.outputs) {
                at(module.mac, output.number).*carried = output.bitrate;
                at(module.mac, output.number).max = output.bitrate_max;
            }
        }
    }

    std::size_t number(const std::string& mac, std::uint32_t output) {
        const auto [found, is_new] = numbers_.try_emplace({mac, output}, all_.size());
        if (is_new) {
            all_.emplace_back();
            all_.back().is_pids = output == 0;
        }
        return found->second;
    }

    Load& at(const std::string& mac, std::uint32_t output) { return all_[number(mac, output)]; }

    std::map<LoadKey, std::size_t> numbers_;
    std::vector<Load> all_;
};

/// A service that moves. The steps are empty where an input that is not changed has it.
struct Mover {
    const ServiceResult* service = nullptr;
    StepMove steps;
    bool leaves_unchanged = false;
    bool comes_on_unchanged = false;
    std::vector<Charge> before;
    std::vector<Charge> after;
};

/// What became of a service: the step with which it left its old place, and with which it came on its new
/// one; 0 before the first.
struct Moved {
    std::size_t left = 0;
    std::size_t came = 0;
};

/// Does the steps in some order.
class Walk {
public:
    Walk(const std::vector<Mover>& movers, Loads loads, std::size_t steps)
        : movers_(movers), loads_(std::move(loads)), done_(steps), moved_(movers.size()) {
        for (std::size_t mover = 0; mover < movers.size(); ++mover)
            at_old_.push_back(mover);
    }

    std::vector<Moved> through(const std::vector<std::size_t>& order) && {
        take_over(0);
        for (std::size_t at = 0; at < order.size(); ++at) {
            done_[order[at]] = true;
            leave(at + 1);
            take_over(at + 1);
        }
        // What waits for each other's room goes over with the last step.
        for (const auto* waiting : {&off_, &at_old_})
            for (const std::size_t mover : *waiting)
                moved_[mover].came = order.size();
        for (const std::size_t mover : at_old_)
            moved_[mover].left = order.size();
        return std::move(moved_);
    }

private:
    bool is_done(std::size_t step) const { return done_[step]; }

    /// Those whose last old input is gone.
    void leave(std::size_t time) {
        const auto leaves = [this](std::size_t mover) {
            const std::vector<std::size_t>& steps = movers_[mover].steps.leaves;
            return !movers_[mover].leaves_unchanged &&
                   std::all_of(steps.begin(), steps.end(),
                               [this](std::size_t step) { return is_done(step); });
        };
        for (const std::size_t mover : at_old_)
            if (leaves(mover)) {
                loads_.add(movers_[mover].before, -1);
                moved_[mover].left = time;
                off_.push_back(mover);
            }
        at_old_.erase(std::remove_if(at_old_.begin(), at_old_.end(), leaves), at_old_.end());
    }

    bool is_there(const Mover& mover) const {
        const std::vector<std::size_t>& steps = mover.steps.comes;
        return mover.comes_on_unchanged ||
               std::any_of(steps.begin(), steps.end(), [this](std::size_t step) { return is_done(step); });
    }

    /// First those off the air; each that goes over may make room for another.
    void take_over(std::size_t time) {
        for (bool moved = true; moved;)
            moved = take_over(off_, time) || take_over(at_old_, time);
    }

    bool take_over(std::vector<std::size_t>& waiting, std::size_t time) {
        const std::size_t before = waiting.size();
        const bool stands = &waiting == &at_old_;
        waiting.erase(std::remove_if(waiting.begin(), waiting.end(),
                                     [&](std::size_t mover) { return goes_over(mover, stands, time); }),
                      waiting.end());
        return waiting.size() != before;
    }

    bool goes_over(std::size_t number, bool stands, std::size_t time) {
        const Mover& mover = movers_[number];
        if (!is_there(mover))
            return false;
        if (stands)
            loads_.add(mover.before, -1);
        loads_.add(mover.after, +1);
        if (!loads_.keep(mover.after)) {
            loads_.add(mover.after, -1);
            if (stands)
                loads_.add(mover.before, +1);
            return false;
        }
        if (stands)
            moved_[number].left = time;
        moved_[number].came = time;
        return true;
    }

    const std::vector<Mover>& movers_;
    Loads loads_;
    std::vector<bool> done_;
    std::vector<Moved> moved_;
    /// In the order of the movers.
    std::vector<std::size_t> at_old_;
    std::vector<std::size_t> off_;
};

class Changing {
public:
    Changing(const Comparison& comparison, const Result& before, const Result& after)
        : loads_(before, after) {
        // What is only taken hinders nothing, and what is only given up can wait.
        for (const auto* changes :
             {&comparison.inputs_taken, &comparison.inputs_retuned, &comparison.inputs_freed})
            for (const InputChange& change : *changes) {
                step_of_[{change.mac, change.number}] = inputs_.size();
                inputs_.push_back(&change);
            }
        for (const auto* changes : {&comparison.lost, &comparison.removed})
            for (const ServiceChange& change : *changes)
                loads_.add(loads_.charges(change.service, change.before), -1);
        for (const ServiceChange& change : comparison.moved)
            movers_.push_back(mover_of(change));
    }

    ChangeOrder order() && {
        std::vector<StepMove> moves;
        for (const Mover& mover : movers_)
            moves.push_back(mover.leaves_unchanged || mover.comes_on_unchanged ? StepMove() : mover.steps);
        const StepOrder unlimited = step_order(inputs_.size(), moves);
        const std::size_t least = cost_of(off_air_after(unlimited.steps, moves)).first;
        ChangeOrder order = told(improved_order(
            unlimited.steps, [this](const auto& steps) { return cost_of(off_air(steps)); },
            most_walked / (1 + inputs_.size() * movers_.size()), least));
        order.is_least = unlimited.is_least && order.most_off_air == least;
        return order;
    }

private:
    Mover mover_of(const ServiceChange& change);
    bool add_steps(const std::vector<Place>& places, std::vector<std::size_t>& steps) const;
    std::vector<Moved> walk(const std::vector<std::size_t>& order) const {
        return Walk(movers_, loads_, inputs_.size()).through(order);
    }
    std::vector<std::size_t> off_air(const std::vector<std::size_t>& order) const;
    ChangeOrder told(const std::vector<std::size_t>& order) const;

    Loads loads_;
    std::map<std::pair<std::string, std::uint16_t>, std::size_t> step_of_;
    std::vector<const InputChange*> inputs_;
    std::vector<Mover> movers_;
};

/// Whether all of the inputs are changed.
bool Changing::add_steps(const std::vector<Place>& places, std::vector<std::size_t>& steps) const {
    for (const Place& place : places) {
        const auto found = step_of_.find({place.mac, place.input});
        if (found == step_of_.end())
            return false;
        steps.push_back(found->second);
    }
    return true;
}

Mover Changing::mover_of(const ServiceChange& change) {
    Mover mover;
    mover.service = &change.service;
    mover.leaves_unchanged = !add_steps(change.before, mover.steps.leaves);
    mover.comes_on_unchanged = !add_steps(change.after, mover.steps.comes);
    mover.before = loads_.charges(change.service, change.before);
    mover.after = loads_.charges(change.service, change.after);
    return mover;
}

/// After each step.
std::vector<std::size_t> Changing::off_air(const std::vector<std::size_t>& order) const {
    std::vector<std::ptrdiff_t> change(order.size() + 1);
    for (const Moved& moved : walk(order)) {
        ++change[moved.left];
        --change[moved.came];
    }
    std::vector<std::size_t> off;
    std::ptrdiff_t now = 0;
    for (const std::ptrdiff_t more : change)
        off.push_back(static_cast<std::size_t>(now += more));
    return off;
}

ChangeOrder Changing::told(const std::vector<std::size_t>& order) const {
    ChangeOrder told;
    for (const std::size_t step : order) {
        told.steps.emplace_back();
        told.steps.back().input = *inputs_[step];
    }
    const std::vector<Moved> moved = walk(order);
    for (std::size_t mover = 0; mover < movers_.size(); ++mover) {
        if (moved[mover].left >= moved[mover].came)
            continue;
        told.steps[moved[mover].left - 1].goes_off.push_back(*movers_[mover].service);
        told.steps[moved[mover].came - 1].comes_back.push_back(*movers_[mover].service);
    }
    std::size_t off_air = 0;
    for (ChangeStep& step : told.steps) {
        off_air += step.goes_off.size();
        off_air -= step.comes_back.size();
        step.off_air = off_air;
        told.most_off_air = std::max(told.most_off_air, off_air);
    }
    return told;
}

} // namespace

ChangeOrder change_order(const Comparison& comparison, const Result& before, const Result& after) {
    return Changing(comparison, before, after).order();
}

} // namespace zarven::tool
