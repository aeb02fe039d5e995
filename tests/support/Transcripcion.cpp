#include "support/Transcripcion.h"

#include <cstdlib>
#include <fstream>

#include <gtest/gtest.h>

#include "support/Registro.h"

namespace grabado {

namespace {

bool graba = false;

std::string ruta(const std::string& nombre) {
    return std::string(RECALCULO_TRANSCRIPTS) + "/" + nombre + ".txt";
}

} // namespace

bool grabando() {
    return graba;
}

void grabarDesdeAhora() {
    graba = true;
}

std::vector<std::string> leer(const std::string& nombre) {
    // Who sets it wants to record, and no variable does: what passes must not be taken for recorded.
    EXPECT_EQ(std::getenv("RECALCULO_RECORD"), nullptr)
        << "RECALCULO_RECORD is set, and records nothing: scripts/record.sh does";
    std::ifstream archivo(ruta(nombre));
    EXPECT_TRUE(archivo) << "cannot read " << ruta(nombre);
    std::vector<std::string> lineas;
    for (std::string linea; std::getline(archivo, linea);)
        lineas.push_back(linea);
    return lineas;
}

void escribir(const std::string& nombre, const std::vector<std::string>& lineas) {
    std::ofstream archivo(ruta(nombre));
    for (const std::string& linea : lineas)
        archivo << linea << '\n';
    ASSERT_TRUE(archivo.flush()) << "cannot write " << ruta(nombre);
}

} // namespace grabado

void compararTranscripcion(const std::string& nombre) {
    const auto& visto = registro::hechos();
    if (grabado::grabando()) {
        grabado::escribir(nombre, visto);
        return;
    }
    const auto esperado = grabado::leer(nombre);
    for (std::size_t i = 0; i < esperado.size() && i < visto.size(); ++i)
        ASSERT_EQ(visto[i], esperado[i]) << nombre << ".txt:" << i + 1;
    ASSERT_EQ(visto.size(), esperado.size()) << nombre << ".txt has another number of lines";
}
