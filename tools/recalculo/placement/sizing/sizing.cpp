#include "placement/sizing/sizing.h"

#include "placement/sizing/adding.h"
#include "placement/sizing/mixing.h"
#include "placement/sizing/raising.h"
#include "placement/sizing/runner.h"

namespace zarven::tool {

Sizing size_headend(const Headend& headend, const std::string& file, const std::vector<Module>& kinds,
                    const SizingOptions& options) {
    Runner runner(headend, file, options);
    const Result now = runner.run(headend, Reasons::told);
    Sizing sizing;
    sizing.name = headend.name;
    sizing.most = options.most;
    sizing.are_chosen = options.are_chosen;
    sizing.now = now.counts;
    sizing.findings = now.findings;
    const bool are_added = options.most != 0;
    const Wanted of_first(headend, file, {kinds.front()}, are_added);
    sizing.addition = Adding(headend, kinds.front(), of_first, options).addition(runner, now);
    if (kinds.size() > 1) {
        const Wanted of_all(headend, file, kinds, are_added);
        sizing.mix = Mixing(headend, kinds, of_all, options).mix(runner, now);
    }
    if (now.counts.placed < now.counts.loaded)
        sizing.raises = Raising(headend, runner).raises(now.counts.placed);
    sizing.is_partial = runner.is_stopped();
    return sizing;
}

} // namespace zarven::tool
