// Booking a service on the first output with room, without the module's limits.

#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace InsertarSalida_test {

using namespace zarven;

namespace {

tRec_Modulo modulo(const std::vector<unsigned long>& salidas) {
    fabrica::DatosModulo datos;
    datos.salidas = salidas;
    tRec_Modulo nuevo = fabrica::modulo(datos);
    registro::vaciar();
    return nuevo;
}

std::shared_ptr<tRec_Servicio> deBitrate(unsigned long bitrate) {
    fabrica::DatosServicio datos;
    datos.bitrate = bitrate;
    return fabrica::servicio(datos);
}

std::uint32_t reservar(tRec_Modulo& m, const std::shared_ptr<tRec_Servicio>& s, long clave = 1) {
    tMapaServicios lista;
    lista.emplace(clave, s);
    return tRecalculo().Find_OutputID_to_insert_Service(m, lista.rbegin());
}

} // namespace

TEST(InsertarSalida, BooksAServiceAndReportsTheOutput) {
    tRec_Modulo m = modulo({10000});
    const auto s = deBitrate(1000);
    EXPECT_EQ(reservar(m, s), 1u);
    ASSERT_EQ(m.mapSalidas.at(1).MapaServicios.size(), 1u);
    EXPECT_EQ(m.mapSalidas.at(1).MapaServicios.begin()->second, s);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 1000u);
    EXPECT_EQ(m.mapSalidas.at(1).NumServicios, 1u);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(InsertarSalida, TakesTheServiceTheReverseIteratorDesignates) {
    tRec_Modulo m = modulo({10000});
    tMapaServicios lista;
    lista.emplace(1, deBitrate(100));
    lista.emplace(2, deBitrate(200));
    tRecalculo().Find_OutputID_to_insert_Service(m, std::next(lista.rbegin()));
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 100u);
}

TEST(InsertarSalida, FilesAServiceUnderItsOwnKey) {
    tRec_Modulo m = modulo({10000});
    const auto s = deBitrate(1000);
    s->idService = 6;
    reservar(m, s, 9);
    EXPECT_EQ(m.mapSalidas.at(1).MapaServicios.begin()->first, 6);
}

TEST(InsertarSalida, TakesTheFirstOutputWithRoom) {
    tRec_Modulo m = modulo({1000, 10000, 20000});
    EXPECT_EQ(reservar(m, deBitrate(1000)), 2u);
    EXPECT_TRUE(m.mapSalidas.at(1).MapaServicios.empty());
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 0u);
    EXPECT_EQ(m.mapSalidas.at(2).NumServicios, 1u);
    EXPECT_EQ(m.mapSalidas.at(3).NumServicios, 0u);
}

TEST(InsertarSalida, RefusesAnOutputThatWouldBeFilledExactly) {
    tRec_Modulo m = modulo({10000});
    m.mapSalidas.at(1).BitRateActual = 6000;
    EXPECT_EQ(reservar(m, deBitrate(4001)), 0u);
    EXPECT_EQ(reservar(m, deBitrate(4000)), 0u);
    EXPECT_TRUE(m.mapSalidas.at(1).MapaServicios.empty());
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 6000u);
    EXPECT_EQ(m.mapSalidas.at(1).NumServicios, 0u);
    EXPECT_EQ(reservar(m, deBitrate(3999)), 1u);
}

TEST(InsertarSalida, TakesTheRemainderForUnsigned) {
    tRec_Modulo m = modulo({10000});
    m.mapSalidas.at(1).BitRateActual = 10001;
    EXPECT_EQ(reservar(m, deBitrate(4294967295u)), 0u) << "the remainder is 4294967295 too";
    EXPECT_EQ(reservar(m, deBitrate(4294967294u)), 1u);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 9999u);
}

TEST(InsertarSalida, TakesAServiceOnAnOutputLoadedBeyondItsCeiling) {
    tRec_Modulo m = modulo({10000});
    m.mapSalidas.at(1).BitRateActual = 10001;
    EXPECT_EQ(reservar(m, deBitrate(1000)), 1u);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 11001u);
}

TEST(InsertarSalida, RefusesAnOutputThatCarriesAllTheServicesItMay) {
    for (const std::uint32_t servicios : {511u, 512u, 513u}) {
        tRec_Modulo m = modulo({10000});
        m.mapSalidas.at(1).NumServicios = servicios;
        EXPECT_EQ(reservar(m, deBitrate(0)), servicios < 512 ? 1u : 0u) << servicios;
    }
}

TEST(InsertarSalida, ComparesServiceCountsUnsigned) {
    tRec_Modulo m = modulo({10000});
    m.mapSalidas.at(1).NumServicios = 0x7FFFFFFFu;
    m.mapSalidas.at(1).NumServiciosMax = 0x80000000u;
    EXPECT_EQ(reservar(m, deBitrate(0)), 1u);
}

TEST(InsertarSalida, OneOutputMustPassBothTests) {
    tRec_Modulo m = modulo({1000, 10000});
    m.mapSalidas.at(2).NumServicios = 512;
    EXPECT_EQ(reservar(m, deBitrate(1000)), 0u);
}

TEST(InsertarSalida, FindsNothingOnAModuleWithoutOutputs) {
    tRec_Modulo m = modulo({});
    EXPECT_EQ(reservar(m, deBitrate(0)), 0u);
}

TEST(InsertarSalida, AsksAndTouchesNeitherInputsNorModuleCounters) {
    tRec_Modulo m = modulo({10000});
    m.PIDsModuloMax = 1;
    fabrica::DatosServicio datos;
    datos.pids = 5;
    datos.transcoding = 1;
    EXPECT_EQ(reservar(m, fabrica::servicio(datos)), 1u);
    EXPECT_EQ(m.PIDsModulo, 0);
    EXPECT_EQ(m.SD_Transcoding, 0);
    EXPECT_EQ(m.HD_Transcoding, 0);
    EXPECT_TRUE(m.mapEntradas.at(1).MapaServicios.empty());
}

TEST(InsertarSalida, KeepsEqualKeys) {
    tRec_Modulo m = modulo({10000});
    reservar(m, deBitrate(1000));
    reservar(m, deBitrate(2000));
    EXPECT_EQ(m.mapSalidas.at(1).MapaServicios.count(1), 2u);
    EXPECT_EQ(m.mapSalidas.at(1).NumServicios, 2u);
    EXPECT_EQ(m.mapSalidas.at(1).BitRateActual, 3000u);
}

} // namespace InsertarSalida_test
