// The LCN is the engine's key of a service within its stream: two with the same would be a service and its
// clone. So a wish gives way to whoever has the LCN and keeps it; with each that does, another may have to,
// and the rest begins anew.

#include <map>
#include <set>
#include <string>
#include <utility>

#include "headend/number_in_stream.h"
#include "wishes/wishing.h"

namespace zarven::tool {

namespace {

class Numbering {
public:
    Numbering(const std::vector<WishList>& lists, Wishing& wishing, Headend& headend)
        : lists_(lists), wishing_(wishing), headend_(headend) {}

    void number() {
        find_wished();
        while (!settle()) {
        }
        std::map<NumberInStream, std::uint16_t> changed;
        for (const auto& [service, wish] : wished_) {
            Service& renumbered = headend_.services[service];
            changed[lcn_in_stream_of(renumbered)] = wish.second;
            renumbered.lcn = wish.second;
            ++wishing_.renumbered;
        }
        for (Clone& clone : headend_.clones)
            if (const auto parent = changed.find(lcn_in_stream_of(clone)); parent != changed.end())
                clone.lcn = parent->second;
        find_shared();
    }

private:
    /// Receivers number a list without LCNs through, over all lists.
    void find_wished() {
        std::vector<std::size_t> before(lists_.size(), 0);
        for (std::size_t list = 1; list < lists_.size(); ++list)
            before[list] = before[list - 1] + lists_[list - 1].places;
        std::map<NumberInStream, std::size_t> holders;
        for (const Service& service : headend_.services)
            ++holders[lcn_in_stream_of(service)];
        for (const MetWish& met : wishing_.met) {
            const Wish& wish = lists_[met.wish.list].wishes[met.wish.wish];
            const std::size_t lcn = wish.lcn ? *wish.lcn : before[met.wish.list] + wish.place;
            const Service& service = headend_.services[met.service];
            if (lcn == 0 || lcn > 65535 || lcn == service.lcn)
                continue;
            // A second service of its key is a clone to the engine, and stays with the first.
            if (holders[lcn_in_stream_of(service)] > 1)
                wishing_.clashes.push_back(
                    {met.wish, met.service, static_cast<std::uint16_t>(lcn), met.service});
            else
                wished_[met.service] = {met.wish, static_cast<std::uint16_t>(lcn)};
        }
    }

    /// False if a wish has given way.
    bool settle() {
        std::map<NumberInStream, std::size_t> holders;
        for (std::size_t service = 0; service < headend_.services.size(); ++service)
            if (wished_.count(service) == 0)
                holders.emplace(lcn_in_stream_of(headend_.services[service]), service);
        for (const MetWish& met : wishing_.met) {
            const auto wish = wished_.find(met.service);
            if (wish == wished_.end())
                continue;
            const auto [holder, is_free] = holders.emplace(
                in_stream_of(headend_.services[met.service], wish->second.second), met.service);
            if (is_free)
                continue;
            wishing_.clashes.push_back({met.wish, met.service, wish->second.second, holder->second});
            wished_.erase(wish);
            return false;
        }
        return true;
    }

    /// Over streams an LCN may stand twice for the engine, and hardly for a receiver, unless they are
    /// variants of which one is asked for.
    void find_shared() {
        std::map<std::uint16_t, std::size_t> first;
        std::set<std::uint16_t> told;
        for (const MetWish& met : wishing_.met) {
            const Service& service = headend_.services[met.service];
            const auto [holder, is_free] = first.emplace(service.lcn, met.service);
            const std::string& one_of = headend_.services[holder->second].one_of;
            const bool are_variants = !one_of.empty() && one_of == service.one_of;
            if (!is_free && !are_variants && told.insert(service.lcn).second)
                wishing_.shared_lcns.push_back({service.lcn, holder->second, met.service});
        }
    }

    const std::vector<WishList>& lists_;
    Wishing& wishing_;
    Headend& headend_;
    /// By service, the wish and the LCN.
    std::map<std::size_t, std::pair<WishPlace, std::uint16_t>> wished_;
};

} // namespace

void number_wishes(const std::vector<WishList>& lists, Wishing& wishing, Headend& headend) {
    Numbering(lists, wishing, headend).number();
}

} // namespace zarven::tool
