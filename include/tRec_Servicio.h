// tRec_Servicio: one television or radio service that the recalculation places on a module.
//
// A head-end loads some hundreds of them, a large one ten thousand. Each is one object behind a
// std::shared_ptr, held at once by the engine's index and lists and by the input and the output that carry
// it; copies of modules and of the index share it. It is never copied, because it owns its PIDs.

#ifndef ZARVEN_TREC_SERVICIO_H
#define ZARVEN_TREC_SERVICIO_H

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "tRec_PID.h"

namespace zarven {

struct tRec_Entrada;
struct tRec_Salida;

/// One television or radio service that the recalculation places on a module.
struct RECALCULO_API tRec_Servicio {
    /// `VideoFormatE` of a high-definition service; every other value counts as standard definition.
    static constexpr unsigned short VIDEO_HD = 4;

    /// Identity of the service and its key in every services multimap; equal keys in one stream mean a clone.
    /// 32-bit signed range; the constructors give it the value of `LCN`.
    long idService = 0;
    /// Service id on the received stream, 0 to 65535.
    unsigned short OSID = 0;
    /// Service id, 0 to 65535; a PID goes to the service whose `SID` equals its own.
    unsigned short SID = 0;
    /// Logical channel number, 0 to 65535; 0 when there is none.
    unsigned short LCN = 0;
    /// Any value, 0 when it is not used: carried for the caller, nothing in the library reads it.
    unsigned short Reservado1 = 0;
    /// Logical channel number of the simulcast; 0 when there is none. Written to the log, else not read.
    unsigned short SimulcastLCN = 0;
    /// 0: free to air. Any other value: the service must be descrambled. Written to the log, else not read;
    /// what counts is `number_PIDs_CA`.
    unsigned short Descifrar = 0;
    /// Number of PIDs of the service that count against the module's PID budget (`tRec_Modulo::PIDsModulo`);
    /// 0 for one that is not descrambled.
    unsigned short number_PIDs_CA = 0;
    /// Ceiling of `number_PIDs_CA`, a number of PIDs as well, when the PIDs of clones are charged to their
    /// parent; with 0 they bring it down to 0.
    unsigned short number_PIDs_CA_Max = 0;
    /// Peak bitrate of the whole service in kbit/s; what an output is charged for it. 0 costs nothing.
    std::uint32_t peakBitRate = 0;
    /// Peak bitrate of the video component in kbit/s. Written to the log, else not read.
    std::uint32_t videoPeakBitRate = 0;
    /// Service type as in the service descriptor of the DVB tables (1 television, 2 radio and so on), 0 when
    /// it is not known; any value. Written to the log, else not read.
    unsigned short Tipo = 0;
    /// Video format of the received service: `VIDEO_HD` takes an HD transcoder, any other value an SD one.
    unsigned short VideoFormatE = 0;
    /// Any value, 0 when it is not used: carried for the caller, nothing in the library reads it.
    unsigned short Reservado2 = 0;
    /// Name as received, UTF-8.
    std::string NombreEntrada;
    /// Name to transmit, UTF-8.
    std::string NombreSalida;
    /// Forced-name flag: 0 no, 1 yes. Written to the log, else not read.
    unsigned short NombreForzado = 0;
    /// Transcoding flag: 0 no transcoder, 1 needs one. Other values are carried and never placed by
    /// `tRecalculo::Asignar_listaServicios`.
    unsigned short Transcoding = 0;
    /// Any value, 0 when it is not used: carried for the caller, nothing in the library reads it.
    unsigned short Reservado3 = 0;
    /// Number of the satellite (source) the service comes from, the caller's own; 0 when it is not known.
    unsigned short SatId = 0;
    /// Original network id of the service's transport stream, 1 to 65535: an input that is tuned to 0 counts
    /// as untuned.
    unsigned short ONID = 0;
    /// Transport stream id, 1 to 65535, for the same reason.
    unsigned short TSID = 0;
    /// For a clone, the service id of the service it copies; 0 for an ordinary service.
    unsigned short Parent_SID = 0;
    /// The input the service was last added to by `tRec_Entrada::addServicioALaEntrada`. Does not own and
    /// is not re-targeted when modules are copied: the input it names may be gone. Do not follow it.
    tRec_Entrada* pEntrada = nullptr;
    /// The output the service was last added to by `tRec_Salida::addServicioALaSalida`; cleared when the
    /// service is deleted from an input or an output. Same caution as `pEntrada`.
    tRec_Salida* pSalida = nullptr;
    /// The service's PIDs by `idPSG`, ascending. Owned.
    std::map<long, std::unique_ptr<tRec_PID>> MapaPIDs;

    /// All numbers 0, both names empty, no PIDs.
    tRec_Servicio() = default;

    /// An ordinary service. `idService_LCN` goes to both `idService` and `LCN`. Mind the order of the two
    /// bitrates in kbit/s: the video's first, the whole service's second; both are narrowed to 32 bits. The
    /// setters below cannot be mixed up.
    tRec_Servicio(unsigned short OSID, unsigned short SID, unsigned short idService_LCN,
                  unsigned short Reservado1, unsigned short SimulcastLCN, unsigned short Descifrar,
                  unsigned short number_PIDs_CA, unsigned short number_PIDs_CA_Max,
                  unsigned long videoPeakBitRate, unsigned long peakBitRate, unsigned short Tipo,
                  unsigned short VideoFormatE, unsigned short Reservado2, std::string NombreEntrada,
                  std::string NombreSalida, unsigned short NombreForzado, unsigned short Transcoding,
                  unsigned short ONID, unsigned short TSID, unsigned short Reservado3, unsigned short SatId);

    /// A clone: it takes no PID budget and no output bitrate of its own (`number_PIDs_CA`,
    /// `number_PIDs_CA_Max` and `peakBitRate` are 0).
    tRec_Servicio(unsigned short OSID, unsigned short SID, unsigned short idService_LCN,
                  unsigned short Reservado1, unsigned short SimulcastLCN, unsigned short Descifrar,
                  unsigned short Tipo, unsigned short VideoFormatE, unsigned short Reservado2,
                  std::string NombreEntrada, std::string NombreSalida, unsigned long videoPeakBitRate,
                  unsigned short NombreForzado, unsigned short Transcoding, unsigned short ONID,
                  unsigned short TSID, unsigned short Reservado3, unsigned short Parent_SID,
                  unsigned short SatId);

    // The fields by name, one after the other, where a constructor with all of them invites mistakes:
    // s->conLCN(11).conSID(11).conONID(1).conTSID(1001).conBitRate(4000). Each gives the service back.

    /// Sets `LCN`, and `idService` to the same, as the constructors do.
    tRec_Servicio& conLCN(unsigned short valor) {
        idService = valor;
        return con(LCN, valor);
    }
    /// Sets the key alone; after `conLCN`.
    tRec_Servicio& conIdService(long valor) { return con(idService, valor); }
    /// Sets `OSID`.
    tRec_Servicio& conOSID(unsigned short valor) { return con(OSID, valor); }
    /// Sets `SID`.
    tRec_Servicio& conSID(unsigned short valor) { return con(SID, valor); }
    /// Sets `SimulcastLCN`.
    tRec_Servicio& conSimulcastLCN(unsigned short valor) { return con(SimulcastLCN, valor); }
    /// Sets `Descifrar`.
    tRec_Servicio& conDescifrar(unsigned short valor) { return con(Descifrar, valor); }
    /// Sets `number_PIDs_CA`, a number of PIDs.
    tRec_Servicio& conPIDsCA(unsigned short valor) { return con(number_PIDs_CA, valor); }
    /// Sets `number_PIDs_CA_Max`, a number of PIDs.
    tRec_Servicio& conPIDsCAMax(unsigned short valor) { return con(number_PIDs_CA_Max, valor); }
    /// Sets `peakBitRate`, the whole service's, in kbit/s.
    tRec_Servicio& conBitRate(std::uint32_t valor) { return con(peakBitRate, valor); }
    /// Sets `videoPeakBitRate` in kbit/s.
    tRec_Servicio& conBitRateVideo(std::uint32_t valor) { return con(videoPeakBitRate, valor); }
    /// Sets `Tipo`.
    tRec_Servicio& conTipo(unsigned short valor) { return con(Tipo, valor); }
    /// Sets `VideoFormatE`.
    tRec_Servicio& conVideoFormatE(unsigned short valor) { return con(VideoFormatE, valor); }
    /// Sets `NombreEntrada`.
    tRec_Servicio& conNombreEntrada(std::string valor) { return con(NombreEntrada, std::move(valor)); }
    /// Sets `NombreSalida`.
    tRec_Servicio& conNombreSalida(std::string valor) { return con(NombreSalida, std::move(valor)); }
    /// Sets `NombreForzado`.
    tRec_Servicio& conNombreForzado(unsigned short valor) { return con(NombreForzado, valor); }
    /// Sets `Transcoding`.
    tRec_Servicio& conTranscoding(unsigned short valor) { return con(Transcoding, valor); }
    /// Sets `SatId`.
    tRec_Servicio& conSatId(unsigned short valor) { return con(SatId, valor); }
    /// Sets `ONID`.
    tRec_Servicio& conONID(unsigned short valor) { return con(ONID, valor); }
    /// Sets `TSID`.
    tRec_Servicio& conTSID(unsigned short valor) { return con(TSID, valor); }
    /// Sets `Parent_SID`: the service is a clone that brings its parent.
    tRec_Servicio& conParentSID(unsigned short valor) { return con(Parent_SID, valor); }
    /// Sets `Reservado1`.
    tRec_Servicio& conReservado1(unsigned short valor) { return con(Reservado1, valor); }
    /// Sets `Reservado2`.
    tRec_Servicio& conReservado2(unsigned short valor) { return con(Reservado2, valor); }
    /// Sets `Reservado3`.
    tRec_Servicio& conReservado3(unsigned short valor) { return con(Reservado3, valor); }

    /// Takes over a PID and files it under its `idPSG`. When that key is taken the PID already there stays
    /// and the new one is destroyed; the result is the same. Logs the service's `SID` (debug).
    /// @return 1; 0 for a null pointer (nothing is done or logged).
    int addPID_AlServicio(std::unique_ptr<tRec_PID> pid);

    /// Writes the service block with its PIDs to the log (debug), headed by the running number `n`.
    void Print_Servicio(int n) const;
    /// Writes the frame of the PIDs to the log (debug); a service without PIDs leaves it open.
    void Print_MapaPIDs() const;

private:
    template <class T> tRec_Servicio& con(T& campo, T valor) {
        campo = std::move(valor);
        return *this;
    }
};

/// Services by service key, ascending; equal keys keep the order of insertion.
using tMapaServicios = std::multimap<long, std::shared_ptr<tRec_Servicio>>;

} // namespace zarven

#endif
