// A module: how it is configured, its raw add and delete, its frame in the dumps.

#include "../log/SinFortify.h"

#include "tRec_Modulo.h"

#include <utility>

#include "../log/Marcos.h"

namespace zarven {

tRec_Modulo::tRec_Modulo(std::string mac) : MAC(std::move(mac)) {}

tRec_Modulo::tRec_Modulo(std::string mac, bool controlador) : MAC(std::move(mac)), Controlador(controlador) {}

int tRec_Modulo::configurarModelo(unsigned short modelo, unsigned short numEntradas,
                                  unsigned short numSalidas, unsigned short pidsMax) {
    if (Modelo != MODELO_SIN_CONFIGURAR)
        return ERROR_YA_CONFIGURADO;
    if (modelo != MODELO_SOPORTADO)
        return ERROR_MODELO_NO_SOPORTADO;
    Modelo = modelo;

    // The counters are wider than the counts, so that 65535 of them come to an end.
    for (std::uint32_t i = 1; i <= numEntradas; ++i) {
        const auto numero = static_cast<unsigned short>(i);
        const auto [it, nueva] = mapEntradas.try_emplace(numero, numero);
        if (nueva)
            it->second.pModulo = this;
    }
    Print_MapaEntradas();

    for (std::uint32_t j = 1; j <= numSalidas; ++j) {
        // A value of its own: with a reference to the constant the library would export it, or not, as the
        // optimizer likes.
        const auto [it, nueva] =
            mapSalidas.try_emplace(j, static_cast<unsigned short>(j), std::uint16_t{SERVICIOS_POR_SALIDA});
        if (nueva)
            it->second.pModulo = this;
    }
    Print_MapaSalidas();

    PIDsModuloMax = pidsMax;
    SD_Transcoding = HD_Transcoding = AUX_Transcoding = 0;
    return 1;
}

int tRec_Modulo::addService(std::shared_ptr<tRec_Servicio> s, unsigned short numEntrada,
                            unsigned short numSalida) {
    if (!s)
        return 0;
    const auto entrada = mapEntradas.find(numEntrada);
    if (entrada == mapEntradas.end())
        return ERROR_SIN_ENTRADA;
    entrada->second.addServicioALaEntrada(s);

    // The service stays on the input when the output is missing.
    const auto salida = mapSalidas.find(numSalida);
    if (salida == mapSalidas.end())
        return ERROR_SIN_SALIDA;
    salida->second.addServicioALaSalida(s);
    PIDsModulo = static_cast<unsigned short>(PIDsModulo + s->number_PIDs_CA);
    return 1;
}

int tRec_Modulo::deleteService(std::shared_ptr<tRec_Servicio> s, unsigned short numEntrada,
                               unsigned short numSalida) {
    if (!s)
        return 0;
    const auto entrada = mapEntradas.find(numEntrada);
    if (entrada == mapEntradas.end())
        return ERROR_SIN_ENTRADA;
    entrada->second.DeleteServicioALaEntrada(s);

    const auto salida = mapSalidas.find(numSalida);
    if (salida == mapSalidas.end())
        return ERROR_SIN_SALIDA;
    salida->second.DeleteServicioALaSalida(s);
    // The PIDs come back also when the service stood on neither of them.
    PIDsModulo = static_cast<unsigned short>(PIDsModulo - s->number_PIDs_CA);
    return 1;
}

void tRec_Modulo::Print_Info_Modulo() const {
    if (!marcos::seRegistra())
        return;
    marcos::linea(marcos::MODULO_CORTO_BORDE);
    marcos::linea(marcos::MODULO_CORTO_BLANCO);
    ::syslog(LOG_DEBUG,
             "    ~~               [ MAC: %s ]  --> Modelo:%d  --> PID_Max:%d  --> PIDs Actual:%d\t"
             "                       ~~",
             MAC.c_str(), Modelo, PIDsModuloMax, PIDsModulo);
    marcos::linea(marcos::MODULO_CORTO_BLANCO);
    marcos::linea(marcos::MODULO_CORTO_BORDE);
}

void tRec_Modulo::Print_Modulo() const {
    if (!marcos::seRegistra())
        return;
    marcos::linea(marcos::SUBRAYADO);
    marcos::linea(marcos::SUBRAYADO);
    marcos::linea(marcos::MODULO_BORDE);
    marcos::linea(marcos::MODULO_BLANCO);
    ::syslog(LOG_DEBUG, "|| ##\t\t\t\t[ MAC: %s ]  --> Modelo:%d               \t\t\t\t ##  ||", MAC.c_str(),
             Modelo);
    ::syslog(LOG_DEBUG, "|| ##\t\t\t\tPID_Max:%d  --> PIDs Actual:%d \t\t\t\t\t\t ##  ||", PIDsModuloMax,
             PIDsModulo);
    ::syslog(LOG_DEBUG, "|| ##\t\t\t\tNº Entradas: %d  --> Nº Salidas %d \t\t\t\t\t ##  ||",
             static_cast<int>(mapEntradas.size()), static_cast<int>(mapSalidas.size()));
    marcos::linea(marcos::MODULO_BLANCO);
    marcos::linea(marcos::MODULO_BORDE);
    Print_MapaEntradas();
    Print_MapaSalidas();
}

void tRec_Modulo::Print_MapaEntradas() const {
    if (!marcos::seRegistra())
        return;
    for (const auto& [numero, entrada] : mapEntradas)
        entrada.Print_Entrada();
}

void tRec_Modulo::Print_MapaSalidas() const {
    if (!marcos::seRegistra())
        return;
    for (const auto& [numero, salida] : mapSalidas)
        salida.Print_Salida();
}

} // namespace zarven
