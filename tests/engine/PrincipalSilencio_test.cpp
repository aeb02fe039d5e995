// A controller that masks the debug level gets the same result, the same notices and the same pauses.

#include "support/Lineas.h"
#include "tRecalculo.h"

#include <algorithm>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"
#include "support/SinDepuracion.h"

namespace PrincipalSilencio_test {

using namespace zarven;

namespace {

using Lineas = std::vector<std::string>;

// Four modules that compete for a few streams: some services are exchanged, some stay out.
tRecalculo alAzar(unsigned semilla) {
    std::mt19937 azar(semilla);
    const auto hasta = [&azar](unsigned n) { return static_cast<unsigned short>(azar() % n); };
    tRecalculo motor;
    for (const char* mac : {"A", "B", "C", "D"}) {
        fabrica::DatosModulo datos;
        datos.mac = mac;
        datos.entradas = static_cast<unsigned short>(1 + hasta(3));
        datos.salidas = {4000ul + hasta(5) * 1000ul, 4000ul + hasta(5) * 1000ul};
        datos.pids = static_cast<unsigned short>(4 + hasta(8));
        datos.controlador = true;
        datos.sd = hasta(3);
        datos.aux = hasta(2);
        fabrica::cargar(motor, datos);
    }
    for (unsigned i = 0; i < 24; ++i) {
        fabrica::DatosServicio datos;
        datos.clave = static_cast<unsigned short>(1 + hasta(12));
        datos.onid = 7;
        datos.tsid = static_cast<unsigned short>(1 + hasta(5));
        datos.pids = hasta(4);
        datos.bitrate = 500ul * (1ul + hasta(6));
        datos.transcoding = static_cast<unsigned short>(hasta(5) == 0);
        fabrica::cargar(motor, datos);
    }
    return motor;
}

std::string claves(const tMapaServicios& servicios) {
    std::ostringstream texto;
    for (const auto& [clave, s] : servicios)
        texto << ' ' << s->ONID << '/' << s->TSID << '/' << clave;
    return texto.str();
}

// What the caller reads after a run.
Lineas resultado(const tRecalculo& motor) {
    Lineas lineas;
    for (const auto& [mac, m] : motor.Mapa_ModulosCabecera_Final) {
        std::ostringstream texto;
        texto << mac << ' ' << m.PIDsModulo << ' ' << m.SD_Transcoding << ' ' << m.AUX_Transcoding;
        lineas.push_back(texto.str());
        for (const auto& [numero, e] : m.mapEntradas)
            lineas.push_back(std::to_string(e.ONID) + "/" + std::to_string(e.TSID) + claves(e.MapaServicios));
        for (const auto& [numero, s] : m.mapSalidas)
            lineas.push_back(std::to_string(s.BitRateActual) + " " + std::to_string(s.NumServicios) +
                             claves(s.MapaServicios));
    }
    for (const auto& [onid, red] : motor.Mapa_ONIDs_Final)
        for (const auto& [tsid, flujo] : red.MapRec_TSIDs)
            lineas.push_back(std::to_string(tsid) + claves(flujo.MapRec_Services));
    lineas.push_back(std::to_string(motor.listaServiciosClonados.size()));
    return lineas;
}

// Notices and pauses, in order.
Lineas loVisible() {
    Lineas lineas;
    for (const auto& hecho : registro::hechos())
        if (hecho[0] != '7')
            lineas.push_back(hecho);
    return lineas;
}

} // namespace

TEST(PrincipalSilencio, MaskingTheDebugLevelChangesNothingElse) {
    std::size_t uniones = 0;
    std::size_t permutas = 0;
    for (unsigned semilla = 0; semilla < 40; ++semilla) {
        tRecalculo hablando = alAzar(semilla);
        registro::vaciar();
        hablando.Main_Recalculo();
        const Lineas esperado = loVisible();
        uniones += registro::cuantas(lineas::REUNION);
        permutas += registro::cuantasEmpiezan("Eliminaremos el servicio ORIGINAL");

        tRecalculo callando = alAzar(semilla);
        registro::vaciar();
        const SinDepuracion silencio;
        callando.Main_Recalculo();
        ASSERT_EQ(loVisible(), esperado) << "seed " << semilla;
        ASSERT_EQ(resultado(callando), resultado(hablando)) << "seed " << semilla;
    }
    EXPECT_GT(uniones, 0u) << "the head-ends are too easy";
    EXPECT_GT(permutas, 0u) << "the head-ends are too easy";
}

TEST(PrincipalSilencio, WhatOnlyTheDebugLogShowsIsNotWorkedOut) {
    const Lineas detalles = {
        " itModulo ",
        " itModuloAux ",
        " ENTRADA QUE BUSCAMOS ",
        " ENTRADA ACTUAL ",
        " itSalida ",
        " itSalida_Aux ",
        "itService_Salida->first ",
        "itService_Salida_Aux->first ",
        " Evaluando nuevo Servicio Principal ",
        " Evaluando nuevo Servicio Auxiliar ",
        "if ( itService_Salida_Aux->second->TSID != TSID ) continue;",
        lineas::OTRA_CLAVE,
        " 1. Si el número de pids libres en el módulo",
        " Mirar si el cambio también es viable",
        " BitrateActual ",
        "[ONID: ",
        "[ENTRADA ",
        "||   idService: ",
    };
    std::vector<std::size_t> veces(detalles.size());
    for (unsigned semilla = 0; semilla < 40; ++semilla) {
        tRecalculo hablando = alAzar(semilla);
        tRecalculo callando = alAzar(semilla);
        registro::vaciar();
        hablando.Main_Recalculo();
        const Lineas todo = registro::textos();
        registro::vaciar();
        const SinDepuracion silencio;
        callando.Main_Recalculo();
        const Lineas resto = registro::textos();
        for (std::size_t i = 0; i < detalles.size(); ++i) {
            const auto contiene = [&](const std::string& linea) {
                const auto donde = linea.find(detalles[i]);
                // Steps of an exchange that are always logged have a blank before the same words.
                return detalles[i][0] == 'i' ? donde == 0 : donde != std::string::npos;
            };
            veces[i] += static_cast<std::size_t>(std::count_if(todo.begin(), todo.end(), contiene));
            ASSERT_TRUE(std::none_of(resto.begin(), resto.end(), contiene)) << detalles[i];
        }
    }
    for (std::size_t i = 0; i < detalles.size(); ++i)
        EXPECT_GT(veces[i], 0U) << detalles[i];
}

} // namespace PrincipalSilencio_test
