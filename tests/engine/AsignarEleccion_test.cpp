// Which stream an input is given.

#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace AsignarEleccion_test {

using namespace zarven;

namespace {

constexpr char MAX = 1;
constexpr char MIN = 3;

struct Flujo {
    unsigned short onid;
    unsigned short tsid;
    std::vector<long> claves;                     // one service each
    std::vector<unsigned short> transcoding = {}; // of the first services; the others need none
};

// The stream that is chosen among these, as "ONID/TSID"; empty when none is.
std::string elegido(const std::vector<Flujo>& flujos, char modo, bool transcoding = false) {
    tRecalculo motor;
    for (const Flujo& flujo : flujos)
        for (std::size_t i = 0; i < flujo.claves.size(); ++i) {
            const auto s = fabrica::servicio({1, flujo.onid, flujo.tsid});
            s->idService = flujo.claves[i];
            s->Transcoding =
                i < flujo.transcoding.size() ? flujo.transcoding[i] : static_cast<unsigned short>(0);
            EXPECT_EQ(motor.addRec_Servicio(s), 1);
        }
    fabrica::preparar(motor);
    fabrica::DatosModulo datos;
    datos.salidas = {100000};
    datos.sd = 99;
    tRec_Modulo modulo = fabrica::modulo(datos);
    tRec_Entrada& entrada = modulo.mapEntradas.at(1);
    if (motor.Asignar_listaServicios(modulo, entrada, modo, transcoding) == 0)
        return "";
    return std::to_string(entrada.ONID) + "/" + std::to_string(entrada.TSID);
}

const Flujo UNO{7, 50, {1}};
const Flujo DOS{7, 60, {1, 2}};
const Flujo TRES{8, 40, {1, 2, 3}};

} // namespace

TEST(AsignarEleccion, MaxTakesTheStreamWithTheMostServices) {
    EXPECT_EQ(elegido({UNO, DOS, TRES}, MAX), "8/40");
    EXPECT_EQ(elegido({UNO, DOS}, MAX), "7/60");
    EXPECT_EQ(elegido({UNO}, MAX), "7/50");
}

TEST(AsignarEleccion, MinTakesTheStreamWithTheFewestServices) {
    EXPECT_EQ(elegido({UNO, DOS, TRES}, MIN), "7/50");
    EXPECT_EQ(elegido({DOS, TRES}, MIN), "7/60");
    EXPECT_EQ(elegido({TRES}, MIN), "8/40");
}

TEST(AsignarEleccion, TheFewestMayComeLast) {
    EXPECT_EQ(elegido({{1, 1, {1, 2, 3}}, {1, 2, {1, 2}}, {2, 1, {1}}}, MIN), "2/1");
    EXPECT_EQ(elegido({{1, 1, {1, 2, 3}}, {1, 2, {1, 2}}, {2, 1, {1}}}, MAX), "1/1");
}

TEST(AsignarEleccion, TheLowestNetworkWinsATie) {
    for (const char modo : {MAX, MIN})
        EXPECT_EQ(elegido({{8, 40, {1, 2, 3, 4, 5}}, {7, 50, {1, 2, 3, 4, 5}}}, modo), "7/50");
}

TEST(AsignarEleccion, TheLowestStreamOfANetworkWinsATie) {
    for (const char modo : {MAX, MIN})
        EXPECT_EQ(elegido({{7, 50, {1, 2, 3, 4, 5}}, {7, 40, {1, 2, 3, 4, 5}}}, modo), "7/40");
}

TEST(AsignarEleccion, AStreamWithoutEligibleServicesIsNeverChosen) {
    const Flujo transcodificado{6, 10, {1}, {1}};
    EXPECT_EQ(elegido({transcodificado, DOS, TRES}, MIN), "7/60");
    EXPECT_EQ(elegido({transcodificado, DOS, TRES}, MAX), "8/40");
    EXPECT_EQ(elegido({{6, 10, {1}, {1}}}, MIN), "");
}

TEST(AsignarEleccion, AnEmptyIndexGivesNone) {
    EXPECT_EQ(elegido({}, MAX), "");
    EXPECT_EQ(elegido({}, MIN), "");
}

TEST(AsignarEleccion, OnlyServicesWithoutTranscodingAreCountedWithoutIt) {
    const Flujo muchos{6, 10, {1, 2, 3, 4}, {1, 1, 1}};
    EXPECT_EQ(elegido({muchos, DOS}, MAX, false), "7/60");
    EXPECT_EQ(elegido({muchos, DOS}, MIN, false), "6/10");
}

TEST(AsignarEleccion, OnlyTranscodedServicesAreCountedWithTranscoding) {
    const Flujo uno{6, 10, {1, 2, 3, 4}, {1}};
    const Flujo dos{6, 20, {1, 2}, {1, 1}};
    EXPECT_EQ(elegido({uno, dos}, MAX, true), "6/20");
    EXPECT_EQ(elegido({uno, dos}, MIN, true), "6/10");
}

TEST(AsignarEleccion, EveryServiceIsCountedWhenNoneIsTranscoded) {
    EXPECT_EQ(elegido({DOS, TRES}, MAX, true), "8/40");
    EXPECT_EQ(elegido({DOS, TRES}, MIN, true), "7/60");
}

TEST(AsignarEleccion, KeysNotAboveZeroDoNotCountBesideOthers) {
    const Flujo bajas{6, 10, {-2, -1, 0, 5}};
    EXPECT_EQ(elegido({bajas, DOS}, MAX), "7/60");
    EXPECT_EQ(elegido({bajas, DOS}, MIN), "6/10");
    EXPECT_EQ(elegido({{6, 10, {0}}, DOS}, MIN), "7/60") << "nothing eligible on it";
    EXPECT_EQ(elegido({{6, 10, {-2, -1, 0}}, UNO}, MAX), "7/50") << "the key 1 is above zero";
}

TEST(AsignarEleccion, KeysNotAboveZeroCountWhenThereAreNoOthers) {
    EXPECT_EQ(elegido({{6, 10, {-2, -1, 0}}, {6, 20, {-1, 0}}}, MAX), "6/10");
    EXPECT_EQ(elegido({{6, 10, {-2, -1, 0}}, {6, 20, {-1, 0}}}, MIN), "6/20");
}

TEST(AsignarEleccion, KeysNotAboveZeroAreStillPlaced) {
    tRecalculo motor;
    for (const long clave : {-2L, 0L, 5L}) {
        const auto s = fabrica::servicio({1, 7, 50});
        s->idService = clave;
        motor.addRec_Servicio(s);
    }
    fabrica::preparar(motor);
    tRec_Modulo modulo = fabrica::modulo({});
    EXPECT_EQ(motor.Asignar_listaServicios(modulo, modulo.mapEntradas.at(1), MAX, false), 3);
    EXPECT_EQ(modulo.mapEntradas.at(1).MapaServicios.begin()->first, -2);
    EXPECT_TRUE(motor.Mapa_ONIDs.empty());
}

TEST(AsignarEleccion, MinSeesNoMoreThan99998Services) {
    tRecalculo motor;
    const auto s = fabrica::cargar(motor, {1, 7, 50, 0, 200000}); // fits nowhere
    fabrica::preparar(motor);
    auto& servicios = motor.Mapa_ONIDs.at(7).MapRec_TSIDs.at(50).MapRec_Services;
    while (servicios.size() < 99999)
        servicios.emplace_hint(servicios.end(), 1, s);
    tRec_Modulo modulo = fabrica::modulo({});
    registro::vaciar();
    EXPECT_EQ(motor.Asignar_listaServicios(modulo, modulo.mapEntradas.at(1), MIN, false), 0);
    EXPECT_EQ(registro::total(), 3u) << "no stream was chosen";
    // A smaller stream behind it is taken.
    motor.Mapa_ONIDs.at(7).MapRec_TSIDs[60].MapRec_Services.emplace(1, fabrica::servicio({1, 7, 60}));
    EXPECT_EQ(motor.Asignar_listaServicios(modulo, modulo.mapEntradas.at(1), MIN, false), 1);
    EXPECT_EQ(modulo.mapEntradas.at(1).TSID, 60);
    servicios.erase(servicios.begin());
    registro::vaciar();
    registro::callar();
    motor.Asignar_listaServicios(modulo, modulo.mapEntradas.at(1), MIN, false);
    EXPECT_GT(registro::total(), 3u);
    registro::vaciar();
}

} // namespace AsignarEleccion_test
