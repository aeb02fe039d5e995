// A candidate for gathering in the unify phase: a stream that two modules receive, and an input of the first.
//
// Once it is gathered, the outputs of the first module carry the services of that stream and nothing else,
// those of the second everything else that stood on the inputs of the two. Inputs move as a whole; a service
// of the second module that would be left on an output without input goes to the input that receives its
// stream. Gathering is prepared on copies of both modules, which are dropped when it is refused.

#ifndef ZARVEN_ALGORITHM_CANDIDATO_H
#define ZARVEN_ALGORITHM_CANDIDATO_H

#include "tRecalculo.h"

#include "Ficha.h"

namespace zarven {

class Candidato {
public:
    // The two modules, known as itModulo and itModulo_Aux in the log, and the input of the first that
    // receives the stream.
    Candidato(tRecalculo& motor, tRec_Modulo& modulo, unsigned short numEntrada, tRec_Modulo& moduloAux);

    // Gathers the stream when every limit allows it, and tells whether it did.
    bool reunir();

private:
    // What one of the two modules is to carry. The sums wrap at 32 bits and are compared as signed.
    struct Lado {
        const char* sufijo; // of its names in the log
        tRec_Modulo& modulo;
        tRec_Modulo copia{};
        tMapaServicios servicios{};
        std::uint32_t pids = 0;
        std::uint32_t transcodingHD = 0;
        std::uint32_t transcodingSD = 0;
        std::uint32_t bitrate = 0;

        void anadir(long clave, const std::shared_ptr<tRec_Servicio>& servicio);
        std::uint32_t bitrateMax() const;
        void registrarAntes() const;
        void registrarTranscoding() const;
        bool bastanPIDs() const;
        bool bastanTranscoders() const;
        bool bastaBitrate() const;
        bool colocarEnCopia(tRecalculo& motor);
        bool asegurarEnEntrada(const Ficha& ficha);
    };

    void repartirServicios();
    bool bastanRecursos() const;
    // These two log and pause on their way.
    bool examinarRecursos() const;
    bool examinarBitrate() const;
    bool resintonizar();
    bool pasarAlAuxiliar(unsigned short onid, unsigned short tsid, tMapaServicios servicios);
    bool asegurarEnEntradas();

    tRecalculo& motor_;
    Lado principal_;
    Lado auxiliar_;
    const unsigned short numEntrada_;
    // The candidate stream.
    unsigned short onid_;
    unsigned short tsid_;
};

} // namespace zarven

#endif
