// Two modules between which the optimize phase can exchange services to make room for a third one.
//
// A receives stream 1, that of the service left out, on input 1 and stream 2 on input 2. B receives stream 2
// on input 2; its input 1 is on stream 3, which keeps the unify phase from gathering stream 2. The principal
// is 10, the auxiliar 20, the service left out (the original) 30; keys of other services of the same kind go
// on from there.

#ifndef ZARVEN_TESTS_ESCENADEPERMUTA_H
#define ZARVEN_TESTS_ESCENADEPERMUTA_H

#include <string>
#include <vector>

#include "algorithm/Escena.h"
#include "algorithm/PasadaVista.h"
#include "support/Lineas.h"

namespace permuta {

using escena::datos;
using escena::Escena;
using escena::Servicio;

constexpr int ORIGINAL = 1; // the streams
constexpr int COMUN = 2;
constexpr int OTRO = 3;

class EscenaDePermuta : public Escena {
public:
    explicit EscenaDePermuta(const std::vector<unsigned long>& salidasA = {10000},
                             const std::vector<unsigned long>& salidasB = {10000})
        : Escena({escena::modulo("A", 2, salidasA), escena::modulo("B", 2, salidasB)}) {
        sintonizar("A", 1, 1, ORIGINAL);
        sintonizar("A", 2, 1, COMUN);
        sintonizar("B", 1, 1, OTRO);
        sintonizar("B", 2, 1, COMUN);
    }

    Servicio principal(int clave = 10, std::uint32_t salida = 1) {
        return puesto("A", 2, salida, datos(clave, COMUN, 3000, 5));
    }
    Servicio auxiliar(int clave = 20, std::uint32_t salida = 1) {
        return puesto("B", 2, salida, datos(clave, COMUN, 2000, 3));
    }
    Servicio original(int clave = 30) { return libre(datos(clave, ORIGINAL, 4000, 2)); }

    // All three, which an exchange places as they are.
    void completo() {
        principal();
        auxiliar();
        original();
    }

    // A pass that fills nothing, so that it gets to optimize with what stands here.
    vista::PasadaVista pasar(int recurso = 1) { return {motor, 0, recurso}; }
    // Its first optimize.
    vista::Tramo optimizar(int recurso = 1) { return pasar(recurso).tramo(6); }
};

// A service that needs a transcoder: neither module has one, so it can be taken off but not put back.
inline void sinTranscoder(const Servicio& servicio) {
    servicio->Transcoding = 1;
}

// The lines of a pair.
inline std::string principal(int clave) {
    return " Evaluando nuevo Servicio Principal " + std::to_string(clave);
}
inline std::string auxiliar(int clave) {
    return " Evaluando nuevo Servicio Auxiliar " + std::to_string(clave);
}
inline constexpr char MISMO_STREAM[] = "if ( itService_Salida_Aux->second->TSID != TSID ) continue;";
using lineas::OTRA_CLAVE;
inline constexpr char PIDS_BASTAN[] = " 1. Si el número de pids libres en el módulo";
inline constexpr char PERMUTA[] = " Añadiremos el servicio principal";

// The lines that tell which services were evaluated, tried and refused.
inline std::vector<std::string> paseo(const vista::Tramo& tramo) {
    std::vector<std::string> resultado;
    for (const std::string& hecho : tramo.hechos)
        for (const char* principio : {"7  Evaluando nuevo", "7 soy el servicio", "7 No se ha podido",
                                      "7 clear = ", "7 Hay servicios sin asignar con  idServicio"})
            if (hecho.compare(0, std::string(principio).size(), principio) == 0)
                resultado.push_back(hecho.substr(2));
    return resultado;
}

} // namespace permuta

#endif
