// The lines of the log by which a run tells how far it is, for tests of all kinds. Hosts read some of them,
// so a test that is about such a text may as well spell it out.

#ifndef ZARVEN_TESTS_LINEAS_H
#define ZARVEN_TESTS_LINEAS_H

#include <array>
#include <string>
#include <string_view>

namespace lineas {

// ---- The states of a pass -----------------------------------------------------------------------------

inline constexpr char RELLENO_CON_TRANSCODING[] =
    " RecalculationAlgorithm ---> STATUS_FILL_INPUTS_SERVICE_TRANSCODING";
inline constexpr char RELLENO_SIN_TRANSCODING[] =
    " RecalculationAlgorithm ---> STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING";
inline constexpr char COMPROBACION[] = " RecalculationAlgorithm ---> STATUS_CHECK_EMPTY_INPUT";
inline constexpr char INCOMPLETOS[] = " RecalculationAlgorithm ---> STATUS_UNCOMPLETE_MODULES";
inline constexpr char UNIFICAR[] = " RecalculationAlgorithm ---> STATUS_UNIFY_INPUTS";
inline constexpr char OPTIMIZAR[] = " RecalculationAlgorithm ---> STATUS_OPTIMIZE";

// Named and numbered as the engine does.
enum class Estado {
    NINGUNO,
    STATUS_FILL_INPUTS_SERVICE_TRANSCODING,
    STATUS_FILL_INPUTS_SERVICE_NO_TRASCODING,
    STATUS_CHECK_EMPTY_INPUT,
    STATUS_UNCOMPLETE_MODULES,
    STATUS_UNIFY_INPUTS,
    STATUS_OPTIMIZE
};

// The state that begins with this line.
inline Estado estado(std::string_view linea) {
    constexpr std::array<std::string_view, 6> PRIMERAS = {
        RELLENO_CON_TRANSCODING, RELLENO_SIN_TRANSCODING, COMPROBACION, INCOMPLETOS, UNIFICAR, OPTIMIZAR};
    for (std::size_t i = 0; i < PRIMERAS.size(); ++i)
        if (linea == PRIMERAS[i])
            return static_cast<Estado>(i + 1);
    return Estado::NINGUNO;
}

// The line as the recorded log holds it, with its level.
inline std::string hecho(const std::string& linea) {
    return "7 " + linea;
}

// ---- What happens in them -----------------------------------------------------------------------------

inline constexpr char FIN_DEL_RELLENO[] = " RecalculationAlgorithm ---> FIN STATUS_INPUT_RECALCULATION";
inline constexpr char NO_SE_PUEDE_MAS[] =
    " Por más que se quiera por este metodo no se pueden añadir más servicios";
inline constexpr char CANDIDATO[] = "ANTES: itModulo->"; // the beginning
inline constexpr char INCOMPATIBLE[] = "Se ve claramente que este cambio no es compatible, salimos....";
inline constexpr char REUNION[] = "Parece que todo a ido bien. Hacemos el intercambio";
inline constexpr char COMPLETAR_TRAS_REUNION[] = "status_algorithm = STATUS_UNCOMPLETE_MODULES    ----  1";
inline constexpr char COMPLETAR_TRAS_UNION[] = "status_algorithm = STATUS_UNCOMPLETE_MODULES    ----  2";
inline constexpr char SERVICIO_EN_MANO[] = "soy el servicio"; // the beginning
inline constexpr char OTRA_CLAVE[] = " Son diferentes, seguimos";
inline constexpr char VUELTA_DE_OPTIMIZAR[] = " Hemos hecho "; // the beginning
inline constexpr char TRAS_OPTIMIZAR[] = " status_algorithm "; // the beginning
inline constexpr char TRAS_OPTIMIZAR_COMPROBAR[] = " status_algorithm 3";
inline constexpr char TRAS_OPTIMIZAR_NADA[] = " status_algorithm 0";

// An exchange that fails half way; all but the first are followed by a key.
inline constexpr char FALLO_DE_PERMUTA[] = "No se ha podido"; // the beginning
inline constexpr char NO_QUITAR_PRINCIPAL[] = "No se ha podido eliminar el servicio principal ";
inline constexpr char NO_QUITAR_AUXILIAR[] = "No se ha podido eliminar el servicio auxiliar ";
inline constexpr char NO_LLEVAR_PRINCIPAL[] =
    "No se ha podido añadir el servicio principal al módulo auxiliar ";
inline constexpr char NO_TRAER_AUXILIAR[] =
    "No se ha podido añadir el servicio auxiliar al módulo principal ";
inline constexpr char NO_PONER_ORIGINAL[] =
    "No se ha podido añadir el servicio ORIGINAL al módulo principal ";

// ---- The driver, by option ----------------------------------------------------------------------------

inline constexpr char PRINCIPIO_DE_OPCION[] = "BEGIN OPTION"; // the beginning
inline constexpr char FIN_DE_OPCION[] = "END OPTION";         // the beginning
inline constexpr char QUEDAN_SERVICIOS[] = "Mapa_Servicios_Procesado NOT EMPTY";

inline bool empieza(std::string_view linea, std::string_view principio) {
    return linea.substr(0, principio.size()) == principio;
}

// Whether an option has ended with this line.
inline bool terminaLaOpcion(std::string_view linea) {
    return empieza(linea, FIN_DE_OPCION) || linea == QUEDAN_SERVICIOS;
}

} // namespace lineas

#endif
