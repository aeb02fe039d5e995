// The index of services: counting it, and tidying the working one.

#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace Indice_test {

using namespace zarven;

namespace {

// A working index with one service on each of two streams of network 7 and on one of network 8.
tRecalculo motorDeTresFlujos() {
    tRecalculo motor;
    fabrica::cargar(motor, {1, 7, 50});
    fabrica::cargar(motor, {2, 7, 60});
    fabrica::cargar(motor, {3, 8, 50});
    fabrica::preparar(motor);
    registro::vaciar();
    return motor;
}

void vaciarFlujo(tRecalculo& motor, unsigned short onid, unsigned short tsid) {
    motor.Mapa_ONIDs.at(onid).MapRec_TSIDs.at(tsid).MapRec_Services.clear();
}

} // namespace

TEST(Indice, KeepsAStreamThatStillHasServices) {
    tRecalculo motor = motorDeTresFlujos();
    EXPECT_EQ(motor.Clear_ONID_TSID(7, 50), 0);
    EXPECT_EQ(motor.Mapa_ONIDs.at(7).MapRec_TSIDs.count(50), 1u);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(Indice, DropsAnEmptyStream) {
    tRecalculo motor = motorDeTresFlujos();
    vaciarFlujo(motor, 7, 50);
    EXPECT_EQ(motor.Clear_ONID_TSID(7, 50), 1);
    EXPECT_EQ(motor.Mapa_ONIDs.at(7).MapRec_TSIDs.count(50), 0u);
    EXPECT_EQ(motor.Mapa_ONIDs.at(7).MapRec_TSIDs.count(60), 1u);
    EXPECT_EQ(registro::hechos(), std::vector<std::string>{"7 ELIMINAMOS EL TSID: 50"});
}

TEST(Indice, DropsANetworkWithItsLastStream) {
    tRecalculo motor = motorDeTresFlujos();
    vaciarFlujo(motor, 8, 50);
    EXPECT_EQ(motor.Clear_ONID_TSID(8, 50), 2);
    EXPECT_EQ(motor.Mapa_ONIDs.count(8), 0u);
    EXPECT_EQ(motor.Mapa_ONIDs.count(7), 1u);
    EXPECT_EQ(registro::hechos(),
              (std::vector<std::string>{"7 ELIMINAMOS EL TSID: 50", "7 ELIMINAMOS EL ONID: 8"}));
}

TEST(Indice, TidiesTheWorkingIndexOnly) {
    tRecalculo motor = motorDeTresFlujos();
    vaciarFlujo(motor, 8, 50);
    motor.Clear_ONID_TSID(8, 50);
    EXPECT_EQ(motor.Mapa_ONIDs_Inicial.at(8).MapRec_TSIDs.at(50).MapRec_Services.size(), 1u);
}

TEST(Indice, TruncatesWhatItLooksUpAndPrintsItAsItCame) {
    tRecalculo motor = motorDeTresFlujos();
    vaciarFlujo(motor, 8, 50);
    EXPECT_EQ(motor.Clear_ONID_TSID(65536 + 8, 65536 + 50), 2);
    EXPECT_TRUE(motor.Mapa_ONIDs.count(8) == 0);
    EXPECT_EQ(registro::hechos(),
              (std::vector<std::string>{"7 ELIMINAMOS EL TSID: 65586", "7 ELIMINAMOS EL ONID: 65544"}));
}

TEST(Indice, TruncatesNegativeArgumentsToo) {
    tRecalculo motor;
    fabrica::cargar(motor, {1, 65535, 65534});
    fabrica::preparar(motor);
    vaciarFlujo(motor, 65535, 65534);
    registro::vaciar();
    EXPECT_EQ(motor.Clear_ONID_TSID(-1, -2), 2);
    EXPECT_EQ(registro::hechos(),
              (std::vector<std::string>{"7 ELIMINAMOS EL TSID: -2", "7 ELIMINAMOS EL ONID: -1"}));
}

TEST(Indice, DropsNothingForAStreamThatIsNotThere) {
    tRecalculo motor = motorDeTresFlujos();
    vaciarFlujo(motor, 7, 50);
    EXPECT_EQ(motor.Clear_ONID_TSID(9, 50), 0);
    EXPECT_EQ(motor.Clear_ONID_TSID(8, 60), 0);
    EXPECT_EQ(motor.Mapa_ONIDs.size(), 2u);
    EXPECT_EQ(motor.Mapa_ONIDs.at(7).MapRec_TSIDs.size(), 2u);
    EXPECT_EQ(motor.Mapa_ONIDs.at(8).MapRec_TSIDs.size(), 1u);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(Indice, AnEmptyIndexHasNoServices) {
    const tRecalculo motor;
    EXPECT_EQ(motor.num_servicios_original(), 0);
    EXPECT_EQ(motor.num_servicios_procesado(), 0);
}

TEST(Indice, CountsTheLoadedAndTheWorkingServicesApart) {
    tRecalculo motor = motorDeTresFlujos();
    vaciarFlujo(motor, 7, 50);
    EXPECT_EQ(motor.num_servicios_original(), 3);
    EXPECT_EQ(motor.num_servicios_procesado(), 2);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(Indice, CountsEveryServiceOfAStreamAndNoClone) {
    tRecalculo motor;
    fabrica::cargar(motor, {1, 7, 50});
    fabrica::cargar(motor, {2, 7, 50});
    fabrica::cargar(motor, {2, 7, 50});
    fabrica::preparar(motor);
    EXPECT_EQ(motor.num_servicios_original(), 2);
    EXPECT_EQ(motor.num_servicios_procesado(), 2);
}

TEST(Indice, CountsModulo65536) {
    tRecalculo motor;
    const auto s = fabrica::cargar(motor, {1, 7, 50});
    auto& primero = motor.Mapa_ONIDs_Inicial.at(7).MapRec_TSIDs.at(50).MapRec_Services;
    for (int i = 1; i < 40000; ++i)
        primero.emplace(1, s);
    auto& segundo = motor.Mapa_ONIDs_Inicial[8].MapRec_TSIDs[60].MapRec_Services;
    for (int i = 0; i < 25535; ++i)
        segundo.emplace(1, s);
    EXPECT_EQ(motor.num_servicios_original(), 65535);
    segundo.emplace(1, s);
    EXPECT_EQ(motor.num_servicios_original(), 0);
    segundo.emplace(1, s);
    fabrica::preparar(motor);
    EXPECT_EQ(motor.num_servicios_procesado(), 1);
}

} // namespace Indice_test
