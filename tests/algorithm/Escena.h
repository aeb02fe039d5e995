// A small head-end in the middle of a pass: modules, services that stand where the test wants them, and
// services that no module carries yet.
//
// Services are put in place by hand, past every limit, so that a test can show what a phase does with any
// state it may meet.

#ifndef ZARVEN_TESTS_ESCENA_H
#define ZARVEN_TESTS_ESCENA_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "support/Fabrica.h"
#include "tRecalculo.h"

namespace escena {

using zarven::tMapaModulos;
using zarven::tMapaONIDs;
using zarven::tMapaServicios;
using zarven::tRec_Entrada;
using zarven::tRec_Modulo;
using zarven::tRec_Salida;
using zarven::tRec_Servicio;
using zarven::tRecalculo;

using Servicio = std::shared_ptr<tRec_Servicio>;

class Escena {
public:
    tRecalculo motor;

    Escena() = default;
    explicit Escena(const std::vector<fabrica::DatosModulo>& modulos) {
        for (const auto& datos : modulos)
            fabrica::cargar(motor, datos);
        motor.Mapa_ModulosCabecera_Proceso = motor.Mapa_ModulosCabecera_Inicial;
    }

    tRec_Modulo& en(const std::string& mac) { return motor.Mapa_ModulosCabecera_Proceso.at(mac); }
    tRec_Entrada& entrada(const std::string& mac, unsigned short numero) {
        return en(mac).mapEntradas.at(numero);
    }
    tRec_Salida& salida(const std::string& mac, std::uint32_t id) { return en(mac).mapSalidas.at(id); }

    // A loaded service that no module carries yet.
    Servicio libre(const fabrica::DatosServicio& datos) {
        Servicio nuevo = cargar(datos);
        auto& onid = motor.Mapa_ONIDs[datos.onid];
        onid.ONID = datos.onid;
        auto& tsid = onid.MapRec_TSIDs[datos.tsid];
        tsid.TSID = datos.tsid;
        tsid.MapRec_Services.emplace(nuevo->idService, nuevo);
        return nuevo;
    }

    // A loaded service on an input, which is tuned to its stream, and an output.
    Servicio puesto(const std::string& mac, unsigned short numEntrada, std::uint32_t idSalida,
                    const fabrica::DatosServicio& datos) {
        Servicio nuevo = cargar(datos);
        sintonizar(mac, numEntrada, datos.onid, datos.tsid);
        clavar(mac, numEntrada, idSalida, nuevo);
        return nuevo;
    }

    // Puts a service on an input and an output with every counter, whatever the input is tuned to.
    void clavar(const std::string& mac, unsigned short numEntrada, std::uint32_t idSalida,
                const Servicio& servicio) {
        tRec_Modulo& modulo = en(mac);
        tRec_Salida& destino = salida(mac, idSalida);
        entrada(mac, numEntrada).MapaServicios.emplace(servicio->idService, servicio);
        destino.MapaServicios.emplace(servicio->idService, servicio);
        destino.BitRateActual += servicio->peakBitRate;
        ++destino.NumServicios;
        modulo.PIDsModulo = static_cast<unsigned short>(modulo.PIDsModulo + servicio->number_PIDs_CA);
        if (servicio->Transcoding == 1)
            ++(servicio->VideoFormatE == tRec_Servicio::VIDEO_HD ? modulo.HD_Transcoding
                                                                 : modulo.SD_Transcoding);
    }

    void sintonizar(const std::string& mac, unsigned short numero, unsigned short onid, unsigned short tsid) {
        entrada(mac, numero).confEntrada(tsid, onid);
    }

private:
    // The bitrate of the video and the ceiling of the PIDs must not be mistaken for what is charged.
    Servicio cargar(const fabrica::DatosServicio& datos) {
        Servicio nuevo = fabrica::cargar(motor, datos);
        nuevo->videoPeakBitRate = nuevo->peakBitRate - nuevo->peakBitRate / 4;
        nuevo->number_PIDs_CA_Max = static_cast<unsigned short>(nuevo->number_PIDs_CA + 10);
        return nuevo;
    }
};

// A service by the figures that a test is about: key, stream (TSID, of network 1), bitrate, PIDs.
inline fabrica::DatosServicio datos(int clave, int tsid, unsigned long bitrate = 1000, int pids = 0) {
    fabrica::DatosServicio nuevo;
    nuevo.clave = static_cast<unsigned short>(clave);
    nuevo.tsid = static_cast<unsigned short>(tsid);
    nuevo.bitrate = bitrate;
    nuevo.pids = static_cast<unsigned short>(pids);
    return nuevo;
}

inline fabrica::DatosServicio conTranscoding(fabrica::DatosServicio nuevo, bool hd = false) {
    nuevo.transcoding = 1;
    if (hd)
        nuevo.videoFormat = tRec_Servicio::VIDEO_HD;
    return nuevo;
}

// A module by its MAC, its number of inputs and the ceilings of its outputs.
inline fabrica::DatosModulo modulo(const std::string& mac, int entradas,
                                   const std::vector<unsigned long>& salidas, int pids = 100) {
    fabrica::DatosModulo nuevo;
    nuevo.mac = mac;
    nuevo.entradas = static_cast<unsigned short>(entradas);
    nuevo.salidas = salidas;
    nuevo.pids = static_cast<unsigned short>(pids);
    return nuevo;
}

} // namespace escena

#endif
