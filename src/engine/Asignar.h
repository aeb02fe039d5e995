// The choice of a stream for an input, with counts that a caller who fills many inputs keeps.

#ifndef ZARVEN_ENGINE_ASIGNAR_H
#define ZARVEN_ENGINE_ASIGNAR_H

#include "tRecalculo.h"

#include "Elegibles.h"

namespace zarven {

// Asignar_listaServicios with the counts of the engine's working index; keeps them up to date.
int asignarServicios(tRecalculo& motor, Elegibles& elegibles, tRec_Modulo& modulo, tRec_Entrada& entrada,
                     char modo, bool transcoding);

} // namespace zarven

#endif
