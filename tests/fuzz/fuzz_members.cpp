// Any public member in any order with any values, on an engine in any state, until a bound of lines ends it.

#include <algorithm>
#include <iterator>
#include <syslog.h>
#include <vector>

#include "fuzz/Bytes.h"
#include "support/Huella.h"
#include "support/Testigo.h"
#include "tRecalculo.h"

using namespace zarven;
using fuzz::Bytes;

namespace {

constexpr std::size_t LLAMADAS_MAX = 10000;
// Pairs of outputs without ceiling are not logged, so that bound would not end a balance of 65,535 of them.
constexpr std::size_t SALIDAS_DE_EQUILIBRIO_MAX = 1000;

bool esEquilibrable(const tMapaModulos& modulos) {
    return std::all_of(modulos.begin(), modulos.end(), [](const auto& uno) {
        return uno.second.mapSalidas.size() <= SALIDAS_DE_EQUILIBRIO_MAX;
    });
}

class Sesion {
public:
    Sesion(const std::uint8_t* datos, std::size_t cuantos) : bytes(datos, cuantos) {}

    void seguir() {
        while (bytes.quedan())
            switch (bytes.byte() % 6) {
            case 0:
            case 1:
                cargar();
                break;
            case 2:
                colocar();
                break;
            case 3:
                informar();
                break;
            case 4:
                registros();
                break;
            default:
                ejecutar();
                break;
            }
    }

private:
    using Servicio = std::shared_ptr<tRec_Servicio>;

    std::string mac() { return std::string(1, static_cast<char>('A' + bytes.entre(0, 5))); }

    // One of a map; its end when there is none.
    template <class Mapa> auto alguna(Mapa& mapa) {
        auto it = mapa.begin();
        for (unsigned pasos = bytes.byte(); pasos != 0 && it != mapa.end() && std::next(it) != mapa.end();
             --pasos)
            ++it;
        return it;
    }

    Servicio servicio() {
        if (bytes.una_de(32))
            return nullptr;
        if (!motor.listaServicios.empty() && bytes.una_de(2))
            return motor.listaServicios[bytes.byte() % motor.listaServicios.size()];
        return std::make_shared<tRec_Servicio>(
            bytes.corto(30), bytes.corto(30), bytes.corto(30), bytes.corto(), bytes.corto(), bytes.corto(),
            bytes.corto(), bytes.corto(), bytes.largo(), bytes.largo(), bytes.corto(), bytes.corto(4),
            bytes.corto(), bytes.texto(), bytes.texto(), bytes.corto(), bytes.corto(2), bytes.corto(2),
            bytes.corto(4), bytes.corto(), bytes.corto());
    }

    void cargar() {
        switch (bytes.byte() % 7) {
        case 0:
            motor.addModulo(mac(), bytes.una_de(8) ? bytes.corto() : 3, bytes.corto(4), bytes.corto(3),
                            bytes.corto(40), bytes.una_de(2));
            break;
        case 1:
            motor.configurarSalida(mac(), bytes.corto(4), bytes.largo());
            break;
        case 2:
            motor.addRec_Servicio(servicio());
            break;
        case 3:
            motor.addRec_PID(bytes.una_de(16)
                                 ? nullptr
                                 : std::make_unique<tRec_PID>(bytes.corto(), bytes.corto(), bytes.corto(),
                                                              bytes.corto(), bytes.texto(), bytes.corto(),
                                                              bytes.corto(30)));
            break;
        case 4:
            motor.addHomeChannel(bytes.corto(3), bytes.corto(3));
            break;
        case 5:
            motor.Clear_ONID_TSID(static_cast<int>(bytes.largo()) / 50, bytes.corto(6));
            break;
        default:
            preparar();
            break;
        }
    }

    // What a caller does with the public maps.
    void preparar() {
        motor.Mapa_ModulosCabecera_Proceso = motor.Mapa_ModulosCabecera_Inicial;
        motor.Mapa_ONIDs = motor.Mapa_ONIDs_Inicial;
        for (auto& [nombre, modulo] : motor.Mapa_ModulosCabecera_Inicial) {
            modulo.SD_MAX_Transcoding = bytes.corto(4);
            modulo.HD_MAX_Transcoding = bytes.corto(4);
            modulo.AUX_MAX_Transcoding = bytes.corto(4);
        }
        if (bytes.una_de(4)) {
            tRecalculo otro = std::move(motor);
            motor = std::move(otro);
        }
    }

    tMapaModulos& modulos() {
        return bytes.una_de(3)   ? motor.Mapa_ModulosCabecera_Final
               : bytes.una_de(4) ? motor.Mapa_ModulosCabecera_Inicial
                                 : motor.Mapa_ModulosCabecera_Proceso;
    }

    tMapaONIDs& indice() { return bytes.una_de(3) ? motor.Mapa_ONIDs_Final : motor.Mapa_ONIDs; }

    void colocar() {
        auto& proceso = motor.Mapa_ModulosCabecera_Proceso;
        const auto modulo = alguna(proceso);
        if (modulo == proceso.end())
            return;
        const auto entrada = alguna(modulo->second.mapEntradas);
        if (entrada == modulo->second.mapEntradas.end())
            return;
        switch (bytes.byte() % 8) {
        case 0:
            motor.Asignar_listaServicios(modulo->second, entrada->second, static_cast<char>(bytes.byte()),
                                         bytes.una_de(2));
            break;
        case 1:
            motor.Fill_Services_in_Module_Input(modulo->second, entrada->second);
            break;
        case 2:
            motor.ModuleisUncomplete(modulo->second);
            motor.Module_check_empty_input(modulo->second);
            break;
        case 3:
            motor.swapModulos(modulo->second, alguna(proceso)->second);
            break;
        case 4:
            if (bytes.una_de(8))
                motor.Load_Balance(nullptr);
            else if (tMapaModulos& mapa = modulos(); esEquilibrable(mapa))
                motor.Load_Balance(&mapa);
            break;
        case 5:
            if (!motor.listaServiciosClonados.empty())
                motor.Try_to_Insert_Cloned_Service(alguna(motor.listaServiciosClonados));
            break;
        default:
            colocarServicio(modulo, entrada);
            break;
        }
    }

    void colocarServicio(tMapaModulos::iterator modulo, tMapaEntradas::iterator entrada) {
        auto& redes = indice();
        const auto onid = alguna(redes);
        tMapaServicios* servicios = &entrada->second.MapaServicios;
        if (onid != redes.end()) {
            const auto tsid = alguna(onid->second.MapRec_TSIDs);
            if (tsid != onid->second.MapRec_TSIDs.end() && bytes.una_de(2))
                servicios = &tsid->second.MapRec_Services;
        }
        if (servicios->empty())
            return;
        const auto it = alguna(*servicios);
        switch (bytes.byte() % 3) {
        case 0:
            motor.Try_to_Insert_Service_Input_Output(modulo->second, entrada->second, it);
            break;
        case 1:
            motor.Try_to_Delete_Service_Input_Output(modulo, entrada, it);
            break;
        default:
            motor.Find_OutputID_to_insert_Service(modulo->second,
                                                  tMapaServicios::reverse_iterator(std::next(it)));
            break;
        }
    }

    void ejecutar() {
        switch (bytes.byte() % 4) {
        case 0:
            motor.Main_Recalculo();
            break;
        case 1:
            ::setlogmask(LOG_UPTO(bytes.una_de(2) ? LOG_NOTICE : LOG_DEBUG));
            break;
        default:
            motor.RecalculationAlgorithm(
                static_cast<char>(bytes.una_de(8) ? bytes.byte() : bytes.entre(1, 4)),
                static_cast<int>(bytes.entre(0, 3)));
            break;
        }
    }

    void informar() {
        motor.GetMACControlador();
        motor.GetModeloControlador();
        motor.GetRecursoCabecera();
        motor.Exist_Transcoding_Service();
        motor.Exist_Service_with_idService();
        motor.num_servicios_original();
        motor.num_servicios_procesado();
        motor.Print_Resultado(modulos());
        motor.Print_Mapa_Modulos(modulos());
        motor.Print_Mapa_Modulos_original();
        motor.Print_Descartados(indice());
        motor.Print_Mapa_ONIDs(indice());
        motor.Print_Mapa_ONIDs();
        motor.Print_MapaServiciosClonados();
        motor.Print_Home_Channels();
        tMapaModulos& mapa = modulos();
        const auto modulo = alguna(mapa);
        if (modulo == mapa.end())
            return;
        motor.Print_Transponders_Resultado(modulo);
        modulo->second.Print_Info_Modulo();
        for (const auto& [numero, entrada] : modulo->second.mapEntradas) {
            entrada.Print_Info_Entrada();
            entrada.getSatIdfromService();
            motor.Print_Servicios_Resultado(entrada.MapaServicios);
        }
        for (const auto& [id, salida] : modulo->second.mapSalidas)
            salida.Print_Info_Salida();
    }

    // The records' own operations, on modules of the engine and on one that stands alone.
    void registros() {
        tMapaModulos& mapa = modulos();
        const auto it = alguna(mapa);
        tRec_Modulo& modulo = it == mapa.end() ? suelto : it->second;
        switch (bytes.byte() % 6) {
        case 0:
            modulo.configurarModelo(bytes.una_de(4) ? bytes.corto() : 3, bytes.corto(4), bytes.corto(3),
                                    bytes.corto(40));
            break;
        case 1:
            modulo.addService(servicio(), bytes.corto(4), bytes.corto(3));
            break;
        case 2:
            modulo.deleteService(servicio(), bytes.corto(4), bytes.corto(3));
            break;
        case 3: {
            const auto entrada = alguna(modulo.mapEntradas);
            if (entrada == modulo.mapEntradas.end())
                break;
            entrada->second.confEntrada(bytes.corto(4), bytes.corto(2));
            bytes.una_de(2) ? entrada->second.addServicioALaEntrada(servicio())
                            : entrada->second.DeleteServicioALaEntrada(servicio());
            break;
        }
        case 4: {
            const auto salida = alguna(modulo.mapSalidas);
            if (salida == modulo.mapSalidas.end())
                break;
            salida->second.confSalida(bytes.largo());
            bytes.una_de(2) ? salida->second.addServicioALaSalida(servicio())
                            : salida->second.DeleteServicioALaSalida(servicio());
            break;
        }
        default:
            if (const Servicio uno = servicio()) {
                uno->addPID_AlServicio(std::make_unique<tRec_PID>());
                uno->addPID_AlServicio(nullptr);
                uno->Print_Servicio(1);
            }
            break;
        }
    }

    Bytes bytes;
    tRecalculo motor;
    tRec_Modulo suelto;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t cuantos) {
    ::setlogmask(LOG_UPTO(LOG_DEBUG));
    testigo::empezar(LLAMADAS_MAX);
    Sesion sesion(datos, cuantos);
    try {
        sesion.seguir();
    } catch (const testigo::Detenida&) {
        // What it left must still be fit to be destroyed.
    }
    return 0;
}
