#include "report/page/result_streams.h"

#include <map>
#include <string>
#include <vector>

#include "base/utf8.h"
#include "placement/places.h"
#include "report/page/page_frame.h"
#include "report/page/result_parts.h"

namespace zarven::tool {

namespace {

using kainjow::mustache::data;
using kainjow::mustache::list;

struct StreamFacts {
    std::size_t placed = 0;
    std::size_t left_out = 0;
    list receivers{};
};

using FactsByStream = std::map<Stream, StreamFacts>;

FactsByStream stream_facts(const Result& result) {
    FactsByStream facts;
    // Each once, wherever and however often it stands.
    for (const PlacedService& service : placed_services(result)) {
        facts[service.service.stream].placed += !service.places.empty();
        facts[service.service.stream].left_out += service.absence == Absence::left_out;
    }
    for (std::size_t index = 0; index < result.modules.size(); ++index) {
        const ModuleResult& module = result.modules[index];
        for (const InputResult& input : module.inputs) {
            if (!input.is_tuned)
                continue;
            data receiver;
            receiver["anchor"] = module_anchor(index);
            receiver["mac"] = printable(module.mac);
            receiver["module_label"] = text_or_nothing(printable(module.label));
            receiver["number"] = std::to_string(input.number);
            facts[input.stream].receivers.push_back(receiver);
        }
    }
    return facts;
}

} // namespace

kainjow::mustache::list stream_entries(const Result& result, const StreamMarks& marks) {
    const Receptions receptions = by_stream(result.streams);
    FactsByStream facts = stream_facts(result);
    list entries;
    for (const StreamMark& mark : marks.in_order()) {
        StreamFacts& known = facts[mark.stream];
        data entry;
        set_mark(entry, mark);
        entry["stream"] = to_string(mark.stream);
        set_reception(entry, mark.stream, receptions);
        entry["placed"] = grouped(known.placed);
        entry["left_out"] = grouped(known.left_out);
        entry["any_left_out"] = known.left_out != 0;
        entry["receivers"] = known.receivers;
        entries.push_back(entry);
    }
    return entries;
}

kainjow::mustache::list legend_entries(const StreamMarks& marks) {
    list entries;
    for (std::size_t place = 0; place < marks.received(); ++place) {
        data entry;
        set_mark(entry, marks.in_order()[place]);
        entry["stream"] = to_string(marks.in_order()[place].stream);
        entries.push_back(entry);
    }
    return entries;
}

} // namespace zarven::tool
