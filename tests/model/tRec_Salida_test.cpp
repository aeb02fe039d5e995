#include "tRec_Salida.h"

#include <type_traits>

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace tRec_Salida_test {

using namespace zarven;

namespace {

std::shared_ptr<tRec_Servicio> servicio(unsigned short clave, unsigned long bitrate = 1000) {
    fabrica::DatosServicio datos;
    datos.clave = clave;
    datos.bitrate = bitrate;
    return fabrica::servicio(datos);
}

} // namespace

static_assert(std::is_same_v<tMapaSalidas, std::map<std::uint32_t, tRec_Salida>>);
static_assert(std::is_same_v<decltype(tRec_Salida::BitRateActual), std::uint32_t>);
static_assert(std::is_same_v<decltype(tRec_Salida::BitRateMax), std::uint32_t>);
static_assert(std::is_same_v<decltype(tRec_Salida::NumServicios), std::uint32_t>);
static_assert(std::is_same_v<decltype(tRec_Salida::NumServiciosMax), std::uint32_t>);

TEST(tRec_Salida, StartsEmptyWithoutBitrate) {
    const tRec_Salida salida(3, 65535);
    EXPECT_EQ(salida.NumSalida, 3);
    EXPECT_EQ(salida.NumServiciosMax, 65535u);
    EXPECT_EQ(salida.BitRateActual, 0u);
    EXPECT_EQ(salida.BitRateMax, 0u);
    EXPECT_EQ(salida.NumServicios, 0u);
    EXPECT_EQ(salida.pModulo, nullptr);
    EXPECT_TRUE(salida.MapaServicios.empty());
}

TEST(tRec_Salida, TakesAnyCeilingWhateverItCarries) {
    tRec_Salida salida(1, 512);
    salida.addServicioALaSalida(servicio(5, 1000));
    EXPECT_EQ(salida.confSalida(10), 1);
    EXPECT_EQ(salida.BitRateMax, 10u);
    EXPECT_EQ(salida.BitRateActual, 1000u);
    EXPECT_EQ(salida.confSalida(0), 1);
    EXPECT_EQ(salida.BitRateMax, 0u);
}

TEST(tRec_Salida, NarrowsItsCeilingTo32Bits) {
    constexpr unsigned long mayor32 = 0xFFFFFFFFul;
    tRec_Salida salida(1, 512);
    salida.confSalida(mayor32);
    EXPECT_EQ(salida.BitRateMax, 4294967295u);
    // Where long has 32 bits the argument has wrapped already.
    salida.confSalida(mayor32 + 6);
    EXPECT_EQ(salida.BitRateMax, 5u);
}

TEST(tRec_Salida, AddsAServiceUnderItsKeyWithItsBitrate) {
    tRec_Salida salida(1, 512);
    auto s = servicio(5, 1000);
    s->LCN = 6;
    s->videoPeakBitRate = 900;
    EXPECT_EQ(salida.addServicioALaSalida(s), 1);
    ASSERT_EQ(salida.MapaServicios.size(), 1u);
    EXPECT_EQ(salida.MapaServicios.begin()->first, 5);
    EXPECT_EQ(salida.MapaServicios.begin()->second, s);
    EXPECT_EQ(salida.BitRateActual, 1000u);
    EXPECT_EQ(s->pSalida, &salida);
    EXPECT_EQ(s->pEntrada, nullptr);
    EXPECT_EQ(s.use_count(), 2);
}

TEST(tRec_Salida, LeavesItsServiceCountToThePlacementRules) {
    tRec_Salida salida(1, 512);
    salida.NumServicios = 7;
    const auto s = servicio(5);
    salida.addServicioALaSalida(s);
    EXPECT_EQ(salida.NumServicios, 7u);
    salida.DeleteServicioALaSalida(s);
    EXPECT_EQ(salida.NumServicios, 7u);
}

TEST(tRec_Salida, ChecksNoLimitWhenAdding) {
    tRec_Salida salida(1, 0);
    salida.confSalida(10);
    EXPECT_EQ(salida.addServicioALaSalida(servicio(5, 1000)), 1);
    EXPECT_EQ(salida.BitRateActual, 1000u);
    EXPECT_EQ(salida.MapaServicios.size(), 1u);
}

TEST(tRec_Salida, IsNotChargedForAClone) {
    tRec_Salida salida(1, 512);
    salida.addServicioALaSalida(servicio(5, 1000));
    const auto clon =
        std::make_shared<tRec_Servicio>(1, 2, 5, 4, 5, 6, 7, 8, 9, "", "", 12, 13, 14, 15, 16, 17, 18, 19);
    salida.addServicioALaSalida(clon);
    EXPECT_EQ(salida.BitRateActual, 1000u);
    EXPECT_EQ(salida.MapaServicios.count(5), 2u);
}

TEST(tRec_Salida, ChargesAServiceAddedTwiceTwiceAndGivesItBackOnce) {
    tRec_Salida salida(1, 512);
    const auto s = servicio(5, 1000);
    salida.addServicioALaSalida(s);
    salida.addServicioALaSalida(s);
    EXPECT_EQ(salida.BitRateActual, 2000u);
    EXPECT_EQ(salida.DeleteServicioALaSalida(s), 1);
    EXPECT_TRUE(salida.MapaServicios.empty());
    EXPECT_EQ(salida.BitRateActual, 1000u);
}

TEST(tRec_Salida, DeletesEveryEntryWithTheKeyAndGivesTheNamedServiceBack) {
    tRec_Salida salida(1, 512);
    const auto s = servicio(5, 100);
    salida.addServicioALaSalida(servicio(5, 2000));
    salida.addServicioALaSalida(s);
    salida.addServicioALaSalida(servicio(6, 30));
    EXPECT_EQ(salida.DeleteServicioALaSalida(s), 1);
    EXPECT_EQ(salida.MapaServicios.count(5), 0u);
    EXPECT_EQ(salida.MapaServicios.count(6), 1u);
    EXPECT_EQ(salida.BitRateActual, 2030u);
    EXPECT_EQ(s->pSalida, nullptr);
}

TEST(tRec_Salida, EitherOfTwoServicesWithOneKeyDeletesBoth) {
    for (const bool segundo : {false, true}) {
        tRec_Salida salida(1, 512);
        const auto uno = servicio(5);
        const auto otro = servicio(5);
        salida.addServicioALaSalida(uno);
        salida.addServicioALaSalida(otro);
        salida.DeleteServicioALaSalida(segundo ? otro : uno);
        EXPECT_TRUE(salida.MapaServicios.empty());
    }
}

TEST(tRec_Salida, DeletingKeepsTheInputReference) {
    tRec_Entrada entrada(1);
    tRec_Salida salida(1, 512);
    const auto s = servicio(5);
    entrada.addServicioALaEntrada(s);
    salida.addServicioALaSalida(s);
    salida.DeleteServicioALaSalida(s);
    EXPECT_EQ(s->pEntrada, &entrada);
    EXPECT_EQ(s->pSalida, nullptr);
}

TEST(tRec_Salida, RefusesToDeleteAServiceThatIsNotThere) {
    tRec_Salida salida(1, 512);
    tRec_Salida otra(2, 512);
    salida.addServicioALaSalida(servicio(4));
    salida.addServicioALaSalida(servicio(6));
    const auto s = servicio(5);
    otra.addServicioALaSalida(s);
    EXPECT_EQ(salida.DeleteServicioALaSalida(s), tRec_Salida::ERROR_SERVICIO_NO_ESTA);
    EXPECT_EQ(tRec_Salida::ERROR_SERVICIO_NO_ESTA, -300);
    EXPECT_EQ(salida.MapaServicios.size(), 2u);
    EXPECT_EQ(salida.BitRateActual, 2000u);
    EXPECT_EQ(s->pSalida, &otra);
}

TEST(tRec_Salida, ItsLoadWrapsAroundAt32Bits) {
    tRec_Salida salida(1, 512);
    const auto s = servicio(5, 0xFFFFFFFFul);
    salida.addServicioALaSalida(servicio(6, 2));
    salida.addServicioALaSalida(s);
    EXPECT_EQ(salida.BitRateActual, 1u);
    s->peakBitRate = 3;
    salida.DeleteServicioALaSalida(s);
    EXPECT_EQ(salida.BitRateActual, 4294967294u);
}

TEST(tRec_Salida, IgnoresANullService) {
    tRec_Salida salida(1, 512);
    salida.addServicioALaSalida(servicio(5));
    EXPECT_EQ(salida.addServicioALaSalida(nullptr), 0);
    EXPECT_EQ(salida.DeleteServicioALaSalida(nullptr), 0);
    EXPECT_EQ(salida.MapaServicios.size(), 1u);
    EXPECT_EQ(salida.BitRateActual, 1000u);
}

TEST(tRec_Salida, SharesItsServicesAndItsModuleWithACopy) {
    tRec_Modulo modulo;
    tRec_Salida salida(1, 512);
    salida.pModulo = &modulo;
    const auto s = servicio(5);
    salida.addServicioALaSalida(s);
    tRec_Salida copia = salida;
    EXPECT_EQ(copia.pModulo, &modulo);
    EXPECT_EQ(copia.MapaServicios.begin()->second, s);
    copia.DeleteServicioALaSalida(s);
    EXPECT_EQ(salida.MapaServicios.size(), 1u);
    EXPECT_EQ(salida.BitRateActual, 1000u);
}

TEST(tRec_Salida, LogsNothingButDumps) {
    registro::vaciar();
    tRec_Salida salida(1, 512);
    const auto s = servicio(5);
    salida.confSalida(1);
    salida.addServicioALaSalida(s);
    salida.DeleteServicioALaSalida(s);
    salida.DeleteServicioALaSalida(s);
    EXPECT_TRUE(registro::hechos().empty());
}

} // namespace tRec_Salida_test
