// A pass as a test sees it: the states it went through, and for each what it logged and what it found and
// left in the working modules and the working index.

#ifndef ZARVEN_TESTS_PASADAVISTA_H
#define ZARVEN_TESTS_PASADAVISTA_H

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/Lineas.h"
#include "support/Registro.h"
#include "tRecalculo.h"

namespace vista {

using zarven::tMapaModulos;
using zarven::tMapaONIDs;
using zarven::tMapaServicios;
using zarven::tRec_Modulo;
using zarven::tRecalculo;

// ---- What stands where, in short ----------------------------------------------------------------------

// "[10 20]"
inline std::string claves(const tMapaServicios& servicios) {
    std::string texto;
    for (const auto& [clave, servicio] : servicios) {
        if (!texto.empty())
            texto += ' ';
        texto += std::to_string(clave);
    }
    return "[" + texto + "]";
}

// The inputs: "1/7[10 20] -[]" are one tuned to ONID 1 and TSID 7 that carries 10 and 20, and an untuned
// one.
inline std::string entradas(const tRec_Modulo& modulo) {
    std::string texto;
    for (const auto& [numero, entrada] : modulo.mapEntradas) {
        if (!texto.empty())
            texto += ' ';
        texto += entrada.ONID == 0 && entrada.TSID == 0
                     ? std::string("-")
                     : std::to_string(entrada.ONID) + "/" + std::to_string(entrada.TSID);
        texto += claves(entrada.MapaServicios);
    }
    return texto;
}

// The outputs: "3000x2[10 20]" is one loaded with 3000 that counts two services.
inline std::string salidas(const tRec_Modulo& modulo) {
    std::string texto;
    for (const auto& [id, salida] : modulo.mapSalidas) {
        if (!texto.empty())
            texto += ' ';
        texto += std::to_string(salida.BitRateActual) + "x" + std::to_string(salida.NumServicios) +
                 claves(salida.MapaServicios);
    }
    return texto;
}

// The index: "1/7[10 20] 1/8[30]".
inline std::string indice(const tMapaONIDs& mapa) {
    std::string texto;
    for (const auto& [onid, rec_onid] : mapa)
        for (const auto& [tsid, rec_tsid] : rec_onid.MapRec_TSIDs) {
            if (!texto.empty())
                texto += ' ';
            texto += std::to_string(onid) + "/" + std::to_string(tsid) + claves(rec_tsid.MapRec_Services);
        }
    return texto;
}

// ---- The pass -----------------------------------------------------------------------------------------

struct Foto {
    tMapaModulos modulos;
    tMapaONIDs indice;

    const tRec_Modulo& en(const std::string& mac) const { return modulos.at(mac); }
};

// One entry into a state.
struct Tramo {
    int estado = 0;
    // What it logged and how it paused, the frames of the dumps left out.
    std::vector<std::string> hechos;
    Foto antes;
    Foto despues;

    std::size_t cuantas(const std::string& texto) const {
        return static_cast<std::size_t>(std::count(hechos.begin(), hechos.end(), "7 " + texto));
    }
    bool contiene(const std::string& texto) const { return cuantas(texto) != 0; }
    std::size_t cuantasEmpiezan(const std::string& principio) const {
        const std::string buscado = "7 " + principio;
        return static_cast<std::size_t>(
            std::count_if(hechos.begin(), hechos.end(), [&](const std::string& hecho) {
                return hecho.compare(0, buscado.size(), buscado) == 0;
            }));
    }
    // The happenings from the nth line that begins so up to, and not with, the next that begins like `fin`.
    std::vector<std::string> desde(const std::string& principio, const std::string& fin = "\n") const {
        const auto empieza = [](const std::string& hecho, const std::string& texto) {
            return hecho.compare(0, texto.size() + 2, "7 " + texto) == 0;
        };
        auto it = hechos.begin();
        while (it != hechos.end() && !empieza(*it, principio))
            ++it;
        const auto primero = it;
        while (it != hechos.end() && (it == primero || !empieza(*it, fin)))
            ++it;
        return {primero, it};
    }
};

class PasadaVista {
public:
    // Runs the pass over the engine's working maps. The record of log and clock starts anew, and ends with
    // the pass.
    PasadaVista(tRecalculo& engine, int option, int recurso) : motor(engine) {
        registro::vaciar();
        registro::escuchar([this](const std::string& texto) { leer(texto); });
        motor.RecalculationAlgorithm(static_cast<char>(option), recurso);
        registro::escuchar({});
        cerrar();
        for (std::size_t i = finUltimo; i < registro::hechos().size(); ++i)
            anotar(hechosFinales, registro::hechos()[i]);
    }

    // The states in order: "2 3 5".
    std::string camino() const {
        std::string texto;
        for (const Tramo& uno : tramos) {
            if (!texto.empty())
                texto += ' ';
            texto += std::to_string(uno.estado);
        }
        return texto;
    }

    // The nth entry into a state.
    const Tramo& tramo(int estado, int n = 1) const {
        for (const Tramo& uno : tramos)
            if (uno.estado == estado && --n == 0)
                return uno;
        throw std::out_of_range("the pass did not enter state " + std::to_string(estado) + " so often");
    }

    // What came after the last state of the pass: the first-input fix-up.
    const std::vector<std::string>& final() const { return hechosFinales; }

private:
    // The last line of the states that can end a pass.
    static bool esUltimaLinea(const std::string& texto) {
        return lineas::empieza(texto, lineas::TRAS_OPTIMIZAR) ||
               texto == "||                                       END PRINT MAPA MODULOS SALIDA"
                        "                                      ||";
    }

    Foto foto() const { return {motor.Mapa_ModulosCabecera_Proceso, motor.Mapa_ONIDs}; }

    void leer(const std::string& texto) {
        const int estado = static_cast<int>(lineas::estado(texto));
        if (estado != 0) {
            cerrar();
            Tramo nuevo;
            nuevo.estado = estado;
            nuevo.antes = foto();
            desde = registro::hechos().size() - 1;
            terminado = false;
            tramos.push_back(std::move(nuevo));
        } else if (esUltimaLinea(texto)) {
            tramos.back().despues = foto();
            terminado = true;
            // The dump of the unify phase has one more line.
            finUltimo = registro::hechos().size() + (texto.front() == '|' ? 1 : 0);
        }
    }

    void cerrar() {
        if (tramos.empty())
            return;
        const std::size_t fin = terminado ? finUltimo : registro::hechos().size() - 1;
        for (std::size_t i = desde; i < fin; ++i)
            anotar(tramos.back().hechos, registro::hechos()[i]);
        if (!terminado)
            tramos.back().despues = foto();
    }

    static void anotar(std::vector<std::string>& destino, const std::string& hecho) {
        if (hecho.compare(2, 2, "||") != 0)
            destino.push_back(hecho);
    }

    tRecalculo& motor;
    std::vector<Tramo> tramos;
    std::vector<std::string> hechosFinales;
    std::size_t desde = 0;
    std::size_t finUltimo = 0;
    bool terminado = false;
};

} // namespace vista

#endif
