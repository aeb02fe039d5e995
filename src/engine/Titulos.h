// Titles that more than one dump of the working and final modules shares.

#ifndef ZARVEN_ENGINE_TITULOS_H
#define ZARVEN_ENGINE_TITULOS_H

#include "tRecalculo.h"

#include "../log/Marcos.h"

namespace zarven {

// The modules between a title and the closing frame, as the driver and the unify phase show them.
inline void volcarModulosHastaElFin(const tRecalculo& motor, tMapaModulos& modulos) {
    motor.Print_Mapa_Modulos(modulos);
    marcos::linea(marcos::BLANCO);
    marcos::linea("||                                       END PRINT MAPA MODULOS SALIDA"
                  "                                      ||");
    marcos::linea(marcos::SUBRAYADO);
}

} // namespace zarven

#endif
