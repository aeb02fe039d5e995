#include "report/wishing_text.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/counted.h"
#include "base/utf8.h"
#include "headend/stream.h"
#include "lineup/text_lines.h"

namespace zarven::tool {

namespace {

std::string in_quotes(std::string_view name) {
    return fmt::format("\"{}\"", shortened(name));
}

std::string place_of(const Service& service) {
    return fmt::format("LCN {} of stream {}", service.lcn, to_string(stream_of(service)));
}

std::string place_of(const WishedIds& ids) {
    return fmt::format("SID {} of stream {}/{}", ids.sid, ids.onid ? std::to_string(*ids.onid) : "?",
                       ids.tsid);
}

std::string wished_text(const Wish& wish) {
    if (!wish.name.empty())
        return in_quotes(wish.name);
    return wish.ids ? place_of(*wish.ids) : fmt::format("LCN {}", wish.lcn.value_or(0));
}

class WishMessages {
public:
    WishMessages(const std::vector<WishList>& lists, const std::vector<Service>& services,
                 const Wishing& wishing, MessageDigest::Extent extent)
        : lists_(lists), services_(services), wishing_(wishing), extent_(extent), digest_(extent) {}

    std::vector<std::string> of_wishes() && {
        for (const WishList& list : lists_) {
            for (const std::string& message : list.unreadable)
                digest_.add(list.file, "lines that cannot be read", message);
            for (const auto& [kind, number] : list.skipped)
                digest_.add(list.file, kind, fmt::format("{}: {} skipped: {}", list.file, number, kind));
        }
        add_missing();
        for (const MetWish& met : wishing_.met)
            add_met(met);
        for (const MetWish& met : wishing_.repeated)
            add(met.wish, "services that are wished for before",
                fmt::format("{} is wished for before: passed over", in_quotes(services_[met.service].name)));
        for (const MetWish& met : wishing_.withheld)
            add(met.wish, "services with \"ask\": false, which are not asked for",
                fmt::format("{} ({}) has \"ask\": false: not asked for",
                            in_quotes(services_[met.service].name), place_of(services_[met.service])));
        std::vector<std::string> lines = digest_.lines();
        for (std::size_t list = 0; list < lists_.size(); ++list)
            lines.push_back(summary(list));
        return lines;
    }

    std::vector<std::string> of_lcns() && {
        for (const LcnClash& clash : wishing_.clashes) {
            const Service& service = services_[clash.service];
            add(clash.wish, "LCNs that are not taken over",
                fmt::format("{} keeps LCN {}, because {}", in_quotes(service.name), service.lcn,
                            clash.holder == clash.service
                                ? "another service of its stream has the same"
                                : fmt::format("{} of its stream has LCN {}",
                                              in_quotes(services_[clash.holder].name), clash.lcn)));
        }
        for (const SharedLcn& shared : wishing_.shared_lcns)
            digest_.add(name(), "LCNs of several services",
                        fmt::format("{}: LCN {} is that of {} and of {}, in two streams", name(), shared.lcn,
                                    in_quotes(services_[shared.one].name),
                                    in_quotes(services_[shared.other].name)));
        std::vector<std::string> lines = digest_.lines();
        lines.push_back(
            fmt::format("{}: LCN of {} taken over", name(), counted(wishing_.renumbered, "service")));
        return lines;
    }

private:
    const Wish& wish_of(WishPlace place) const { return lists_[place.list].wishes[place.wish]; }

    std::string name() const {
        return lists_.size() == 1 ? lists_.front().file : counted(lists_.size(), "list");
    }

    void add(WishPlace place, const std::string& kind, const std::string& what) {
        const std::string& file = lists_[place.list].file;
        digest_.add(file, kind, fmt::format("{}: {}", line_of_file(file, wish_of(place).line), what));
    }

    /// The nearest name takes long to find among thousands, and only some are told.
    void add_missing() {
        const ServiceNames names(services_);
        std::size_t told = 0;
        for (const WishPlace place : wishing_.missing) {
            const Wish& wish = wish_of(place);
            std::string near;
            if (!wish.name.empty() && (extent_ == MessageDigest::Extent::all ||
                                       told < lists_.size() * MessageDigest::most_of_a_kind))
                near = near_text(names, wish.name);
            told += wish.name.empty() ? 0 : 1;
            add(place, "wishes that no service meets",
                wish.name.empty()
                    ? fmt::format("no service has {}",
                                  wish.ids ? place_of(*wish.ids) : fmt::format("the {}", wished_text(wish)))
                    : fmt::format("no service is called {}{}", in_quotes(wish.name), near));
        }
    }

    std::string near_text(const ServiceNames& names, const std::string& wished) const {
        const auto near = names.nearest(wished);
        if (!near)
            return "";
        return fmt::format("; did you mean {} ({})?", in_quotes(services_[*near].name),
                           place_of(services_[*near]));
    }

    void add_met(const MetWish& met) {
        const Wish& wish = wish_of(met.wish);
        const Service& service = services_[met.service];
        if (!met.others.empty()) {
            std::vector<std::string> others;
            for (const std::size_t other : met.others)
                others.push_back(
                    fmt::format("{} ({})", in_quotes(services_[other].name), place_of(services_[other])));
            add(met.wish, "wishes that several services meet",
                fmt::format("{} may be {} ({}), which is taken, or {}", wished_text(wish),
                            in_quotes(service.name), place_of(service), fmt::join(others, ", ")));
        } else if (met.likeness == Likeness::like) {
            add(met.wish, "names that are taken for one like them",
                fmt::format("{} is taken for {} ({})", in_quotes(wish.name), in_quotes(service.name),
                            place_of(service)));
        } else if (met.likeness == Likeness::other_tsid) {
            add(met.wish, "ids that are taken for those of a stream with a TSID by frequency",
                fmt::format("{} is taken for {} ({}), whose stream has its TSID by frequency",
                            place_of(*wish.ids), in_quotes(service.name), place_of(service)));
        }
    }

    static std::size_t number_of(std::size_t list, const std::vector<MetWish>& wishes) {
        return static_cast<std::size_t>(std::count_if(
            wishes.begin(), wishes.end(), [list](const MetWish& met) { return met.wish.list == list; }));
    }

    std::string summary(std::size_t number) const {
        const WishList& list = lists_[number];
        const std::size_t repeated = number_of(number, wishing_.repeated);
        const auto missing = std::count_if(wishing_.missing.begin(), wishing_.missing.end(),
                                           [number](WishPlace place) { return place.list == number; });
        return fmt::format("{}: read as {}: {}, of which {} found{}{}", list.file, to_string(list.format),
                           counted(list.wishes.size(), "wish"), number_of(number, wishing_.met),
                           repeated == 0 ? "" : fmt::format(", {} wished for before", repeated),
                           missing == 0 ? "" : fmt::format(", {} not found", missing));
    }

    const std::vector<WishList>& lists_;
    const std::vector<Service>& services_;
    const Wishing& wishing_;
    const MessageDigest::Extent extent_;
    MessageDigest digest_;
};

} // namespace

std::vector<std::string> wishing_messages(const std::vector<WishList>& lists,
                                          const std::vector<Service>& services, const Wishing& wishing,
                                          MessageDigest::Extent extent) {
    return WishMessages(lists, services, wishing, extent).of_wishes();
}

std::vector<std::string> lcn_messages(const std::vector<WishList>& lists,
                                      const std::vector<Service>& services, const Wishing& wishing,
                                      MessageDigest::Extent extent) {
    return WishMessages(lists, services, wishing, extent).of_lcns();
}

} // namespace zarven::tool
