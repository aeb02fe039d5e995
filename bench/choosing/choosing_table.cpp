// choosing_table make FOLDER: head-ends of several sizes, each with its integer program beside it.
// choosing_table print FOLDER JOBS: for each the engine, the choice after 1, 5 and 20 seconds, the optimum
// that the solver left beside it in NAME.txt, and the bound.

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "base/failure.h"
#include "generated_headend.h"
#include "headend/headend_json.h"
#include "placement/bound.h"
#include "placement/choosing/choosing.h"
#include "placement/running/capacity.h"
#include "placement/running/host.h"
#include "placement_program.h"

namespace fs = std::filesystem;
using namespace zarven::tool;
using generador::Parametros;

namespace {

using std::chrono_literals::operator""s;
constexpr std::array<std::chrono::milliseconds, 3> seconds = {1s, 5s, 20s};

std::string whole(const fs::path& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void make(const fs::path& folder, const Headend& headend) {
    const std::string& name = headend.name;
    std::ofstream(folder / (name + ".json")) << write_headend(headend);
    // The solver would not come to an end on larger ones.
    if (headend.services.size() < 300)
        std::ofstream(folder / (name + ".lp")) << placement_program(headend);
}

void make(const fs::path& folder, const std::string& name, const Parametros& parameters) {
    make(folder, generated_headend(name, parameters));
}

Parametros small(std::uint32_t seed, bool transcoding) {
    Parametros parameters = generador::escasa(seed);
    parameters.porcentajeTranscoding = transcoding ? 30 : 0;
    parameters.porcentajeClones = 0;
    return parameters;
}

Parametros of_size(std::uint32_t seed, unsigned streams, unsigned modules) {
    Parametros parameters;
    parameters.semilla = seed;
    parameters.streams = streams;
    parameters.serviciosPorStream = {1, 16};
    parameters.redes = 3;
    parameters.modulos = modules;
    parameters.entradas = {2, 4};
    parameters.salidas = {2, 4};
    parameters.pidsModulo = {30, 60};
    parameters.holgura = generador::Holgura::ESCASA;
    return parameters;
}

void make_all(const fs::path& folder) {
    fs::create_directories(folder);
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        make(folder, fmt::format("small-{:02}", seed), small(seed, false));
        make(folder, fmt::format("small-transcoded-{:02}", seed), small(100 + seed, true));
    }
    for (std::uint32_t seed = 1; seed <= 4; ++seed)
        make(folder, fmt::format("medium-{}", seed), of_size(seed, 16, 6));
    for (std::uint32_t seed = 1; seed <= 4; ++seed)
        make(folder, fmt::format("large-{}", seed), of_size(seed, 145, 32));
    for (const AlikeModules& modules : {AlikeModules{18, 8, 4, 40}, AlikeModules{18, 4, 4, 40},
                                        AlikeModules{36, 4, 2, 30}, AlikeModules{48, 2, 2, 15}})
        for (std::uint32_t seed = 1; seed <= 2; ++seed)
            make(folder, line_up(fmt::format("line-up-{}in-{}out-{}", modules.inputs, modules.outputs, seed),
                                 seed, modules));
}

/// What the solver has found, and whether it is proven; empty without a solver's file.
std::string optimum(const fs::path& file) {
    const std::string text = whole(file);
    const std::string label = "Objective value:";
    const std::size_t at = text.find(label);
    if (at == std::string::npos)
        return "";
    const double value = std::abs(std::strtod(text.c_str() + at + label.size(), nullptr));
    const bool is_proven = text.find("Optimal solution found") != std::string::npos;
    return fmt::format("{}{:.0f}", is_proven ? "" : ">=", value);
}

std::size_t bound(const Headend& headend) {
    const EngineRun loaded = load_engine(headend, headend.name);
    return bound_of(loaded, capacities_of(loaded)).most;
}

void print(const fs::path& folder, unsigned jobs) {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".json")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    fmt::print("{:<22}{:>9}{:>9}{:>8}{:>8}{:>8}{:>9}{:>7}\n", "head-end", "services", "engine", "1 s", "5 s",
               "20 s", "optimum", "bound");
    for (const fs::path& file : files) {
        const Headend headend = read_headend(file.string(), whole(file));
        const std::size_t most = bound(headend);
        std::array<std::uint64_t, seconds.size()> after{};
        const ChoosingLimits limits{seconds.back(), 0, 1, jobs};
        const Choice choice = choose_services(headend, limits, {}, [&](const ChoosingProgress& progress) {
            for (std::size_t place = 0; place < after.size(); ++place)
                if (progress.elapsed < seconds[place])
                    after[place] = progress.best.value;
            return !progress.is_sound || progress.best.value < most;
        });
        after.back() = choice.worth.value;
        const auto shown = [](std::uint64_t value, bool is_sound) {
            return fmt::format("{}{}", value, is_sound ? "" : "*");
        };
        fmt::print("{:<22}{:>9}{:>9}{:>8}{:>8}{:>8}{:>9}{:>7}\n", headend.name, headend.services.size(),
                   shown(choice.asked_for_all.value, choice.is_asked_for_all_sound), after[0], after[1],
                   shown(after[2], choice.is_sound), optimum(fs::path(file).replace_extension(".txt")), most);
        std::cout << std::flush;
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv, argv + argc);
    try {
        const host::Log silence("");
        if (argc == 3 && arguments[1] == "make")
            make_all(arguments[2]);
        else if (argc == 4 && arguments[1] == "print")
            print(arguments[2], static_cast<unsigned>(std::strtoul(argv[3], nullptr, 10)));
        else
            throw Failure("expected make FOLDER or print FOLDER JOBS");
    } catch (const Failure& failure) {
        std::fprintf(stderr, "choosing_table: %s\n", failure.what());
        return 1;
    }
    return 0;
}
