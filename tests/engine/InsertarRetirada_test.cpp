// Taking a placed service off again.

#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace InsertarRetirada_test {

using namespace zarven;

namespace {

// An engine whose one working module "A" has two inputs, two outputs and transcoders to spare.
struct Cabecera {
    tRecalculo motor;
    tMapaServicios pendientes;

    explicit Cabecera(const std::vector<unsigned long>& salidas = {10000, 10000}) {
        fabrica::DatosModulo datos;
        datos.entradas = 2;
        datos.salidas = salidas;
        datos.sd = 99;
        datos.hd = 99;
        fabrica::cargar(motor, datos);
        fabrica::preparar(motor);
        registro::vaciar();
    }

    tRec_Modulo& modulo() { return motor.Mapa_ModulosCabecera_Proceso.at("A"); }
    tRec_Entrada& entrada(unsigned short numero = 1) { return modulo().mapEntradas.at(numero); }
    tRec_Salida& salida(std::uint32_t numero = 1) { return modulo().mapSalidas.at(numero); }

    // Places the service on input 1; the result designates it from outside.
    tMapaServicios::iterator colocar(const std::shared_ptr<tRec_Servicio>& s) {
        const auto it = pendientes.emplace(s->idService, s);
        EXPECT_EQ(motor.Try_to_Insert_Service_Input_Output(modulo(), entrada(), it), 1u);
        registro::vaciar();
        return it;
    }

    std::uint32_t retirar(tMapaServicios::iterator it, unsigned short numero = 1) {
        return motor.Try_to_Delete_Service_Input_Output(motor.Mapa_ModulosCabecera_Proceso.find("A"),
                                                        modulo().mapEntradas.find(numero), it);
    }
};

std::shared_ptr<tRec_Servicio> servicio(unsigned short transcoding = 0, unsigned short videoFormat = 0) {
    fabrica::DatosServicio datos;
    datos.pids = 3;
    datos.transcoding = transcoding;
    datos.videoFormat = videoFormat;
    return fabrica::servicio(datos);
}

} // namespace

TEST(InsertarRetirada, UndoesAnInsertion) {
    for (const unsigned short transcoding : std::vector<unsigned short>{0, 1})
        for (const unsigned short formato : std::vector<unsigned short>{0, tRec_Servicio::VIDEO_HD}) {
            Cabecera c;
            c.modulo().PIDsModulo = 10;
            c.modulo().SD_Transcoding = 2;
            c.modulo().HD_Transcoding = 3;
            c.salida().BitRateActual = 5000;
            c.salida().NumServicios = 4;
            const auto it = c.colocar(servicio(transcoding, formato));
            EXPECT_EQ(c.modulo().PIDsModulo, 13);
            EXPECT_EQ(c.retirar(it), 1u);
            EXPECT_EQ(c.modulo().PIDsModulo, 10);
            EXPECT_EQ(c.modulo().SD_Transcoding, 2);
            EXPECT_EQ(c.modulo().HD_Transcoding, 3);
            EXPECT_EQ(c.salida().BitRateActual, 5000u);
            EXPECT_EQ(c.salida().NumServicios, 4u);
            EXPECT_TRUE(c.entrada().MapaServicios.empty());
            EXPECT_TRUE(c.salida().MapaServicios.empty());
            EXPECT_TRUE(registro::hechos().empty());
        }
}

TEST(InsertarRetirada, LeavesTheOtherServicesAlone) {
    Cabecera c;
    auto otro = fabrica::servicio({2});
    c.colocar(otro);
    const auto it = c.colocar(servicio());
    c.retirar(it);
    EXPECT_EQ(c.entrada().MapaServicios.count(2), 1u);
    EXPECT_EQ(c.salida().MapaServicios.count(2), 1u);
    EXPECT_EQ(c.salida().NumServicios, 1u);
}

TEST(InsertarRetirada, FindsNothingOnAModuleWithoutOutputs) {
    Cabecera c;
    const auto it = c.colocar(servicio());
    c.modulo().mapSalidas.clear();
    EXPECT_EQ(c.retirar(it), 0u);
    EXPECT_EQ(c.entrada().MapaServicios.size(), 1u);
    EXPECT_EQ(c.modulo().PIDsModulo, 3);
}

TEST(InsertarRetirada, RefusesAServiceThatIsOnNoOutput) {
    Cabecera c;
    const auto it = c.colocar(servicio());
    c.salida().MapaServicios.clear();
    EXPECT_EQ(c.retirar(it), 0u);
    EXPECT_EQ(c.entrada().MapaServicios.size(), 1u);
    EXPECT_EQ(c.modulo().PIDsModulo, 3);
    EXPECT_EQ(c.salida().NumServicios, 1u);
    EXPECT_TRUE(registro::hechos().empty());
}

TEST(InsertarRetirada, RefusesAServiceThatIsOnAnotherInput) {
    Cabecera c;
    const auto it = c.colocar(servicio());
    EXPECT_EQ(c.retirar(it, 2), 0u);
    EXPECT_EQ(c.salida().MapaServicios.size(), 1u);
    EXPECT_EQ(c.entrada().MapaServicios.size(), 1u);
    EXPECT_EQ(c.modulo().PIDsModulo, 3);
    EXPECT_EQ(c.salida().BitRateActual, 1000u);
    EXPECT_EQ(c.salida().NumServicios, 1u);
}

TEST(InsertarRetirada, TakesAServiceOffTheFirstOutputThatCarriesItsKey) {
    Cabecera c({10000, 10000, 10000});
    const auto s = servicio();
    const auto it = c.colocar(s);
    c.salida(1).MapaServicios.clear();
    for (const std::uint32_t numero : {2u, 3u}) {
        c.salida(numero).MapaServicios.emplace(1, s);
        c.salida(numero).BitRateActual = 1000;
        c.salida(numero).NumServicios = 1;
    }
    EXPECT_EQ(c.retirar(it), 1u);
    EXPECT_EQ(c.salida(1).NumServicios, 1u);
    EXPECT_EQ(c.salida(1).BitRateActual, 1000u);
    EXPECT_TRUE(c.salida(2).MapaServicios.empty());
    EXPECT_EQ(c.salida(2).NumServicios, 0u);
    EXPECT_EQ(c.salida(2).BitRateActual, 0u);
    EXPECT_EQ(c.salida(3).MapaServicios.size(), 1u);
    EXPECT_EQ(c.salida(3).NumServicios, 1u);
}

TEST(InsertarRetirada, TakesBothEntriesOfAKeyOffAndCountsOne) {
    Cabecera c;
    const auto s = servicio();
    c.colocar(s);
    const auto it = c.colocar(s);
    ASSERT_EQ(c.salida().NumServicios, 2u);
    EXPECT_EQ(c.retirar(it), 1u);
    EXPECT_TRUE(c.entrada().MapaServicios.empty());
    EXPECT_TRUE(c.salida().MapaServicios.empty());
    EXPECT_EQ(c.salida().NumServicios, 1u);
    EXPECT_EQ(c.salida().BitRateActual, 1000u);
    EXPECT_EQ(c.modulo().PIDsModulo, 3);
}

TEST(InsertarRetirada, LooksForTheKeyOfTheEntryAndGivesItsServiceBack) {
    Cabecera c;
    c.colocar(servicio());
    fabrica::DatosServicio datos;
    datos.clave = 9; // filed under key 1 below
    datos.pids = 2;
    datos.bitrate = 100;
    tMapaServicios aparte;
    EXPECT_EQ(c.retirar(aparte.emplace(1, fabrica::servicio(datos))), 1u);
    EXPECT_TRUE(c.entrada().MapaServicios.empty());
    EXPECT_EQ(c.modulo().PIDsModulo, 1);
    EXPECT_EQ(c.salida().BitRateActual, 900u);
}

TEST(InsertarRetirada, MayBeToldTheEntryOfTheInputItself) {
    Cabecera c;
    auto s = servicio(1);
    c.colocar(s);
    c.pendientes.clear();
    s.reset(); // the input and the output are the last holders
    EXPECT_EQ(c.retirar(c.entrada().MapaServicios.begin()), 1u);
    EXPECT_TRUE(c.entrada().MapaServicios.empty());
    EXPECT_EQ(c.modulo().SD_Transcoding, 0);
}

TEST(InsertarRetirada, MayBeToldTheEntryOfTheOutputItself) {
    Cabecera c;
    auto s = servicio(1, tRec_Servicio::VIDEO_HD);
    c.colocar(s);
    c.pendientes.clear();
    s.reset();
    EXPECT_EQ(c.retirar(c.salida().MapaServicios.begin()), 1u);
    EXPECT_TRUE(c.salida().MapaServicios.empty());
    EXPECT_EQ(c.modulo().HD_Transcoding, 0);
}

TEST(InsertarRetirada, GivesNoTranscoderBackForAServiceThatNeededNone) {
    for (const unsigned short transcoding : std::vector<unsigned short>{0, 2}) {
        Cabecera c;
        const auto it = c.colocar(servicio(transcoding));
        c.modulo().SD_Transcoding = 5;
        c.modulo().HD_Transcoding = 5;
        c.retirar(it);
        EXPECT_EQ(c.modulo().SD_Transcoding, 5);
        EXPECT_EQ(c.modulo().HD_Transcoding, 5);
    }
}

TEST(InsertarRetirada, GivesAnHDTranscoderBackForAnHDServiceOnly) {
    Cabecera c;
    const auto hd = c.colocar(servicio(1, tRec_Servicio::VIDEO_HD));
    c.modulo().SD_Transcoding = 5;
    c.modulo().HD_Transcoding = 5;
    c.retirar(hd);
    EXPECT_EQ(c.modulo().SD_Transcoding, 5);
    EXPECT_EQ(c.modulo().HD_Transcoding, 4);
    const auto sd = c.colocar(servicio(1, 3));
    c.retirar(sd);
    EXPECT_EQ(c.modulo().SD_Transcoding, 5);
    EXPECT_EQ(c.modulo().HD_Transcoding, 4);
}

TEST(InsertarRetirada, CountersWrapAroundInsteadOfStoppingAtZero) {
    Cabecera c;
    const auto it = c.colocar(servicio());
    c.modulo().PIDsModulo = 1;
    c.salida().BitRateActual = 1;
    c.salida().NumServicios = 0;
    EXPECT_EQ(c.retirar(it), 1u);
    EXPECT_EQ(c.modulo().PIDsModulo, 65534);
    EXPECT_EQ(c.salida().BitRateActual, 4294966297u);
    EXPECT_EQ(c.salida().NumServicios, 4294967295u);
}

} // namespace InsertarRetirada_test
