// Each finding about the counters and limits of a module, by itself: first with the figure just right, then
// off by one.

#include "placement/audit/audited_by_hand.h"

namespace zarven::tool::audit_modules_test {
namespace {

using audited_by_hand::Audit;
using audited_by_hand::Findings;

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

} // namespace
} // namespace zarven::tool::audit_modules_test
