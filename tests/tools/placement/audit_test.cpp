// Each finding by itself: an engine placed by hand, first with the figure just right, then off by one; then
// real runs that come to such an end.

#include "placement/audit/audit.h"

#include "base/streams.h"
#include "headend/headend_json.h"
#include "placement/engine_by_hand.h"

namespace zarven::tool::audit_test {
namespace {

using Findings = std::vector<std::string>;

/// The findings in their order; those that are only counted with a mark. The quick question is asked each
/// time, too.
Findings told(const EngineRun& run) {
    Findings texts;
    bool any_broken = false;
    for (const AuditFinding& finding : audit(run)) {
        texts.push_back((finding.is_broken ? "" : "note: ") + text_of(finding));
        any_broken = any_broken || finding.is_broken;
    }
    EXPECT_EQ(has_broken(run), any_broken);
    return texts;
}

class Audit : public EngineByHand {
protected:
    /// Two services of one stream, each on an output of module A, and one that is left out.
    Audit() {
        Headend headend = two_modules();
        headend.services = {service(1, 10), service(2, 10), service(3, 20)};
        headend.services[0].ca_pids = 3;
        headend.services[0].ca_pids_max = 3;
        headend.clones = {clone_of(headend.services[0])};
        load(headend);
        place("A", loaded(0), 1, 1);
        place("A", loaded(1), 1, 2);
        leave_out(loaded(2));
    }

    Findings findings() const { return told(run); }

    /// The findings with a counter set to just below what it was, to what it was, and to just above.
    template <class Counter>
    void expect_exact(Counter& counter, const Findings& below, const Findings& above) {
        --counter;
        EXPECT_EQ(findings(), below);
        ++counter;
        EXPECT_EQ(findings(), Findings{});
        ++counter;
        EXPECT_EQ(findings(), above);
        --counter;
    }
};

const std::string s1 = "LCN 1 \"S1\" of stream 1/10: ";
const std::string s3 = "LCN 3 \"S3\" of stream 1/20: ";
const std::string note = "note: ";
const std::string clone = "clone LCN 1 \"S1\" of stream 1/10: ";

// ---- Services ---------------------------------------------------------------------------------------------

TEST_F(Audit, ASoundPlacementHasNoFindings) {
    EXPECT_EQ(findings(), Findings{});
}

TEST_F(Audit, AnEmptyHeadendHasNoFindings) {
    EXPECT_TRUE(audit(EngineRun()).empty());
}

TEST_F(Audit, OnTwoOutputsOfOneModule) {
    put_on_output("A", loaded(0), 2);
    EXPECT_EQ(findings(), Findings{s1 + "on 2 outputs of one module: output 1, output 2 of module A"});
}

TEST_F(Audit, OnOutputsOfTwoModules) {
    place("B", loaded(0), 1, 2);
    EXPECT_EQ(findings(),
              (Findings{s1 + "on 2 outputs of different modules: output 1 of module A, output 2 of "
                             "module B",
                        s1 + "on 2 inputs of different modules: input 1 of module A, input 1 of "
                             "module B"}));
}

TEST_F(Audit, TwiceOnOneOutput) {
    put_on_output("A", loaded(0), 1);
    EXPECT_EQ(findings(), Findings{s1 + "2 times on output 1 of module A"});
}

TEST_F(Audit, TwiceOnOneOutputAndOnAnother) {
    put_on_output("A", loaded(0), 1);
    put_on_output("A", loaded(0), 2);
    EXPECT_EQ(findings(), (Findings{s1 + "2 times on output 1 of module A",
                                    s1 + "on 2 outputs of one module: output 1, output 2 of module A"}));
}

TEST_F(Audit, TwiceOnOneInput) {
    input("A", 1).addServicioALaEntrada(loaded(0));
    EXPECT_EQ(findings(), Findings{s1 + "2 times on input 1 of module A"});
}

TEST_F(Audit, OnTwoInputsOfOneModule) {
    input("A", 2).confEntrada(10, 1);
    input("A", 2).addServicioALaEntrada(loaded(0));
    EXPECT_EQ(findings(), Findings{s1 + "on 2 inputs of one module: input 1, input 2 of module A"});
}

TEST_F(Audit, PlacedAndLeftOutAtOnce) {
    leave_out(loaded(0));
    EXPECT_EQ(findings(),
              (Findings{"note: 2 on outputs and 2 left out do not make 3 loaded",
                        note + s1 + "placed and left out at once, it is on output 1 of module A"}));
}

TEST_F(Audit, NeitherPlacedNorLeftOut) {
    run.engine.Mapa_ONIDs_Final.clear();
    EXPECT_EQ(findings(), (Findings{s3 + "neither placed nor left out",
                                    "note: 2 on outputs and 0 left out do not make 3 loaded"}));
}

TEST_F(Audit, OnAnOutputOfAModuleThatHasItOnNoInput) {
    run.engine.Mapa_ONIDs_Final.clear();
    put_on_output("B", loaded(2), 2);
    EXPECT_EQ(findings(), Findings{s3 + "on output 2 of module B, which has it on no input"});
}

TEST_F(Audit, OnAnInputOfAModuleThatHasItOnNoOutput) {
    input("B", 2).confEntrada(20, 1);
    input("B", 2).addServicioALaEntrada(loaded(2));
    EXPECT_EQ(findings(), Findings{note + s3 + "on input 2 of module B, which has it on no output"});
}

TEST_F(Audit, InputAndOutputOfDifferentModulesAreTwoFindings) {
    run.engine.Mapa_ONIDs_Final.clear();
    put_on_output("A", loaded(2), 1);
    input("B", 1).confEntrada(20, 1);
    input("B", 1).addServicioALaEntrada(loaded(2));
    EXPECT_EQ(findings(), (Findings{s3 + "on output 1 of module A, which has it on no input",
                                    note + s3 + "on input 1 of module B, which has it on no output"}));
}

TEST_F(Audit, OnAnInputOfAnotherStream) {
    input("A", 1).confEntrada(20, 1);
    EXPECT_EQ(findings(), (Findings{s1 + "on input 1 of module A, which is tuned to stream 1/20",
                                    "LCN 2 \"S2\" of stream 1/10: on input 1 of module A, which is tuned to "
                                    "stream 1/20"}));
    input("A", 1).confEntrada(10, 2);
    EXPECT_EQ(findings().at(0), s1 + "on input 1 of module A, which is tuned to stream 2/10");
}

TEST_F(Audit, LeftOutTwice) {
    leave_out(loaded(2));
    EXPECT_EQ(findings(), Findings{note + s3 + "left out 2 times"});
}

TEST_F(Audit, LeftOutUnderAnotherStream) {
    run.engine.Mapa_ONIDs_Final.clear();
    leave_out(loaded(2), 30);
    EXPECT_EQ(findings(), Findings{note + s3 + "left out under stream 1/30"});
}

TEST_F(Audit, LeftOutUnderTwoStreams) {
    leave_out(loaded(2), 30);
    EXPECT_EQ(findings(),
              (Findings{note + s3 + "left out 2 times", note + s3 + "left out under stream 1/30"}));
}

TEST_F(Audit, ServicesWithTheSameNumbersAreToldApart) {
    Headend headend = two_modules();
    headend.services = {service(1, 10), service(1, 20)};
    load(headend);
    place("A", loaded(0), 1, 1);
    loaded(1)->SID = 7;
    place("A", loaded(1), 2, 1);
    EXPECT_EQ(findings(), Findings{});
}

TEST_F(Audit, ServicesOfOneOutputWithOneSid) {
    loaded(1)->SID = loaded(0)->SID;
    EXPECT_EQ(findings(), Findings{}); // on two outputs
    place("A", loaded(2), 2, 1);
    run.engine.Mapa_ONIDs_Final.clear();
    EXPECT_EQ(findings(), Findings{});
    loaded(2)->SID = loaded(0)->SID;
    EXPECT_EQ(findings(),
              (Findings{s1 + "on output 1 of module A with the SID 101, as LCN 3 \"S3\" of stream 1/20",
                        s3 + "on output 1 of module A with the SID 101, as LCN 1 \"S1\" of stream 1/10"}));
    const Broken broken = broken_among(findings_of(run));
    EXPECT_EQ(broken.services, 2u);
    EXPECT_EQ(broken.limits, 0u);
}

TEST_F(Audit, OfManyServicesWithOneSidOneIsNamed) {
    Headend headend = two_modules();
    headend.services = {service(1, 10), service(2, 10), service(3, 10), service(4, 10)};
    load(headend);
    for (std::size_t index = 0; index < 4; ++index) {
        loaded(index)->peakBitRate = 1;
        loaded(index)->SID = 7;
        place("A", loaded(index), 1, 1);
    }
    const Findings found = findings();
    ASSERT_EQ(found.size(), 4u);
    EXPECT_EQ(found[1],
              "LCN 2 \"S2\" of stream 1/10: on output 1 of module A with the SID 7, as LCN 1 \"S1\" "
              "of stream 1/10 and 2 others");
}

TEST_F(Audit, AServiceTwiceOnAnOutputDoesNotShareItsSid) {
    put_on_output("A", loaded(0), 1);
    EXPECT_EQ(findings().size(), 1u);
}

TEST_F(Audit, ACloneMayShareTheSidOfItsParent) {
    attach("A", 0, 1, 1);
    EXPECT_EQ(run.clones.at(0)->SID, loaded(0)->SID);
    EXPECT_EQ(findings(), Findings{});
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

// ---- Clones -----------------------------------------------------------------------------------------------

TEST_F(Audit, AnAttachedCloneBesideItsParent) {
    attach("A", 0, 1, 1);
    EXPECT_EQ(findings(), Findings{});
}

TEST_F(Audit, ACloneAttachedTwice) {
    attach("A", 0, 1, 1);
    output("A", 1).addServicioALaSalida(run.clones.at(0));
    EXPECT_EQ(findings(), Findings{clone + "2 times on output 1 of module A"});
}

TEST_F(Audit, ACloneAttachedAndWaiting) {
    attach("A", 0, 1, 1);
    run.engine.listaServiciosClonados = run.clones;
    EXPECT_EQ(findings(),
              Findings{note + clone + "attached and waiting at once, it is on output 1 of module A"});
}

TEST_F(Audit, ACloneThatIsNowhere) {
    run.engine.listaServiciosClonados.clear();
    EXPECT_EQ(findings(), Findings{clone + "neither attached nor waiting"});
}

TEST_F(Audit, ACloneOnAnotherOutputThanItsParent) {
    attach("A", 0, 1, 2);
    EXPECT_EQ(findings(), Findings{clone + "attached on output 2 of module A, but its parent (SID 101) is on "
                                           "output 1 of module A"});
}

TEST_F(Audit, ACloneOnTheOutputOfTheSameNumberOnAnotherModule) {
    input("B", 1).confEntrada(10, 1);
    attach("B", 0, 1, 1);
    EXPECT_EQ(findings(), Findings{clone + "attached on output 1 of module B, but its parent (SID 101) is on "
                                           "output 1 of module A"});
}

TEST_F(Audit, ACloneWhoseParentIsLeftOut) {
    Headend headend = two_modules();
    headend.services = {service(1, 10)};
    headend.clones = {clone_of(headend.services[0])};
    load(headend);
    leave_out(loaded(0));
    input("A", 1).confEntrada(10, 1);
    attach("A", 0, 1, 1);
    EXPECT_EQ(findings(),
              Findings{clone + "attached on output 1 of module A, but its parent (SID 101) is on no output"});
}

TEST_F(Audit, AServiceOfAnotherStreamWithTheSidOfTheParentIsNotTheParent) {
    Headend headend = two_modules();
    headend.services = {service(1, 10), service(1, 20)};
    headend.clones = {clone_of(headend.services[0])};
    load(headend);
    place("A", loaded(0), 1, 2);
    place("A", loaded(1), 2, 1);
    attach("A", 0, 1, 1);
    EXPECT_EQ(findings(), Findings{clone + "attached on output 1 of module A, but its parent (SID 101) is on "
                                           "output 2 of module A"});
}

// ---- Counters ---------------------------------------------------------------------------------------------

TEST_F(Audit, TheBitrateOfAnOutput) {
    expect_exact(
        output("A", 1).BitRateActual,
        {"note: module A: the engine counts 3999 kbit/s on output 1, its services need 4000 of 10000"},
        {"note: module A: the engine counts 4001 kbit/s on output 1, its services need 4000 of 10000"});
}

TEST_F(Audit, TheNumberOfServicesOfAnOutput) {
    expect_exact(output("A", 2).NumServicios,
                 {"note: module A: the engine counts 0 services on output 2, it carries 1 of 512"},
                 {"note: module A: the engine counts 2 services on output 2, it carries 1 of 512"});
}

TEST_F(Audit, ThePidsOfAModule) {
    expect_exact(module("A").PIDsModulo,
                 {"note: module A: the engine counts 2 PIDs in use, its services need 3 of 8"},
                 {"note: module A: the engine counts 4 PIDs in use, its services need 3 of 8"});
    module("A").PIDsModulo = 1;
    EXPECT_EQ(findings(),
              Findings{"note: module A: the engine counts 1 PID in use, its services need 3 of 8"});
}

TEST_F(Audit, AServiceOnTwoOutputsOfAModuleNeedsItsPidsOnce) {
    put_on_output("A", loaded(0), 2);
    EXPECT_EQ(pids_needed(module("A")), 3u);
    EXPECT_EQ(findings().size(), 1u);
}

TEST_F(Audit, TheTranscodersOfAModule) {
    loaded(0)->Transcoding = 1;
    module("A").SD_Transcoding = 1;
    EXPECT_EQ(findings(), Findings{});
    module("A").SD_Transcoding = 0;
    EXPECT_EQ(findings(),
              Findings{"note: module A: the engine counts 0 SD transcoders in use, its services need 1"});
    loaded(0)->VideoFormatE = tRec_Servicio::VIDEO_HD;
    module("A").HD_Transcoding = 1;
    EXPECT_EQ(findings(), Findings{});
    module("A").SD_Transcoding = 1;
    module("A").HD_Transcoding = 0;
    EXPECT_EQ(findings(),
              (Findings{"note: module A: the engine counts 1 SD transcoder in use, its services need 0",
                        "note: module A: the engine counts 0 HD transcoders in use, its services need 1"}));
}

TEST_F(Audit, AnyOtherTranscodingTakesNoTranscoder) {
    loaded(0)->Transcoding = 2;
    EXPECT_EQ(findings(), Findings{});
}

TEST_F(Audit, TheTranscodersOfClones) {
    run.clones.at(0)->Transcoding = 2;
    attach("A", 0, 1, 1);
    module("A").AUX_Transcoding = 1;
    EXPECT_EQ(findings(), Findings{});
    module("A").AUX_Transcoding = 0;
    EXPECT_EQ(findings(),
              Findings{"note: module A: the engine counts 0 AUX transcoders in use, its clones need 1"});
}

// ---- Limits -----------------------------------------------------------------------------------------------

TEST_F(Audit, TheBitrateMustStayBelowItsMaximum) {
    output("A", 1).BitRateMax = 4001;
    EXPECT_EQ(findings(), Findings{});
    output("A", 1).BitRateMax = 4000;
    EXPECT_EQ(findings(),
              Findings{"module A: the services on output 1 need 4000 kbit/s, they must stay below "
                       "4000"});
}

TEST_F(Audit, AnOutputWithoutBitrateMayStandEmpty) {
    output("B", 1).BitRateMax = 0;
    EXPECT_EQ(findings(), Findings{});
}

TEST_F(Audit, BitratesAreAddedUpBeyondTheWidthOfTheCounter) {
    loaded(0)->peakBitRate = 4294967295u;
    loaded(1)->peakBitRate = 2;
    run.engine.Mapa_ModulosCabecera_Final = run.engine.Mapa_ModulosCabecera_Inicial;
    place("A", loaded(0), 1, 1);
    place("A", loaded(1), 1, 1);
    EXPECT_EQ(
        findings(),
        (Findings{"module A: the services on output 1 need 4294967297 kbit/s, they must stay below "
                  "10000",
                  "note: module A: the engine counts 1 kbit/s on output 1, its services need 4294967297 of "
                  "10000"}));
}

TEST_F(Audit, ServicesUpToTheMaximum) {
    output("A", 1).NumServiciosMax = 1;
    EXPECT_EQ(findings(), Findings{});
    output("A", 1).NumServiciosMax = 0;
    EXPECT_EQ(findings(), Findings{"module A: output 1 carries 1 service, it may carry 0"});
}

TEST_F(Audit, PidsUpToTheBudget) {
    module("A").PIDsModuloMax = 3;
    EXPECT_EQ(findings(), Findings{});
    module("A").PIDsModuloMax = 2;
    EXPECT_EQ(findings(), Findings{"module A: its services need 3 PIDs, it may use 2"});
}

TEST_F(Audit, SdTranscodersUpToTheirLimit) {
    loaded(0)->Transcoding = loaded(1)->Transcoding = 1;
    module("A").SD_Transcoding = 2;
    module("A").SD_MAX_Transcoding = 2;
    module("A").HD_MAX_Transcoding = 0; // counts from the first HD one on
    EXPECT_EQ(findings(), Findings{});
    module("A").SD_MAX_Transcoding = 1;
    EXPECT_EQ(findings(), Findings{"module A: its services need 2 transcoders (2 SD, 0 HD), it may use 1"});
}

TEST_F(Audit, WithAnHdTranscoderInUseItsLimitCountsForAll) {
    loaded(0)->Transcoding = loaded(1)->Transcoding = 1;
    loaded(1)->VideoFormatE = tRec_Servicio::VIDEO_HD;
    module("A").SD_Transcoding = 1;
    module("A").HD_Transcoding = 1;
    module("A").SD_MAX_Transcoding = 0;
    module("A").HD_MAX_Transcoding = 2;
    EXPECT_EQ(findings(), Findings{});
    module("A").SD_MAX_Transcoding = 2;
    module("A").HD_MAX_Transcoding = 1;
    EXPECT_EQ(findings(),
              Findings{"module A: its services need 2 transcoders (1 SD, 1 HD), it may use 1 with HD "
                       "among them"});
}

TEST_F(Audit, AuxTranscodersUpToTheirLimit) {
    run.clones.at(0)->Transcoding = 1;
    attach("A", 0, 1, 1);
    module("A").AUX_Transcoding = 1;
    module("A").AUX_MAX_Transcoding = 1;
    EXPECT_EQ(findings(), Findings{});
    module("A").AUX_MAX_Transcoding = 0;
    EXPECT_EQ(findings(), Findings{"module A: its clones need 1 AUX transcoder, it may use 0"});
}

// ---- Real runs --------------------------------------------------------------------------------------------

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
