// tabla RUN.json [BEFORE.json]: one table of what Recalculo_bench measured, with the ratios that matter:
// against the same run of an earlier library, against the run's own lines emitted alone, and growth.
//
// CPU time only; a ratio holds on any machine, a time on the one it was taken on.

#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <optional>
#include <string>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace {

// CPU milliseconds by "tight/masked" and number of services.
using Serie = std::map<int, double>;
struct Medidas {
    std::map<std::string, Serie> carreras;
    std::map<std::string, Serie> lineas;
};

Medidas leer(const char* ruta) {
    std::ifstream archivo(ruta);
    const auto raiz = nlohmann::json::parse(archivo);
    Medidas medidas;
    for (const auto& una : raiz.at("benchmarks")) {
        if (una.value("run_type", "") != "iteration")
            continue;
        // Main_Recalculo/tight/masked/8000
        const std::string nombre = una.at("name");
        const std::size_t primera = nombre.find('/');
        const std::size_t ultima = nombre.rfind('/');
        const std::string serie = nombre.substr(primera + 1, ultima - primera - 1);
        auto& destino = nombre.compare(0, 5, "Lines") == 0 ? medidas.lineas : medidas.carreras;
        destino[serie][std::stoi(nombre.substr(ultima + 1))] = una.at("cpu_time");
    }
    return medidas;
}

std::optional<double> buscar(const std::map<std::string, Serie>& series, const std::string& serie,
                             int servicios) {
    const auto una = series.find(serie);
    if (una == series.end() || una->second.count(servicios) == 0)
        return {};
    return una->second.at(servicios);
}

std::string veces(std::optional<double> uno, std::optional<double> otro) {
    return uno && otro ? fmt::format("{:.2f}", *uno / *otro) : "";
}

void imprimir(const Medidas& ahora, const Medidas& antes) {
    fmt::print("{:<18} {:>8} {:>12} {:>14} {:>16} {:>12}\n", "head-end/log", "services", "CPU ms",
               "before / now", "now / own lines", "growth");
    for (const auto& [nombre, serie] : ahora.carreras)
        for (const auto& [servicios, ms] : serie) {
            // The exponent with which the time has grown since four times fewer services.
            const auto cuarta = buscar(ahora.carreras, nombre, servicios / 4);
            const std::string crece =
                cuarta ? fmt::format("n^{:.2f}", std::log(ms / *cuarta) / std::log(4)) : "";
            fmt::print("{:<18} {:>8} {:>12.3f} {:>14} {:>16} {:>12}\n", nombre, servicios, ms,
                       veces(buscar(antes.carreras, nombre, servicios), ms),
                       veces(ms, buscar(ahora.lineas, nombre, servicios)), crece);
        }
    // What masking saves against a silent log of the library before.
    for (const auto& [nombre, serie] : ahora.carreras)
        if (const auto corte = nombre.find("/masked"); corte != std::string::npos)
            for (const auto& [servicios, ms] : serie)
                if (const auto callada =
                        buscar(antes.carreras, nombre.substr(0, corte) + "/silent", servicios))
                    fmt::print("{} masked, {} services: {:.0f} times less than a silent run before\n",
                               nombre.substr(0, corte), servicios, *callada / ms);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        fmt::print(stderr, "usage: tabla RUN.json [BEFORE.json]\n");
        return 2;
    }
    imprimir(leer(argv[1]), argc == 3 ? leer(argv[2]) : Medidas());
    return 0;
}
