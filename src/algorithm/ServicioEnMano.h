// An unassigned service in hand, and the search for an exchange that makes room for it.
//
// MAC[0] is a module that receives its stream. The exchange stream is what another input of MAC[0] receives,
// and MAC[1] a module that receives it too. A service of that stream (the principal) leaves MAC[0] for
// MAC[1], another (the auxiliar) leaves MAC[1] for MAC[0], so that PIDs and bitrate come free for the service
// in hand.

#ifndef ZARVEN_ALGORITHM_SERVICIOENMANO_H
#define ZARVEN_ALGORITHM_SERVICIOENMANO_H

#include <array>
#include <optional>
#include <string>

#include "tRecalculo.h"

#include "Paseo.h"
#include "Recorrido.h"

namespace zarven {

class ServicioEnMano {
public:
    // `paseo` is the walk over `servicios`, the entry of `onid` and `tsid` in the working index, that has the
    // service in hand.
    ServicioEnMano(tRecalculo& motor, const Recorrido& recorrido, int recurso, unsigned short onid,
                   unsigned short tsid, tMapaServicios& servicios, Paseo& paseo);

    // Looks for an exchange and makes it. Gives what Clear_ONID_TSID removed from the index once the service
    // was placed; 0 also when it was not.
    int hacerSitio();

private:
    // One of the two modules of an exchange.
    struct Extremo {
        tMapaModulos::iterator modulo;
        // The input that carries the exchange stream; there may be none on MAC[0].
        tMapaEntradas::iterator entrada;
        // Free PIDs when the search began.
        int libres = 0;
    };

    // The search for the modules.
    void elegirModulos();
    void anotarEntrada(const std::string& mac, unsigned short numero, const tRec_Entrada& entrada);
    bool elegirAuxiliar();
    void registrarBusqueda(unsigned short numero, const tRec_Entrada& entrada) const;
    Extremo extremo(const std::string& mac, unsigned short numero) const;

    // The search for the two services. Each gives the result of the exchange, or nothing when none was made.
    using Resultado = std::optional<int>;
    Resultado recorrerSalidas();
    Resultado recorrerPrincipales(tRec_Salida& salida, tRec_Salida& salida_Aux);
    Resultado recorrerAuxiliares(const tRec_Salida& salida, tRec_Salida& salida_Aux, Paseo& principales);
    bool esDeIntercambio(const tRec_Servicio& servicio) const;
    bool esViable(const tRec_Salida& salida, const tRec_Salida& salida_Aux, const Paseo& principal,
                  const Paseo& auxiliar) const;
    bool hayEntradas() const;

    // The exchange (Permuta.cpp).
    Resultado permutar(const Ficha& principal, const Ficha& auxiliar);
    tMapaServicios::iterator prepararPrincipal(const Ficha& principal);
    tMapaServicios::iterator prepararAuxiliar(const Ficha& auxiliar);
    bool quitarPrincipal(tMapaServicios::iterator itPrincipal);
    bool quitarAuxiliar(tMapaServicios::iterator itAuxiliar);
    bool llevarPrincipal(tMapaServicios::iterator itPrincipal);
    bool traerAuxiliar(tMapaServicios::iterator itAuxiliar, const Ficha& principal);
    bool colocarOriginal();
    void retirar(long clave);

    tRecalculo& motor;
    const Recorrido& recorrido;
    const int recurso;
    // The steps are logged.
    const bool registra;
    // Where the service in hand stands in the index.
    const unsigned short onid_Out;
    const unsigned short tsid_Out;
    tMapaServicios& servicios_Out;
    Paseo& paseo_Out;
    const Ficha ficha_Out;
    tMapaServicios::iterator itService_Out;

    std::array<std::string, 2> MAC;
    unsigned short NumEntrada_Service_Out = 0;
    unsigned short NumEntradaAux = 0;
    // The exchange stream, and the input of MAC[0] that receives it.
    unsigned short ONID = 0;
    unsigned short TSID = 0;
    unsigned short NumEntrada = 0;

    std::array<Extremo, 2> extremos;
};

} // namespace zarven

#endif
