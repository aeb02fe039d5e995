// Small head-ends for the tests: services, modules and engines built with what a test is about, the rest
// being harmless.

#ifndef ZARVEN_TESTS_FABRICA_H
#define ZARVEN_TESTS_FABRICA_H

#include <memory>
#include <string>
#include <vector>

#include "tRecalculo.h"

namespace fabrica {

// An SD service in the clear, of 1000 in the bitrate unit; `clave` is its key, LCN, SID and OSID.
struct DatosServicio {
    unsigned short clave = 1;
    unsigned short onid = 1;
    unsigned short tsid = 1;
    unsigned short pids = 0;
    unsigned long bitrate = 1000;
    unsigned short transcoding = 0;
    unsigned short videoFormat = 0;
    std::string nombre = {}; // "S<clave>" when empty
};
std::shared_ptr<zarven::tRec_Servicio> servicio(const DatosServicio& datos);

struct DatosModulo {
    std::string mac = "A";
    unsigned short entradas = 1;
    std::vector<unsigned long> salidas = {10000};
    unsigned short pids = 100;
    bool controlador = false;
    unsigned short sd = 0;
    unsigned short hd = 0;
    unsigned short aux = 0;
};
// Loads the module with its outputs and transcoders; every step must succeed.
void cargar(zarven::tRecalculo& motor, const DatosModulo& datos);
// Loads the service.
std::shared_ptr<zarven::tRec_Servicio> cargar(zarven::tRecalculo& motor, const DatosServicio& datos);

// Makes the working copies, as the driver does before a pass.
void preparar(zarven::tRecalculo& motor);

// A configured module that stands alone, outside an engine, with its outputs' bitrates set.
zarven::tRec_Modulo modulo(const DatosModulo& datos);

// Places a working-index service on an input and the module's first fitting output, tunes the input to the
// service's stream and takes the service out of the working index, as a fill does.
bool colocar(zarven::tRecalculo& motor, const std::string& mac, unsigned short entrada,
             const std::shared_ptr<zarven::tRec_Servicio>& servicio);

} // namespace fabrica

#endif
