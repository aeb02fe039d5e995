// The cheapest mix of further modules of several kinds. Mixes are tried by their price, from the cheapest
// that the bound allows: the first that suffices is the cheapest that does when the modules of each kind
// stand together, in the order of the kinds. Another order may place otherwise, and so the mix is only told
// as found.

#ifndef RECALCULO_SIZING_MIXING_H
#define RECALCULO_SIZING_MIXING_H

#include <cstdint>
#include <optional>
#include <queue>
#include <vector>

#include "headend/headend.h"
#include "placement/sizing/runner.h"
#include "placement/sizing/sizing.h"
#include "placement/sizing/wanted.h"

namespace zarven::tool {

class Mixing {
public:
    /// All must outlive this; `wanted` knows the same kinds.
    Mixing(const Headend& headend, const std::vector<Module>& kinds, const Wanted& wanted,
           const SizingOptions& options);

    /// `now` is the result of the head-end as it is.
    Mix mix(Runner& runner, const Result& now) &&;

private:
    using Numbers = std::vector<std::size_t>;

    struct Candidate {
        std::uint64_t price = 0;
        std::size_t modules = 0;
        Numbers numbers;
        /// The first kind that may be added to it, so that each mix comes once.
        std::size_t next_kind = 0;
    };
    /// What is dearer comes later, then what takes more modules, then more of the first kinds.
    struct Later {
        bool operator()(const Candidate& one, const Candidate& other) const;
    };

    std::optional<Candidate> next();
    std::optional<Candidate> next_possible(const Runner& runner);
    void take(const Candidate& candidate, const Attempt& attempt);

    const Headend& headend_;
    const Wanted& wanted_;
    const SizingOptions& options_;
    std::priority_queue<Candidate, std::vector<Candidate>, Later> candidates_;
    Mix mix_;
};

} // namespace zarven::tool

#endif
