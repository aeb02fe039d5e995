// The filling of inputs and the topping up of modules on flat arrays: what every pass begins with, and comes
// back to. Nothing is allocated, and there are no maps and no log; so up to its first gathering a pass takes
// a hundredth of the time that loading and running the engine does. Where the engine comes to no gathering
// and no exchange, the outcome is the engine's; else it is what the engine goes on from, and may still change
// (`Rehearsal`).
//
// One object for each thread, used for one pass after the other.

#ifndef RECALCULO_REHEARSAL_FILLING_H
#define RECALCULO_REHEARSAL_FILLING_H

#include <cstdint>
#include <limits>
#include <vector>

#include "Reglas.h"
#include "placement/rehearsal/asked_parts.h"
#include "placement/rehearsal/limit_tests.h"
#include "placement/rehearsal/rehearsed_headend.h"
#include "placement/rehearsal/stream_ranking.h"

namespace zarven::tool {

/// Where everything stands.
struct Seating {
    /// By part; none if it is not placed.
    std::vector<std::uint32_t> output_of;
    /// By part; means nothing if it is not placed.
    std::vector<std::uint32_t> input_of;
    /// By input; none if it is not tuned.
    std::vector<std::uint32_t> stream_of;

    bool is_placed(PartIndex part) const { return output_of[part] != no_index; }
};

/// What modules, outputs and inputs carry.
struct PassLoads {
    struct Output {
        std::uint32_t bitrate = 0;
        std::uint32_t services = 0;
    };
    struct Module {
        std::uint16_t pids = 0;
        std::uint16_t sd = 0;
        std::uint16_t hd = 0;
    };

    std::vector<Output> outputs;
    std::vector<Module> modules;
    /// Services on each input.
    std::vector<std::uint32_t> on_input;
};

/// `is_noted`: the tests of limits are noted down, for those who want to know what other limits would do.
template <bool is_noted> class Filling {
public:
    /// The head-end must outlive this.
    explicit Filling(const RehearsedHeadend& headend);

    /// Instead of those of the head-end.
    void set_modules(const std::vector<ModuleCapacity>& modules);
    /// From now on.
    void forget_tests();
    std::vector<ModuleTests>& tests() { return tests_; }

    /// A pass up to the state that ends its filling: gathering, which every pass comes to.
    void run(const AskedParts& asked, const reglas::Estrategia& strategy);

    /// A pass state by state.
    void begin(const AskedParts& asked, const reglas::Estrategia& strategy);
    reglas::Estado fill();
    reglas::Estado check();
    reglas::Estado complete();

    /// What the pass has come to.
    std::uint32_t placed() const { return static_cast<std::uint32_t>(placed_.size()); }
    std::uint32_t left() const { return left_; }
    const Seating& seating() const { return seating_; }
    /// Those that were waiting, in the order in which they were placed.
    const std::vector<PartIndex>& placed_in_order() const { return placed_; }

    // For those who go on from there.

    const RehearsedHeadend& headend() const { return headend_; }
    const FlatModules& limits() const { return limits_; }
    Seating& seating() { return seating_; }
    PassLoads& loads() { return loads_; }
    const PassLoads& loads() const { return loads_; }
    LimitTests& bitrate_tests(std::uint32_t module, std::uint32_t output) {
        return tests_[module].bitrate[output - limits_.modules[module].first_output];
    }
    /// Of a stream, ascending.
    const PartIndex* waiting_begin(std::uint32_t stream) const {
        return lists_.data() + headend_.streams[stream].first;
    }
    const PartIndex* waiting_end(std::uint32_t stream) const {
        return waiting_begin(stream) + counts_[stream];
    }
    /// Puts a part on the first output of a module that takes it, if there is one.
    bool seat(std::uint32_t module, std::uint32_t input, PartIndex part);
    /// A part that was seated by itself waits no longer.
    void take(PartIndex part);
    /// So many things have changed since the object was made.
    std::uint64_t changes() const { return changes_; }
    void note_change(std::uint32_t module) { changed_at_[module] = ++changes_; }
    /// What the module carries has changed since there were so many.
    bool has_changed(std::uint32_t module, std::uint64_t since) const { return changed_at_[module] > since; }

private:
    std::uint32_t output_for(std::uint32_t module, const RehearsedPart& part);
    bool takes_transcoder(std::uint32_t module, const RehearsedPart& part);
    bool has_room(std::uint32_t module);
    reglas::Criterio criterion() const { return {with_positive_key_ != 0, with_transcoding_ != 0, false}; }
    template <class Count> void rank_all(const Count& count);
    void rank_all();
    void rank(std::uint32_t changed);
    std::uint32_t counting(std::uint32_t stream) const;
    std::uint32_t fill(std::uint32_t module, std::uint32_t input, std::uint32_t stream);
    std::uint32_t offer(std::uint32_t module, std::uint32_t input, std::uint32_t stream, bool all);
    reglas::Estado complete(std::uint32_t module, reglas::Estado next);
    void no_longer_waits(PartIndex part);

    const RehearsedHeadend& headend_;
    const reglas::Estrategia* strategy_ = nullptr;
    FlatModules limits_;
    std::vector<ModuleTests> tests_;
    Seating seating_;
    PassLoads loads_;
    /// As those of `AskedParts`, of what is not placed yet.
    std::vector<PartIndex> lists_;
    std::vector<std::uint32_t> counts_;
    std::vector<PartIndex> placed_;
    std::uint32_t left_ = 0;
    std::uint32_t with_positive_key_ = 0;
    std::uint32_t with_transcoding_ = 0;
    StreamRanking most_;
    StreamRanking fewest_;
    bool ranks_most_ = false;
    bool ranks_fewest_ = false;
    /// In force when the streams were ranked.
    reglas::Criterio criterion_{false, false, false};
    /// By the last fill.
    int filled_ = 0;
    static constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t changes_ = 0;
    /// By module, the number of its last change.
    std::vector<std::uint64_t> changed_at_;
    /// What the ranking is of, and what a fill found nothing to do in.
    std::uint64_t ranked_at_ = never;
    std::uint64_t filled_at_ = never;
};

extern template class Filling<false>;
extern template class Filling<true>;

} // namespace zarven::tool

#endif
