#include "support/Invariantes.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "support/Lineas.h"

using namespace zarven;

namespace invariantes {

namespace {

// How far a counter is from the sum that it stands for.
enum class Exactitud { IGUAL, NO_MENOR, NINGUNA };

class Lista {
public:
    template <class... Partes> void violada(const char* regla, const Partes&... partes) {
        std::string linea = std::string(regla) + ":";
        ((linea += " " + texto(partes)), ...);
        lineas.push_back(std::move(linea));
    }

    void contador(const char* regla, const std::string& donde, std::uint32_t contado, std::uint32_t suma,
                  Exactitud exactitud) {
        if (exactitud == Exactitud::NINGUNA || contado == suma)
            return;
        if (exactitud == Exactitud::IGUAL || contado < suma)
            violada(regla, donde, "has", contado, "for", suma);
    }

    std::vector<std::string> lineas;

private:
    static std::string texto(const std::string& parte) { return parte; }
    static std::string texto(const char* parte) { return parte; }
    template <class Numero> static std::string texto(Numero numero) { return std::to_string(numero); }
};

bool esClon(const tRec_Servicio& servicio) {
    return servicio.Parent_SID != 0;
}

Exactitud deSalida(const Historia& h) {
    if (h.claveCompartida)
        return Exactitud::NINGUNA;
    return h.fallo ? Exactitud::NO_MENOR : Exactitud::IGUAL;
}

Exactitud deNumServicios(const Historia& h) {
    if (h.balance)
        return Exactitud::NINGUNA;
    return h.fallo || h.claveCompartida ? Exactitud::NO_MENOR : Exactitud::IGUAL;
}

Exactitud deModulo(const Historia& h) {
    return h.reunion ? Exactitud::NINGUNA : deSalida(h);
}

void comprobarClaves(const tMapaServicios& servicios, const std::string& donde, Lista& lista) {
    for (const auto& [clave, servicio] : servicios)
        if (servicio == nullptr)
            lista.violada("key", donde, "holds no service under", clave);
        else if (clave != servicio->idService)
            lista.violada("key", donde, "holds", servicio->idService, "under", clave);
}

void comprobarSalida(const tRec_Salida& salida, const std::string& donde, const Historia& h, Lista& lista) {
    comprobarClaves(salida.MapaServicios, donde, lista);
    std::uint32_t bitrate = 0;
    std::uint32_t cuenta = 0;
    for (const auto& [clave, servicio] : salida.MapaServicios)
        if (servicio != nullptr && !esClon(*servicio)) {
            bitrate += servicio->peakBitRate;
            ++cuenta;
        }
    lista.contador("BitRateActual", donde, salida.BitRateActual, bitrate, deSalida(h));
    lista.contador("NumServicios", donde, salida.NumServicios, cuenta, deNumServicios(h));
    if (salida.NumServicios > salida.NumServiciosMax)
        lista.violada("NumServiciosMax", donde, "counts", salida.NumServicios, "of", salida.NumServiciosMax);
    if (!h.claveCompartida && !h.balance && cuenta != 0 && salida.BitRateActual >= salida.BitRateMax)
        lista.violada("BitRateMax", donde, "is loaded with", salida.BitRateActual, "of", salida.BitRateMax);
}

// What the services on the outputs of a module need.
struct Necesidad {
    unsigned short pids = 0;
    unsigned sd = 0;
    unsigned hd = 0;
    unsigned aux = 0;
};

Necesidad necesidad(const tRec_Modulo& modulo) {
    Necesidad total;
    for (const auto& [id, salida] : modulo.mapSalidas)
        for (const auto& [clave, servicio] : salida.MapaServicios) {
            if (servicio == nullptr)
                continue;
            if (esClon(*servicio)) {
                total.aux += servicio->Transcoding != 0;
                continue;
            }
            total.pids = static_cast<unsigned short>(total.pids + servicio->number_PIDs_CA);
            if (servicio->Transcoding == 1)
                ++(servicio->VideoFormatE == tRec_Servicio::VIDEO_HD ? total.hd : total.sd);
        }
    return total;
}

void comprobarRecursos(const tRec_Modulo& modulo, const std::string& donde, const Historia& h, Lista& lista) {
    const Necesidad suma = necesidad(modulo);
    lista.contador("PIDsModulo", donde, modulo.PIDsModulo, suma.pids, deModulo(h));
    lista.contador("SD_Transcoding", donde, modulo.SD_Transcoding, suma.sd, deModulo(h));
    lista.contador("HD_Transcoding", donde, modulo.HD_Transcoding, suma.hd, deModulo(h));
    lista.contador("AUX_Transcoding", donde, modulo.AUX_Transcoding, suma.aux, Exactitud::IGUAL);
    if (modulo.AUX_Transcoding > modulo.AUX_MAX_Transcoding)
        lista.violada("AUX_Transcoding", donde, "uses", modulo.AUX_Transcoding, "of",
                      modulo.AUX_MAX_Transcoding);
    if (h.claveCompartida || h.reunion)
        return;
    if (modulo.PIDsModulo > modulo.PIDsModuloMax)
        lista.violada("PIDsModuloMax", donde, "uses", modulo.PIDsModulo, "of", modulo.PIDsModuloMax);
    const unsigned limite = std::max(modulo.SD_MAX_Transcoding, modulo.HD_MAX_Transcoding);
    const unsigned enUso = static_cast<unsigned>(modulo.SD_Transcoding) + modulo.HD_Transcoding;
    if (enUso > limite)
        lista.violada("transcoder pool", donde, "uses", enUso, "of", limite);
}

// A service and the key that it stands under.
using Entrada = std::pair<long, const tRec_Servicio*>;

template <class Mapa> std::multiset<Entrada> todos(const Mapa& mapa) {
    std::multiset<Entrada> resultado;
    for (const auto& [numero, lugar] : mapa)
        for (const auto& [clave, servicio] : lugar.MapaServicios)
            resultado.emplace(clave, servicio.get());
    return resultado;
}

// The services on the outputs of a module that are on none of its inputs.
std::set<Entrada> sinEntrada(const tRec_Modulo& modulo) {
    const auto entradas = todos(modulo.mapEntradas);
    std::set<Entrada> resultado;
    for (const Entrada& una : todos(modulo.mapSalidas))
        if (entradas.count(una) == 0)
            resultado.insert(una);
    return resultado;
}

void comprobarRecibidos(const tRec_Modulo& modulo, const std::string& donde, Lista& lista) {
    for (const Entrada& una : sinEntrada(modulo))
        lista.violada("received", donde, "carries", una.first, "on an output and on no input");
}

void comprobarLugares(const tRec_Modulo& modulo, const std::string& donde, Lista& lista) {
    const auto entradas = todos(modulo.mapEntradas);
    const auto salidas = todos(modulo.mapSalidas);
    std::set<Entrada> todas(entradas.begin(), entradas.end());
    for (const Entrada& una : todas)
        if (entradas.count(una) > salidas.count(una))
            lista.violada("inputs and outputs", donde, "carries", una.first, "on an input and on no output");
        else if (entradas.count(una) < salidas.count(una))
            lista.violada("inputs and outputs", donde, "carries", una.first, "on more outputs than inputs");
}

void comprobarEntrada(const tRec_Entrada& entrada, const std::string& donde, const Historia& h,
                      Lista& lista) {
    comprobarClaves(entrada.MapaServicios, donde, lista);
    if (h.fallo || h.claveCompartida || h.streamSinNumero)
        return;
    for (const auto& [clave, servicio] : entrada.MapaServicios)
        if (servicio != nullptr && (servicio->ONID != entrada.ONID || servicio->TSID != entrada.TSID))
            lista.violada("stream of input", donde, "is tuned to", entrada.ONID, "/", entrada.TSID,
                          "and carries", clave, "of", servicio->ONID, "/", servicio->TSID);
}

void comprobarModulo(const tRec_Modulo& modulo, const Historia& h, Lista& lista) {
    const std::string donde = "module " + modulo.MAC;
    for (const auto& [numero, entrada] : modulo.mapEntradas) {
        const std::string cual = donde + " input " + std::to_string(numero);
        if (numero != entrada.NumEntrada)
            lista.violada("record", cual, "has number", entrada.NumEntrada);
        comprobarEntrada(entrada, cual, h, lista);
    }
    for (const auto& [id, salida] : modulo.mapSalidas) {
        const std::string cual = donde + " output " + std::to_string(id);
        if (id != salida.NumSalida)
            lista.violada("record", cual, "has number", salida.NumSalida);
        comprobarSalida(salida, cual, h, lista);
    }
    comprobarRecursos(modulo, donde, h, lista);
    if (!h.retiradaDoble && !h.claveCompartida)
        comprobarRecibidos(modulo, donde, lista);
    if (!h.fallo && !h.claveCompartida)
        comprobarLugares(modulo, donde, lista);
}

void comprobarIndice(const tMapaONIDs& indice, const Historia& h, Lista& lista) {
    for (const auto& [onid, rec_onid] : indice) {
        const std::string red = "ONID " + std::to_string(onid);
        if (onid != rec_onid.ONID)
            lista.violada("record", red, "has number", rec_onid.ONID);
        if (rec_onid.MapRec_TSIDs.empty())
            lista.violada("empty stream", red, "has no TSID");
        for (const auto& [tsid, rec_tsid] : rec_onid.MapRec_TSIDs) {
            const std::string stream = red + " TSID " + std::to_string(tsid);
            if (tsid != rec_tsid.TSID)
                lista.violada("record", stream, "has number", rec_tsid.TSID);
            if (rec_tsid.MapRec_Services.empty())
                lista.violada("empty stream", stream, "has no services");
            comprobarClaves(rec_tsid.MapRec_Services, stream, lista);
            if (h.fallo || h.claveCompartida)
                continue;
            for (const auto& [clave, servicio] : rec_tsid.MapRec_Services)
                if (servicio != nullptr && (servicio->ONID != onid || servicio->TSID != tsid))
                    lista.violada("stream of index", stream, "holds", clave, "of", servicio->ONID, "/",
                                  servicio->TSID);
        }
    }
}

// Every service is somewhere, and in one place.
void comprobarServicios(const tRecalculo& motor, const tMapaModulos& modulos, const tMapaONIDs& indice,
                        const Historia& h, Lista& lista) {
    std::map<const tRec_Servicio*, unsigned> veces;
    for (const auto& [onid, rec_onid] : indice)
        for (const auto& [tsid, rec_tsid] : rec_onid.MapRec_TSIDs)
            for (const auto& [clave, servicio] : rec_tsid.MapRec_Services)
                ++veces[servicio.get()];
    // However often failed exchanges have staged one.
    const auto sinAsignar = veces.size() - veces.count(nullptr);
    if (sinAsignar > motor.listaServicios.size())
        lista.violada("index", "holds", sinAsignar, "services of", motor.listaServicios.size());
    std::set<const tRec_Servicio*> enSalidas;
    for (const auto& [mac, modulo] : modulos) {
        for (const auto& [clave, servicio] : todos(modulo.mapEntradas))
            ++veces[servicio];
        for (const auto& [clave, servicio] : todos(modulo.mapSalidas))
            enSalidas.insert(servicio);
    }
    if (!h.fallo && !h.claveCompartida)
        for (const auto& [servicio, cuantas] : veces)
            if (servicio != nullptr && cuantas > 1)
                lista.violada("twice", "service", servicio->idService, "is in", cuantas, "places");
    if (h.claveCompartida)
        return;
    for (const auto& servicio : motor.listaServicios)
        if (veces.count(servicio.get()) == 0 && enSalidas.count(servicio.get()) == 0)
            lista.violada("lost", "service", servicio->idService, "is nowhere");
}

} // namespace

std::vector<std::string> comprobar(const tRecalculo& motor, const tMapaModulos& modulos,
                                   const tMapaONIDs& indice, const Historia& historia) {
    Lista lista;
    for (const auto& [mac, modulo] : modulos) {
        if (mac != modulo.MAC)
            lista.violada("record", "module", mac, "has MAC", modulo.MAC);
        comprobarModulo(modulo, historia, lista);
    }
    comprobarIndice(indice, historia, lista);
    comprobarServicios(motor, modulos, indice, historia, lista);
    return lista.lineas;
}

std::vector<std::string> comprobar(const tRec_Modulo& modulo, const Historia& historia) {
    Lista lista;
    comprobarModulo(modulo, historia, lista);
    return lista.lineas;
}

std::vector<std::string> comprobar(const tRec_Salida& salida, const Historia& historia) {
    Lista lista;
    comprobarSalida(salida, "output " + std::to_string(salida.NumSalida), historia, lista);
    return lista.lineas;
}

Vigilante::Vigilante(const tRecalculo& engine) : motor(engine) {
    std::set<long> claves;
    for (const auto& servicio : motor.listaServicios) {
        clavesCompartidas = !claves.insert(servicio->idService).second || clavesCompartidas;
        inicial.streamSinNumero = servicio->ONID == 0 || servicio->TSID == 0 || inicial.streamSinNumero;
    }
    deLaPasada = delResultado = inicial;
}

void Vigilante::leer(const std::string& linea) {
    using lineas::empieza;
    if (empieza(linea, lineas::PRINCIPIO_DE_OPCION)) {
        deLaPasada = inicial;
    } else if (linea == lineas::REUNION) {
        deLaPasada.reunion = true;
    } else if (empieza(linea, lineas::FALLO_DE_PERMUTA)) {
        deLaPasada.fallo = true;
    } else if (empieza(linea, "Try_to_Delete_Service_Input_Output")) {
        deLaPasada.claveCompartida = clavesCompartidas;
        deLaPasada.retiradaDoble = deLaPasada.retiradaDoble || hayDobles();
    } else if (lineas::estado(linea) != lineas::Estado::NINGUNO ||
               empieza(linea, lineas::VUELTA_DE_OPTIMIZAR) || lineas::terminaLaOpcion(linea)) {
        comprobarProceso(linea);
    } else if (empieza(linea, "Si hemos encontrado una opción mejor")) {
        delResultado = deLaPasada;
    }
}

void Vigilante::comprobarResultado() {
    anotar(comprobar(motor, motor.Mapa_ModulosCabecera_Final, motor.Mapa_ONIDs_Final, delResultado),
           "the result");
    // A clone is attached or waits, not both.
    for (const auto& clon : motor.listaServiciosClonados)
        for (const auto& [mac, modulo] : motor.Mapa_ModulosCabecera_Final)
            for (const auto& [clave, servicio] : todos(modulo.mapEntradas))
                if (servicio == clon.get())
                    anotar({"twice: clone " + std::to_string(clave) + " is attached and waits"},
                           "the result");
}

// Some module carries a service on two of its outputs.
bool Vigilante::hayDobles() const {
    for (const auto& [mac, modulo] : motor.Mapa_ModulosCabecera_Proceso) {
        const auto salidas = todos(modulo.mapSalidas);
        for (const Entrada& una : salidas)
            if (salidas.count(una) > 1)
                return true;
    }
    return false;
}

void Vigilante::comprobarProceso(const std::string& donde) {
    anotar(comprobar(motor, motor.Mapa_ModulosCabecera_Proceso, motor.Mapa_ONIDs, deLaPasada), donde);
}

void Vigilante::anotar(const std::vector<std::string>& violaciones, const std::string& donde) {
    ++hechas;
    for (const std::string& una : violaciones)
        encontradas.push_back(una + " (at \"" + donde + "\")");
}

} // namespace invariantes
