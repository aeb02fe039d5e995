#include "support/Fabrica.h"

#include <stdexcept>

using namespace zarven;

namespace fabrica {

namespace {

void exigir(bool condicion, const char* que) {
    if (!condicion)
        throw std::logic_error(std::string("the test's head-end cannot be built: ") + que);
}

void ponerTranscoders(tRec_Modulo& modulo, const DatosModulo& datos) {
    modulo.SD_MAX_Transcoding = datos.sd;
    modulo.HD_MAX_Transcoding = datos.hd;
    modulo.AUX_MAX_Transcoding = datos.aux;
}

} // namespace

std::shared_ptr<tRec_Servicio> servicio(const DatosServicio& datos) {
    const std::string nombre = datos.nombre.empty() ? "S" + std::to_string(datos.clave) : datos.nombre;
    return std::make_shared<tRec_Servicio>(
        datos.clave, datos.clave, datos.clave, static_cast<unsigned short>(0), static_cast<unsigned short>(0),
        static_cast<unsigned short>(datos.pids != 0), datos.pids, datos.pids, datos.bitrate, datos.bitrate,
        static_cast<unsigned short>(1), datos.videoFormat, static_cast<unsigned short>(0), nombre, nombre,
        static_cast<unsigned short>(0), datos.transcoding, datos.onid, datos.tsid,
        static_cast<unsigned short>(0), static_cast<unsigned short>(0));
}

void cargar(tRecalculo& motor, const DatosModulo& datos) {
    exigir(motor.addModulo(datos.mac, tRec_Modulo::MODELO_SOPORTADO, datos.entradas,
                           static_cast<unsigned short>(datos.salidas.size()), datos.pids,
                           datos.controlador) == 1,
           "module");
    for (std::size_t i = 0; i < datos.salidas.size(); ++i)
        exigir(motor.configurarSalida(datos.mac, static_cast<unsigned short>(i + 1), datos.salidas[i]) == 1,
               "output");
    ponerTranscoders(motor.Mapa_ModulosCabecera_Inicial.at(datos.mac), datos);
}

std::shared_ptr<tRec_Servicio> cargar(tRecalculo& motor, const DatosServicio& datos) {
    auto nuevo = servicio(datos);
    exigir(motor.addRec_Servicio(nuevo) == 1, "service");
    return nuevo;
}

void preparar(tRecalculo& motor) {
    motor.Mapa_ModulosCabecera_Proceso = motor.Mapa_ModulosCabecera_Inicial;
    motor.Mapa_ONIDs = motor.Mapa_ONIDs_Inicial;
}

tRec_Modulo modulo(const DatosModulo& datos) {
    tRec_Modulo nuevo(datos.mac, datos.controlador);
    exigir(nuevo.configurarModelo(tRec_Modulo::MODELO_SOPORTADO, datos.entradas,
                                  static_cast<unsigned short>(datos.salidas.size()), datos.pids) == 1,
           "module");
    for (std::size_t i = 0; i < datos.salidas.size(); ++i)
        nuevo.mapSalidas.at(static_cast<std::uint32_t>(i + 1)).confSalida(datos.salidas[i]);
    ponerTranscoders(nuevo, datos);
    return nuevo;
}

bool colocar(tRecalculo& motor, const std::string& mac, unsigned short numero,
             const std::shared_ptr<tRec_Servicio>& servicio) {
    tRec_Modulo& modulo = motor.Mapa_ModulosCabecera_Proceso.at(mac);
    tRec_Entrada& entrada = modulo.mapEntradas.at(numero);
    auto& servicios = motor.Mapa_ONIDs.at(servicio->ONID).MapRec_TSIDs.at(servicio->TSID).MapRec_Services;
    auto it = servicios.lower_bound(servicio->idService);
    while (it != servicios.end() && it->second != servicio)
        ++it;
    exigir(it != servicios.end(), "the service is not in the working index");
    if (motor.Try_to_Insert_Service_Input_Output(modulo, entrada, it) == 0)
        return false;
    servicios.erase(it);
    entrada.confEntrada(servicio->TSID, servicio->ONID);
    motor.Clear_ONID_TSID(servicio->ONID, servicio->TSID);
    return true;
}

} // namespace fabrica
