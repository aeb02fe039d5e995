// The run that explodes: two modules share a stream, and services of another stream find a transcoder
// nowhere. For each of them the optimize state tries every pair of the shared services, and every attempt
// that fails stages two of them again. The figures stand in docs/embedding.md.

#include <set>
#include <string>
#include <syslog.h>

#include <gtest/gtest.h>

#include "support/Huella.h"
#include "support/SinDepuracion.h"
#include "support/Testigo.h"
#include "tRecalculo.h"

using namespace zarven;

namespace {

struct Cabecera {
    unsigned compartidos;   // services of the shared stream, each with one PID
    unsigned pidsPorModulo; // which spreads them over both modules
    unsigned imposibles;    // services that need a transcoder
};

class Explosion : public testing::Test {
protected:
    Explosion() { testigo::empezar(); }

    static void cargar(tRecalculo& motor, const Cabecera& cabecera) {
        for (const char* mac : {"A", "B"}) {
            motor.addModulo(mac, 3, 2, 1, static_cast<unsigned short>(cabecera.pidsPorModulo), mac[0] == 'A');
            motor.configurarSalida(mac, 1, 60000);
        }
        anadir(motor, cabecera.compartidos, 1, 1, 0);
        anadir(motor, 20, 2, 0, 0);
        anadir(motor, cabecera.imposibles, 2, 0, 1);
    }

    // The entries of the index that hold what is left out, and how many services that are.
    struct Fuera {
        std::size_t entradas = 0;
        std::size_t servicios = 0;
    };
    static Fuera fuera(const tRecalculo& motor) {
        Fuera cuenta;
        std::set<const tRec_Servicio*> distintos;
        for (const auto& [onid, rec_onid] : motor.Mapa_ONIDs_Final)
            for (const auto& [tsid, rec_tsid] : rec_onid.MapRec_TSIDs)
                for (const auto& [clave, servicio] : rec_tsid.MapRec_Services) {
                    ++cuenta.entradas;
                    distintos.insert(servicio.get());
                }
        cuenta.servicios = distintos.size();
        return cuenta;
    }

    static double entradas(const Cabecera& cabecera) {
        tRecalculo motor;
        cargar(motor, cabecera);
        EXPECT_EQ(motor.Main_Recalculo(), tRecalculo::RETURN_OK);
        return static_cast<double>(fuera(motor).entradas);
    }

private:
    static void anadir(tRecalculo& motor, unsigned cuantos, int tsid, int pids, int transcoding) {
        for (unsigned n = 0; n < cuantos; ++n) {
            const auto servicio = std::make_shared<tRec_Servicio>();
            servicio->SID = static_cast<unsigned short>(motor.listaServicios.size() + 1);
            servicio->idService = servicio->SID;
            servicio->OSID = servicio->LCN = servicio->SID;
            servicio->ONID = 1;
            servicio->TSID = static_cast<unsigned short>(tsid);
            servicio->peakBitRate = 100;
            servicio->number_PIDs_CA = static_cast<unsigned short>(pids);
            servicio->Transcoding = static_cast<unsigned short>(transcoding);
            ASSERT_EQ(motor.addRec_Servicio(servicio), tRecalculo::RETURN_OK);
        }
    }

    const SinDepuracion silencio;
};

std::string colocados; // the line of the summary

} // namespace

TEST_F(Explosion, NinetyServicesBecomeSeventyThousandEntries) {
    tRecalculo motor;
    cargar(motor, {60, 40, 10});
    ASSERT_EQ(motor.listaServicios.size(), 90U);
    testigo::escuchar([](int, const char* linea, unsigned) {
        const std::string texto = linea;
        if (texto.find("correctly configured") != std::string::npos)
            colocados = texto;
    });
    ASSERT_EQ(motor.Main_Recalculo(), tRecalculo::RETURN_OK);
    EXPECT_EQ(fuera(motor).entradas, 71928U);
    EXPECT_EQ(fuera(motor).servicios, 50U);
    EXPECT_EQ(testigo::visto().segundos, 183096U);
    EXPECT_EQ(
        colocados,
        "HEADEND::: **************** Recalculation: -6302 services correctly configured *******************");
}

TEST_F(Explosion, GrowsAsTheSharedServicesOfBothModulesAndThoseLeftOut) {
    const double base = entradas({20, 10, 10});
    EXPECT_NEAR(base, 4 * 10 * 10 * 10, 500); // four sweeps
    EXPECT_NEAR(entradas({40, 20, 10}) / base, 4, 0.3);
    EXPECT_NEAR(entradas({20, 10, 20}) / base, 2, 0.1);
}

TEST_F(Explosion, AHostEndsItByItsCountOfLines) {
    tRecalculo motor;
    cargar(motor, {60, 40, 10});
    const std::uint64_t cargado = huella::cargado(motor);
    testigo::empezar(50000);
    EXPECT_THROW(motor.Main_Recalculo(), testigo::Detenida);
    EXPECT_EQ(huella::cargado(motor), cargado);
}
