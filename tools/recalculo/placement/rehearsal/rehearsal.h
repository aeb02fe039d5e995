// A rehearsal: what the engine would place, found out without it. For those who ask thousands of times what
// changed modules would carry, or what would be placed if less were asked for, and make up no log of it.
//
// It takes the engine's decisions one by one, with the engine's own rules (Reglas.h), on arrays instead of
// maps. That takes about a twentieth of the time. An exchange that fails in the middle is not followed: there
// the rehearsal gives up, and the engine has to be asked. A random test holds it to the engine; whoever tells
// an answer confirms it by a run of the engine all the same.

#ifndef RECALCULO_REHEARSAL_H
#define RECALCULO_REHEARSAL_H

#include <memory>
#include <optional>
#include <vector>

#include "placement/rehearsal/asked_parts.h"
#include "placement/rehearsal/filling.h"
#include "placement/rehearsal/limit_tests.h"
#include "placement/rehearsal/rehearsed_headend.h"

namespace zarven::tool {

struct Rehearsed {
    std::size_t placed = 0;
    /// The placement breaks a limit.
    bool is_broken = false;
};

/// Rehearses one run after the other. Not from two threads at once; the head-end must outlive it, and allow
/// passes.
class Rehearsal {
public:
    explicit Rehearsal(const RehearsedHeadend& headend);
    ~Rehearsal();

    /// Runs all strategies on these modules, asked for everything. Nothing where the engine has to be asked.
    std::optional<Rehearsed> run(const std::vector<ModuleCapacity>& modules);
    /// The same on the modules of the last run, at first those of the head-end.
    std::optional<Rehearsed> run(const AskedParts& asked);
    /// By one strategy alone.
    std::optional<Rehearsed> run(const AskedParts& asked, const reglas::Estrategia& strategy);

    /// Of the last run, by module.
    const std::vector<ModuleTests>& tests() const;
    /// Of the last run: where the strategy that placed most leaves everything. Nothing is placed if the
    /// engine has to be asked.
    const Seating& seating() const;

private:
    class Stage;
    std::unique_ptr<Stage> stage_;
};

} // namespace zarven::tool

#endif
