// With the debug level masked no dump calls the log at all: each of them would be thousands of calls for
// nothing.

#include <gtest/gtest.h>

#include "support/Fabrica.h"
#include "support/Registro.h"
#include "support/SinDepuracion.h"

namespace VolcadosCallados_test {

using namespace zarven;

namespace {

// A module with a service, which has a PID, on its input and its output.
class VolcadosCallados : public testing::Test {
protected:
    VolcadosCallados() : modulo(fabrica::modulo({})), servicio(fabrica::servicio({7})) {
        servicio->addPID_AlServicio(std::make_unique<tRec_PID>());
        modulo.addService(servicio, 1, 1);
    }

    template <class F> static void esperarSilencio(const char* volcado, F&& f) {
        const SinDepuracion silencio;
        registro::vaciar();
        f();
        EXPECT_EQ(registro::total(), 0U) << volcado;
    }

    tRec_Modulo modulo;
    std::shared_ptr<tRec_Servicio> servicio;
};

} // namespace

TEST_F(VolcadosCallados, OfAPidAndAService) {
    esperarSilencio("Print_PID", [&] { servicio->MapaPIDs.begin()->second->Print_PID(1); });
    esperarSilencio("Print_Servicio", [&] { servicio->Print_Servicio(1); });
    esperarSilencio("Print_MapaPIDs", [&] { servicio->Print_MapaPIDs(); });
}

TEST_F(VolcadosCallados, OfAnInput) {
    const tRec_Entrada& entrada = modulo.mapEntradas.at(1);
    esperarSilencio("Print_Info_Entrada", [&] { entrada.Print_Info_Entrada(); });
    esperarSilencio("Print_Entrada", [&] { entrada.Print_Entrada(); });
    esperarSilencio("Print_MapaServicios", [&] { entrada.Print_MapaServicios(); });
}

TEST_F(VolcadosCallados, OfAnOutput) {
    const tRec_Salida& salida = modulo.mapSalidas.at(1);
    esperarSilencio("Print_Info_Salida", [&] { salida.Print_Info_Salida(); });
    esperarSilencio("Print_Salida", [&] { salida.Print_Salida(); });
    esperarSilencio("Print_MapaServicios", [&] { salida.Print_MapaServicios(); });
}

TEST_F(VolcadosCallados, OfAModule) {
    esperarSilencio("Print_Info_Modulo", [&] { modulo.Print_Info_Modulo(); });
    esperarSilencio("Print_Modulo", [&] { modulo.Print_Modulo(); });
    esperarSilencio("Print_MapaEntradas", [&] { modulo.Print_MapaEntradas(); });
    esperarSilencio("Print_MapaSalidas", [&] { modulo.Print_MapaSalidas(); });
}

TEST_F(VolcadosCallados, TheMaskOfTheDebugLevelDecidesAndNoOther) {
    const Mascara hastaInformacion(LOG_UPTO(LOG_INFO));
    registro::vaciar();
    modulo.Print_Modulo();
    EXPECT_EQ(registro::total(), 0U);
    const Mascara soloDepuracion(LOG_MASK(LOG_DEBUG));
    modulo.Print_Modulo();
    EXPECT_NE(registro::total(), 0U);
}

} // namespace VolcadosCallados_test
