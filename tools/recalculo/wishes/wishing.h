// Wish lists brought to the services of a head-end: which service each wish means, what follows for the
// others, and what is to be told. Some thousand wishes and services.
//
// A service is known by the ids that it is received with. `import` may have made a TSID of a frequency, where
// several transponders have the same ids: there ONID and SID are enough. What is not found by its ids is
// looked for by its name.

#ifndef RECALCULO_WISHING_H
#define RECALCULO_WISHING_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "headend/headend.h"
#include "wishes/service_names.h"
#include "wishes/wish_list.h"

namespace zarven::tool {

/// A wish by its list and its place there.
struct WishPlace {
    std::size_t list = 0;
    std::size_t wish = 0;
};

enum class Likeness {
    /// By ids, by LCN, or by a name but for its case.
    exact,
    /// By ONID and SID: the TSID is one that an import has made up.
    other_tsid,
    /// By a name that is written in another way.
    like,
};

/// A wish and the service that is taken for it, by its place in the head-end.
struct MetWish {
    WishPlace wish;
    std::size_t service = 0;
    Likeness likeness = Likeness::exact;
    /// Others that it could mean as well.
    std::vector<std::size_t> others;
};

/// An LCN that a list wishes for a service, and another has in its stream.
struct LcnClash {
    WishPlace wish;
    std::size_t service = 0;
    std::uint16_t lcn = 0;
    std::size_t holder = 0;
};

/// LCNs that services of several streams have.
struct SharedLcn {
    std::uint16_t lcn = 0;
    std::size_t one = 0;
    std::size_t other = 0;
};

struct Wishing {
    /// Each service once, in the order of the lists.
    std::vector<MetWish> met;
    /// Their services are wished for before.
    std::vector<MetWish> repeated;
    std::vector<WishPlace> missing;
    /// Services that are met and have "ask": false.
    std::vector<MetWish> withheld;
    /// Wished LCNs: how many were taken over, and what stood against others.
    std::size_t renumbered = 0;
    std::vector<LcnClash> clashes;
    std::vector<SharedLcn> shared_lcns;
};

/// What is told where no service is met.
inline constexpr const char* no_wish_is_met = "none of the wishes is found, and nothing is asked for";

/// What `number_wishes` does, for people.
inline constexpr const char* meaning_of_wished_lcns =
    "Take over the LCNs of the wish lists, or where these have none the places in them";

/// What the wishes mean.
Wishing find_wishes(const std::vector<WishList>& lists, const std::vector<Service>& services,
                    const std::vector<Reception>& streams);

/// Asks for the services that are met alone, as far as they were asked for.
void ask_for_met(const Wishing& wishing, std::vector<Service>& services);

/// Gives the services what the lists say of them: output name, group, must, value, and one-of groups. What
/// has no value of its own is valued by its place: of n services the first is worth n, the last 1, those of a
/// one-of group the same; of more than `most_value` in steps that begin there.
void value_wishes(const std::vector<WishList>& lists, const Wishing& wishing, std::vector<Service>& services);

/// Gives the services the LCNs of the lists, and their clones with them; notes what stood against it.
void number_wishes(const std::vector<WishList>& lists, Wishing& wishing, Headend& headend);

} // namespace zarven::tool

#endif
