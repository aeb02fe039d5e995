// The PID record and its block in the dumps.

#include "../log/SinFortify.h"

#include "tRec_PID.h"

#include <utility>

#include "../log/Marcos.h"

namespace zarven {

tRec_PID::tRec_PID(long idpsg, unsigned short reservado1, unsigned short reservado2,
                   unsigned short reservado3, std::string audioCode, unsigned short orden, unsigned short sid)
    : idPSG(idpsg), Reservado1(reservado1), Reservado2(reservado2), Reservado3(reservado3),
      AudioCode(std::move(audioCode)), Orden(orden), SID(sid) {}

void tRec_PID::Print_PID(int n) const {
    if (!marcos::seRegistra())
        return;
    marcos::linea(marcos::PIDS_BLANCO);
    ::syslog(LOG_DEBUG,
             "|| ||  %% %%                                          [ -%d- ]"
             "                                          %% %% || ||",
             n);
    ::syslog(LOG_DEBUG,
             "|| ||  %% %%                             idPSG: %d  --> Orden:%d --> AudioCode: %s"
             "                     %% %% || ||",
             static_cast<int>(idPSG), Orden, AudioCode.c_str());
    marcos::linea(marcos::PIDS_BLANCO);
}

} // namespace zarven
