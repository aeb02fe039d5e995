#include "placements.h"

#include <list>

#include "headend/headend_json.h"
#include "headend/odd_macs.h"
#include "placement/audit/reserve.h"
#include "placement/one_of.h"
#include "placement/result_json.h"
#include "placement/running/engine_run.h"
#include "placement/running/host.h"
#include "progress.h"

namespace zarven::web {

namespace {

constexpr std::size_t most_kept = 4;

Placement placed(const std::string& file, const std::string& text) {
    const tool::Document document(file, text);
    if (tool::is_result(document))
        return {text, "", tool::read_result(document), {}};
    tool::Headend headend = tool::read_headend(document);
    tool::settle_variants(headend, file);
    tool::EngineRun run = tool::load_engine(headend, file);
    tool::ProgressLine line(means_of_page(), [&run] { return tool::services_left(run.engine); });
    const tool::host::Watching watching(&line);
    tool::run_engine(run, file);
    return {text, "", tool::result_of(run, headend.name), tool::odd_mac_messages(file, headend)};
}

Placement placement_in(const std::string& file, const std::string& text, const std::string& reserve) {
    Placement placement = placed(file, text);
    placement.reserve = reserve;
    if (!reserve.empty())
        tool::set_reserve(placement.result, tool::read_reserve(reserve));
    return placement;
}

} // namespace

const Placement& placement_of(const std::string& file, const std::string& text, const std::string& reserve) {
    static std::list<Placement> kept;
    for (auto one = kept.begin(); one != kept.end(); ++one)
        if (one->reserve == reserve && one->text == text) {
            kept.splice(kept.begin(), kept, one);
            return kept.front();
        }
    kept.push_front(placement_in(file, text, reserve));
    if (kept.size() > most_kept)
        kept.pop_back();
    return kept.front();
}

} // namespace zarven::web
