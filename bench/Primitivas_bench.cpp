// The placement primitives, each on its own, on a head-end of the size given.

#include <iterator>

#include <benchmark/benchmark.h>

#include "Bitacora.h"
#include "Medida.h"

using namespace zarven;

namespace {

// A loaded engine with its working copies, and the log silent.
struct Banco {
    explicit Banco(const benchmark::State& state) {
        bitacora::poner(bitacora::Modo::callada);
        generador::cargar(
            motor, medida::cabecera(static_cast<unsigned>(state.range(0)), generador::Holgura::AMPLIA));
        reponer();
    }
    void reponer() {
        motor.Mapa_ModulosCabecera_Proceso = motor.Mapa_ModulosCabecera_Inicial;
        motor.Mapa_ONIDs = motor.Mapa_ONIDs_Inicial;
    }
    tMapaModulos::iterator modulo() { return motor.Mapa_ModulosCabecera_Proceso.begin(); }
    tMapaServicios& servicios() {
        return motor.Mapa_ONIDs.begin()->second.MapRec_TSIDs.begin()->second.MapRec_Services;
    }

    tRecalculo motor;
};

void insertarYQuitar(benchmark::State& state) {
    Banco banco(state);
    const auto modulo = banco.modulo();
    const auto entrada = modulo->second.mapEntradas.begin();
    const auto servicio = banco.servicios().begin();
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            banco.motor.Try_to_Insert_Service_Input_Output(modulo->second, entrada->second, servicio));
        benchmark::DoNotOptimize(banco.motor.Try_to_Delete_Service_Input_Output(modulo, entrada, servicio));
    }
}

void buscarSalida(benchmark::State& state) {
    Banco banco(state);
    const tRec_Modulo vacio = banco.modulo()->second;
    for (auto _ : state) {
        tRec_Modulo modulo = vacio;
        benchmark::DoNotOptimize(
            banco.motor.Find_OutputID_to_insert_Service(modulo, banco.servicios().rbegin()));
    }
}

void asignar(benchmark::State& state) {
    Banco banco(state);
    for (auto _ : state) {
        state.PauseTiming();
        banco.reponer();
        tRec_Modulo& modulo = banco.modulo()->second;
        state.ResumeTiming();
        benchmark::DoNotOptimize(
            banco.motor.Asignar_listaServicios(modulo, modulo.mapEntradas.begin()->second, 1, false));
    }
    state.SetComplexityN(state.range(0));
}

void completar(benchmark::State& state) {
    Banco banco(state);
    for (auto _ : state) {
        state.PauseTiming();
        banco.reponer();
        tRec_Modulo& modulo = banco.modulo()->second;
        tRec_Entrada& entrada = modulo.mapEntradas.begin()->second;
        entrada.confEntrada(banco.servicios().begin()->second->TSID, banco.servicios().begin()->second->ONID);
        state.ResumeTiming();
        benchmark::DoNotOptimize(banco.motor.Fill_Services_in_Module_Input(modulo, entrada));
    }
}

void swapModulos(benchmark::State& state) {
    Banco banco(state);
    banco.motor.RecalculationAlgorithm(1, 1);
    tRec_Modulo& uno = banco.modulo()->second;
    tRec_Modulo& otro = std::next(banco.modulo())->second;
    for (auto _ : state)
        benchmark::DoNotOptimize(banco.motor.swapModulos(uno, otro));
}

void igualarSalidas(benchmark::State& state) {
    Banco banco(state);
    banco.motor.RecalculationAlgorithm(1, 1);
    const tMapaModulos lleno = banco.motor.Mapa_ModulosCabecera_Proceso;
    for (auto _ : state) {
        state.PauseTiming();
        tMapaModulos modulos = lleno;
        state.ResumeTiming();
        benchmark::DoNotOptimize(banco.motor.Load_Balance(&modulos));
    }
    state.SetComplexityN(state.range(0));
}

void copiarIndice(benchmark::State& state) {
    Banco banco(state);
    for (auto _ : state) {
        tMapaONIDs copia = banco.motor.Mapa_ONIDs_Inicial;
        benchmark::DoNotOptimize(copia);
    }
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(insertarYQuitar)->Arg(500);
BENCHMARK(buscarSalida)->Arg(500);
BENCHMARK(asignar)->RangeMultiplier(4)->Range(500, 8000)->Complexity();
BENCHMARK(completar)->Arg(500);
BENCHMARK(swapModulos)->Arg(500);
BENCHMARK(igualarSalidas)->RangeMultiplier(4)->Range(500, 8000)->Complexity();
BENCHMARK(copiarIndice)->RangeMultiplier(4)->Range(500, 8000)->Complexity();
BENCHMARK_MAIN();
