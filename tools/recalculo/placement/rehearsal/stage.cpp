// The frame of a rehearsal: its state, the four strategies, and the lists that the later phases go by.

#include "placement/rehearsal/stage.h"

#include <algorithm>

namespace zarven::tool {

Rehearsal::Rehearsal(const RehearsedHeadend& headend) : stage_(std::make_unique<Stage>(headend)) {}
Rehearsal::~Rehearsal() = default;

std::optional<Rehearsed> Rehearsal::run(const std::vector<ModuleCapacity>& modules) {
    stage_->set_modules(modules);
    return stage_->run_all();
}

std::optional<Rehearsed> Rehearsal::run(const AskedParts& asked) {
    return stage_->run(asked);
}

std::optional<Rehearsed> Rehearsal::run(const AskedParts& asked, const reglas::Estrategia& strategy) {
    return stage_->run(asked, strategy);
}

const std::vector<ModuleTests>& Rehearsal::tests() const {
    return stage_->tests();
}

const Seating& Rehearsal::seating() const {
    return stage_->seating();
}

Rehearsal::Stage::Stage(const RehearsedHeadend& headend)
    : headend_(headend), all_(headend), filling_(headend) {
    set_modules(headend.modules);
}

void Rehearsal::Stage::set_modules(const std::vector<ModuleCapacity>& modules) {
    filling_.set_modules(modules);
    on_input_.resize(filling_.limits().inputs);
    on_output_.resize(filling_.limits().outputs.size());
}

void Rehearsal::Stage::forget_last_run() {
    filling_.forget_tests();
    inputs_used_.assign(modules(), 0);
    forget_seating();
}

void Rehearsal::Stage::forget_seating() {
    best_.output_of.assign(headend_.parts.size(), no_index);
    best_.input_of.resize(headend_.parts.size());
    best_.stream_of.assign(filling_.limits().inputs, no_index);
}

std::optional<Rehearsed> Rehearsal::Stage::run(const AskedParts& asked, const reglas::Estrategia& strategy) {
    forget_last_run();
    begin(asked, strategy);
    if (!pass() || !is_sound(asked.count()))
        return {};
    note_inputs();
    keep_seating();
    return Rehearsed{asked.count() - filling_.left(), is_broken()};
}

std::optional<Rehearsed> Rehearsal::Stage::run(const AskedParts& asked) {
    forget_last_run();
    std::optional<Rehearsed> best;
    for (const reglas::Estrategia& strategy : reglas::ESTRATEGIAS) {
        begin(asked, strategy);
        if (!pass() || !is_sound(asked.count())) {
            forget_seating();
            return {};
        }
        const std::size_t placed = asked.count() - filling_.left();
        if (!best || placed > best->placed) {
            best = Rehearsed{placed, is_broken()};
            keep_seating();
        }
        if (!anything_waits())
            break;
    }
    note_inputs();
    return best;
}

/// Keeps the memory of the last pass.
void Rehearsal::Stage::begin(const AskedParts& asked, const reglas::Estrategia& strategy) {
    filling_.begin(asked, strategy);
    for (PartIndices& parts : on_input_)
        parts.clear();
    for (PartIndices& parts : on_output_)
        parts.clear();
    for (Exchange& exchange : exchanges_)
        exchange.round = 0;
    listed_ = 0;
    rounds_ = 0;
    gives_up_ = false;
    unified_at_ = optimized_at_ = never;
}

bool Rehearsal::Stage::pass() {
    Estado state = reglas::estadoDeRelleno(headend_.resource);
    while (state != Estado::STATUS_END && !gives_up_)
        switch (state) {
        case Estado::STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING:
            state = filling_.fill();
            break;
        case Estado::STATUS_CHECK_EMPTY_INPUT:
            state = filling_.check();
            break;
        case Estado::STATUS_UNCOMPLETE_MODULES:
            state = filling_.complete();
            break;
        case Estado::STATUS_UNIFY_INPUTS:
            state = unify();
            break;
        case Estado::STATUS_OPTIMIZE:
            state = optimize();
            break;
        default:
            gives_up_ = true;
        }
    list_placed();
    note_tuned();
    mend_first_inputs();
    return !gives_up_;
}

void Rehearsal::Stage::list_placed() {
    const PartIndices& placed = filling_.placed_in_order();
    for (; listed_ < placed.size(); ++listed_) {
        const PartIndex index = placed[listed_];
        put(on_input_[filling_.seating().input_of[index]], index);
        put(on_output_[filling_.seating().output_of[index]], index);
    }
}

/// Behind those with the same key, as a multimap does.
void Rehearsal::Stage::put(PartIndices& parts, PartIndex index) const {
    const std::int32_t key = part(index).key;
    if (parts.empty() || part(parts.back()).key <= key) {
        parts.push_back(index);
        return;
    }
    const auto after =
        std::upper_bound(parts.begin(), parts.end(), key,
                         [this](std::int32_t one, PartIndex other) { return one < part(other).key; });
    parts.insert(after, index);
}

} // namespace zarven::tool
