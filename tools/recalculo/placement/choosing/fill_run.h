// A pass of the engine up to its first gathering or exchange, on a model: the inputs filled, the modules
// topped up. It takes a hundredth of the time that loading and running the engine does, for there are no
// maps, no log, and nothing is allocated. Where the engine comes to no gathering and no exchange, the outcome
// is the engine's; else it is what the engine goes on from, and may still change.
//
// One object for each thread, used for one fill after the other.

#ifndef RECALCULO_CHOOSING_FILL_RUN_H
#define RECALCULO_CHOOSING_FILL_RUN_H

#include <cstdint>
#include <vector>

#include "Reglas.h"
#include "placement/choosing/asked_parts.h"
#include "placement/choosing/fill_model.h"
#include "placement/choosing/stream_ranking.h"

namespace zarven::tool {

class FillRun {
public:
    /// The model must outlive this.
    explicit FillRun(const FillModel& model);

    void run(const AskedParts& asked, const reglas::Estrategia& strategy);

    /// What the last run came to. The state that ended it: gathering, which every pass comes to.
    std::uint32_t placed() const { return placed_; }
    std::uint32_t left() const { return left_; }
    bool is_placed(PartIndex part) const { return output_of_[part] != no_index; }
    /// In the list of the model; none if the part is not placed.
    std::uint32_t output_of(PartIndex part) const { return output_of_[part]; }
    std::uint32_t input_of(PartIndex part) const { return input_of_[part]; }
    /// The stream of an input; none if it carries no services.
    std::uint32_t stream_of_input(std::uint32_t input) const { return streams_[input]; }

private:
    struct OutputLoad {
        std::uint32_t bitrate = 0;
        std::uint32_t services = 0;
    };
    struct ModuleLoad {
        std::uint16_t pids = 0;
        std::uint16_t sd = 0;
        std::uint16_t hd = 0;
    };

    void reset(const AskedParts& asked);
    reglas::Estado sweep(const reglas::Estrategia& strategy);
    reglas::Estado check() const;
    reglas::Estado top_up();
    reglas::Estado top_up(std::uint32_t module, reglas::Estado next);

    std::uint32_t chosen(char mode) const;
    template <class Count> void rank_all(const Count& count);
    void rank(std::uint32_t changed);
    std::uint32_t counting(std::uint32_t stream) const;
    bool counts(const FillPart& part) const;
    std::uint32_t fill(std::uint32_t module, std::uint32_t input, std::uint32_t stream);
    std::uint32_t offer(std::uint32_t module, std::uint32_t input, std::uint32_t stream, bool all);
    bool place(std::uint32_t module, std::uint32_t input, PartIndex part);
    bool has_room(std::uint32_t module) const;
    bool has_empty_input() const;

    const FillModel& model_;
    /// As those of `AskedParts`, of what is not placed yet.
    std::vector<PartIndex> lists_;
    std::vector<std::uint32_t> counts_;
    std::vector<OutputLoad> outputs_;
    std::vector<ModuleLoad> modules_;
    std::vector<std::uint32_t> streams_;
    std::vector<std::uint32_t> output_of_;
    std::vector<std::uint32_t> input_of_;
    StreamRanking most_;
    StreamRanking fewest_;
    bool ranks_most_ = false;
    bool ranks_fewest_ = false;
    reglas::Criterio criterion_{false, false, false};
    std::uint32_t with_positive_key_ = 0;
    std::uint32_t with_transcoding_ = 0;
    std::uint32_t placed_ = 0;
    std::uint32_t left_ = 0;
    /// By the last sweep.
    int swept_ = 0;
};

} // namespace zarven::tool

#endif
