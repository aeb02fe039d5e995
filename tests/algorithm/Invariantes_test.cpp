// The checker of the invariants: it finds nothing wrong with what the primitives and the phases leave, and
// sees every fault that is put in by hand.

#include <functional>

#include <gtest/gtest.h>

#include "algorithm/Escena.h"
#include "algorithm/EscenaDePermuta.h"
#include "algorithm/PasadaVista.h"
#include "support/Invariantes.h"
#include "support/Lineas.h"
#include "support/Registro.h"

namespace Invariantes_test {

using namespace escena;
using invariantes::comprobar;
using invariantes::Historia;

namespace {

// A result: services of three kinds on two modules, a clone attached, one service left out.
class Sana : public testing::Test {
protected:
    Escena e{{con(modulo("A", 2, {10000, 10000}, 20)), con(modulo("B", 1, {10000}, 20))}};

    Sana() {
        e.puesto("A", 1, 1, datos(1, 1, 2000, 3));
        e.puesto("A", 1, 2, conTranscoding(datos(2, 1, 2500, 4)));
        e.puesto("A", 2, 1, conTranscoding(datos(3, 2, 3000, 5), true));
        e.puesto("B", 1, 1, datos(4, 3));
        e.libre(datos(5, 4));
        fabrica::DatosServicio repetido = datos(1, 1);
        repetido.transcoding = 1;
        clon = fabrica::cargar(e.motor, repetido);
        e.entrada("A", 1).MapaServicios.emplace(1, clon);
        e.salida("A", 1).MapaServicios.emplace(1, clon);
        e.en("A").AUX_Transcoding = 1;
    }

    static fabrica::DatosModulo con(fabrica::DatosModulo datosModulo) {
        datosModulo.sd = datosModulo.hd = 2;
        datosModulo.aux = 1;
        return datosModulo;
    }

    std::vector<std::string> violaciones(const Historia& historia = {}) const {
        return comprobar(e.motor, e.motor.Mapa_ModulosCabecera_Proceso, e.motor.Mapa_ONIDs, historia);
    }

    Servicio clon;
};

struct Falta {
    const char* nombre;
    std::vector<std::string> violaciones;
    std::function<void(Escena&)> cometer;

    Falta(const char* elNombre, const char* unica, std::function<void(Escena&)> como)
        : nombre(elNombre), violaciones{unica}, cometer(std::move(como)) {}
    Falta(const char* elNombre, std::vector<std::string> varias, std::function<void(Escena&)> como)
        : nombre(elNombre), violaciones(std::move(varias)), cometer(std::move(como)) {}
};

void PrintTo(const Falta& falta, std::ostream* salida) {
    *salida << falta.nombre;
}

class ConFalta : public Sana, public testing::WithParamInterface<Falta> {};

std::string nombreDeLaFalta(const testing::TestParamInfo<Falta>& parametro) {
    return parametro.param.nombre;
}

zarven::Rec_TSID& stream4(Escena& e) {
    return e.motor.Mapa_ONIDs.at(1).MapRec_TSIDs.at(4);
}

} // namespace

TEST_F(Sana, NothingIsWrong) {
    EXPECT_EQ(violaciones(), std::vector<std::string>());
}

// ---- A fault for every rule ---------------------------------------------------------------------------

TEST_P(ConFalta, IsSeen) {
    GetParam().cometer(e);
    EXPECT_EQ(violaciones(), GetParam().violaciones);
}

INSTANTIATE_TEST_SUITE_P(
    Invariantes, ConFalta,
    testing::Values(
        Falta{"Mac", "record: module B has MAC C", [](Escena& e) { e.en("B").MAC = "C"; }},
        Falta{"InputNumber", "record: module B input 1 has number 7",
              [](Escena& e) { e.entrada("B", 1).NumEntrada = 7; }},
        Falta{"OutputNumber", "record: module B output 1 has number 7",
              [](Escena& e) { e.salida("B", 1).NumSalida = 7; }},
        Falta{"Onid", "record: ONID 1 has number 7", [](Escena& e) { e.motor.Mapa_ONIDs.at(1).ONID = 7; }},
        Falta{"Tsid", "record: ONID 1 TSID 4 has number 7", [](Escena& e) { stream4(e).TSID = 7; }},
        Falta{"KeyInTheIndex", "key: ONID 1 TSID 4 holds 6 under 5",
              [](Escena& e) { stream4(e).MapRec_Services.begin()->second->idService = 6; }},
        Falta{"NoServiceInTheIndex", "key: ONID 1 TSID 4 holds no service under 6",
              [](Escena& e) { stream4(e).MapRec_Services.emplace(6, nullptr); }},
        Falta{"KeyOnAModule",
              std::vector<std::string>{"key: module B input 1 holds 4 under 40",
                                       "key: module B output 1 holds 4 under 40"},
              [](Escena& e) {
                  const Servicio cuatro = e.entrada("B", 1).MapaServicios.begin()->second;
                  for (tMapaServicios* mapa :
                       {&e.entrada("B", 1).MapaServicios, &e.salida("B", 1).MapaServicios}) {
                      mapa->clear();
                      mapa->emplace(40, cuatro);
                  }
              }},
        Falta{"StreamWithoutServices", "empty stream: ONID 1 TSID 9 has no services",
              [](Escena& e) { e.motor.Mapa_ONIDs.at(1).MapRec_TSIDs[9].TSID = 9; }},
        Falta{"NetworkWithoutStreams", "empty stream: ONID 9 has no TSID",
              [](Escena& e) { e.motor.Mapa_ONIDs[9].ONID = 9; }},
        Falta{"BitrateAbove", "BitRateActual: module B output 1 has 1001 for 1000",
              [](Escena& e) { ++e.salida("B", 1).BitRateActual; }},
        Falta{"BitrateBelow", "BitRateActual: module B output 1 has 999 for 1000",
              [](Escena& e) { --e.salida("B", 1).BitRateActual; }},
        Falta{"NumServiciosAbove", "NumServicios: module A output 1 has 3 for 2",
              [](Escena& e) { ++e.salida("A", 1).NumServicios; }},
        Falta{"NumServiciosBelow", "NumServicios: module A output 1 has 1 for 2",
              [](Escena& e) { --e.salida("A", 1).NumServicios; }},
        Falta{"NumServiciosMax", "NumServiciosMax: module A output 1 counts 2 of 1",
              [](Escena& e) { e.salida("A", 1).NumServiciosMax = 1; }},
        Falta{"BitRateMax", "BitRateMax: module B output 1 is loaded with 1000 of 1000",
              [](Escena& e) { e.salida("B", 1).BitRateMax = 1000; }},
        Falta{"PidsAbove", "PIDsModulo: module A has 13 for 12", [](Escena& e) { ++e.en("A").PIDsModulo; }},
        Falta{"PidsBelow", "PIDsModulo: module A has 11 for 12", [](Escena& e) { --e.en("A").PIDsModulo; }},
        Falta{"PidsMax", "PIDsModuloMax: module A uses 12 of 11",
              [](Escena& e) { e.en("A").PIDsModuloMax = 11; }},
        Falta{"Sd", "SD_Transcoding: module B has 1 for 0", [](Escena& e) { ++e.en("B").SD_Transcoding; }},
        Falta{"SdBelow", "SD_Transcoding: module A has 0 for 1",
              [](Escena& e) { --e.en("A").SD_Transcoding; }},
        Falta{"Hd", "HD_Transcoding: module B has 1 for 0", [](Escena& e) { ++e.en("B").HD_Transcoding; }},
        Falta{"HdBelow", "HD_Transcoding: module A has 0 for 1",
              [](Escena& e) { --e.en("A").HD_Transcoding; }},
        Falta{"TranscoderPool", "transcoder pool: module A uses 2 of 1",
              [](Escena& e) { e.en("A").SD_MAX_Transcoding = e.en("A").HD_MAX_Transcoding = 1; }},
        Falta{"Aux", "AUX_Transcoding: module B has 1 for 0", [](Escena& e) { ++e.en("B").AUX_Transcoding; }},
        Falta{"AuxMax", "AUX_Transcoding: module A uses 1 of 0",
              [](Escena& e) { e.en("A").AUX_MAX_Transcoding = 0; }},
        Falta{"OnAnInputOnly", "inputs and outputs: module A carries 9 on an input and on no output",
              [](Escena& e) { e.entrada("A", 1).MapaServicios.emplace(9, fabrica::servicio(datos(9, 1))); }},
        Falta{"OnAnOutputOnly", "received: module A carries 9 on an output and on no input",
              [](Escena& e) {
                  e.salida("A", 1).MapaServicios.emplace(9, fabrica::servicio(datos(9, 1, 0)));
                  ++e.salida("A", 1).NumServicios;
              }},
        Falta{"OnMoreOutputsThanInputs", "inputs and outputs: module B carries 4 on more outputs than inputs",
              [](Escena& e) {
                  e.salida("B", 1).MapaServicios.insert(*e.salida("B", 1).MapaServicios.begin());
                  e.salida("B", 1).BitRateActual += 1000;
                  ++e.salida("B", 1).NumServicios;
              }},
        Falta{"InputOfAnotherStream",
              "stream of input: module B input 1 is tuned to 1 / 4 and carries 4 of 1 / 3",
              [](Escena& e) { e.sintonizar("B", 1, 1, 4); }},
        Falta{"InputOfAnotherNetwork",
              "stream of input: module B input 1 is tuned to 2 / 3 and carries 4 of 1 / 3",
              [](Escena& e) { e.sintonizar("B", 1, 2, 3); }},
        Falta{"IndexOfAnotherStream", "stream of index: ONID 1 TSID 4 holds 5 of 1 / 6",
              [](Escena& e) { stream4(e).MapRec_Services.begin()->second->TSID = 6; }},
        Falta{"IndexOfAnotherNetwork", "stream of index: ONID 1 TSID 4 holds 5 of 2 / 4",
              [](Escena& e) { stream4(e).MapRec_Services.begin()->second->ONID = 2; }},
        Falta{"TwiceInTheIndex", "twice: service 5 is in 2 places",
              [](Escena& e) {
                  stream4(e).MapRec_Services.emplace(5, stream4(e).MapRec_Services.begin()->second);
              }},
        Falta{"PlacedAndUnassigned", "twice: service 5 is in 2 places",
              [](Escena& e) {
                  const Servicio cinco = stream4(e).MapRec_Services.begin()->second;
                  e.sintonizar("A", 2, 1, 4);
                  e.entrada("A", 2).MapaServicios.clear();
                  e.salida("A", 1).MapaServicios.erase(3);
                  e.salida("A", 1).BitRateActual -= 3000;
                  --e.salida("A", 1).NumServicios;
                  e.en("A").PIDsModulo = 7;
                  e.en("A").HD_Transcoding = 0;
                  e.motor.listaServicios.erase(e.motor.listaServicios.begin() + 2);
                  e.clavar("A", 2, 1, cinco);
              }},
        Falta{"MoreThanWereLoaded", "index: holds 6 services of 5",
              [](Escena& e) {
                  for (unsigned short sid = 11; sid <= 15; ++sid)
                      stream4(e).MapRec_Services.emplace(sid, fabrica::servicio(datos(sid, 4)));
              }},
        Falta{"Lost", "lost: service 5 is nowhere", [](Escena& e) { e.motor.Mapa_ONIDs.clear(); }}),
    nombreDeLaFalta);

// ---- When the rules hold ------------------------------------------------------------------------------

namespace {

// The names of the rules violated.
std::vector<std::string> reglas(const std::vector<std::string>& violaciones) {
    std::vector<std::string> resultado;
    for (const std::string& una : violaciones)
        resultado.push_back(una.substr(0, una.find(':')));
    return resultado;
}

using Reglas = std::vector<std::string>;

} // namespace

TEST_F(Sana, AfterAGatheringTheModuleCountersAreLeftAlone) {
    Historia h;
    h.reunion = true;
    e.en("A").PIDsModulo = 99;
    e.en("A").SD_Transcoding = 0;
    e.en("B").HD_Transcoding = 99;
    EXPECT_EQ(violaciones(h), Reglas());
    // Those of the outputs are not, nor is anything else.
    ++e.salida("A", 1).BitRateActual;
    ++e.salida("B", 1).NumServicios;
    e.sintonizar("B", 1, 9, 9);
    EXPECT_EQ(reglas(violaciones(h)), (Reglas{"BitRateActual", "stream of input", "NumServicios"}));
}

TEST_F(Sana, AfterAFailedExchangeOfOptimizeCountersMayBeAboveTheSums) {
    Historia h;
    h.fallo = true;
    ++e.salida("B", 1).BitRateActual;
    ++e.salida("B", 1).NumServicios;
    ++e.en("B").PIDsModulo;
    ++e.en("B").SD_Transcoding;
    EXPECT_EQ(violaciones(h), Reglas());
    e.salida("B", 1).BitRateActual = 0;
    e.salida("B", 1).NumServicios = 0;
    e.en("A").PIDsModulo = 11;
    e.en("A").HD_Transcoding = 0;
    EXPECT_EQ(reglas(violaciones(h)),
              (Reglas{"PIDsModulo", "HD_Transcoding", "BitRateActual", "NumServicios"}));
}

TEST_F(Sana, AfterAFailedExchangeOfOptimizeServicesMayStandAnywhereButNotNowhere) {
    Historia h;
    h.fallo = true;
    const Servicio cinco = stream4(e).MapRec_Services.begin()->second;
    e.entrada("B", 1).MapaServicios.emplace(5, cinco);
    stream4(e).MapRec_Services.emplace(4, e.entrada("B", 1).MapaServicios.begin()->second);
    for (int vez = 0; vez < 10; ++vez)
        stream4(e).MapRec_Services.emplace(5, cinco);
    EXPECT_EQ(violaciones(h), Reglas()) << "entries, but no services, are more than were loaded";
    e.entrada("B", 1).MapaServicios.clear();
    e.motor.Mapa_ONIDs.clear();
    EXPECT_EQ(reglas(violaciones(h)), (Reglas{"received", "lost"}));
    h.retiradaDoble = true;
    EXPECT_EQ(reglas(violaciones(h)), Reglas{"lost"});
}

TEST_F(Sana, AfterARemovalByASharedKeyOnlyTheRecordsHold) {
    Historia h;
    h.claveCompartida = true;
    e.salida("B", 1).BitRateActual = 99999;
    ++e.salida("B", 1).NumServicios;
    e.en("B").PIDsModulo = 99;
    e.entrada("B", 1).MapaServicios.clear();
    e.motor.Mapa_ONIDs.clear();
    EXPECT_EQ(violaciones(h), Reglas());
    e.salida("B", 1).NumServicios = 0;
    e.salida("A", 1).NumServiciosMax = 1;
    e.entrada("A", 1).NumEntrada = 2;
    EXPECT_EQ(reglas(violaciones(h)), (Reglas{"record", "NumServiciosMax", "NumServicios"}));
}

TEST_F(Sana, ABalanceLeavesNumServiciosAndTheCeilingAlone) {
    Historia h;
    h.balance = true;
    e.salida("B", 1).NumServicios = 0;
    e.salida("B", 1).BitRateMax = 1;
    EXPECT_EQ(violaciones(h), Reglas());
    ++e.salida("B", 1).BitRateActual;
    EXPECT_EQ(reglas(violaciones(h)), Reglas{"BitRateActual"});
}

TEST_F(Sana, AStreamWithoutNumberLeavesTheStreamsOfInputsAlone) {
    Historia h;
    h.streamSinNumero = true;
    e.sintonizar("B", 1, 0, 0);
    EXPECT_EQ(violaciones(h), Reglas());
}

// ---- Along a run --------------------------------------------------------------------------------------

TEST(InvariantesVigilante, TellsWhereAFaultWasSeen) {
    Escena e({modulo("A", 1, {20000}, 0)});
    e.puesto("A", 1, 1, datos(1, 1));
    e.libre(datos(2, 2));
    invariantes::Vigilante vigilante(e.motor);
    ++e.salida("A", 1).NumServicios;
    registro::vaciar();
    registro::escuchar([&](const std::string& linea) { vigilante.leer(linea); });
    e.motor.RecalculationAlgorithm(0, 1);
    registro::escuchar({});
    // Every state of the pass and the end of every optimize: 2 5 6 3 5 6 3 5 6 3 5 6.
    EXPECT_EQ(vigilante.comprobaciones(), 16U);
    ASSERT_EQ(vigilante.violaciones().size(), 16U);
    EXPECT_EQ(vigilante.violaciones().front(),
              "NumServicios: module A output 1 has 2 for 1 (at \" RecalculationAlgorithm ---> "
              "STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING\")");
}

TEST(InvariantesVigilante, FollowsTheHistoryOfThePass) {
    permuta::EscenaDePermuta e;
    e.completo();
    permuta::sinTranscoder(e.motor.listaServicios[2]);
    invariantes::Vigilante vigilante(e.motor);
    registro::vaciar();
    registro::escuchar([&](const std::string& linea) { vigilante.leer(linea); });
    e.motor.RecalculationAlgorithm(0, 1);
    registro::escuchar({});
    EXPECT_TRUE(vigilante.historia().fallo);
    EXPECT_FALSE(vigilante.historia().reunion);
    EXPECT_FALSE(vigilante.historia().claveCompartida);
    EXPECT_EQ(vigilante.violaciones(), Reglas());
    vigilante.leer(lineas::REUNION);
    EXPECT_TRUE(vigilante.historia().reunion);
    vigilante.leer("BEGIN OPTION: MAX");
    EXPECT_FALSE(vigilante.historia().fallo);
}

TEST(InvariantesVigilante, KnowsSharedKeysAndStreamsWithoutNumber) {
    Escena e;
    e.libre(datos(1, 1));
    e.libre(datos(1, 0));
    invariantes::Vigilante vigilante(e.motor);
    EXPECT_TRUE(vigilante.historia().streamSinNumero);
    EXPECT_FALSE(vigilante.historia().claveCompartida);
    vigilante.leer("Try_to_Delete_Service_Input_Output (");
    EXPECT_TRUE(vigilante.historia().claveCompartida);
}

TEST(InvariantesVigilante, ChecksTheResultWithItsClones) {
    Escena e({modulo("A", 1, {20000})});
    e.en("A").Controlador = true;
    e.motor.Mapa_ModulosCabecera_Inicial.at("A").Controlador = true;
    e.libre(datos(1, 1));
    const Servicio clon = fabrica::cargar(e.motor, datos(1, 1));
    invariantes::Vigilante vigilante(e.motor);
    registro::vaciar();
    registro::callar();
    ASSERT_EQ(e.motor.Main_Recalculo(), 1);
    vigilante.comprobarResultado();
    EXPECT_EQ(vigilante.violaciones(), Reglas());
    e.motor.listaServiciosClonados.push_back(clon);
    vigilante.comprobarResultado();
    EXPECT_EQ(vigilante.violaciones(), Reglas{"twice: clone 1 is attached and waits (at \"the result\")"});
}

} // namespace Invariantes_test
