// The same transcripts everywhere: runs a corpus of head-ends and holds each run's log, pauses and result
// against what was recorded. One program of the library's sources and nothing else, so that any compiler with
// any flags for any machine can build it.
//
//   everywhere FOLDER           compares with FOLDER/digests.txt and the whole transcripts beside it
//   everywhere --record FOLDER  writes them anew
//   everywhere --print NAME     prints the whole transcript of one head-end
//   everywhere --threads N FOLDER
//                               the corpus in N threads at once, while the log mask changes: the results must
//                               be those recorded

#include <atomic>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <syslog.h>
#include <thread>

#include "everywhere/Corpus.h"
#include "support/Huella.h"
#include "support/Testigo.h"
#include "tRecalculo.h"

using namespace zarven;

namespace {

// Those that are recorded whole, to be read.
const std::set<std::string> ENTERAS = {"small-27559-logged", "small-24191-masked"};

std::string hexadecimal(std::uint64_t n) {
    char texto[17];
    std::snprintf(texto, sizeof texto, "%016" PRIx64, n);
    return texto;
}

void cargarCallado(tRecalculo& motor, const corpus::Pieza& pieza) {
    testigo::empezar();
    generador::cargar(motor, pieza.parametros);
    testigo::empezar();
}

void enmascarar(const corpus::Pieza& pieza) {
    ::setlogmask(LOG_UPTO(pieza.enmascarada ? LOG_NOTICE : LOG_DEBUG));
}

std::string* transcripcion = nullptr;

void anotar(int nivel, const char* texto, unsigned segundos) {
    *transcripcion += nivel < 0 ? "sleep " + std::to_string(segundos) : std::to_string(nivel) + " " + texto;
    *transcripcion += '\n';
}

std::string entera(const corpus::Pieza& pieza) {
    std::string texto;
    tRecalculo motor;
    enmascarar(pieza);
    cargarCallado(motor, pieza);
    transcripcion = &texto;
    testigo::escuchar(anotar);
    motor.Main_Recalculo();
    testigo::empezar();
    return texto;
}

// "small-1-logged 4711 lines 23 s code 1 log 0123456789abcdef result 0123456789abcdef"
std::string resumen(const corpus::Pieza& pieza) {
    tRecalculo motor;
    enmascarar(pieza);
    cargarCallado(motor, pieza);
    const int codigo = motor.Main_Recalculo();
    const testigo::Visto& visto = testigo::visto();
    return pieza.nombre + " " + std::to_string(visto.lineas) + " lines " + std::to_string(visto.segundos) +
           " s code " + std::to_string(codigo) + " log " + hexadecimal(visto.huella.valor()) + " result " +
           hexadecimal(huella::resultado(motor));
}

std::string leer(const std::string& ruta) {
    std::ifstream archivo(ruta);
    if (!archivo) {
        std::fprintf(stderr, "cannot read %s\n", ruta.c_str());
        std::exit(2);
    }
    std::ostringstream texto;
    texto << archivo.rdbuf();
    return texto.str();
}

std::map<std::string, std::string> grabados(const std::string& carpeta) {
    std::map<std::string, std::string> lineas;
    std::istringstream archivo(leer(carpeta + "/digests.txt"));
    for (std::string linea; std::getline(archivo, linea);)
        lineas[linea.substr(0, linea.find(' '))] = linea;
    return lineas;
}

int grabar(const std::string& carpeta) {
    std::ofstream archivo(carpeta + "/digests.txt");
    for (const corpus::Pieza& pieza : corpus::todas()) {
        archivo << resumen(pieza) << '\n';
        if (ENTERAS.count(pieza.nombre) != 0)
            std::ofstream(carpeta + "/" + pieza.nombre + ".txt") << entera(pieza);
    }
    return archivo.flush() ? 0 : 2;
}

int comparar(const std::string& carpeta) {
    auto esperados = grabados(carpeta);
    std::size_t distintas = 0;
    std::size_t cuantas = 0;
    for (const corpus::Pieza& pieza : corpus::todas()) {
        const std::string visto = resumen(pieza);
        ++cuantas;
        const bool igual = visto == esperados[pieza.nombre] &&
                           (ENTERAS.count(pieza.nombre) == 0 ||
                            entera(pieza) == leer(carpeta + "/" + pieza.nombre + ".txt"));
        if (igual)
            continue;
        if (++distintas <= 10)
            std::printf("recorded: %s\nhere:     %s\n", esperados[pieza.nombre].c_str(), visto.c_str());
    }
    // One that is no longer run would be held to nothing.
    if (esperados.size() != cuantas)
        std::printf("%zu head-ends are recorded\n", esperados.size());
    std::printf("%zu head-ends, %zu differ from what was recorded\n", cuantas, distintas);
    return distintas == 0 && esperados.size() == cuantas ? 0 : 1;
}

int imprimir(const std::string& nombre) {
    for (const corpus::Pieza& pieza : corpus::todas())
        if (pieza.nombre == nombre) {
            std::fputs(entera(pieza).c_str(), stdout);
            return 0;
        }
    std::fprintf(stderr, "no head-end of that name: %s\n", nombre.c_str());
    return 2;
}

// The result of a run does not depend on the mask, and not on other engines.
int enHilos(unsigned cuantos, const std::string& carpeta) {
    const auto esperados = grabados(carpeta);
    const auto piezas = corpus::todas();
    std::atomic<std::size_t> proxima{0};
    std::atomic<std::size_t> corridas{0};
    std::atomic<std::size_t> distintas{0};
    std::atomic<bool> seguir{true};
    std::thread enmascarador([&seguir] {
        while (seguir) {
            ::setlogmask(LOG_UPTO(LOG_NOTICE));
            std::this_thread::yield();
            ::setlogmask(LOG_UPTO(LOG_DEBUG));
            std::this_thread::yield();
        }
    });
    std::vector<std::thread> hilos;
    for (unsigned n = 0; n < cuantos; ++n)
        hilos.emplace_back([&] {
            for (std::size_t i = proxima++; i < piezas.size(); i = proxima++) {
                // The large ones would log for minutes.
                if (piezas[i].parametros.streams > 10)
                    continue;
                tRecalculo motor;
                cargarCallado(motor, piezas[i]);
                motor.Main_Recalculo();
                ++corridas;
                const std::string& linea = esperados.at(piezas[i].nombre);
                distintas += linea.substr(linea.rfind(' ') + 1) != hexadecimal(huella::resultado(motor));
            }
        });
    for (std::thread& hilo : hilos)
        hilo.join();
    seguir = false;
    enmascarador.join();
    std::printf("%zu runs in %u threads, %zu results differ from what was recorded\n", corridas.load(),
                cuantos, distintas.load());
    return corridas != 0 && distintas == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> palabras(argv + 1, argv + argc);
    if (palabras.size() == 1)
        return comparar(palabras[0]);
    if (palabras.size() == 2 && palabras[0] == "--record")
        return grabar(palabras[1]);
    if (palabras.size() == 2 && palabras[0] == "--print")
        return imprimir(palabras[1]);
    if (palabras.size() == 3 && palabras[0] == "--threads")
        return enHilos(static_cast<unsigned>(std::strtoul(palabras[1].c_str(), nullptr, 10)), palabras[2]);
    std::fputs("everywhere [--record | --print | --threads N] FOLDER or NAME\n", stderr);
    return 2;
}
