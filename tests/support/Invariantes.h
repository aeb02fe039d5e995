// What must be true of modules and index whenever no operation is under way, recomputed from the maps.
//
// The engine keeps counters beside its maps (bitrate and number of services of an output, PIDs and
// transcoders of a module) and files every service in several places. The checker counts everything anew
// and tells each difference in a line of text, beginning with the name of the rule.
//
//   rule               what it says                                                        holds
//   record             a record stands under its own number, MAC, ONID or TSID             always
//   key                an entry stands under the idService of its service                  always
//   empty stream       no ONID or TSID of an index is without services                     always
//   index              an index holds no more services than are loaded, whatever the
//                      number of its entries                                               always
//   NumServiciosMax    an output counts no more services than it may                       always
//   NumServicios       an output counts its services, clones apart                         A
//   BitRateActual      an output is loaded with the sum of its services                    A
//   BitRateMax         an output that carries services is loaded below its ceiling         B
//   PIDsModulo         a module uses the PIDs of the services on its outputs               A, D
//   PIDsModuloMax      a module uses no more PIDs than its budget                          B, D
//   SD_Transcoding     a module uses one SD transcoder for each service on its outputs
//   HD_Transcoding     that needs one and is not HD, one HD transcoder for each that is    A, D
//   transcoder pool    SD and HD together stay within the larger of the two ceilings       B, D
//   AUX_Transcoding    a module uses one AUX transcoder for each clone that needs one,
//                      within the ceiling                                                  always
//   received           what a module carries on an output it has on an input               G
//   inputs and outputs a module carries the same services on its inputs and its outputs    C
//   stream of input    a service on an input is of the stream the input is tuned to        C, E
//   stream of index    a service in the index stands under its own stream                  C
//   twice              no service is placed twice, or placed and unassigned at once        C
//   lost               every loaded service is placed or unassigned                        F
//
// A  Exactly, until the optimize phase takes a service off by a key that stands several times on an output:
//    every entry goes, one is counted. That happens when services share keys, or when one has been placed
//    twice after a failed exchange. As long as the entries are all of one service the counters stay at or
//    above the sums, and that is checked then. With shared keys only NumServicios does.
//    Load_Balance leaves NumServicios as it was, swapModulos the transcoder counters. A clone is told by its
//    Parent_SID; attaching one changes no counter but AUX_Transcoding.
// B  Until a service has been taken off by a shared key; Load_Balance does not look at BitRateMax.
// C  Until an exchange of the optimize phase fails half way (what it staged may be placed a second time and
//    on an input of another stream), or a service is taken off by a shared key.
// D  Until the unify phase gathers a stream: the two module counters stay as they were.
// E  Unless a stream has ONID or TSID 0: its input looks untuned.
// F  Until a service is taken off by a shared key.
// G  Until a service is taken off by a shared key, or one that a module carries twice: it goes from the input
//    altogether and from one output.
//
// Peak bitrates and PIDs are taken modulo 2^32 and 2^16 as the counters are.

#ifndef ZARVEN_TESTS_INVARIANTES_H
#define ZARVEN_TESTS_INVARIANTES_H

#include <string>
#include <vector>

#include "tRecalculo.h"

namespace invariantes {

// What has happened to a placement since it was empty, as far as the rules depend on it.
struct Historia {
    bool reunion = false;         // unify has gathered a stream
    bool fallo = false;           // an exchange of optimize has failed half way
    bool claveCompartida = false; // a service was taken off by a key that others may have
    bool retiradaDoble = false;   // a service was taken off a module that may have it on two outputs
    bool balance = false;         // Load_Balance has moved services
    bool streamSinNumero = false; // a stream has ONID or TSID 0
};

// The violations among these modules and this index, of the services that `motor` has loaded.
std::vector<std::string> comprobar(const zarven::tRecalculo& motor, const zarven::tMapaModulos& modulos,
                                   const zarven::tMapaONIDs& indice, const Historia& historia = {});

// Those of one module alone, which may stand outside an engine.
std::vector<std::string> comprobar(const zarven::tRec_Modulo& modulo, const Historia& historia = {});

// Those of one output alone.
std::vector<std::string> comprobar(const zarven::tRec_Salida& salida, const Historia& historia = {});

// Follows a run by its log: checks the working maps at the beginning of every state of a pass, when the
// optimize phase has made its exchanges and when the pass has ended; keeps the history, pass by pass.
class Vigilante {
public:
    explicit Vigilante(const zarven::tRecalculo& motor);

    // To be called with every line of the log.
    void leer(const std::string& linea);
    // Checks the result, once the run has ended.
    void comprobarResultado();

    const std::vector<std::string>& violaciones() const { return encontradas; }
    std::size_t comprobaciones() const { return hechas; }
    // That of the pass under way.
    const Historia& historia() const { return deLaPasada; }

private:
    bool hayDobles() const;
    void comprobarProceso(const std::string& donde);
    void anotar(const std::vector<std::string>& violaciones, const std::string& donde);

    const zarven::tRecalculo& motor;
    bool clavesCompartidas = false;
    Historia inicial;
    Historia deLaPasada;
    Historia delResultado;
    std::vector<std::string> encontradas;
    std::size_t hechas = 0;
};

} // namespace invariantes

#endif
