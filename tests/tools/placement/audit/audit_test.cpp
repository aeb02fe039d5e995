// What all findings have in common, and real runs that come to such an end.

#include "placement/audit/audit.h"

#include "base/streams.h"
#include "headend/headend_json.h"
#include "placement/audit/audited_by_hand.h"

namespace zarven::tool::audit_test {
namespace {

using audited_by_hand::Audit;
using audited_by_hand::Findings;
using audited_by_hand::s1;
using audited_by_hand::told;

TEST_F(Audit, ASoundPlacementHasNoFindings) {
    EXPECT_EQ(findings(), Findings{});
}

TEST_F(Audit, AnEmptyHeadendHasNoFindings) {
    EXPECT_TRUE(audit(EngineRun()).empty());
}

TEST_F(Audit, ModulesAreCalledByTheirLabelToo) {
    run.labels["A"] = "Rack 1";
    put_on_output("A", loaded(0), 2);
    module("A").PIDsModuloMax = 2;
    EXPECT_EQ(findings(),
              (Findings{s1 + "on 2 outputs of one module: output 1, output 2 of module A (Rack 1)",
                        "module A (Rack 1): its services need 3 PIDs, it may use 2"}));
    EXPECT_EQ(findings_of(run).at(0).macs, std::vector<std::string>{"A"});
    EXPECT_EQ(findings_of(run).at(1).macs, std::vector<std::string>{"A"});
}

TEST_F(Audit, WhatIsBrokenIsCountedByLimitsAndServices) {
    module("A").PIDsModuloMax = 2;
    output("A", 1).BitRateMax = 4000;
    put_on_output("A", loaded(0), 1);
    put_on_output("A", loaded(0), 2);
    ++module("A").PIDsModulo;
    const std::vector<Finding> found = findings_of(run);
    EXPECT_EQ(found.size(), 5u);
    EXPECT_EQ(broken_among(found).limits, 2u);
    EXPECT_EQ(broken_among(found).services, 1u);
    EXPECT_FALSE(found.back().is_broken);
    Finding only_counted = found.back();
    only_counted.is_limit = true;
    EXPECT_EQ(broken_among({only_counted}).all(), 0u);
}

Findings findings_of(const std::string& path) {
    EngineRun run = load_engine(read_headend(path, read_text(path)), path);
    run_engine(run, path);
    return told(run);
}

const std::string headends = RECALCULO_TOOL_TESTS "/placement/";

TEST(AuditOfARun, AFailedExchange) {
    EXPECT_EQ(
        findings_of(headends + "failed_exchange.json"),
        (Findings{
            "LCN 5 \"S5\" of stream 1/2: neither placed nor left out",
            "LCN 5 \"S9\" of stream 1/3: on 2 outputs of different modules: output 2 of module A, "
            "output 1 of module C",
            "LCN 5 \"S9\" of stream 1/3: on output 2 of module A, which has it on no input",
            "note: 5 on outputs and 1 left out do not make 7 loaded",
            "note: LCN 5 \"S5\" of stream 1/2: on input 1 of module A, which has it on no output",
            "note: module A: the engine counts 5000 kbit/s on output 1, its services need 8000 of 9000"}));
}

TEST(AuditOfARun, AServiceLeftOutUnderAnotherStream) {
    EXPECT_EQ(findings_of(headends + "left_out_elsewhere.json"),
              Findings{"note: LCN 6 \"S6\" of stream 1/2: left out under stream 1/1"});
}

TEST(AuditOfARun, PidsThatLagBehind) {
    EXPECT_EQ(findings_of(headends + "lagging_pids.json"),
              (Findings{"module C: its services need 5 PIDs, it may use 4",
                        "note: module A: the engine counts 4 PIDs in use, its services need 0 of 7",
                        "note: module C: the engine counts 1 PID in use, its services need 5 of 4"}));
}

TEST(AuditOfARun, ASmallHeadendHasNoFindings) {
    EXPECT_EQ(findings_of(RECALCULO_EXAMPLES "/small.json"), Findings{});
}

} // namespace
} // namespace zarven::tool::audit_test
