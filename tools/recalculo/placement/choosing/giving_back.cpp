#include "placement/choosing/giving_back.h"

#include <algorithm>
#include <utility>

#include "base/workers.h"

namespace zarven::tool {

GivingBack::GivingBack(std::vector<Judge*> judges, TriedChoice best)
    : trial_(judges.front()->trial()), judges_(std::move(judges)), best_(std::move(best)) {
    gather();
}

/// All of them at first; once that has gone through, each by itself.
void GivingBack::gather() {
    Group all;
    for (std::size_t service = 0; service < best_.asked.size(); ++service)
        if (trial_.is_withheld(service, best_.asked))
            all.push_back(service);
    if (all.empty())
        return;
    if (in_groups_)
        groups_.push_back(std::move(all));
    else
        for (const std::size_t service : all)
            groups_.push_back({service});
    in_groups_ = false;
    has_given_ = false;
}

void GivingBack::split(const Group& group) {
    if (group.size() < 2)
        return;
    const auto middle = group.begin() + static_cast<std::ptrdiff_t>(group.size() / 2);
    groups_.emplace_back(middle, group.end());
    groups_.emplace_back(group.begin(), middle);
}

std::uint64_t GivingBack::step() {
    const std::size_t number = std::min(judges_.size(), groups_.size());
    std::vector<TriedChoice> tried(number, {best_.asked, {}});
    in_parallel(number, static_cast<unsigned>(number), [&](std::size_t index) {
        for (const std::size_t service : groups_[groups_.size() - 1 - index])
            if (trial_.is_withheld(service, best_.asked))
                tried[index].asked[service] = true;
        trial_.keep_one_of_each(tried[index].asked);
        tried[index].outcome = judges_[index]->run_confirmed(tried[index].asked, best_.outcome.worth);
    });
    const auto kept =
        std::find_if(tried.begin(), tried.end(), [](const TriedChoice& one) { return one.outcome.is_sound; });
    // Those before it have had their turn; those behind it have been tried for nothing.
    std::vector<Group> refused;
    for (auto one = tried.begin(); one != kept; ++one) {
        refused.push_back(std::move(groups_.back()));
        groups_.pop_back();
    }
    if (kept != tried.end()) {
        best_ = std::move(*kept);
        groups_.pop_back();
        has_given_ = true;
    }
    for (auto group = refused.rbegin(); group != refused.rend(); ++group)
        split(*group);
    if (groups_.empty() && has_given_)
        gather();
    return number;
}

} // namespace zarven::tool
