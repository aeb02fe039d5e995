#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace Clonados_test {

using namespace zarven;

namespace {

using Lineas = std::vector<std::string>;

fabrica::DatosModulo dosPorDos(const std::string& mac) {
    fabrica::DatosModulo datos;
    datos.mac = mac;
    datos.entradas = 2;
    datos.salidas = {10000, 10000};
    datos.aux = 1;
    return datos;
}

// A finished head-end: modules of two inputs and two outputs, with one AUX transcoder each.
struct Resultado {
    tRecalculo motor;

    explicit Resultado(const std::vector<std::string>& macs = {"A"}) {
        for (const auto& mac : macs) {
            fabrica::cargar(motor, dosPorDos(mac));
            motor.Mapa_ModulosCabecera_Final.emplace(mac, motor.Mapa_ModulosCabecera_Inicial.at(mac));
        }
        registro::vaciar();
    }

    tRec_Modulo& modulo(const std::string& mac = "A") { return motor.Mapa_ModulosCabecera_Final.at(mac); }
    tRec_Entrada& entrada(unsigned short numero = 1, const std::string& mac = "A") {
        return modulo(mac).mapEntradas.at(numero);
    }
    tRec_Salida& salida(std::uint32_t numero = 1, const std::string& mac = "A") {
        return modulo(mac).mapSalidas.at(numero);
    }

    // A service of stream 7/50 with this service id on an input and an output (0: on none).
    std::shared_ptr<tRec_Servicio> poner(unsigned short OSID, unsigned short numEntrada,
                                         std::uint32_t numSalida, const std::string& mac = "A") {
        const auto s = fabrica::servicio({OSID, 7, 50});
        s->SID = static_cast<unsigned short>(OSID + 1000);
        if (numEntrada != 0) {
            entrada(numEntrada, mac).confEntrada(50, 7);
            entrada(numEntrada, mac).MapaServicios.emplace(s->idService, s);
        }
        if (numSalida != 0)
            salida(numSalida, mac).MapaServicios.emplace(s->idService, s);
        return s;
    }

    // A waiting clone of stream 7/50.
    std::shared_ptr<tRec_Servicio> clon(unsigned short Parent_SID, unsigned short transcoding = 0) {
        const auto c = std::make_shared<tRec_Servicio>();
        c->idService = 500;
        c->ONID = 7;
        c->TSID = 50;
        c->Parent_SID = Parent_SID;
        c->Transcoding = transcoding;
        motor.listaServiciosClonados.push_back(c);
        return c;
    }

    int unir(std::size_t cual = 0) {
        const auto it = motor.listaServiciosClonados.begin() + static_cast<std::ptrdiff_t>(cual);
        return motor.Try_to_Insert_Cloned_Service(it);
    }
};

} // namespace

TEST(Clonados, ACloneJoinsTheInputAndTheOutputOfItsParent) {
    Resultado r;
    r.poner(10, 2, 2);
    const auto c = r.clon(10);
    EXPECT_EQ(r.unir(), 1);
    ASSERT_EQ(r.entrada(2).MapaServicios.count(500), 1u);
    EXPECT_EQ(r.entrada(2).MapaServicios.find(500)->second, c);
    ASSERT_EQ(r.salida(2).MapaServicios.count(500), 1u);
    EXPECT_EQ(r.salida(2).MapaServicios.find(500)->second, c);
    EXPECT_TRUE(r.entrada(1).MapaServicios.empty());
    EXPECT_TRUE(r.salida(1).MapaServicios.empty());
}

TEST(Clonados, AttachingLogsEachServiceLookedAt) {
    Resultado r;
    r.poner(8, 1, 1);
    r.poner(9, 1, 2); // on the parent's output too, before it
    r.poner(10, 1, 2);
    r.poner(11, 1, 2);
    r.clon(10);
    r.unir();
    const Lineas esperado = {
        "7 SID a analizar:8, Parent_SID que buscamos: 10",
        "7 SID a analizar:9, Parent_SID que buscamos: 10",
        "7 SID a analizar:10, Parent_SID que buscamos: 10",
        "7 Encontrado el Servicio Padre: 10 en la Entrada",
        "7 Encontrado el Servicio Padre: 10 en la Salida",
    };
    EXPECT_EQ(registro::hechos(), esperado);
}

TEST(Clonados, ACloneStaysInTheListForItsCaller) {
    Resultado r;
    r.poner(10, 1, 1);
    const auto c = r.clon(10);
    r.unir();
    EXPECT_EQ(r.motor.listaServiciosClonados, std::vector<std::shared_ptr<tRec_Servicio>>{c});
}

TEST(Clonados, NoCounterMovesForAClone) {
    Resultado r;
    r.poner(10, 1, 1);
    const auto c = r.clon(10);
    c->peakBitRate = 700;
    c->number_PIDs_CA = 5;
    r.salida().BitRateActual = 1000;
    r.salida().NumServicios = 1;
    r.modulo().PIDsModulo = 3;
    r.unir();
    EXPECT_EQ(r.salida().BitRateActual, 1000u);
    EXPECT_EQ(r.salida().NumServicios, 1u);
    EXPECT_EQ(r.modulo().PIDsModulo, 3);
    EXPECT_EQ(r.modulo().AUX_Transcoding, 0);
    EXPECT_EQ(r.modulo().SD_Transcoding, 0);
    EXPECT_EQ(r.modulo().HD_Transcoding, 0);
}

TEST(Clonados, TheParentIsKnownByTheServiceIdReceived) {
    Resultado r;
    r.poner(10, 1, 1); // its SID is 1010
    r.clon(1010);
    EXPECT_EQ(r.unir(), 0);
    EXPECT_EQ(registro::hechos(), Lineas{"7 SID a analizar:10, Parent_SID que buscamos: 1010"});
}

TEST(Clonados, ACloneWhoseParentWasDiscardedIsNotAttached) {
    Resultado r;
    r.poner(11, 1, 1);
    r.motor.Mapa_ONIDs_Final[7].MapRec_TSIDs[50].MapRec_Services.emplace(10, fabrica::servicio({10, 7, 50}));
    r.clon(10);
    EXPECT_EQ(r.unir(), 0);
    EXPECT_EQ(r.entrada().MapaServicios.size(), 1u);
    EXPECT_EQ(r.salida().MapaServicios.size(), 1u);
}

TEST(Clonados, WithoutAResultNothingIsFoundOrLogged) {
    Resultado r(std::vector<std::string>{});
    r.clon(10);
    EXPECT_EQ(r.unir(), 0);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(Clonados, OnlyInputsTunedToTheClonesStreamAreLookedAt) {
    Resultado r;
    r.poner(10, 1, 1);
    r.clon(10);
    r.entrada().confEntrada(51, 7);
    EXPECT_EQ(r.unir(), 0);
    r.entrada().confEntrada(50, 8);
    EXPECT_EQ(r.unir(), 0);
    EXPECT_TRUE(registro::hechos().empty());
    r.entrada().confEntrada(50, 7);
    EXPECT_EQ(r.unir(), 1);
}

TEST(Clonados, AParentIsLookedForOnTheOutputsOfItsOwnModuleOnly) {
    Resultado r({"A", "B"});
    r.poner(10, 1, 0, "A");
    r.poner(10, 0, 1, "B");
    r.clon(10);
    EXPECT_EQ(r.unir(), 0);
    EXPECT_EQ(r.salida(1, "B").MapaServicios.size(), 1u);
    EXPECT_EQ(registro::hechos(), (Lineas{"7 SID a analizar:10, Parent_SID que buscamos: 10",
                                          "7 Encontrado el Servicio Padre: 10 en la Entrada"}));
}

TEST(Clonados, TheSearchGoesOnWhereTheParentIsOnNoOutput) {
    Resultado r({"A", "B"});
    r.poner(10, 1, 0, "A");
    r.poner(11, 1, 1, "A");
    r.poner(10, 2, 2, "B");
    r.clon(10);
    EXPECT_EQ(r.unir(), 1);
    EXPECT_EQ(r.entrada(1, "A").MapaServicios.count(500), 0u);
    EXPECT_EQ(r.entrada(2, "B").MapaServicios.count(500), 1u);
    EXPECT_EQ(r.salida(2, "B").MapaServicios.count(500), 1u);
    const Lineas esperado = {
        "7 SID a analizar:10, Parent_SID que buscamos: 10",
        "7 Encontrado el Servicio Padre: 10 en la Entrada",
        "7 SID a analizar:11, Parent_SID que buscamos: 10",
        "7 SID a analizar:10, Parent_SID que buscamos: 10",
        "7 Encontrado el Servicio Padre: 10 en la Entrada",
        "7 Encontrado el Servicio Padre: 10 en la Salida",
    };
    EXPECT_EQ(registro::hechos(), esperado);
}

TEST(Clonados, TheFirstModuleAndInputWithTheParentAreTaken) {
    Resultado r({"A", "B"});
    r.poner(10, 1, 1, "B");
    r.poner(10, 2, 2, "A");
    r.poner(10, 1, 1, "A");
    r.clon(10);
    EXPECT_EQ(r.unir(), 1);
    EXPECT_EQ(r.entrada(1, "A").MapaServicios.count(500), 1u);
    EXPECT_EQ(r.salida(1, "A").MapaServicios.count(500), 1u);
    EXPECT_EQ(r.salida(2, "A").MapaServicios.count(500), 0u);
    EXPECT_EQ(r.entrada(1, "B").MapaServicios.count(500), 0u);
}

TEST(Clonados, AnyServiceWithTheParentsIdMarksTheOutput) {
    Resultado r;
    r.poner(10, 1, 0);
    r.poner(10, 0, 2);
    r.clon(10);
    EXPECT_EQ(r.unir(), 1);
    EXPECT_EQ(r.salida(2).MapaServicios.count(500), 1u);
}

TEST(Clonados, ATranscodedCloneTakesAnAUXTranscoder) {
    Resultado r;
    r.poner(10, 1, 1);
    r.clon(10, 1);
    EXPECT_EQ(r.unir(), 1);
    EXPECT_EQ(r.modulo().AUX_Transcoding, 1);
    EXPECT_EQ(r.modulo().SD_Transcoding, 0);
    EXPECT_EQ(r.modulo().HD_Transcoding, 0);
    EXPECT_EQ(r.entrada().MapaServicios.count(500), 1u);
    EXPECT_EQ(r.salida().MapaServicios.count(500), 1u);
}

TEST(Clonados, AnyNonZeroTranscodingNeedsAnAUXTranscoder) {
    Resultado r;
    r.poner(10, 1, 1);
    r.clon(10, 2);
    EXPECT_EQ(r.unir(), 1);
    EXPECT_EQ(r.modulo().AUX_Transcoding, 1);
    r.clon(10, 2);
    EXPECT_EQ(r.unir(1), 0);
}

TEST(Clonados, ATranscodedCloneIsRefusedWhenTheAUXTranscodersAreSpent) {
    for (const unsigned short enUso : std::vector<unsigned short>{3, 4, 5}) {
        Resultado r;
        r.poner(10, 1, 1);
        r.modulo().AUX_MAX_Transcoding = 4;
        r.modulo().AUX_Transcoding = enUso;
        r.clon(10, 1);
        EXPECT_EQ(r.unir(), enUso < 4 ? 1 : 0) << enUso;
        EXPECT_EQ(r.modulo().AUX_Transcoding, enUso < 4 ? 4 : enUso);
        EXPECT_EQ(r.salida().MapaServicios.count(500), enUso < 4 ? 1u : 0u);
        EXPECT_EQ(r.entrada().MapaServicios.count(500), enUso < 4 ? 1u : 0u);
    }
}

TEST(Clonados, AnUntranscodedCloneNeedsNoAUXTranscoder) {
    Resultado r;
    r.poner(10, 1, 1);
    r.modulo().AUX_MAX_Transcoding = 0;
    r.clon(10, 0);
    EXPECT_EQ(r.unir(), 1);
}

TEST(Clonados, EveryOutputOfTheParentIsPassedOverWithoutAUXTranscoders) {
    Resultado r({"A", "B"});
    r.modulo("A").AUX_MAX_Transcoding = 0;
    const auto padre = r.poner(10, 1, 1, "A");
    r.salida(1, "A").MapaServicios.emplace(10, padre);
    r.salida(2, "A").MapaServicios.emplace(10, padre);
    r.poner(11, 1, 1, "A");
    r.poner(10, 1, 1, "B");
    r.clon(10, 1);
    EXPECT_EQ(r.unir(), 1);
    EXPECT_EQ(r.entrada(1, "B").MapaServicios.count(500), 1u);
    EXPECT_EQ(r.modulo("A").AUX_Transcoding, 0);
    EXPECT_EQ(r.modulo("B").AUX_Transcoding, 1);
    const Lineas esperado = {
        "7 SID a analizar:10, Parent_SID que buscamos: 10",
        "7 Encontrado el Servicio Padre: 10 en la Entrada",
        "7 Encontrado el Servicio Padre: 10 en la Salida",
        "7 Encontrado el Servicio Padre: 10 en la Salida",
        "7 Encontrado el Servicio Padre: 10 en la Salida",
        "7 SID a analizar:11, Parent_SID que buscamos: 10",
        "7 SID a analizar:10, Parent_SID que buscamos: 10",
        "7 Encontrado el Servicio Padre: 10 en la Entrada",
        "7 Encontrado el Servicio Padre: 10 en la Salida",
    };
    EXPECT_EQ(registro::hechos(), esperado);
}

TEST(Clonados, TwoClonesOfOneParentAreBothAttachedUnderOneKey) {
    Resultado r;
    r.poner(10, 1, 1);
    const auto primero = r.clon(10);
    const auto segundo = r.clon(10);
    EXPECT_EQ(r.unir(0), 1);
    EXPECT_EQ(r.unir(1), 1);
    EXPECT_EQ(r.entrada().MapaServicios.count(500), 2u);
    ASSERT_EQ(r.salida().MapaServicios.count(500), 2u);
    EXPECT_EQ(r.salida().MapaServicios.find(500)->second, primero);
    EXPECT_EQ(std::next(r.salida().MapaServicios.find(500))->second, segundo);
}

TEST(Clonados, ALoadedCloneJoinsItsParentUnderTheirCommonKey) {
    Resultado r;
    const auto padre = fabrica::cargar(r.motor, {10, 7, 50});
    const auto c = fabrica::cargar(r.motor, {10, 7, 50});
    r.entrada().confEntrada(50, 7);
    r.entrada().MapaServicios.emplace(10, padre);
    r.salida().MapaServicios.emplace(10, padre);
    EXPECT_EQ(r.unir(), 1);
    EXPECT_EQ(r.entrada().MapaServicios.count(10), 2u);
    EXPECT_EQ(std::next(r.salida().MapaServicios.begin())->second, c);
}

TEST(Clonados, TheParentIsKnownByItsOSIDWhateverItsStream) {
    Resultado r;
    r.poner(10, 1, 2);
    // Another service with the same OSID, of another stream, stands on the input and on an earlier output.
    const auto otro = r.poner(10, 1, 1);
    otro->ONID = 8;
    otro->TSID = 60;
    r.clon(10);
    EXPECT_EQ(r.unir(), 1);
    EXPECT_EQ(r.salida(1).MapaServicios.count(500), 1U);
    EXPECT_EQ(r.salida(2).MapaServicios.count(500), 0U);
}

} // namespace Clonados_test
