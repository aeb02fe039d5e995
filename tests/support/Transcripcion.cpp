#include "support/Transcripcion.h"

#include <cstdlib>
#include <fstream>
#include <vector>

#include <gtest/gtest.h>

#include "support/Registro.h"

namespace {

std::vector<std::string> leer(const std::string& ruta) {
    std::ifstream archivo(ruta);
    EXPECT_TRUE(archivo) << "cannot read " << ruta;
    std::vector<std::string> lineas;
    for (std::string linea; std::getline(archivo, linea);)
        lineas.push_back(linea);
    return lineas;
}

void grabar(const std::string& ruta) {
    std::ofstream archivo(ruta);
    for (const std::string& hecho : registro::hechos())
        archivo << hecho << '\n';
    ASSERT_TRUE(archivo.flush()) << "cannot write " << ruta;
}

} // namespace

void compararTranscripcion(const std::string& nombre) {
    const std::string ruta = std::string(RECALCULO_TRANSCRIPTS) + "/" + nombre + ".txt";
    if (std::getenv("RECALCULO_RECORD") != nullptr) {
        grabar(ruta);
        return;
    }
    const auto esperado = leer(ruta);
    const auto& visto = registro::hechos();
    for (std::size_t i = 0; i < esperado.size() && i < visto.size(); ++i)
        ASSERT_EQ(visto[i], esperado[i]) << ruta << ":" << i + 1;
    ASSERT_EQ(visto.size(), esperado.size()) << ruta << " has another number of lines";
}
