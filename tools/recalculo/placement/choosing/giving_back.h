// The end of a search: what is withheld for nothing is asked for again. Groups first, which are halved until
// they can be given back or are single services; over and over, until no service can be given back by itself.

#ifndef RECALCULO_CHOOSING_GIVING_BACK_H
#define RECALCULO_CHOOSING_GIVING_BACK_H

#include <cstdint>
#include <vector>

#include "placement/choosing/judge.h"

namespace zarven::tool {

class GivingBack {
public:
    /// One judge for each job, which must outlive this; `best` is sound, or withholds nothing.
    GivingBack(std::vector<Judge*> judges, TriedChoice best);

    bool has_ended() const { return groups_.empty(); }
    /// Tries one group a job, and keeps the first that does no harm. Gives how many it has tried.
    std::uint64_t step();

    const TriedChoice& best() const { return best_; }

private:
    using Group = std::vector<std::size_t>;

    void gather();
    void split(const Group& group);

    const EngineTrial& trial_;
    std::vector<Judge*> judges_;
    TriedChoice best_;
    /// Those still to be tried; the last first.
    std::vector<Group> groups_;
    /// Something was given back since all were gathered.
    bool has_given_ = false;
    bool in_groups_ = true;
};

} // namespace zarven::tool

#endif
