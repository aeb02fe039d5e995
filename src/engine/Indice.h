// Walking an index of services, and finding a stream in one.

#ifndef ZARVEN_ENGINE_INDICE_H
#define ZARVEN_ENGINE_INDICE_H

#include "Rec_ONID.h"

namespace zarven {

// The stream's record, or null.
inline Rec_TSID* buscarTSID(tMapaONIDs& indice, unsigned short onid, unsigned short tsid) {
    const auto itONID = indice.find(onid);
    if (itONID == indice.end())
        return nullptr;
    const auto itTSID = itONID->second.MapRec_TSIDs.find(tsid);
    return itTSID == itONID->second.MapRec_TSIDs.end() ? nullptr : &itTSID->second;
}

// The stream's record, made (and its network's) when it is not there yet.
inline Rec_TSID& abrirTSID(tMapaONIDs& indice, unsigned short onid, unsigned short tsid) {
    Rec_ONID& red = indice[onid];
    red.ONID = onid;
    Rec_TSID& stream = red.MapRec_TSIDs[tsid];
    stream.TSID = tsid;
    return stream;
}

// Undoes abrirTSID as far as it came: the records go that hold nothing.
inline void cerrarTSID(tMapaONIDs& indice, unsigned short onid, unsigned short tsid) {
    const auto itONID = indice.find(onid);
    if (itONID == indice.end())
        return;
    auto& streams = itONID->second.MapRec_TSIDs;
    const auto itTSID = streams.find(tsid);
    if (itTSID != streams.end() && itTSID->second.MapRec_Services.empty())
        streams.erase(itTSID);
    if (streams.empty())
        indice.erase(itONID);
}

// Calls f(Rec_ONID, Rec_TSID) for every stream in order.
template <class Indice, class F> void cadaTSID(Indice& indice, F&& f) {
    for (auto& [onid, rec_onid] : indice)
        for (auto& [tsid, rec_tsid] : rec_onid.MapRec_TSIDs)
            f(rec_onid, rec_tsid);
}

// Calls f(Rec_ONID, Rec_TSID) for the streams in order, up to the first for which it gives true; gives
// whether there was one.
template <class Indice, class F> bool algunTSID(Indice& indice, F&& f) {
    for (auto& [onid, red] : indice)
        for (auto& [tsid, stream] : red.MapRec_TSIDs)
            if (f(red, stream))
                return true;
    return false;
}

// The count is kept in 16 bits and wraps, as everything the driver derives from it expects.
inline unsigned short contarServicios(const tMapaONIDs& indice) {
    unsigned short total = 0;
    for (const auto& [onid, red] : indice)
        for (const auto& [tsid, stream] : red.MapRec_TSIDs)
            total = static_cast<unsigned short>(total + stream.MapRec_Services.size());
    return total;
}

} // namespace zarven

#endif
