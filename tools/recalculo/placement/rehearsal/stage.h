// The state of one pass in a rehearsal, and the phases that change it. Named as the engine's own phases
// (docs/architecture.md), which tells what each is for.

#ifndef RECALCULO_REHEARSAL_STAGE_H
#define RECALCULO_REHEARSAL_STAGE_H

#include <array>
#include <cstdint>
#include <vector>

#include "Reglas.h"
#include "placement/rehearsal/rehearsal.h"

namespace zarven::tool {

using reglas::Estado;

using ServiceNumber = std::uint32_t;
using ServiceNumbers = std::vector<ServiceNumber>;

/// The place of a criterion among the four that the one fill there is can have.
inline std::size_t number_of(const reglas::Criterio& criterion) {
    return (criterion.soloClavesPositivas ? 1U : 0U) | (criterion.soloDeSuClase ? 2U : 0U);
}

class Rehearsal::Stage {
public:
    explicit Stage(const RehearsedHeadend& headend) : headend_(headend), waits_(headend.services.size()) {}

    std::optional<Rehearsed> run(const std::vector<RehearsedModule>& modules);
    const std::vector<ModuleTests>& tests() const { return tests_; }

private:
    static constexpr std::size_t no_stream = std::numeric_limits<std::size_t>::max();

    struct Input {
        std::size_t stream = no_stream;
        ServiceNumbers services;
    };
    struct Output {
        std::uint32_t bitrate = 0;
        std::uint32_t count = 0;
        ServiceNumbers services;
    };
    struct Module {
        std::vector<Input> inputs;
        std::vector<Output> outputs;
        /// Inputs up to the last that was ever tuned, in any pass.
        std::size_t inputs_used = 0;
        std::uint16_t pids = 0;
        std::uint16_t sd = 0;
        std::uint16_t hd = 0;
    };
    /// One of the two modules of a gathering: what it is to carry, and how it would look then.
    struct Side {
        std::size_t module = 0;
        ServiceNumbers services;
        std::vector<Input> inputs;
        std::vector<Output> outputs;
        std::uint32_t pids = 0;
        std::uint32_t bitrate = 0;
        std::uint32_t sd = 0;
        std::uint32_t hd = 0;
    };
    /// How many of the services that wait count when a stream is chosen, by criterion.
    using Counts = std::array<int, 4>;
    /// Where services of two modules are exchanged for one in hand.
    struct Exchange {
        std::size_t module[2] = {};
        std::size_t input[2] = {};
        std::size_t input_in_hand = 0;
        std::size_t stream = no_stream;
    };

    void begin();
    bool pass(char option);
    bool anything_waits() const { return waiting_ != 0; }
    const RehearsedService& service(ServiceNumber number) const { return headend_.services[number]; }
    void put(ServiceNumbers& services, ServiceNumber number) const;

    // Placing (stage.cpp).
    bool fits(std::size_t module, std::size_t output, const RehearsedService& service);
    bool takes_transcoder(std::size_t module, const RehearsedService& service);
    bool place(std::size_t module, std::size_t input, ServiceNumber number);

    // Filling and topping up (stage_fill.cpp).
    Estado fill(char option);
    Estado check();
    Estado complete();
    bool is_uncomplete(std::size_t module);
    void take(ServiceNumber number);
    std::size_t criterion() const;
    void count_all();
    std::size_t chosen(char mode) const;
    int fill(std::size_t module, std::size_t input, char mode);
    int place_waiting(std::size_t module, std::size_t input, std::size_t stream, bool with_transcoding);

    // Gathering (stage_unify.cpp).
    Estado unify();
    void find_receivers();
    std::size_t next_partner(std::size_t from, std::size_t module) const;
    bool is_tuned(const Input& input) const {
        return input.stream != no_stream && headend_.streams[input.stream].has_both_numbers;
    }
    bool unify_within(Module& module);
    bool unify(std::size_t module, std::size_t other);
    bool gather(std::size_t module, std::size_t input, std::size_t other);
    void sum_up(std::size_t stream);
    void divide(std::size_t stream);
    bool has_pids(const Side& side);
    bool has_transcoders(const Side& side);
    bool has_bitrate(const Side& side);
    bool book(Side& side);
    void note_tuned(Module& module);
    bool retune(std::size_t input, std::size_t stream);
    bool pass_on(std::size_t stream, std::size_t gathered, ServiceNumbers&& services);
    bool secure(ServiceNumber number);

    // Exchanging (stage_optimize.cpp).
    Estado optimize();
    bool find_exchange(std::size_t stream, Exchange& exchange) const;
    void make_room(ServiceNumber in_hand);
    bool suits(const Exchange& exchange, const int (&free)[2], std::size_t output, std::size_t other_output,
               ServiceNumber leaves, ServiceNumber comes, ServiceNumber in_hand);
    bool exchange_for(const Exchange& exchange, ServiceNumber leaves, ServiceNumber comes,
                      ServiceNumber in_hand);
    bool is_alone(std::size_t stream, long key) const;
    bool take_off(std::size_t module, std::size_t input, ServiceNumber number);

    // What came out (stage.cpp).
    bool is_broken();
    bool is_broken(std::size_t number);
    bool is_sound() const;
    void note_inputs();

    const RehearsedHeadend& headend_;
    const std::vector<RehearsedModule>* limits_ = nullptr;
    std::vector<ModuleTests> tests_;
    std::vector<Module> modules_;
    /// By service: it is not placed yet.
    std::vector<char> waits_;
    std::vector<std::size_t> waiting_of_;
    std::size_t waiting_ = 0;
    /// By stream.
    std::vector<Counts> counts_;
    int with_positive_key_ = 0;
    int with_transcoding_ = 0;
    /// The criterion in force, and the streams by how many of their services count, then as the index has
    /// them.
    std::size_t criterion_ = 0;
    std::vector<std::uint64_t> sorted_;
    int placed_by_fill_ = 0;
    int rounds_ = 0;
    bool gives_up_ = false;
    /// Counts the changes. A phase that has changed nothing would change nothing again until there is
    /// another.
    std::uint64_t changes_ = 0;
    static constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t filled_at_ = never;
    std::uint64_t unified_at_ = never;
    std::uint64_t optimized_at_ = never;
    /// By stream, the modules with an input tuned to it, ascending; some that were.
    std::vector<std::vector<std::uint32_t>> receivers_;
    Side principal_;
    Side auxiliary_;
    std::vector<std::uint16_t> sids_;
};

} // namespace zarven::tool

#endif
