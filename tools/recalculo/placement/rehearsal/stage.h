// The state of one pass in a rehearsal, and the phases that change it. Named as the engine's own phases
// (docs/architecture.md), which tells what each is for. While a pass fills, only loads and seats change
// (`Filling`); the phases after that need the services of each input and output by key, too, which are
// brought up to date when such a phase begins.

#ifndef RECALCULO_REHEARSAL_STAGE_H
#define RECALCULO_REHEARSAL_STAGE_H

#include <cstdint>
#include <vector>

#include "Reglas.h"
#include "placement/rehearsal/rehearsal.h"

namespace zarven::tool {

using reglas::Estado;

using PartIndices = std::vector<PartIndex>;

class Rehearsal::Stage {
public:
    explicit Stage(const RehearsedHeadend& headend);

    void set_modules(const std::vector<ModuleCapacity>& modules);
    std::optional<Rehearsed> run(const AskedParts& asked);
    std::optional<Rehearsed> run(const AskedParts& asked, const reglas::Estrategia& strategy);
    std::optional<Rehearsed> run_all() { return run(all_); }
    const std::vector<ModuleTests>& tests() { return filling_.tests(); }
    const Seating& seating() const { return best_; }

private:
    /// One of the two modules of a gathering: what it is to carry, and how it would look then.
    struct Side {
        struct Input {
            std::uint32_t stream = no_index;
            PartIndices parts;
        };
        struct Output {
            PassLoads::Output load;
            PartIndices parts;
        };
        std::uint32_t module = 0;
        PartIndices parts;
        std::vector<Input> inputs;
        std::vector<Output> outputs;
        std::uint32_t pids = 0;
        std::uint32_t bitrate = 0;
        std::uint32_t sd = 0;
        std::uint32_t hd = 0;
    };
    /// Where services of two modules are exchanged for one in hand.
    struct Exchange {
        std::uint32_t module[2] = {};
        std::uint32_t input[2] = {};
        std::uint32_t input_in_hand = 0;
        std::uint32_t stream = no_index;
        /// Of exchanging, in which it was looked for.
        int round = 0;
    };

    // The frame (stage.cpp).
    void begin(const AskedParts& asked, const reglas::Estrategia& strategy);
    void forget_last_run();
    void forget_seating();
    bool pass();
    void list_placed();
    void put(PartIndices& parts, PartIndex part) const;
    bool anything_waits() const { return filling_.left() != 0; }
    const RehearsedPart& part(PartIndex index) const { return headend_.parts[index]; }
    std::uint32_t modules() const { return static_cast<std::uint32_t>(filling_.limits().modules.size()); }
    const FlatModules::Module& limits(std::uint32_t module) const {
        return filling_.limits().modules[module];
    }
    std::uint32_t& stream_of(std::uint32_t input) { return filling_.seating().stream_of[input]; }
    std::uint32_t stream_of(std::uint32_t input) const { return filling_.seating().stream_of[input]; }

    // Gathering (stage_unify.cpp).
    Estado unify();
    void find_receivers();
    std::uint32_t next_partner(std::uint32_t from, std::uint32_t module) const;
    bool is_tuned(std::uint32_t input) const {
        const std::uint32_t stream = stream_of(input);
        return stream != no_index && headend_.streams[stream].has_both_numbers;
    }
    bool unify_within(std::uint32_t module);
    bool unify(std::uint32_t module, std::uint32_t other);
    bool gather(std::uint32_t module, std::uint32_t input, std::uint32_t other);
    void sum_up(std::uint32_t stream);
    void divide(std::uint32_t stream);
    bool has_pids(const Side& side);
    bool has_transcoders(const Side& side);
    bool has_bitrate(const Side& side);
    bool book(Side& side);
    void copy_inputs(Side& side) const;
    bool retune(std::uint32_t input, std::uint32_t stream);
    bool pass_on(std::uint32_t stream, std::uint32_t gathered, PartIndices&& parts);
    bool secure(PartIndex part);
    void take_over(Side& side);

    // Exchanging (stage_optimize.cpp).
    Estado optimize();
    bool find_exchange(std::uint32_t stream, Exchange& exchange) const;
    void make_room(std::uint32_t stream, const Exchange& exchange);
    void make_room_for(PartIndex in_hand, const Exchange& exchange);
    bool suits(const Exchange& exchange, const int (&free)[2], const std::uint32_t (&outputs)[2],
               PartIndex leaves, PartIndex comes, PartIndex in_hand);
    bool exchange_for(const Exchange& exchange, PartIndex leaves, PartIndex comes, PartIndex in_hand);
    bool is_alone(std::uint32_t stream, std::int32_t key) const;
    bool place(std::uint32_t module, std::uint32_t input, PartIndex part);
    bool take_off(std::uint32_t module, std::uint32_t input, PartIndex leaving);

    // What came out (stage_outcome.cpp).
    bool is_broken();
    bool is_broken(std::uint32_t module);
    bool is_output_broken(std::uint32_t module, std::uint32_t output);
    bool is_sound(std::uint32_t asked) const;
    void note_tuned();
    void note_tuned(std::uint32_t module);
    void note_inputs();
    void mend_first_inputs();
    void keep_seating();

    const RehearsedHeadend& headend_;
    const AskedParts all_;
    Filling<true> filling_;
    /// By input, and by output: the services there, by key.
    std::vector<PartIndices> on_input_;
    std::vector<PartIndices> on_output_;
    /// So many of those that the filling has placed are in these lists.
    std::size_t listed_ = 0;
    /// By module: inputs up to the last that was ever tuned, in any pass.
    std::vector<std::uint32_t> inputs_used_;
    int rounds_ = 0;
    bool gives_up_ = false;
    /// A phase that has changed nothing would change nothing again until there is another change.
    static constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t unified_at_ = never;
    std::uint64_t optimized_at_ = never;
    /// By stream, the modules with an input tuned to it, ascending; some that were.
    std::vector<std::vector<std::uint32_t>> receivers_;
    /// By stream, the last that was tried for it; of round 0 if none was.
    std::vector<Exchange> exchanges_;
    Side principal_;
    Side auxiliary_;
    std::vector<std::uint16_t> sids_;
    Seating best_;
};

} // namespace zarven::tool

#endif
