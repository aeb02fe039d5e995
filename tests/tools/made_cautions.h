// Cautions as tests need them: one of each kind, and a result that has one of each.

#ifndef RECALCULO_MADE_CAUTIONS_H
#define RECALCULO_MADE_CAUTIONS_H

#include <utility>
#include <vector>

#include "placement/audit/caution.h"
#include "placement/audit/caution_fields.h"
#include "placement/result.h"

namespace zarven::tool {

inline std::vector<Caution> every_caution() {
    std::vector<Caution> cautions;
    for (const Word<CautionKind>& kind : caution_words) {
        Caution caution;
        caution.kind = kind.value;
        caution.subject = "LCN 5";
        caution.problem = "2 services have it";
        caution.is_broken = false;
        caution.macs = {"A"};
        cautions.push_back(caution);
    }
    return cautions;
}

/// Two modules, which share a service's LCN, SID and output name, and one output on which all but the SID
/// stands twice and which has no room for tables.
inline void add_every_caution(Result& result) {
    ServiceResult service;
    service.stream = {7, 1};
    service.lcn = 500;
    service.sid = 5000;
    service.name = service.output_name = "Twin";
    service.bitrate = 9000;
    ServiceResult beside = service;
    beside.sid = 5001;
    ServiceResult elsewhere = service;
    elsewhere.stream.tsid = 2;
    ModuleResult module;
    module.mac = "C1";
    module.outputs = {{1, 18000, 18400, 2, 512, {service, beside}, 460}};
    result.modules.push_back(module);
    module.mac = "C2";
    module.outputs = {{1, 9000, 38000, 1, 512, {elsewhere}, 950}};
    result.modules.push_back(std::move(module));
}

} // namespace zarven::tool

#endif
