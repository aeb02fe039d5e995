// An explanation with every answer that a module can give, for text and JSON.

#ifndef RECALCULO_EXPLANATION_FIXTURE_H
#define RECALCULO_EXPLANATION_FIXTURE_H

#include "made_findings.h"
#include "placement/reasons/explanation.h"

namespace zarven::tool {

/// A module with a free input and room. `mac` is to outlive the answer.
inline ModuleRefusal answer_with_room(const char* mac) {
    ModuleRefusal answer;
    answer.mac = mac;
    answer.inputs = 2;
    answer.inputs_free = {2};
    answer.room.outputs = 2;
    answer.room.output = {1, 200, 38000, 0, true};
    answer.room.pids_used = 3;
    answer.room.pids_max = 15;
    answer.room.transcoders_max = 2;
    return answer;
}

inline ModuleRefusal answer_short_of(const char* mac, Limit limit) {
    ModuleRefusal answer = answer_with_room(mac);
    answer.limit = answer.room.limit = limit;
    return answer;
}

inline Explanation explanation_with_everything() {
    Explanation explanation;
    ServiceResult& service = explanation.service;
    service.stream = {1, 1002};
    service.lcn = 12;
    service.name = "海景 Música\x1B";
    service.output_name = service.name;
    service.bitrate = 8000;
    service.is_hd = true;
    service.ca_pids = 3;
    service.is_transcoded = true;
    explanation.transcoding = 1;
    explanation.standing = Standing::placed_and_left_out;
    explanation.sentence = "It is \x1B here.";
    explanation.findings = {broken("placed \x1B twice"), note("and left out")};

    auto& modules = explanation.modules;
    modules.push_back(answer_with_room("carries"));
    modules.back().carried_on = {1, 2};
    modules.back().inputs_receiving = {1, 2};
    modules.push_back(answer_with_room("has room"));
    modules.push_back(answer_with_room("no input"));
    modules.back().limit = Limit::no_input;
    modules.back().inputs_free = {};
    modules.push_back(modules.back());
    modules.back().inputs = 0;
    modules.push_back(answer_with_room("stream"));
    modules.back().limit = Limit::stream_not_chosen;
    modules.push_back(answer_short_of("no output", Limit::no_output));
    modules.back().room.outputs = 0;
    modules.push_back(answer_short_of("full", Limit::service_count));
    modules.back().room.outputs_full = 2;
    modules.push_back(answer_short_of("bitrate", Limit::bitrate));
    modules.back().room.output = {10, 36500, 38000, 6501, true};
    modules.push_back(modules.back());
    modules.back().mac = "never";
    modules.back().could_ever = false;
    modules.push_back(answer_short_of("too small", Limit::bitrate));
    modules.back().room.output = {1, 0, 8000, 1, false};
    modules.push_back(answer_short_of("1 PID", Limit::pids));
    modules.back().room.pids_used = 13;
    modules.back().room.pids_short_by = 1;
    modules.push_back(answer_short_of("budget", Limit::pids));
    modules.back().room.pids_max = 2;
    modules.back().room.pids_short_by = 4;
    modules.push_back(answer_short_of("in use", Limit::transcoders));
    modules.back().room.transcoders_used = 2;
    modules.push_back(answer_short_of("none", Limit::transcoders));
    modules.back().room.transcoders_max = 0;
    return explanation;
}

} // namespace zarven::tool

#endif
