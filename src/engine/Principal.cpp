// The driver: one pass per strategy on fresh copies of what was loaded, the best of them kept, the clones
// attached, the result reported.
//
// The pauses separate the sections of the log, so that a log daemon keeps up and a person can follow.

#include "../log/SinFortify.h"

#include "tRecalculo.h"

#include <array>
#include <syslog.h>
#include <unistd.h>
#include <utility>

#include "../log/Marcos.h"
#include "Titulos.h"

namespace zarven {

namespace {

constexpr int NUM_OPCIONES = 4;

// What the driver logs before the pass of each option, 1 to 4.
constexpr std::array<const char*, NUM_OPCIONES> ROTULOS = {
    "BEGIN OPTION: MAX ----------------------------------------------------->",
    "BEGIN OPTION: MAX MIN ------------------------------------------------->",
    "BEGIN OPTION: MIN ----------------------------------------------------->",
    "BEGIN OPTION: MIN MAX ------------------------------------------------->"};

// One call of Main_Recalculo.
class Ejecucion {
public:
    explicit Ejecucion(tRecalculo& engine) : motor(engine) {}

    int ejecutar() {
        if (!preparar())
            return 0;
        while (opcion <= NUM_OPCIONES) {
            probarOpcion();
            compararConElMejor();
        }
        auto clonados = motor.listaServiciosClonados;
        try {
            transferirClonados();
            volcarResultado();
            resumir();
        } catch (...) {
            // Whoever ends the run, memory or host: the clones wait again, and the next run finds them.
            motor.listaServiciosClonados.swap(clonados);
            throw;
        }
        return tRecalculo::RETURN_OK;
    }

private:
    bool preparar();
    void probarOpcion();
    void registrarCuentas() const;
    void compararConElMejor();
    void guardar();
    void transferirClonados();
    void volcarResultado() const;
    void resumir() const;

    // No option is kept yet.
    static constexpr int NINGUNO = -1;

    tRecalculo& motor;
    int recurso = 0;
    int total = 0;
    int opcion = 1;
    int opcion_utilizada = 0;
    int count_servicios_final = NINGUNO;
    int count_servicios_proceso = 0;
};

bool Ejecucion::preparar() {
    const std::string mac = motor.GetMACControlador();
    const unsigned short modelo = motor.GetModeloControlador();
    recurso = motor.GetRecursoCabecera();
    if (mac.empty() || modelo == 0) {
        ::syslog(LOG_ERR, "ERROR, impossible to get the controller MAC or MODEL");
        return false;
    }
    ::syslog(LOG_NOTICE, "**************** START Service Recalculation *******************");
    ::syslog(LOG_NOTICE, "HEADEND::: **************** START Service Recalculation *******************");
    total = motor.num_servicios_original();
    ::syslog(LOG_NOTICE, "HEADEND::: **************** Recalculation: List of %d services *******************",
             total);
    ::sleep(1);
    marcos::linea("**************** START Recalculo Servicios *******************");
    ::syslog(LOG_DEBUG, "Controller MAC %s, MODEL %i", mac.c_str(), modelo);
    motor.Print_Mapa_ONIDs();
    return true;
}

void Ejecucion::probarOpcion() {
    ::sleep(1);
    marcos::linea("**************** Continue Recalculo Servicios *******************");
    motor.Mapa_ModulosCabecera_Proceso = motor.Mapa_ModulosCabecera_Inicial;
    motor.Mapa_ONIDs = motor.Mapa_ONIDs_Inicial;
    ::sleep(1);
    marcos::linea(ROTULOS[static_cast<std::size_t>(opcion - 1)]);
    motor.RecalculationAlgorithm(static_cast<char>(opcion), recurso);
    ++opcion;

    if (motor.Mapa_ONIDs.empty()) {
        // Everything is placed: no other option can do better.
        marcos::linea("END OPTION  <----------------------------------------------------->");
        ::sleep(5);
        count_servicios_proceso = 0;
        opcion = NUM_OPCIONES + 1;
    } else {
        ::sleep(1);
        marcos::linea("Mapa_Servicios_Procesado NOT EMPTY");
        count_servicios_proceso = motor.num_servicios_procesado();
    }
}

void Ejecucion::registrarCuentas() const {
    marcos::linea(marcos::GUIONES);
    marcos::vacia();
    marcos::linea(marcos::GUIONES);
    ::syslog(LOG_DEBUG, " (count_servicios_proceso (%d) < count_servicios_final (%d))",
             count_servicios_proceso, count_servicios_final);
    marcos::linea(marcos::GUIONES);
    marcos::vacia();
    marcos::linea(marcos::GUIONES);
}

void Ejecucion::compararConElMejor() {
    ::sleep(1);
    registrarCuentas();
    ::sleep(1);
    if (count_servicios_final == NINGUNO || count_servicios_proceso < count_servicios_final) {
        marcos::linea("Si hemos encontrado una opción mejor, o es la primera vez que entramos");
        guardar();
    } else if (count_servicios_proceso == count_servicios_final) {
        // The earlier option stays.
        marcos::linea("Si el recalculo deja fuera el mismo número de servicios");
        if (!motor.Mapa_ModulosCabecera_Final.empty()) {
            ::sleep(1);
            ::syslog(LOG_DEBUG, "Y si anteriormente tenemos guardada una configuración. Tamaño %i",
                     static_cast<int>(motor.Mapa_ModulosCabecera_Final.size()));
        }
    } else {
        marcos::linea("Esta opción es peor que la que tenemos guardada, liberamos memoria y seguimos.");
        motor.Mapa_ONIDs.clear();
        motor.Mapa_ModulosCabecera_Proceso.clear();
    }
}

void Ejecucion::guardar() {
    motor.Mapa_ModulosCabecera_Final = std::exchange(motor.Mapa_ModulosCabecera_Proceso, {});
    motor.Mapa_ONIDs_Final = std::exchange(motor.Mapa_ONIDs, {});
    // An option that placed everything has set the counter past the last one, and is shown as the last.
    opcion_utilizada = opcion - 1;
    count_servicios_final = count_servicios_proceso;
}

void Ejecucion::transferirClonados() {
    motor.Print_MapaServiciosClonados();
    marcos::linea("Una vez que hemos terminado de reordenar todo, se hora de transferir todos los Servicios "
                  "Clonados a las salidas lógicas de los módulos donde se haya insertado su Servicio Padre");
    auto& clonados = motor.listaServiciosClonados;
    for (auto it = clonados.begin(); it != clonados.end();) {
        if (motor.Try_to_Insert_Cloned_Service(it) != 0)
            it = clonados.erase(it);
        else
            ++it;
    }
}

void Ejecucion::volcarResultado() const {
    ::sleep(2);
    marcos::linea(marcos::SUBRAYADO);
    marcos::vacia();
    marcos::linea(marcos::SUBRAYADO);
    marcos::linea(marcos::BLANCO);
    marcos::linea("||                                PRINT MAPA SERVICIOS SIN ASIGNAR EN LA SALIDA"
                  "                             ||");
    marcos::linea(marcos::BLANCO);
    motor.Print_Mapa_ONIDs(motor.Mapa_ONIDs_Final);
    marcos::linea(marcos::BLANCO);
    marcos::linea(marcos::BLANCO);
    marcos::linea("||                                END PRINT MAPA SERVICIOS SIN ASIGNAR EN LA SALIDA"
                  "                         ||");
    marcos::linea(marcos::SUBRAYADO);
    marcos::vacia();

    ::sleep(2);
    motor.Print_MapaServiciosClonados();
    marcos::vacia();
    ::syslog(LOG_DEBUG, "||                                        OPCION UTILIZADA: %d\t\t\t\t\t\t ||",
             opcion_utilizada);
    marcos::linea(marcos::SUBRAYADO);
    marcos::linea("||                                         PRINT MAPA MODULOS SALIDA"
                  "                                        ||");
    marcos::linea(marcos::BLANCO);

    ::sleep(2);
    volcarModulosHastaElFin(motor, motor.Mapa_ModulosCabecera_Final);
    marcos::vacia();
}

void Ejecucion::resumir() const {
    ::syslog(LOG_NOTICE, "**************** END Service Recalculation *******************");
    ::syslog(
        LOG_NOTICE,
        "HEADEND::: **************** Recalculation: %d services correctly configured *******************",
        total - count_servicios_final);
    ::syslog(LOG_NOTICE,
             "HEADEND::: **************** Recalculation: %d services discarted *******************",
             count_servicios_final);
    ::syslog(LOG_NOTICE, "HEADEND::: **************** END Service Recalculation *******************");
    ::syslog(LOG_NOTICE, "--------------------- RESULTS ------------------------------");
    motor.Print_Resultado(motor.Mapa_ModulosCabecera_Final);
    motor.Print_Descartados(motor.Mapa_ONIDs_Final);
    ::syslog(LOG_NOTICE, "------------------- END RESULTS ----------------------------");
}

} // namespace

int tRecalculo::Main_Recalculo() {
    return Ejecucion(*this).ejecutar();
}

} // namespace zarven
