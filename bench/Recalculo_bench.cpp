// Main_Recalculo by size, by how tight the head-end is, and by what becomes of the log; and the floor under
// it, the same lines emitted alone.

#include <optional>
#include <string>

#include <benchmark/benchmark.h>

#include "Bitacora.h"
#include "Correr.h"
#include "Medida.h"

using namespace zarven;
using bitacora::Modo;
using generador::Holgura;

namespace {

struct Nombre {
    const char* nombre;
    Holgura holgura;
};
constexpr Nombre HOLGURAS[] = {
    {"roomy", Holgura::AMPLIA}, {"fair", Holgura::JUSTA}, {"tight", Holgura::ESCASA}};

struct NombreModo {
    const char* nombre;
    Modo modo;
    // A log that is formatted costs a hundred times what a run costs.
    int servicios_max;
};
constexpr NombreModo MODOS[] = {{"silent", Modo::callada, 16000},
                                {"formatted", Modo::formateada, 2000},
                                {"masked", Modo::enmascarada, 16000}};

// The lines of a whole run have to fit the memory.
constexpr int SERVICIOS_SUELO = 1000;

void recalcular(benchmark::State& state, Holgura holgura, Modo modo) {
    const auto servicios = static_cast<unsigned>(state.range(0));
    std::size_t fuera = 0;
    for (auto _ : state) {
        state.PauseTiming();
        std::optional<tRecalculo> motor;
        motor.emplace();
        bitacora::poner(Modo::callada);
        generador::cargar(*motor, medida::cabecera(servicios, holgura));
        bitacora::poner(modo);
        state.ResumeTiming();

        motor->Main_Recalculo();

        state.PauseTiming();
        fuera = 0;
        for (const auto& [onid, red] : motor->Mapa_ONIDs_Final)
            for (const auto& [tsid, stream] : red.MapRec_TSIDs)
                fuera += stream.MapRec_Services.size();
        motor.reset();
        state.ResumeTiming();
    }
    state.counters["lines"] = static_cast<double>(bitacora::lineas());
    state.counters["left_out"] = static_cast<double>(fuera);
    state.SetComplexityN(state.range(0));
}

void repetirLineas(benchmark::State& state, Holgura holgura, Modo modo) {
    tRecalculo motor;
    bitacora::poner(Modo::callada);
    generador::cargar(motor, medida::cabecera(static_cast<unsigned>(state.range(0)), holgura));
    bitacora::poner(Modo::grabando);
    motor.Main_Recalculo();
    for (auto _ : state)
        bitacora::repetir(modo);
    bitacora::poner(Modo::callada);
}

void registrar() {
    for (const auto& holgura : HOLGURAS)
        for (const auto& modo : MODOS) {
            const std::string nombre = std::string("/") + holgura.nombre + "/" + modo.nombre;
            auto* carrera = benchmark::RegisterBenchmark(("Main_Recalculo" + nombre).c_str(), recalcular,
                                                         holgura.holgura, modo.modo);
            for (int servicios = 500; servicios <= modo.servicios_max; servicios *= 2)
                carrera->Arg(servicios);
            carrera->Unit(benchmark::kMillisecond)->Complexity();
            if (modo.modo != Modo::enmascarada)
                benchmark::RegisterBenchmark(("Lines_alone" + nombre).c_str(), repetirLineas, holgura.holgura,
                                             modo.modo)
                    ->Arg(500)
                    ->Arg(SERVICIOS_SUELO)
                    ->Unit(benchmark::kMillisecond);
        }
}

} // namespace

int main(int argc, char** argv) {
    registrar();
    return medida::correr(argc, argv);
}
