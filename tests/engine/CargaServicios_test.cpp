// Loading services: the index, the list and the clones.

#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace CargaServicios_test {

using namespace zarven;

namespace {

std::shared_ptr<tRec_Servicio> servicio(unsigned short clave, unsigned short onid = 1,
                                        unsigned short tsid = 1) {
    fabrica::DatosServicio datos;
    datos.clave = clave;
    datos.onid = onid;
    datos.tsid = tsid;
    return fabrica::servicio(datos);
}

const tMapaServicios& indice(const tRecalculo& motor, unsigned short onid = 1, unsigned short tsid = 1) {
    return motor.Mapa_ONIDs_Inicial.at(onid).MapRec_TSIDs.at(tsid).MapRec_Services;
}

// Loads a parent with so many CA PIDs and a clone of it, and returns what the parent is charged then.
unsigned short cargoDelPadre(unsigned short pidsPadre, unsigned short maximo, unsigned short pidsClon) {
    tRecalculo motor;
    const auto padre = servicio(5);
    padre->number_PIDs_CA = pidsPadre;
    padre->number_PIDs_CA_Max = maximo;
    motor.addRec_Servicio(padre);
    const auto clon = servicio(5);
    clon->number_PIDs_CA = pidsClon;
    motor.addRec_Servicio(clon);
    return padre->number_PIDs_CA;
}

} // namespace

TEST(CargaServicios, FilesAServiceUnderItsStreamAndKey) {
    tRecalculo motor;
    const auto s = servicio(5, 7, 50);
    s->LCN = 6;
    registro::vaciar();
    EXPECT_EQ(motor.addRec_Servicio(s), 1);
    ASSERT_EQ(motor.Mapa_ONIDs_Inicial.size(), 1u);
    EXPECT_EQ(motor.Mapa_ONIDs_Inicial.at(7).ONID, 7);
    ASSERT_EQ(motor.Mapa_ONIDs_Inicial.at(7).MapRec_TSIDs.size(), 1u);
    EXPECT_EQ(motor.Mapa_ONIDs_Inicial.at(7).MapRec_TSIDs.at(50).TSID, 50);
    ASSERT_EQ(indice(motor, 7, 50).size(), 1u);
    EXPECT_EQ(indice(motor, 7, 50).begin()->first, 5);
    EXPECT_EQ(indice(motor, 7, 50).begin()->second, s);
    EXPECT_EQ(motor.listaServicios, std::vector<std::shared_ptr<tRec_Servicio>>{s});
    EXPECT_TRUE(motor.Mapa_ONIDs.empty()) << "the working index belongs to the run";
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(CargaServicios, AddsAStreamToANetworkThatIsThere) {
    tRecalculo motor;
    motor.addRec_Servicio(servicio(5, 7, 50));
    EXPECT_EQ(motor.addRec_Servicio(servicio(6, 7, 40)), 1);
    ASSERT_EQ(motor.Mapa_ONIDs_Inicial.at(7).MapRec_TSIDs.size(), 2u);
    EXPECT_EQ(motor.Mapa_ONIDs_Inicial.at(7).MapRec_TSIDs.at(40).TSID, 40);
    EXPECT_EQ(indice(motor, 7, 50).size(), 1u);
    EXPECT_EQ(indice(motor, 7, 40).size(), 1u);
}

TEST(CargaServicios, AddsAServiceToAStreamThatIsThere) {
    tRecalculo motor;
    motor.addRec_Servicio(servicio(5));
    EXPECT_EQ(motor.addRec_Servicio(servicio(4)), 1);
    ASSERT_EQ(indice(motor).size(), 2u);
    EXPECT_EQ(indice(motor).begin()->first, 4);
    EXPECT_TRUE(motor.listaServiciosClonados.empty());
}

TEST(CargaServicios, ListsServicesInTheOrderOfLoading) {
    tRecalculo motor;
    const auto a = servicio(9, 9, 9);
    const auto b = servicio(1, 1, 1);
    const auto c = servicio(5, 9, 9);
    for (const auto& s : {a, b, c})
        motor.addRec_Servicio(s);
    EXPECT_EQ(motor.listaServicios, (std::vector<std::shared_ptr<tRec_Servicio>>{a, b, c}));
}

TEST(CargaServicios, TheSameKeyOnAnotherStreamOrNetworkIsAnOrdinaryService) {
    tRecalculo motor;
    motor.addRec_Servicio(servicio(5, 1, 1));
    EXPECT_EQ(motor.addRec_Servicio(servicio(5, 1, 2)), 1);
    EXPECT_EQ(motor.addRec_Servicio(servicio(5, 2, 1)), 1);
    EXPECT_TRUE(motor.listaServiciosClonados.empty());
    EXPECT_EQ(motor.listaServicios.size(), 3u);
    EXPECT_EQ(motor.num_servicios_original(), 3);
}

TEST(CargaServicios, ASecondServiceWithTheKeyWaitsAsAClone) {
    tRecalculo motor;
    const auto padre = servicio(5);
    const auto clon = servicio(5);
    padre->OSID = 50;
    padre->SID = 51;
    motor.addRec_Servicio(padre);
    registro::vaciar();
    EXPECT_EQ(motor.addRec_Servicio(clon), 1);
    EXPECT_EQ(motor.listaServiciosClonados, std::vector<std::shared_ptr<tRec_Servicio>>{clon});
    EXPECT_EQ(motor.listaServicios, std::vector<std::shared_ptr<tRec_Servicio>>{padre});
    EXPECT_EQ(indice(motor).size(), 1u);
    EXPECT_EQ(motor.num_servicios_original(), 1);
    EXPECT_EQ(clon->Parent_SID, 51);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(CargaServicios, AClonesCostMovesToItsParent) {
    tRecalculo motor;
    const auto padre = servicio(5);
    const auto clon = servicio(5);
    padre->number_PIDs_CA = 2;
    padre->number_PIDs_CA_Max = 9;
    clon->number_PIDs_CA = 3;
    clon->number_PIDs_CA_Max = 7;
    clon->videoPeakBitRate = 900;
    motor.addRec_Servicio(padre);
    motor.addRec_Servicio(clon);
    EXPECT_EQ(padre->number_PIDs_CA, 5);
    EXPECT_EQ(padre->number_PIDs_CA_Max, 9);
    EXPECT_EQ(padre->peakBitRate, 1000u);
    EXPECT_EQ(padre->Parent_SID, 0);
    EXPECT_EQ(clon->number_PIDs_CA, 0);
    EXPECT_EQ(clon->number_PIDs_CA_Max, 7);
    EXPECT_EQ(clon->peakBitRate, 0u);
    EXPECT_EQ(clon->videoPeakBitRate, 900u);
}

TEST(CargaServicios, AParentIsChargedUpToItsMaximum) {
    EXPECT_EQ(cargoDelPadre(2, 6, 3), 5);
    EXPECT_EQ(cargoDelPadre(2, 5, 3), 5);
    EXPECT_EQ(cargoDelPadre(2, 4, 3), 4);
    EXPECT_EQ(cargoDelPadre(2, 1, 3), 1) << "also when it was above its maximum before";
}

TEST(CargaServicios, AParentsChargeWrapsAroundBeforeItIsCapped) {
    EXPECT_EQ(cargoDelPadre(65535, 9, 3), 2);
    EXPECT_EQ(cargoDelPadre(65535, 1, 3), 1);
    EXPECT_EQ(cargoDelPadre(65534, 65535, 1), 65535);
}

TEST(CargaServicios, SeveralClonesAreChargedOneAfterTheOther) {
    tRecalculo motor;
    const auto padre = servicio(5);
    padre->number_PIDs_CA = 1;
    padre->number_PIDs_CA_Max = 4;
    motor.addRec_Servicio(padre);
    for (int i = 0; i < 2; ++i) {
        const auto clon = servicio(5);
        clon->number_PIDs_CA = 2;
        motor.addRec_Servicio(clon);
    }
    EXPECT_EQ(motor.listaServiciosClonados.size(), 2u);
    EXPECT_EQ(padre->number_PIDs_CA, 4);
}

TEST(CargaServicios, ACloneThatNamesItsParentIsStoredAsItComes) {
    tRecalculo motor;
    const auto padre = servicio(5);
    padre->number_PIDs_CA = 2;
    padre->number_PIDs_CA_Max = 9;
    motor.addRec_Servicio(padre);
    const auto clon = servicio(5);
    clon->Parent_SID = 77;
    clon->number_PIDs_CA = 3;
    EXPECT_EQ(motor.addRec_Servicio(clon), 1);
    EXPECT_EQ(motor.listaServiciosClonados.size(), 1u);
    EXPECT_EQ(clon->Parent_SID, 77);
    EXPECT_EQ(clon->number_PIDs_CA, 3);
    EXPECT_EQ(clon->peakBitRate, 1000u);
    EXPECT_EQ(padre->number_PIDs_CA, 2);
    EXPECT_EQ(indice(motor).size(), 1u);
}

TEST(CargaServicios, AServiceThatNamesAParentButHasItsKeyAloneIsAnOrdinaryService) {
    tRecalculo motor;
    const auto s = servicio(5);
    s->Parent_SID = 77;
    EXPECT_EQ(motor.addRec_Servicio(s), 1);
    EXPECT_TRUE(motor.listaServiciosClonados.empty());
    EXPECT_EQ(indice(motor).size(), 1u);
}

TEST(CargaServicios, ACloneWithKeyZeroFindsItsParentUnderTheNegatedServiceId) {
    tRecalculo motor;
    const auto cero = servicio(0);
    cero->SID = 60;
    const auto padre = servicio(5);
    padre->idService = -5;
    padre->SID = 51;
    motor.addRec_Servicio(cero);
    motor.addRec_Servicio(padre);
    const auto clon = servicio(0);
    clon->OSID = 5;
    EXPECT_EQ(motor.addRec_Servicio(clon), 1);
    EXPECT_EQ(clon->Parent_SID, 51);
    EXPECT_EQ(motor.listaServiciosClonados.size(), 1u);
}

TEST(CargaServicios, RefusesACloneWithKeyZeroWithoutParent) {
    tRecalculo motor;
    motor.addRec_Servicio(servicio(0));
    motor.addRec_Servicio(servicio(5));
    const auto clon = servicio(0);
    clon->OSID = 5; // key -5 is not there; 5 is another service
    clon->number_PIDs_CA = 3;
    EXPECT_EQ(motor.addRec_Servicio(clon), tRecalculo::ERROR_CLON_SIN_PADRE);
    EXPECT_TRUE(motor.listaServiciosClonados.empty());
    EXPECT_EQ(motor.listaServicios.size(), 2u);
    EXPECT_EQ(indice(motor).size(), 2u);
    EXPECT_EQ(clon->Parent_SID, 0);
    EXPECT_EQ(clon->number_PIDs_CA, 3);
    EXPECT_EQ(clon->peakBitRate, 1000u);
}

TEST(CargaServicios, TheFirstOfSeveralEqualKeysIsTheParent) {
    tRecalculo motor;
    const auto primero = servicio(5);
    primero->SID = 51;
    motor.addRec_Servicio(primero);
    const auto segundo = servicio(5);
    segundo->SID = 52;
    motor.Mapa_ONIDs_Inicial.at(1).MapRec_TSIDs.at(1).MapRec_Services.emplace(5, segundo);
    const auto clon = servicio(5);
    motor.addRec_Servicio(clon);
    EXPECT_EQ(clon->Parent_SID, 51);
}

TEST(CargaServicios, IgnoresANullService) {
    tRecalculo motor;
    registro::vaciar();
    EXPECT_EQ(motor.addRec_Servicio(nullptr), 0);
    EXPECT_TRUE(motor.Mapa_ONIDs_Inicial.empty());
    EXPECT_TRUE(motor.listaServicios.empty());
    EXPECT_TRUE(motor.listaServiciosClonados.empty());
    EXPECT_TRUE(registro::hechos().empty());
}

} // namespace CargaServicios_test
