#include "placement/sizing.h"

#include "placement/sizing/adding.h"
#include "placement/sizing/raising.h"
#include "placement/sizing/runner.h"

namespace zarven::tool {

Sizing size_headend(const Headend& headend, const std::string& file, const Module& kind,
                    const SizingOptions& options) {
    Runner runner(file, options);
    const Result now = runner.run(headend, Reasons::told);
    Sizing sizing;
    sizing.name = headend.name;
    sizing.most = options.most;
    sizing.now = now.counts;
    sizing.findings = now.findings;
    sizing.addition = Adding(headend, file, kind, options).addition(runner, now);
    if (now.counts.placed < now.counts.loaded)
        sizing.raises = Raising(headend, runner).raises(now.counts.placed);
    return sizing;
}

} // namespace zarven::tool
