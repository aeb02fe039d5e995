// The search for an exchange that makes room for a service in hand: first for two modules, then for a service
// on each.
//
// MAC[0] is a module that receives the stream of the service in hand. The services that are exchanged are of
// another stream that an input of MAC[0] receives, and MAC[1] is a module that receives that one, too.

#ifndef ZARVEN_ALGORITHM_BUSQUEDADEPERMUTA_H
#define ZARVEN_ALGORITHM_BUSQUEDADEPERMUTA_H

#include <array>
#include <optional>
#include <string>

#include "tRecalculo.h"

#include "Permuta.h"
#include "Receptores.h"

namespace zarven {

class BusquedaDePermuta {
public:
    BusquedaDePermuta(tRecalculo& motor, const Receptores& receptores, int recurso, ServicioEnMano& enMano)
        : motor_(motor), receptores_(receptores), recurso_(recurso), registra_(receptores.registra()),
          enMano_(enMano) {}

    // Looks for an exchange and makes it. Gives what Clear_ONID_TSID removed from the index once the service
    // was placed; 0 also when it was not.
    int hacerSitio();

private:
    // The search for the modules.
    void elegirModulos();
    void anotarEntrada(const std::string& mac, unsigned short numero, const tRec_Entrada& entrada);
    bool elegirAuxiliar();
    void registrarEntrada(unsigned short numero, const tRec_Entrada& entrada) const;
    Extremo extremo(const std::string& mac, unsigned short numero) const;

    // The search for the two services. Each gives the result of the exchange, or nothing when none was made.
    using Resultado = std::optional<int>;
    Resultado recorrerSalidas();
    Resultado recorrerPrincipales(tRec_Salida& salida, tRec_Salida& salidaAux);
    Resultado recorrerAuxiliares(const tRec_Salida& salida, tRec_Salida& salidaAux,
                                 PaseoEstable& principales);
    bool examinarPareja(const tRec_Salida& salida, const tRec_Salida& salidaAux,
                        const PaseoEstable& principal, const PaseoEstable& auxiliar) const;
    bool esDelStream(const tRec_Servicio& servicio) const;
    bool bastanPIDs(const tRec_Servicio& va, const tRec_Servicio& viene) const;
    bool bastaBitrate(const tRec_Salida& salida, const tRec_Salida& salidaAux, const tRec_Servicio& va,
                      const tRec_Servicio& viene) const;
    bool hayEntrada() const;

    tRecalculo& motor_;
    const Receptores& receptores_;
    const int recurso_;
    // The steps are logged.
    const bool registra_;
    ServicioEnMano& enMano_;

    std::array<std::string, 2> mac_;
    // The input of MAC[0] that receives the stream of the service in hand.
    unsigned short numEntradaEnMano_ = 0;
    // The stream of the two services, and the inputs of MAC[0] and MAC[1] that receive it.
    unsigned short onid_ = 0;
    unsigned short tsid_ = 0;
    std::array<unsigned short, 2> numEntrada_ = {};

    Extremos extremos_;
    // Free PIDs of the two modules when the search began.
    std::array<int, 2> libres_ = {};
};

} // namespace zarven

#endif
