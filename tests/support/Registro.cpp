#include "support/Registro.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <utility>

namespace registro {

namespace {

struct Estado {
    std::vector<std::string> hechos;
    std::function<void(const std::string&)> oyente;
    std::size_t total = 0;
    bool callado = false;
};

Estado& estado() {
    static Estado unico;
    return unico;
}

const std::string PAUSA = "sleep ";

bool esPausa(const std::string& hecho) {
    return hecho.compare(0, PAUSA.size(), PAUSA) == 0;
}

std::string texto(const std::string& hecho) {
    return hecho.substr(2);
}

std::string formatear(const char* formato, va_list args) {
    va_list otra;
    va_copy(otra, args);
    const int largo = std::vsnprintf(nullptr, 0, formato, otra);
    va_end(otra);
    std::string resultado(static_cast<std::size_t>(largo), '\0');
    std::vsnprintf(resultado.data(), resultado.size() + 1, formato, args);
    return resultado;
}

void anotar(std::string hecho) {
    if (!estado().callado)
        estado().hechos.push_back(std::move(hecho));
}

} // namespace

void vaciar() {
    estado() = Estado();
}

const std::vector<std::string>& hechos() {
    return estado().hechos;
}

std::vector<std::string> textos() {
    std::vector<std::string> resultado;
    for (const std::string& hecho : hechos())
        if (!esPausa(hecho))
            resultado.push_back(texto(hecho));
    return resultado;
}

std::vector<unsigned> pausas() {
    std::vector<unsigned> resultado;
    for (const std::string& hecho : hechos())
        if (esPausa(hecho))
            resultado.push_back(static_cast<unsigned>(std::stoul(hecho.substr(PAUSA.size()))));
    return resultado;
}

std::size_t cuantas(const std::string& buscado) {
    const auto todos = textos();
    return static_cast<std::size_t>(std::count(todos.begin(), todos.end(), buscado));
}

std::size_t cuantasEmpiezan(const std::string& principio) {
    const auto todos = textos();
    return static_cast<std::size_t>(std::count_if(todos.begin(), todos.end(), [&](const std::string& uno) {
        return uno.compare(0, principio.size(), principio) == 0;
    }));
}

std::size_t posicion(const std::string& hecho, std::size_t desde) {
    const auto& todos = hechos();
    for (std::size_t i = desde; i < todos.size(); ++i)
        if (todos[i] == hecho)
            return i;
    return npos;
}

std::vector<std::string> sinMarcos() {
    std::vector<std::string> resultado;
    for (const std::string& hecho : hechos())
        if (esPausa(hecho) ||
            (texto(hecho).compare(0, 2, "||") != 0 && texto(hecho).compare(0, 6, "    ~~") != 0))
            resultado.push_back(hecho);
    return resultado;
}

void escuchar(std::function<void(const std::string&)> oyente) {
    estado().oyente = std::move(oyente);
}

void callar() {
    estado().callado = true;
}

std::size_t total() {
    return estado().total;
}

} // namespace registro

extern "C" void syslog(int nivel, const char* formato, ...) {
    va_list args;
    va_start(args, formato);
    const std::string linea = registro::formatear(formato, args);
    va_end(args);
    ++registro::estado().total;
    registro::anotar(std::to_string(nivel) + " " + linea);
    // The listener may look at anything, but logs nothing itself.
    if (registro::estado().oyente)
        registro::estado().oyente(linea);
}

extern "C" unsigned int sleep(unsigned int segundos) {
    registro::anotar(registro::PAUSA + std::to_string(segundos));
    return 0;
}
