// The search for an exchange where stream, network and input have numbers of their own, where a module has no
// MAC, and where the search is not logged.

#include <optional>

#include <gtest/gtest.h>

#include "algorithm/EscenaDePermuta.h"
#include "support/SinDepuracion.h"

namespace Optimizar_numeros_test {

using namespace permuta;
using escena::modulo;
using vista::claves;
using vista::indice;
using vista::PasadaVista;
using vista::salidas;
using vista::Tramo;

namespace {

fabrica::DatosServicio de(int onid, int tsid, int clave, unsigned long bitrate) {
    fabrica::DatosServicio nuevo = datos(clave, tsid, bitrate);
    nuevo.onid = static_cast<unsigned short>(onid);
    return nuevo;
}

// MAC0 receives stream 9/51, that of the services left out, on input 2 and 8/52 on input 4; MAC1 receives
// 8/52 on input 5. Principal 10, auxiliar 20, original 30, as far as the module is there.
class Numeros : public Escena {
public:
    Numeros(const std::string& mac0, const std::string& mac1, const std::vector<std::string>& otras = {})
        : Escena(modulos(mac0, mac1, otras)) {
        // The last input of MAC0 gives the exchange stream.
        en(mac0).mapEntradas.erase(5);
        sintonizar(mac0, 1, 3, 61);
        sintonizar(mac0, 2, 9, 51);
        sintonizar(mac0, 3, 3, 63);
        puesto(mac0, 4, 1, de(8, 52, 10, 3000));
        for (unsigned short numero = 1; numero <= 4; ++numero)
            sintonizar(mac1, numero, 7, static_cast<unsigned short>(70 + numero));
        puesto(mac1, 5, 1, de(8, 52, 20, 2000));
        libre(de(9, 51, 30, 4000));
    }

    Tramo optimizar() { return PasadaVista(motor, 0, 1).tramo(6); }

private:
    static std::vector<fabrica::DatosModulo> modulos(const std::string& mac0, const std::string& mac1,
                                                     const std::vector<std::string>& otras) {
        std::vector<fabrica::DatosModulo> lista = {modulo(mac0, 5, {10000}), modulo(mac1, 5, {10000})};
        for (const std::string& mac : otras)
            lista.push_back(modulo(mac, 5, {10000}));
        return lista;
    }
};

} // namespace

TEST(OptimizarNumeros, TheLogOfTheSearchTellsEachNumberInItsPlace) {
    Numeros e("A", "B");
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene("Hay servicios sin asignar con ONID 9 "));
    EXPECT_TRUE(t.contiene("Hay servicios ( 1 ) sin asignar con TSID 51 "));
    EXPECT_TRUE(t.contiene(" Buscaremos modulos con ONID 8  y TSID 52 NumEntrada 4 "));
    EXPECT_TRUE(t.contiene(" ENTRADA QUE BUSCAMOS ONID 8  y TSID 52 NumEntrada 4 "));
    EXPECT_TRUE(t.contiene(" ENTRADA ACTUAL ONID 7  y TSID 73 NumEntrada 3 "));
    EXPECT_TRUE(t.contiene(" itService_Salida->first [10] - itService_Salida->second->ONID [8] - "
                           "itService_Salida->second->TSID [52]"));
    EXPECT_TRUE(t.contiene(" itService_Salida_Aux->first [20] - itService_Salida_Aux->second->ONID [8] - "
                           "itService_Salida_Aux->second->TSID [52]"));
    EXPECT_TRUE(t.contiene("Eliminaremos el servicio ORIGINAL 30 de la lista de TSIDs ( 51 )"));
    EXPECT_TRUE(t.contiene("clear = 2"));
    EXPECT_EQ(salidas(t.despues.en("A")), "6000x2[20 30]");
    EXPECT_EQ(salidas(t.despues.en("B")), "3000x1[10]");
    EXPECT_EQ(claves(t.despues.en("A").mapEntradas.at(2).MapaServicios), "[30]");
    EXPECT_EQ(claves(t.despues.en("A").mapEntradas.at(4).MapaServicios), "[20]");
    EXPECT_EQ(claves(t.despues.en("B").mapEntradas.at(5).MapaServicios), "[10]");
}

TEST(OptimizarNumeros, TheSearchThatIsNotLoggedFindsTheSame) {
    Numeros e("A", "B");
    const SinDepuracion silencio;
    const Tramo t = e.optimizar();
    EXPECT_EQ(salidas(t.despues.en("A")), "6000x2[20 30]");
    EXPECT_EQ(salidas(t.despues.en("B")), "3000x1[10]");
}

TEST(OptimizarNumeros, AModuleWithoutMacIsPassedOverAsTheFirstOfTheTwo) {
    // It receives the stream of the service left out as well.
    for (const bool callado : {false, true}) {
        Numeros e("A", "B", {""});
        e.sintonizar("", 1, 7, 99);
        e.sintonizar("", 2, 9, 51);
        std::optional<SinDepuracion> silencio;
        if (callado)
            silencio.emplace();
        const Tramo t = e.optimizar();
        EXPECT_TRUE(t.contiene(" MAC 1 A y MAC 2 B ")) << callado;
        EXPECT_EQ(salidas(t.despues.en("A")), "6000x2[20 30]") << callado;
    }
}

TEST(OptimizarNumeros, AModuleWithoutMacFoundAsTheSecondEndsTheSearch) {
    // B would do, but comes later.
    Numeros e("A", "B", {""});
    e.sintonizar("", 1, 7, 99);
    e.sintonizar("", 2, 8, 52);
    const Tramo t = e.optimizar();
    EXPECT_TRUE(t.contiene(" MAC 1 A y MAC 2  "));
    EXPECT_FALSE(t.contiene(" Modulos NO vacios y compatibles"));
    EXPECT_EQ(indice(t.despues.indice), "9/51[30]");
}

TEST(OptimizarNumeros, TwoModulesOfDifferentModelsEndTheSearchForThatServiceAlone) {
    Numeros e("A", "B");
    e.libre(de(9, 51, 31, 4000));
    e.en("B").Modelo = 1;
    const Tramo t = e.optimizar();
    EXPECT_EQ(paseo(t),
              (std::vector<std::string>{
                  "soy el servicio nº1", "Hay servicios sin asignar con  idServicio: (itService_Out) 30",
                  "soy el servicio nº2", "Hay servicios sin asignar con  idServicio: (itService_Out) 31"}));
    EXPECT_EQ(t.cuantas(" MAC 1 A y MAC 2 B "), 2U);
}

} // namespace Optimizar_numeros_test
