// "One of": HD else SD, one regional variant of many. Of the services of a head-end that have the same
// `one_of` and may be asked for, exactly one is: the best that fits. Better is a service that is a must, then
// one of a greater value, then HD, then the one that stands first, in the wish list or else in the head-end.
//
// Who loads an engine asks for the best of each group. What fits only the engine knows: groups are settled by
// running it, one variant against another. Some hundreds of groups, mostly of two or three variants.

#ifndef RECALCULO_ONE_OF_H
#define RECALCULO_ONE_OF_H

#include <cstddef>
#include <string>
#include <vector>

#include "headend/headend.h"

namespace zarven::tool {

struct OneOf {
    std::string name;
    /// Those that may be asked for, by their place in the head-end, the best first; at least one.
    std::vector<std::size_t> variants;
};

/// In the order of their best variants.
std::vector<OneOf> one_of_groups(const std::vector<Service>& services);

/// No choice asks for the others: those with `ask` false, and those of value 0 that are no must.
bool may_be_asked_for(const Service& service);

/// It is in a group, and others of it may be asked for in its place.
bool is_variant(const Service& service);

/// Whether each service is asked for: of a group the best that does not yield.
std::vector<bool> services_asked_for(const std::vector<Service>& services);

/// How many of those that may be asked for are marked as `must`; of a group one counts, if any of it is.
std::size_t musts_wanted(const std::vector<Service>& services);

/// With every service asked for, and each for itself: for who looks for a service among all.
Headend with_all_asked_for(Headend headend);

/// The variants that do not fit yield to those that do. Beginning with the best of each group, the engine is
/// run with another variant in the place of one that it does not place, or of one that is not the best; that
/// one is asked for if the engine places it and all together is no worse: nothing broken before something,
/// then more musts, a greater value, more services, and only then the better variant. Over and over until
/// nothing changes, `most_runs` are made, or all of them together have taken the time that one run may take.
/// Without a choice nothing is run. The log must be masked. Throws `Failure`.
void settle_variants(Headend& headend, const std::string& file, std::size_t most_runs);
/// With as many runs as suit the size of the head-end.
void settle_variants(Headend& headend, const std::string& file);

} // namespace zarven::tool

#endif
