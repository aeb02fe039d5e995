// The driver where more than one strategy, or more than one run, decides.

#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace PrincipalVarias_test {

using namespace zarven;

TEST(PrincipalVarias, ALaterStrategyThatPlacesEverythingIsKept) {
    // A carries two services, B many. MAX gives A the stream of three, of which one stays out; MIN gives it
    // that of two, and B the other.
    tRecalculo motor;
    fabrica::DatosModulo datos;
    datos.salidas = {2500};
    datos.controlador = true;
    fabrica::cargar(motor, datos);
    datos.mac = "B";
    datos.salidas = {10000};
    fabrica::cargar(motor, datos);
    for (unsigned short clave = 1; clave <= 3; ++clave)
        fabrica::cargar(motor, {clave, 1, 1});
    for (unsigned short clave = 4; clave <= 5; ++clave)
        fabrica::cargar(motor, {clave, 1, 2});

    registro::vaciar();
    ASSERT_EQ(motor.Main_Recalculo(), 1);
    EXPECT_TRUE(registro::contiene(" (count_servicios_proceso (1) < count_servicios_final (-1))"));
    EXPECT_TRUE(registro::contiene(" (count_servicios_proceso (0) < count_servicios_final (1))"));
    EXPECT_TRUE(motor.Mapa_ONIDs_Final.empty());
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.at("A").mapEntradas.at(1).TSID, 2);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.at("B").mapSalidas.at(1).NumServicios, 3U);
    EXPECT_TRUE(registro::contiene(
        "HEADEND::: **************** Recalculation: 0 services discarted *******************"));
}

TEST(PrincipalVarias, ASecondRunCountsTheTranscodersOfClonesAnew) {
    tRecalculo motor;
    fabrica::DatosModulo datos;
    datos.controlador = true;
    datos.aux = 1;
    fabrica::cargar(motor, datos);
    fabrica::cargar(motor, {1});
    const auto clon = [&motor] {
        fabrica::DatosServicio nuevo{1};
        nuevo.transcoding = 1;
        fabrica::cargar(motor, nuevo);
    };

    clon();
    motor.Main_Recalculo();
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.at("A").AUX_Transcoding, 1);
    EXPECT_TRUE(motor.listaServiciosClonados.empty());

    // The transcoder is free again, and taken by the clone that was loaded since.
    clon();
    motor.Main_Recalculo();
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.at("A").AUX_Transcoding, 1);
    EXPECT_TRUE(motor.listaServiciosClonados.empty());

    motor.Main_Recalculo();
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Final.at("A").AUX_Transcoding, 0);
}

} // namespace PrincipalVarias_test
