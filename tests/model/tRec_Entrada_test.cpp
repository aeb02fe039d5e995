#include "tRec_Entrada.h"

#include <type_traits>

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace tRec_Entrada_test {

using namespace zarven;

namespace {

std::shared_ptr<tRec_Servicio> servicio(unsigned short clave, unsigned short satelite = 0) {
    fabrica::DatosServicio datos;
    datos.clave = clave;
    auto nuevo = fabrica::servicio(datos);
    nuevo->SatId = satelite;
    return nuevo;
}

} // namespace

static_assert(std::is_same_v<tMapaEntradas, std::map<unsigned short, tRec_Entrada>>);

TEST(tRec_Entrada, StartsUntunedAndEmpty) {
    const tRec_Entrada entrada(3);
    EXPECT_EQ(entrada.NumEntrada, 3);
    EXPECT_EQ(entrada.ONID, 0);
    EXPECT_EQ(entrada.TSID, 0);
    EXPECT_EQ(entrada.pModulo, nullptr);
    EXPECT_TRUE(entrada.MapaServicios.empty());
}

TEST(tRec_Entrada, IsTunedWithTheTransportStreamFirst) {
    tRec_Entrada entrada(1);
    EXPECT_EQ(entrada.confEntrada(5, 7), 1);
    EXPECT_EQ(entrada.TSID, 5);
    EXPECT_EQ(entrada.ONID, 7);
}

TEST(tRec_Entrada, HasNoSatelliteWithoutServices) {
    EXPECT_EQ(tRec_Entrada(1).getSatIdfromService(), 0);
}

TEST(tRec_Entrada, TakesTheSatelliteOfItsLowestKey) {
    tRec_Entrada entrada(1);
    entrada.addServicioALaEntrada(servicio(8, 28));
    entrada.addServicioALaEntrada(servicio(5, 25));
    entrada.addServicioALaEntrada(servicio(9, 29));
    EXPECT_EQ(entrada.getSatIdfromService(), 25);
}

TEST(tRec_Entrada, AddsAServiceUnderItsKeyAndPointsItHere) {
    tRec_Entrada entrada(1);
    auto s = servicio(5);
    s->LCN = 6;
    EXPECT_EQ(entrada.addServicioALaEntrada(s), 1);
    ASSERT_EQ(entrada.MapaServicios.size(), 1u);
    EXPECT_EQ(entrada.MapaServicios.begin()->first, 5);
    EXPECT_EQ(entrada.MapaServicios.begin()->second, s);
    EXPECT_EQ(s->pEntrada, &entrada);
    EXPECT_EQ(s->pSalida, nullptr);
    EXPECT_EQ(s.use_count(), 2);
    EXPECT_EQ(entrada.ONID, 0) << "adding does not tune";
}

TEST(tRec_Entrada, KeepsEqualKeysInTheOrderOfAdding) {
    tRec_Entrada entrada(1);
    const auto primero = servicio(5);
    const auto segundo = servicio(5);
    entrada.addServicioALaEntrada(primero);
    EXPECT_EQ(entrada.addServicioALaEntrada(segundo), 1);
    ASSERT_EQ(entrada.MapaServicios.size(), 2u);
    EXPECT_EQ(entrada.MapaServicios.begin()->second, primero);
    EXPECT_EQ(std::next(entrada.MapaServicios.begin())->second, segundo);
}

TEST(tRec_Entrada, DeletingClearsTheOutputAndKeepsTheInputReference) {
    tRec_Entrada entrada(1);
    tRec_Salida salida(1, 512);
    const auto s = servicio(5);
    entrada.addServicioALaEntrada(s);
    salida.addServicioALaSalida(s);
    EXPECT_EQ(entrada.DeleteServicioALaEntrada(s), 1);
    EXPECT_TRUE(entrada.MapaServicios.empty());
    EXPECT_EQ(s->pEntrada, &entrada);
    EXPECT_EQ(s->pSalida, nullptr);
    EXPECT_EQ(salida.MapaServicios.size(), 1u) << "it is still on the output";
}

TEST(tRec_Entrada, RefusesToDeleteAServiceThatIsNotThere) {
    tRec_Entrada entrada(1);
    tRec_Salida salida(1, 512);
    entrada.addServicioALaEntrada(servicio(4));
    entrada.addServicioALaEntrada(servicio(6));
    const auto s = servicio(5);
    salida.addServicioALaSalida(s);
    EXPECT_EQ(entrada.DeleteServicioALaEntrada(s), tRec_Entrada::ERROR_SERVICIO_NO_ESTA);
    EXPECT_EQ(tRec_Entrada::ERROR_SERVICIO_NO_ESTA, -400);
    EXPECT_EQ(entrada.MapaServicios.size(), 2u);
    EXPECT_EQ(s->pSalida, &salida);
}

TEST(tRec_Entrada, DeletesEveryEntryWithTheKeyWhicheverServiceItHolds) {
    tRec_Entrada entrada(1);
    entrada.addServicioALaEntrada(servicio(5));
    entrada.addServicioALaEntrada(servicio(5));
    entrada.addServicioALaEntrada(servicio(6));
    EXPECT_EQ(entrada.DeleteServicioALaEntrada(servicio(5)), 1);
    EXPECT_EQ(entrada.MapaServicios.count(5), 0u);
    EXPECT_EQ(entrada.MapaServicios.count(6), 1u);
}

TEST(tRec_Entrada, DeletesByTheKeyTheServiceHasNow) {
    tRec_Entrada entrada(1);
    const auto s = servicio(5);
    entrada.addServicioALaEntrada(s);
    s->idService = 6;
    EXPECT_EQ(entrada.DeleteServicioALaEntrada(s), tRec_Entrada::ERROR_SERVICIO_NO_ESTA);
    EXPECT_EQ(entrada.MapaServicios.count(5), 1u);
}

TEST(tRec_Entrada, IgnoresANullService) {
    tRec_Entrada entrada(1);
    entrada.addServicioALaEntrada(servicio(5));
    EXPECT_EQ(entrada.addServicioALaEntrada(nullptr), 0);
    EXPECT_EQ(entrada.DeleteServicioALaEntrada(nullptr), 0);
    EXPECT_EQ(entrada.MapaServicios.size(), 1u);
}

TEST(tRec_Entrada, SharesItsServicesAndItsModuleWithACopy) {
    tRec_Modulo modulo;
    tRec_Entrada entrada(1);
    entrada.pModulo = &modulo;
    const auto s = servicio(5);
    entrada.addServicioALaEntrada(s);
    tRec_Entrada copia = entrada;
    EXPECT_EQ(copia.pModulo, &modulo);
    EXPECT_EQ(copia.MapaServicios.begin()->second, s);
    copia.DeleteServicioALaEntrada(s);
    EXPECT_EQ(entrada.MapaServicios.size(), 1u);
}

TEST(tRec_Entrada, LogsNothingButDumps) {
    registro::vaciar();
    tRec_Entrada entrada(1);
    const auto s = servicio(5);
    entrada.confEntrada(1, 1);
    entrada.addServicioALaEntrada(s);
    entrada.getSatIdfromService();
    entrada.DeleteServicioALaEntrada(s);
    entrada.DeleteServicioALaEntrada(s);
    EXPECT_TRUE(registro::hechos().empty());
}

} // namespace tRec_Entrada_test
