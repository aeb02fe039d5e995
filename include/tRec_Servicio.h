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

#include "tRec_PID.h"

namespace zarven {

struct tRec_Entrada;
struct tRec_Salida;

/// One television or radio service that the recalculation places on a module.
struct RECALCULO_API tRec_Servicio {
    /// `VideoFormatE` of a high-definition service; every other value counts as standard definition.
    static constexpr unsigned short VIDEO_HD = 4;

    /// Identity of the service and its key in every services multimap. 32-bit signed range; the
    /// constructors give it the value of `LCN`.
    long idService = 0;
    /// Service id on the received stream.
    unsigned short OSID = 0;
    /// Service id; a PID goes to the service whose `SID` equals its own.
    unsigned short SID = 0;
    /// Logical channel number.
    unsigned short LCN = 0;
    /// Carried for the caller; nothing in the library reads it.
    unsigned short Reservado1 = 0;
    /// Simulcast logical channel number.
    unsigned short SimulcastLCN = 0;
    /// Non-zero: the service must be descrambled.
    unsigned short Descifrar = 0;
    /// PIDs of the service that count against the module's PID budget (`tRec_Modulo::PIDsModulo`).
    unsigned short number_PIDs_CA = 0;
    /// Ceiling of `number_PIDs_CA` when the PIDs of clones are charged to their parent.
    unsigned short number_PIDs_CA_Max = 0;
    /// Peak bitrate of the whole service, in the unit of `tRec_Salida::BitRateMax`; what an output is
    /// charged for it.
    std::uint32_t peakBitRate = 0;
    /// Peak bitrate of the video component, same unit.
    std::uint32_t videoPeakBitRate = 0;
    /// Service type.
    unsigned short Tipo = 0;
    /// Video format of the received service; see `VIDEO_HD`.
    unsigned short VideoFormatE = 0;
    /// Carried for the caller; nothing in the library reads it.
    unsigned short Reservado2 = 0;
    /// Name as received, UTF-8.
    std::string NombreEntrada;
    /// Name to transmit, UTF-8.
    std::string NombreSalida;
    /// Forced-name flag.
    unsigned short NombreForzado = 0;
    /// Transcoding flag: 0 no transcoder, 1 needs one. Other values are carried and never placed by
    /// `tRecalculo::Asignar_listaServicios`.
    unsigned short Transcoding = 0;
    /// Carried for the caller; nothing in the library reads it.
    unsigned short Reservado3 = 0;
    /// Satellite (source) the service comes from.
    unsigned short SatId = 0;
    /// Original network id of the service's transport stream.
    unsigned short ONID = 0;
    /// Transport stream id.
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
    /// bitrates: the video's first, the whole service's second; both are narrowed to 32 bits.
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

    /// Takes over a PID and files it under its `idPSG`. When that key is taken the PID already there stays
    /// and the new one is destroyed; the result is the same. Logs the service's `SID` (debug).
    /// @return 1; 0 for a null pointer (nothing is done or logged).
    int addPID_AlServicio(std::unique_ptr<tRec_PID> pid);

    /// Writes the service block with its PIDs to the log (debug), headed by the running number `n`.
    void Print_Servicio(int n) const;
    /// Writes the frame of the PIDs to the log (debug); a service without PIDs leaves it open.
    void Print_MapaPIDs() const;
};

/// Services by service key, ascending; equal keys keep the order of insertion.
using tMapaServicios = std::multimap<long, std::shared_ptr<tRec_Servicio>>;

} // namespace zarven

#endif
