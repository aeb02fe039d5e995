// The driver: one pass per strategy on fresh copies of what was loaded, the best of them kept, the clones
// attached, the result reported.
//
// The pauses separate the sections of the log, so that a log daemon keeps up and a person can follow.

#include "../log/SinFortify.h"

#include "tRecalculo.h"

#include <cstddef>
#include <syslog.h>
#include <unistd.h>

#include "../log/Marcos.h"
#include "../reglas/Reglas.h"
#include "Titulos.h"

namespace zarven {

namespace {

using reglas::ESTRATEGIAS;

// One call of Main_Recalculo.
class Ejecucion {
public:
    explicit Ejecucion(tRecalculo& motor) : motor_(motor) {}

    int ejecutar() {
        if (!preparar())
            return 0;
        while (siguiente_ < ESTRATEGIAS.size()) {
            probarOpcion();
            compararConElMejor();
        }
        auto clonados = motor_.listaServiciosClonados;
        try {
            transferirClonados();
            volcarResultado();
            resumir();
        } catch (...) {
            // Whoever ends the run, memory or host: the clones wait again, and the next run finds them.
            motor_.listaServiciosClonados.swap(clonados);
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

    tRecalculo& motor_;
    int recurso_ = 0;
    int total_ = 0;
    // Which of the strategies is to be tried next.
    std::size_t siguiente_ = 0;
    int opcionUtilizada_ = 0;
    // Services left out by the option that is kept, and by the one that has run.
    int fueraFinal_ = NINGUNO;
    int fueraProceso_ = 0;
};

bool Ejecucion::preparar() {
    const std::string mac = motor_.GetMACControlador();
    const unsigned short modelo = motor_.GetModeloControlador();
    recurso_ = motor_.GetRecursoCabecera();
    if (mac.empty() || modelo == 0) {
        ::syslog(LOG_ERR, "ERROR, impossible to get the controller MAC or MODEL");
        return false;
    }
    ::syslog(LOG_NOTICE, "**************** START Service Recalculation *******************");
    ::syslog(LOG_NOTICE, "HEADEND::: **************** START Service Recalculation *******************");
    total_ = motor_.num_servicios_original();
    ::syslog(LOG_NOTICE, "HEADEND::: **************** Recalculation: List of %d services *******************",
             total_);
    ::sleep(1);
    marcos::linea("**************** START Recalculo Servicios *******************");
    ::syslog(LOG_DEBUG, "Controller MAC %s, MODEL %i", mac.c_str(), modelo);
    motor_.Print_Mapa_ONIDs();
    return true;
}

void Ejecucion::probarOpcion() {
    ::sleep(1);
    marcos::linea("**************** Continue Recalculo Servicios *******************");
    reglas::prepararPasada(motor_);
    ::sleep(1);
    const reglas::Estrategia& estrategia = ESTRATEGIAS[siguiente_];
    marcos::linea(reglas::rotulo(estrategia));
    motor_.RecalculationAlgorithm(estrategia.opcion, recurso_);
    ++siguiente_;

    if (reglas::colocaTodo(motor_.Mapa_ONIDs)) {
        marcos::linea("END OPTION  <----------------------------------------------------->");
        ::sleep(5);
        fueraProceso_ = 0;
        siguiente_ = ESTRATEGIAS.size();
    } else {
        ::sleep(1);
        marcos::linea("Mapa_Servicios_Procesado NOT EMPTY");
        fueraProceso_ = motor_.num_servicios_procesado();
    }
}

void Ejecucion::registrarCuentas() const {
    marcos::linea(marcos::GUIONES);
    marcos::vacia();
    marcos::linea(marcos::GUIONES);
    ::syslog(LOG_DEBUG, " (count_servicios_proceso (%d) < count_servicios_final (%d))", fueraProceso_,
             fueraFinal_);
    marcos::linea(marcos::GUIONES);
    marcos::vacia();
    marcos::linea(marcos::GUIONES);
}

void Ejecucion::compararConElMejor() {
    ::sleep(1);
    registrarCuentas();
    ::sleep(1);
    const reglas::Comparacion comparacion =
        fueraFinal_ == NINGUNO ? reglas::Comparacion::mejor : reglas::comparar(fueraProceso_, fueraFinal_);
    if (comparacion == reglas::Comparacion::mejor) {
        marcos::linea("Si hemos encontrado una opción mejor, o es la primera vez que entramos");
        guardar();
    } else if (comparacion == reglas::Comparacion::igual) {
        marcos::linea("Si el recalculo deja fuera el mismo número de servicios");
        if (!motor_.Mapa_ModulosCabecera_Final.empty()) {
            ::sleep(1);
            ::syslog(LOG_DEBUG, "Y si anteriormente tenemos guardada una configuración. Tamaño %i",
                     static_cast<int>(motor_.Mapa_ModulosCabecera_Final.size()));
        }
    } else {
        marcos::linea("Esta opción es peor que la que tenemos guardada, liberamos memoria y seguimos.");
        motor_.Mapa_ONIDs.clear();
        motor_.Mapa_ModulosCabecera_Proceso.clear();
    }
}

void Ejecucion::guardar() {
    reglas::guardarPasada(motor_);
    // An option that placed everything has gone past the last one, and is shown as the last.
    opcionUtilizada_ = ESTRATEGIAS[siguiente_ - 1].opcion;
    fueraFinal_ = fueraProceso_;
}

void Ejecucion::transferirClonados() {
    motor_.Print_MapaServiciosClonados();
    marcos::linea("Una vez que hemos terminado de reordenar todo, se hora de transferir todos los Servicios "
                  "Clonados a las salidas lógicas de los módulos donde se haya insertado su Servicio Padre");
    auto& clonados = motor_.listaServiciosClonados;
    for (auto it = clonados.begin(); it != clonados.end();) {
        if (motor_.Try_to_Insert_Cloned_Service(it) != 0)
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
    motor_.Print_Mapa_ONIDs(motor_.Mapa_ONIDs_Final);
    marcos::linea(marcos::BLANCO);
    marcos::linea(marcos::BLANCO);
    marcos::linea("||                                END PRINT MAPA SERVICIOS SIN ASIGNAR EN LA SALIDA"
                  "                         ||");
    marcos::linea(marcos::SUBRAYADO);
    marcos::vacia();

    ::sleep(2);
    motor_.Print_MapaServiciosClonados();
    marcos::vacia();
    ::syslog(LOG_DEBUG, "||                                        OPCION UTILIZADA: %d\t\t\t\t\t\t ||",
             opcionUtilizada_);
    marcos::linea(marcos::SUBRAYADO);
    marcos::linea("||                                         PRINT MAPA MODULOS SALIDA"
                  "                                        ||");
    marcos::linea(marcos::BLANCO);

    ::sleep(2);
    volcarModulosHastaElFin(motor_, motor_.Mapa_ModulosCabecera_Final);
    marcos::vacia();
}

void Ejecucion::resumir() const {
    ::syslog(LOG_NOTICE, "**************** END Service Recalculation *******************");
    ::syslog(
        LOG_NOTICE,
        "HEADEND::: **************** Recalculation: %d services correctly configured *******************",
        total_ - fueraFinal_);
    ::syslog(LOG_NOTICE,
             "HEADEND::: **************** Recalculation: %d services discarted *******************",
             fueraFinal_);
    ::syslog(LOG_NOTICE, "HEADEND::: **************** END Service Recalculation *******************");
    ::syslog(LOG_NOTICE, "--------------------- RESULTS ------------------------------");
    motor_.Print_Resultado(motor_.Mapa_ModulosCabecera_Final);
    motor_.Print_Descartados(motor_.Mapa_ONIDs_Final);
    ::syslog(LOG_NOTICE, "------------------- END RESULTS ----------------------------");
}

} // namespace

int tRecalculo::Main_Recalculo() {
    return Ejecucion(*this).ejecutar();
}

} // namespace zarven
