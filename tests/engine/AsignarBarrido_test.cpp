// A fill sweep offers the working index to input after input. Whatever it remembers between them, each input
// must be given what it would be given alone.

#include "support/Lineas.h"
#include "tRecalculo.h"

#include <random>

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"

namespace AsignarBarrido_test {

using namespace zarven;

namespace {

using Lineas = std::vector<std::string>;

const std::string FIN = lineas::hecho(lineas::FIN_DEL_RELLENO);
const std::string NADA = lineas::hecho(lineas::NO_SE_PUEDE_MAS);

// Three modules with two inputs each and some dozens of services on a few streams: keys around 0, every
// kind of transcoding, and more load than the outputs take.
tRecalculo alAzar(unsigned semilla) {
    std::mt19937 azar(semilla);
    const auto hasta = [&azar](unsigned n) { return static_cast<unsigned short>(azar() % n); };
    tRecalculo motor;
    for (const char* mac : {"A", "B", "C"}) {
        fabrica::DatosModulo datos;
        datos.mac = mac;
        datos.entradas = 2;
        datos.salidas = {4000ul + hasta(4) * 1000ul};
        datos.sd = hasta(3);
        fabrica::cargar(motor, datos);
    }
    const unsigned transcodificados = 1u + hasta(3); // without, with, and with values that are never placed
    const bool positivas = hasta(4) != 0;
    const unsigned servicios = 10u + hasta(30);
    for (unsigned i = 0; i < servicios; ++i) {
        const auto s = fabrica::servicio(
            {1, static_cast<unsigned short>(1 + hasta(2)), static_cast<unsigned short>(1 + hasta(4)), 0,
             1000ul * hasta(4), static_cast<unsigned short>(hasta(4) == 0 ? hasta(transcodificados) : 0)});
        s->idService = static_cast<long>(hasta(30)) - (positivas ? 10 : 30);
        motor.addRec_Servicio(s);
    }
    fabrica::preparar(motor);
    registro::vaciar();
    return motor;
}

// The first sweep of a pass, without the lines of its frame.
Lineas barrido(tRecalculo& motor, char opcion, bool transcoding) {
    motor.RecalculationAlgorithm(opcion, transcoding ? 0 : 1);
    Lineas lineas;
    for (const auto& hecho : registro::hechos()) {
        if (hecho == FIN)
            break;
        if (hecho != NADA && hecho.compare(0, 27, FIN, 0, 27) != 0)
            lineas.push_back(hecho);
    }
    return lineas;
}

Lineas unaPorUna(tRecalculo& motor, char modo, bool transcoding) {
    for (auto& [mac, modulo] : motor.Mapa_ModulosCabecera_Proceso)
        for (auto& [numero, entrada] : modulo.mapEntradas)
            if (entrada.MapaServicios.empty() && !motor.Mapa_ONIDs.empty())
                motor.Asignar_listaServicios(modulo, entrada, modo, transcoding);
    return registro::hechos();
}

} // namespace

TEST(AsignarBarrido, GivesEachInputWhatItWouldBeGivenAlone) {
    constexpr char MAX = 1;
    constexpr char MIN = 3; // the option and the mode have one number
    for (unsigned semilla = 0; semilla < 60; ++semilla)
        for (const char modo : {MAX, MIN})
            for (const bool transcoding : {false, true}) {
                tRecalculo solo = alAzar(semilla);
                const Lineas esperado = unaPorUna(solo, modo, transcoding);
                tRecalculo seguido = alAzar(semilla);
                ASSERT_EQ(barrido(seguido, modo, transcoding), esperado) << "seed " << semilla;
            }
}

TEST(AsignarBarrido, ChangesBetweenTwoPassesAreSeen) {
    tRecalculo motor;
    fabrica::cargar(motor, fabrica::DatosModulo());
    fabrica::cargar(motor, {1, 7, 50});
    fabrica::preparar(motor);
    motor.RecalculationAlgorithm(1, 1);
    EXPECT_TRUE(motor.Mapa_ONIDs.empty());
    fabrica::cargar(motor, {2, 8, 40});
    fabrica::cargar(motor, {3, 8, 40});
    fabrica::preparar(motor);
    motor.RecalculationAlgorithm(1, 1);
    EXPECT_EQ(motor.Mapa_ModulosCabecera_Proceso.at("A").mapEntradas.at(1).TSID, 40);
}

} // namespace AsignarBarrido_test
