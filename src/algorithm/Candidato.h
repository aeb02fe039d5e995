// A candidate exchange of the unify phase: two modules that receive the same stream.
//
// After it, the outputs of the first module carry the services of that stream and nothing else, those of the
// second everything else that stood on the inputs of the two. Inputs move as a whole; a service of the second
// module that would be left on an output without input goes to the input that receives its stream. The
// exchange is prepared on copies of both modules, which are dropped when it is refused.

#ifndef ZARVEN_ALGORITHM_CANDIDATO_H
#define ZARVEN_ALGORITHM_CANDIDATO_H

#include "tRecalculo.h"

#include "Paseo.h"

namespace zarven {

class Candidato {
public:
    // The two modules, known as itModulo and itModulo_Aux in the log, and the input of the first that
    // receives the stream.
    Candidato(tRecalculo& motor, tRec_Modulo& modulo, unsigned short numEntrada, tRec_Modulo& modulo_Aux);

    // Makes the exchange when every limit allows it, and tells whether it did.
    bool intercambiar();

private:
    // What one of the two modules is to carry. The sums wrap at 32 bits and are compared as signed.
    struct Lado {
        const char* sufijo; // of its names in the log
        tRec_Modulo& modulo;
        tRec_Modulo copia{};
        tMapaServicios ListaServiciosSalida{};
        std::uint32_t Count_PIDs = 0;
        std::uint32_t Transcoding_HD = 0;
        std::uint32_t Transcoding_SD = 0;
        std::uint32_t Bitrate_ListaServiciosSalida = 0;

        void anadir(long clave, const std::shared_ptr<tRec_Servicio>& servicio);
        std::uint32_t Bitrate_Max_Salida() const;
        void registrarAntes() const;
        void registrarTranscoding() const;
        bool bastanPIDs() const;
        bool bastanTranscoders() const;
        bool colocarEnCopia(tRecalculo& engine);
        bool recogerEnEntrada(const Ficha& ficha);
    };

    void reunirListas();
    bool cabeEnRecursos() const;
    bool cabeEnBitrate() const;
    bool resintonizar();
    bool pasarAlAuxiliar(unsigned short onid, unsigned short tsid, tMapaServicios servicios);
    bool recogerEnEntradas();

    tRecalculo& motor;
    Lado principal;
    Lado auxiliar;
    const unsigned short numEntrada;
    // The candidate stream.
    unsigned short ONID;
    unsigned short TSID;
};

} // namespace zarven

#endif
