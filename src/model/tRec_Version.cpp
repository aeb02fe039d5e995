#include "../log/SinFortify.h"

#include "tRec_Version.h"

namespace zarven {

int versionNumero() {
    return RECALCULO_VERSION_NUMBER;
}

const char* versionTexto() {
    return RECALCULO_VERSION;
}

} // namespace zarven
