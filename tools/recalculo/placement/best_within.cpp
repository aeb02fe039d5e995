#include "placement/best_within.h"

#include <algorithm>
#include <utility>

namespace zarven::tool {

std::size_t BestWithin::units(std::uint64_t ceiling) const {
    return static_cast<std::size_t>(std::min(ceiling, size_of_all_) / unit_);
}

void BestWithin::assign(std::vector<Thing> things) {
    things_ = std::move(things);
    size_of_all_ = 0;
    for (const Thing& thing : things_)
        size_of_all_ += thing.size;
    unit_ = std::max<std::uint64_t>((size_of_all_ + most_units - 1) / most_units, 1);
    cells_ = units(size_of_all_) + 1;
    worths_.assign(cells_, 0);
    is_chosen_.assign(things_.size() * cells_, false);
    auto is_chosen = is_chosen_.begin();
    for (const Thing& thing : things_) {
        const auto size = static_cast<std::size_t>(thing.size / unit_);
        for (std::size_t cell = cells_; cell-- > size;)
            if (const double worth = worths_[cell - size] + thing.worth; worth > worths_[cell]) {
                worths_[cell] = worth;
                is_chosen[static_cast<std::ptrdiff_t>(cell)] = true;
            }
        is_chosen += static_cast<std::ptrdiff_t>(cells_);
    }
}

std::vector<std::size_t> BestWithin::chosen(std::uint64_t ceiling) const {
    std::vector<std::size_t> places;
    std::size_t cell = units(ceiling);
    for (std::size_t thing = things_.size(); thing-- > 0;)
        if (is_chosen_[thing * cells_ + cell]) {
            places.push_back(thing);
            cell -= static_cast<std::size_t>(things_[thing].size / unit_);
        }
    return places;
}

} // namespace zarven::tool
