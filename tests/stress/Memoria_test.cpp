// Memory ends: the first request for it fails, then the second, and so on to the last; only that one, or that
// one and all after it. std::bad_alloc reaches the caller, nothing is lost or leaked, and once there is
// memory again the engine is one that never failed.

#include <cstdio>
#include <functional>
#include <syslog.h>
#include <vector>

#include <gtest/gtest.h>

#include "stress/MemoriaEscasa.h"
#include "support/Cabeceras.h"
#include "support/Huella.h"
#include "support/SinDepuracion.h"
#include "support/Testigo.h"
#include "tRecalculo.h"

using namespace zarven;
using escasa::Fallo;

namespace {

using Paso = std::function<void(tRecalculo&)>;

unsigned short corto(std::size_t numero) {
    return static_cast<unsigned short>(numero);
}

std::shared_ptr<tRec_Servicio> repetir(const tRec_Servicio& s) {
    return std::make_shared<tRec_Servicio>(
        s.OSID, s.SID, s.LCN, s.Reservado1, s.SimulcastLCN, s.Descifrar, s.number_PIDs_CA,
        s.number_PIDs_CA_Max, s.videoPeakBitRate, s.peakBitRate, s.Tipo, s.VideoFormatE, s.Reservado2,
        s.NombreEntrada + ", with a long name", s.NombreSalida, s.NombreForzado, s.Transcoding, s.ONID,
        s.TSID, s.Reservado3, s.SatId);
}

void cargarModulo(tRecalculo& motor, const tRec_Modulo& m) {
    ASSERT_EQ(motor.addModulo(m.MAC, m.Modelo, corto(m.mapEntradas.size()), corto(m.mapSalidas.size()),
                              m.PIDsModuloMax, m.Controlador),
              tRecalculo::RETURN_OK);
    tRec_Modulo& nuevo = motor.Mapa_ModulosCabecera_Inicial.find(m.MAC)->second;
    nuevo.SD_MAX_Transcoding = m.SD_MAX_Transcoding;
    nuevo.HD_MAX_Transcoding = m.HD_MAX_Transcoding;
    nuevo.AUX_MAX_Transcoding = m.AUX_MAX_Transcoding;
}

void cargarPID(tRecalculo& motor, const tRec_PID& pid) {
    ASSERT_EQ(motor.addRec_PID(std::make_unique<tRec_PID>(pid.idPSG, pid.Reservado1, pid.Reservado2,
                                                          pid.Reservado3, pid.AudioCode, pid.Orden, pid.SID)),
              tRecalculo::RETURN_OK);
}

// The loading of a head-end, one call of the engine after the other.
class Pasos {
public:
    explicit Pasos(std::uint32_t semilla) {
        generador::Parametros p = cabeceras::pequena(semilla);
        p.pidsPorServicio = 1;
        testigo::empezar();
        generador::cargar(modelo, p);
        for (const auto& [mac, modulo] : modelo.Mapa_ModulosCabecera_Inicial) {
            const tRec_Modulo& m = modulo;
            pasos.emplace_back([&m](tRecalculo& motor) { cargarModulo(motor, m); });
            for (const auto& [id, salida] : m.mapSalidas)
                pasos.emplace_back([&m, numero = id, ceiling = salida.BitRateMax](tRecalculo& motor) {
                    ASSERT_EQ(motor.configurarSalida(m.MAC, corto(numero), ceiling), tRecalculo::RETURN_OK);
                });
        }
        for (const auto* lista : {&modelo.listaServicios, &modelo.listaServiciosClonados})
            for (const auto& servicio : *lista)
                pasos.emplace_back([s = servicio.get()](tRecalculo& motor) {
                    ASSERT_EQ(motor.addRec_Servicio(repetir(*s)), tRecalculo::RETURN_OK);
                });
        for (const auto& servicio : modelo.listaServicios)
            for (const auto& [idPSG, pid] : servicio->MapaPIDs)
                pasos.emplace_back([p = pid.get()](tRecalculo& motor) { cargarPID(motor, *p); });
        for (const auto onid : {corto(1), corto(1), corto(2)})
            pasos.emplace_back([onid, tsid = corto(pasos.size())](tRecalculo& motor) {
                ASSERT_EQ(motor.addHomeChannel(onid, tsid), tRecalculo::RETURN_OK);
            });
    }

    std::size_t cuantos() const { return pasos.size(); }
    void dar(std::size_t n, tRecalculo& motor) const { pasos[n](motor); }
    void todos(tRecalculo& motor) const {
        for (const Paso& paso : pasos)
            paso(motor);
    }

private:
    tRecalculo modelo;
    std::vector<Paso> pasos;
};

// What a run of the steps comes to that nothing disturbs.
struct Referencia {
    explicit Referencia(const Pasos& pasos) {
        tRecalculo motor;
        testigo::empezar();
        trasPaso.push_back(huella::cargado(motor));
        for (std::size_t n = 0; n < pasos.cuantos(); ++n) {
            pasos.dar(n, motor);
            trasPaso.push_back(huella::cargado(motor));
        }
        testigo::empezar();
        EXPECT_EQ(motor.Main_Recalculo(), tRecalculo::RETURN_OK);
        transcripcion = testigo::visto().huella.valor();
        resultado = huella::resultado(motor);
    }

    void correr(tRecalculo& motor) const {
        testigo::empezar();
        ASSERT_EQ(motor.Main_Recalculo(), tRecalculo::RETURN_OK);
        comprobar(motor);
    }
    void comprobar(const tRecalculo& motor) const {
        ASSERT_EQ(testigo::visto().huella.valor(), transcripcion);
        ASSERT_EQ(huella::resultado(motor), resultado);
    }

    std::vector<std::uint64_t> trasPaso;
    std::uint64_t transcripcion = 0;
    std::uint64_t resultado = 0;
};

// The log is masked as a controller has it, or not at all; one request fails, or all from there on.
struct Caso {
    int mascara;
    Fallo fallo;
};

class Memoria : public testing::TestWithParam<Caso> {
protected:
    // Whether `hacer` was ended by the request of that number.
    template <class F> static bool falla(std::size_t peticion, F&& hacer) {
        escasa::fallar(peticion, GetParam().fallo);
        try {
            hacer();
        } catch (const std::bad_alloc&) {
            escasa::basta();
            return true;
        }
        escasa::basta();
        return false;
    }

private:
    const Mascara mascara{GetParam().mascara};
};

const auto CASOS =
    testing::Values(Caso{LOG_UPTO(LOG_DEBUG), Fallo::UNO}, Caso{LOG_UPTO(LOG_DEBUG), Fallo::DESDE_AHI},
                    Caso{LOG_UPTO(LOG_NOTICE), Fallo::UNO}, Caso{LOG_UPTO(LOG_NOTICE), Fallo::DESDE_AHI});

std::string nombreDelCaso(const testing::TestParamInfo<Caso>& caso) {
    return std::string(caso.param.mascara == LOG_UPTO(LOG_DEBUG) ? "logged" : "masked") +
           (caso.param.fallo == Fallo::UNO ? "Once" : "FromThenOn");
}

INSTANTIATE_TEST_SUITE_P(Casos, Memoria, CASOS, nombreDelCaso);

} // namespace

TEST_P(Memoria, LoadingLeavesEachElementOutOrWhole) {
    const Pasos pasos(cabeceras::CON_TODO);
    const Referencia referencia(pasos);
    std::size_t fallidas = 0;
    for (bool fallo = true; fallo; ++fallidas) {
        SCOPED_TRACE("request " + std::to_string(fallidas));
        const std::size_t vivos = escasa::vivos();
        {
            tRecalculo motor;
            testigo::empezar();
            std::size_t n = 0;
            fallo = falla(fallidas, [&] {
                for (; n < pasos.cuantos(); ++n)
                    pasos.dar(n, motor);
            });
            if (fallo) {
                const bool entero = huella::cargado(motor) == referencia.trasPaso[n + 1];
                ASSERT_TRUE(entero || huella::cargado(motor) == referencia.trasPaso[n]) << "step " << n;
                for (n += entero; n < pasos.cuantos(); ++n)
                    pasos.dar(n, motor);
            }
            ASSERT_EQ(huella::cargado(motor), referencia.trasPaso.back());
            referencia.correr(motor);
        }
        ASSERT_FALSE(HasFatalFailure());
        ASSERT_EQ(escasa::vivos(), vivos);
    }
    std::printf("each of %zu requests of loading refused\n", fallidas - 1);
    EXPECT_GT(fallidas, 100U);
}

class MemoriaDeUnaCorrida : public Memoria {
protected:
    // Fails every request of a run of that head-end.
    static void probar(std::uint32_t semilla) {
        const Pasos pasos(semilla);
        const Referencia referencia(pasos);
        const std::size_t peticiones = contar(pasos);
        std::size_t sobrevividas = 0;
        for (std::size_t n = 0; n < peticiones; ++n) {
            SCOPED_TRACE("request " + std::to_string(n));
            const std::size_t vivos = escasa::vivos();
            {
                tRecalculo motor;
                testigo::empezar();
                pasos.todos(motor);
                testigo::empezar();
                if (falla(n, [&] { motor.Main_Recalculo(); })) {
                    ASSERT_EQ(huella::cargado(motor), referencia.trasPaso.back());
                    referencia.correr(motor);
                } else {
                    // What only saves room is done without.
                    ++sobrevividas;
                    referencia.comprobar(motor);
                }
            }
            ASSERT_FALSE(HasFatalFailure());
            ASSERT_EQ(escasa::vivos(), vivos);
        }
        std::printf("each of %zu requests of a run refused\n", peticiones);
        EXPECT_GT(peticiones, 100U);
        EXPECT_LT(sobrevividas, peticiones / 10);
    }

private:
    static std::size_t contar(const Pasos& pasos) {
        tRecalculo motor;
        pasos.todos(motor);
        escasa::fallar(testigo::NUNCA, Fallo::UNO);
        motor.Main_Recalculo();
        escasa::basta();
        return escasa::pedidas();
    }
};

INSTANTIATE_TEST_SUITE_P(Casos, MemoriaDeUnaCorrida, CASOS, nombreDelCaso);

TEST_P(MemoriaDeUnaCorrida, LeavesTheEngineAsItWasLoaded) {
    probar(cabeceras::CON_TODO);
}

TEST_P(MemoriaDeUnaCorrida, WithServicesLeftOutLeavesTheEngineAsItWasLoaded) {
    probar(cabeceras::CON_FALLOS);
}

TEST_P(Memoria, ReportsChangeNothing) {
    tRecalculo motor;
    testigo::empezar();
    Pasos(cabeceras::CON_FALLOS).todos(motor);
    motor.Main_Recalculo();
    const std::uint64_t antes = huella::resultado(motor);
    const std::uint64_t cargado = huella::cargado(motor);
    const std::size_t vivos = escasa::vivos();
    std::size_t n = 0;
    const auto informar = [&] {
        motor.Print_Resultado(motor.Mapa_ModulosCabecera_Final);
        motor.Print_Descartados(motor.Mapa_ONIDs_Final);
        motor.Print_Mapa_ONIDs();
        motor.Print_MapaServiciosClonados();
        motor.Print_Home_Channels();
        motor.Print_Mapa_Modulos(motor.Mapa_ModulosCabecera_Final);
        motor.Print_Mapa_Modulos_original();
        // The argument is the caller's copy.
        for (const auto& [mac, modulo] : motor.Mapa_ModulosCabecera_Final)
            for (const auto& [numero, entrada] : modulo.mapEntradas)
                motor.Print_Servicios_Resultado(entrada.MapaServicios);
    };
    for (; falla(n, informar); ++n)
        ASSERT_EQ(escasa::vivos(), vivos);
    EXPECT_NE(n, 0U);
    EXPECT_EQ(huella::resultado(motor), antes);
    EXPECT_EQ(huella::cargado(motor), cargado);
    EXPECT_EQ(escasa::vivos(), vivos);
}

namespace {

// Two modules of one kind; the second has a service on its first output, the first five.
void cargarDos(tRecalculo& motor) {
    testigo::empezar();
    for (const char* mac : {"A", "B"}) {
        motor.addModulo(mac, 3, 1, 2, 10, mac[0] == 'A');
        for (const auto salida : {corto(1), corto(2)})
            motor.configurarSalida(mac, salida, 38000);
    }
    for (unsigned short clave = 1; clave <= 6; ++clave) {
        const auto servicio = std::make_shared<tRec_Servicio>();
        servicio->idService = servicio->SID = clave;
        servicio->peakBitRate = clave;
        servicio->number_PIDs_CA = 1;
        motor.Mapa_ModulosCabecera_Inicial.at(clave == 6 ? "B" : "A").addService(servicio, 1, 1);
    }
}

} // namespace

TEST_P(Memoria, SwappedModulesAreAsTheyWereOrSwapped) {
    tRecalculo motor;
    cargarDos(motor);
    tMapaModulos& modulos = motor.Mapa_ModulosCabecera_Inicial;
    const std::uint64_t antes = huella::modulos(modulos);
    const auto cambiar = [&] { motor.swapModulos(modulos.at("A"), modulos.at("B")); };
    std::size_t n = 0;
    for (const std::size_t vivos = escasa::vivos(); falla(n, cambiar); ++n) {
        ASSERT_EQ(huella::modulos(modulos), antes);
        ASSERT_EQ(escasa::vivos(), vivos);
    }
    EXPECT_NE(n, 0U);
    EXPECT_EQ(modulos.at("A").mapSalidas.at(1).MapaServicios.size(), 1U);
    EXPECT_EQ(modulos.at("B").mapSalidas.at(1).MapaServicios.size(), 5U);
}

TEST_P(Memoria, ABalanceThatEndsHasMovedServicesWhole) {
    std::size_t n = 0;
    for (bool fallo = true; fallo; ++n) {
        tRecalculo motor;
        cargarDos(motor);
        tMapaModulos& modulos = motor.Mapa_ModulosCabecera_Inicial;
        fallo = falla(n, [&] { motor.Load_Balance(&modulos); });
        const auto& salidas = modulos.at("A").mapSalidas;
        ASSERT_EQ(salidas.at(1).MapaServicios.size() + salidas.at(2).MapaServicios.size(), 5U);
        ASSERT_EQ(salidas.at(1).BitRateActual + salidas.at(2).BitRateActual, 1U + 2 + 3 + 4 + 5);
        // One that could not be moved knows where it is; taking off clears what adding has set.
        for (const auto& [id, salida] : salidas)
            for (const auto& [clave, servicio] : salida.MapaServicios)
                ASSERT_EQ(servicio->pSalida, id == 1 ? &salida : nullptr);
        motor.Load_Balance(&modulos);
        ASSERT_EQ(salidas.at(1).MapaServicios.size(), 3U);
        ASSERT_EQ(salidas.at(2).MapaServicios.size(), 2U);
    }
    EXPECT_EQ(n, 3U); // two moves, and the one that nothing fails
}
