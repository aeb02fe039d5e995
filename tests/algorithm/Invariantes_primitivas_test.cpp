// After every operation of the primitives the invariants hold, as far as the operation keeps them.

#include <gtest/gtest.h>

#include "Generador.h"
#include "algorithm/Escena.h"
#include "support/Invariantes.h"
#include "support/Registro.h"

namespace Invariantes_primitivas_test {

using namespace escena;
using invariantes::comprobar;
using invariantes::Historia;

namespace {

using Reglas = std::vector<std::string>;

// Does what a pass does with the primitives, at random, and checks after each.
class Primitivas {
public:
    explicit Primitivas(std::uint32_t semilla) : dado(semilla) {
        generador::Parametros p;
        p.semilla = semilla;
        p.streams = 4;
        p.serviciosPorStream = {1, 5};
        p.modulos = 3;
        p.entradas = {1, 3};
        p.salidas = {1, 3};
        p.porcentajeTranscoding = 40;
        p.porcentajeClones = 40;
        p.transcoders = {0, 3};
        p.holgura = generador::Holgura::ESCASA;
        generador::cargar(motor, p);
        fabrica::preparar(motor);
    }

    // One operation; how many services it moved.
    std::size_t operar() {
        tRec_Modulo& modulo = alguno(motor.Mapa_ModulosCabecera_Proceso)->second;
        tRec_Entrada& entrada = alguno(modulo.mapEntradas)->second;
        switch (dado.entre(1, 4)) {
        case 1: // fill an empty input
            return entrada.MapaServicios.empty()
                       ? static_cast<std::size_t>(motor.Asignar_listaServicios(
                             modulo, entrada, dado.porcentaje(50) ? 1 : 3, dado.porcentaje(50)))
                       : 0;
        case 2: // top up a tuned one
            return motor.Fill_Services_in_Module_Input(modulo, entrada);
        case 3:
            return insertar(modulo, entrada);
        default:
            return quitar(modulo, entrada);
        }
    }

    std::vector<std::string> violaciones() const {
        return comprobar(motor, motor.Mapa_ModulosCabecera_Proceso, motor.Mapa_ONIDs);
    }

    tRecalculo motor;

private:
    template <class Mapa> typename Mapa::iterator alguno(Mapa& mapa) {
        return std::next(mapa.begin(), dado.entre(0, static_cast<unsigned>(mapa.size() - 1)));
    }

    // A service of the index on an input of its stream, or an untuned one.
    std::size_t insertar(tRec_Modulo& modulo, tRec_Entrada& entrada) {
        if (motor.Mapa_ONIDs.empty())
            return 0;
        auto& stream = alguno(alguno(motor.Mapa_ONIDs)->second.MapRec_TSIDs)->second;
        const auto it = alguno(stream.MapRec_Services);
        const Servicio servicio = it->second;
        const bool suya = entrada.ONID == servicio->ONID && entrada.TSID == servicio->TSID;
        if (!suya && !entrada.MapaServicios.empty())
            return 0;
        if (motor.Try_to_Insert_Service_Input_Output(modulo, entrada, it) == 0)
            return 0;
        entrada.confEntrada(servicio->TSID, servicio->ONID);
        stream.MapRec_Services.erase(it);
        motor.Clear_ONID_TSID(servicio->ONID, servicio->TSID);
        return 1;
    }

    // A placed service back into the index.
    std::size_t quitar(tRec_Modulo& modulo, tRec_Entrada& entrada) {
        if (entrada.MapaServicios.empty())
            return 0;
        const auto it = alguno(entrada.MapaServicios);
        const Servicio servicio = it->second;
        EXPECT_EQ(
            motor.Try_to_Delete_Service_Input_Output(motor.Mapa_ModulosCabecera_Proceso.find(modulo.MAC),
                                                     modulo.mapEntradas.find(entrada.NumEntrada), it),
            1U);
        auto& onid = motor.Mapa_ONIDs[servicio->ONID];
        onid.ONID = servicio->ONID;
        auto& tsid = onid.MapRec_TSIDs[servicio->TSID];
        tsid.TSID = servicio->TSID;
        tsid.MapRec_Services.emplace(servicio->idService, servicio);
        return 1;
    }

    generador::Dado dado;
};

} // namespace

TEST(InvariantesPrimitivas, HoldAfterEveryInsertionAndRemoval) {
    std::size_t movidos = 0;
    for (std::uint32_t semilla = 1; semilla <= 50; ++semilla) {
        registro::vaciar();
        registro::callar();
        Primitivas p(semilla);
        for (int n = 0; n < 60; ++n) {
            movidos += p.operar();
            ASSERT_EQ(p.violaciones(), Reglas()) << "seed " << semilla << ", operation " << n;
        }
    }
    EXPECT_GT(movidos, 500U);
}

TEST(InvariantesPrimitivas, HoldAfterEveryClone) {
    std::size_t unidos = 0;
    for (std::uint32_t semilla = 1; semilla <= 50; ++semilla) {
        registro::vaciar();
        registro::callar();
        Primitivas p(semilla);
        for (int n = 0; n < 20; ++n)
            p.operar();
        auto& motor = p.motor;
        motor.Mapa_ModulosCabecera_Final = motor.Mapa_ModulosCabecera_Proceso;
        for (auto it = motor.listaServiciosClonados.begin(); it != motor.listaServiciosClonados.end(); ++it) {
            unidos += static_cast<std::size_t>(motor.Try_to_Insert_Cloned_Service(it));
            ASSERT_EQ(comprobar(motor, motor.Mapa_ModulosCabecera_Final, motor.Mapa_ONIDs), Reglas())
                << "seed " << semilla;
        }
    }
    EXPECT_GT(unidos, 50U);
}

TEST(InvariantesPrimitivas, HoldOnTheOutputsAfterEveryBooking) {
    tRec_Modulo m = fabrica::modulo(modulo("A", 1, {5000, 4000}));
    tMapaServicios lista;
    for (int clave = 1; clave <= 8; ++clave)
        lista.emplace(clave, fabrica::servicio(datos(clave, 1, static_cast<unsigned long>(clave) * 300)));
    tRecalculo motor;
    std::size_t puestos = 0;
    for (auto it = lista.rbegin(); it != lista.rend(); ++it) {
        puestos += motor.Find_OutputID_to_insert_Service(m, it) != 0;
        for (const auto& [id, salida] : m.mapSalidas)
            EXPECT_EQ(comprobar(salida), Reglas());
    }
    EXPECT_GT(puestos, 3U);
    EXPECT_LT(puestos, 8U);
}

TEST(InvariantesPrimitivas, HoldAfterTwoModulesAreSwappedButForTheTranscoders) {
    Escena e({modulo("A", 2, {10000, 20000}), modulo("B", 2, {20000, 10000})});
    e.en("A").SD_MAX_Transcoding = e.en("B").SD_MAX_Transcoding = 2;
    e.puesto("A", 1, 1, datos(1, 1, 1000, 3));
    e.puesto("A", 2, 2, conTranscoding(datos(2, 2, 2000, 4)));
    e.puesto("B", 1, 1, datos(3, 3, 3000, 5));
    ASSERT_EQ(e.motor.swapModulos(e.en("A"), e.en("B")), tRecalculo::RETURN_OK);
    const auto vistas = comprobar(e.motor, e.motor.Mapa_ModulosCabecera_Proceso, e.motor.Mapa_ONIDs);
    EXPECT_EQ(vistas,
              (Reglas{"SD_Transcoding: module A has 1 for 0", "SD_Transcoding: module B has 0 for 1"}));
}

TEST(InvariantesPrimitivas, HoldAfterABalanceButForTheNumberOfServices) {
    Escena e({modulo("A", 1, {20000, 1500})});
    for (int clave = 1; clave <= 5; ++clave)
        e.puesto("A", 1, 1, datos(clave, 1));
    EXPECT_EQ(e.motor.Load_Balance(&e.motor.Mapa_ModulosCabecera_Proceso), 1U);
    Historia h;
    h.balance = true;
    EXPECT_EQ(comprobar(e.motor, e.motor.Mapa_ModulosCabecera_Proceso, e.motor.Mapa_ONIDs, h), Reglas());
    EXPECT_EQ(comprobar(e.en("A")), (Reglas{"NumServicios: module A output 1 has 5 for 3",
                                            "NumServicios: module A output 2 has 0 for 2",
                                            "BitRateMax: module A output 2 is loaded with 2000 of 1500"}));
}

} // namespace Invariantes_primitivas_test
