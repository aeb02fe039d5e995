// Whole runs, line by line and pause by pause: tests/transcripts/driver_*.txt.

#include "tRecalculo.h"

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"
#include "support/Transcripcion.h"

namespace PrincipalTranscripciones_test {

using namespace zarven;

namespace {

// The controller "A" with one output of 10000.
void cargarControlador(tRecalculo& motor, unsigned short entradas = 1) {
    fabrica::DatosModulo datos;
    datos.entradas = entradas;
    datos.controlador = true;
    fabrica::cargar(motor, datos);
}

void compararCorrida(tRecalculo& motor, const std::string& nombre) {
    registro::vaciar();
    EXPECT_EQ(motor.Main_Recalculo(), 1);
    compararTranscripcion(nombre);
}

} // namespace

TEST(PrincipalTranscripciones, NoServicesLoaded) {
    tRecalculo motor;
    cargarControlador(motor);
    compararCorrida(motor, "driver_no_services");
}

TEST(PrincipalTranscripciones, TheFirstStrategyPlacesEverything) {
    tRecalculo motor;
    cargarControlador(motor);
    fabrica::cargar(motor, {1, 7, 50, 0, 1000, 0, 0, "Uno"});
    fabrica::cargar(motor, {2, 7, 50, 0, 1000, 0, 0, "Dos"});
    compararCorrida(motor, "driver_all_placed");
}

TEST(PrincipalTranscripciones, TwoModulesTakeOneStreamEach) {
    tRecalculo motor;
    fabrica::DatosModulo datos;
    datos.mac = "B";
    datos.controlador = true;
    fabrica::cargar(motor, datos);
    fabrica::cargar(motor, fabrica::DatosModulo());
    fabrica::cargar(motor, {1, 7, 50, 0, 1000, 0, 0, "Uno"});
    fabrica::cargar(motor, {2, 8, 40, 0, 1000, 0, 0, "Dos"});
    compararCorrida(motor, "driver_two_modules");
}

TEST(PrincipalTranscripciones, FourStrategiesTie) {
    tRecalculo motor;
    cargarControlador(motor);
    fabrica::cargar(motor, {1, 7, 50, 0, 10000, 0, 0, "Grande"});
    compararCorrida(motor, "driver_tie");
}

// Two streams of one service that fits and one of two services that never fit: MAX places nothing, MAX MIN
// one service, MIN two and MIN MAX one.
TEST(PrincipalTranscripciones, LaterStrategiesAreBetterAndTheLastIsWorse) {
    tRecalculo motor;
    cargarControlador(motor, 2);
    fabrica::cargar(motor, {1, 7, 50, 0, 1000, 0, 0, "Uno"});
    fabrica::cargar(motor, {2, 7, 60, 0, 1000, 0, 0, "Dos"});
    fabrica::cargar(motor, {3, 8, 40, 0, 10000, 0, 0, "Tres"});
    fabrica::cargar(motor, {4, 8, 40, 0, 10000, 0, 0, "Cuatro"});
    compararCorrida(motor, "driver_better_and_worse");
}

// One clone joins its parent; the other needs an AUX transcoder that is not there.
TEST(PrincipalTranscripciones, ClonesAreAttachedOrLeftOver) {
    tRecalculo motor;
    cargarControlador(motor);
    fabrica::cargar(motor, {1, 7, 50, 2, 1000, 0, 0, "Padre"});
    fabrica::cargar(motor, {1, 7, 50, 0, 1000, 0, 0, "Clon"});
    fabrica::cargar(motor, {1, 7, 50, 0, 1000, 1, 0, "Clon transcodificado"});
    compararCorrida(motor, "driver_clones");
}

} // namespace PrincipalTranscripciones_test
