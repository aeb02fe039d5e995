// Each finding about where a service or a clone stands, by itself.

#include "placement/audit/audited_by_hand.h"

namespace zarven::tool::audit_places_test {
namespace {

using audited_by_hand::Audit;
using audited_by_hand::clone;
using audited_by_hand::Findings;
using audited_by_hand::note;
using audited_by_hand::s1;
using audited_by_hand::s3;

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

} // namespace
} // namespace zarven::tool::audit_places_test
