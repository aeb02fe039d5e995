// A result with one of everything that a report shows, for both reports.

#ifndef RECALCULO_RESULT_FIXTURE_H
#define RECALCULO_RESULT_FIXTURE_H

#include <string>

#include "made_findings.h"
#include "placement/result.h"

namespace zarven::tool {

/// Gives the first module a label and its stream a place.
inline Result with_labels(Result result) {
    result.modules.at(0).label = "Rack 1, slot 3";
    result.streams = {{1, 1001, 12187500, "H", "19.2E"}, {1, 1002, 514000, "", ""}};
    return result;
}

inline Result result_called(const std::string& name) {
    Result result;
    result.name = name;
    return result;
}

/// One of three limits tried, and it helps.
inline Advice some_advice() {
    Raise raise;
    raise.kind = LimitKind::bitrate;
    raise.mac = "M1";
    raise.label = "Rack 1, slot 3";
    raise.output = 10;
    raise.from = 38000;
    raise.to = raise.enough = 40001;
    raise.placed = 5;
    raise.findings = 1;
    raise.setting = "modules[0].outputs[1]=40001";
    return {3, 1, {raise}};
}

inline Result result_with_everything() {
    ServiceResult plain;
    plain.stream = {1, 1001};
    plain.lcn = 5;
    plain.sid = 105;
    plain.osid = 105;
    plain.name = "Canal Uno";
    plain.output_name = "Canal Uno";
    plain.bitrate = 4200;
    plain.outputs = {1};

    ServiceResult marked = plain;
    marked.lcn = 12;
    marked.sid = 112;
    marked.osid = 212;
    marked.name = "海景 Música\x1B";
    marked.output_name = "Mar";
    marked.bitrate = 8000;
    marked.is_hd = true;
    marked.is_scrambled = true;
    marked.ca_pids = 3;
    marked.is_transcoded = true;
    marked.outputs = {1, 10};

    ServiceResult attached = plain;
    attached.bitrate = 0;
    attached.is_clone = true;
    attached.parent_sid = 105;

    ServiceResult left_out = plain;
    left_out.stream = {1, 1002};
    left_out.lcn = 700;
    left_out.name = "A name that is longer than the column is wide";
    left_out.output_name = left_out.name;
    left_out.ca_pids = 1;
    left_out.is_scrambled = true;
    left_out.outputs = {};
    left_out.reason = "No input is free for stream 1/1002.";
    left_out.cause = Cause::pids;
    left_out.nearest = "M1";

    ServiceResult waiting = attached;
    waiting.lcn = 700;
    waiting.stream = {1, 1002};
    waiting.outputs = {};
    waiting.reason = "Its parent, \x1B, is left out.";

    ServiceResult inputless = plain;
    inputless.lcn = 9;
    inputless.outputs = {10};
    ServiceResult outputless = plain;
    outputless.lcn = 8;
    outputless.outputs = {};

    ServiceResult lost = plain;
    lost.lcn = 11;
    lost.outputs = {};
    lost.reason = "It is neither placed nor left out.";
    lost.cause = Cause::lost;

    ModuleResult busy;
    busy.mac = "M1";
    busy.model = 3;
    busy.is_controller = true;
    busy.pids = 3;
    busy.pids_max = 8;
    busy.pids_counted = 5;
    busy.sd_transcoders = {1, 2};
    busy.aux_transcoders = {0, 1};
    busy.inputs = {{1, true, {1, 1001}, {plain, attached, outputless, marked}}, {2, false, {}, {}}};
    busy.outputs = {{1, 12200, 38000, 2, 512, {plain, attached, marked}},
                    {10, 40000, 38000, 2, 512, {marked}}};
    busy.without_input = {inputless};

    ModuleResult idle;
    idle.mac = "M2";
    idle.model = 3;
    idle.inputs = {{1, true, {2, 7}, {}}};
    idle.outputs = {{1, 0, 0, 0, 512, {}}};

    Result result;
    result.name = "Casa";
    result.modules = {busy, idle};
    result.left_out = {{{1, 1002}, {left_out}}};
    result.clones_waiting = {waiting};
    result.neither = {lost};
    result.counts = {6, 4, 1, 1, 1, 1};
    result.findings = {broken("on no input", "LCN 9"),
                       broken_limit("the services on output 10 need 40000 kbit/s", "M1"),
                       note("a counter lags")};
    result.advice = some_advice();
    return result;
}

} // namespace zarven::tool

#endif
