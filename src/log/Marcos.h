// The frames of the dumps, and how a line reaches the system log.
//
// A dump draws nested boxes: a module inside the report, its inputs and outputs inside the module, services
// inside those, PIDs inside a service. This is the one file that knows how wide a box is; the lines of text
// between its edges come padded, each from the record or report that it speaks of. Every edge is a constant
// of the program: printing one costs a call of syslog and nothing else.
//
// The library calls syslog and sleep themselves, by name and once per line, so that a host can put its own
// definitions in their place.

#ifndef ZARVEN_LOG_MARCOS_H
#define ZARVEN_LOG_MARCOS_H

#include <array>
#include <cstddef>
#include <syslog.h>

namespace zarven::marcos {

// left mark, N times the filling, right mark
template <std::size_t N, std::size_t I, std::size_t D>
constexpr std::array<char, N + I + D - 1> raya(const char (&izquierda)[I], char relleno,
                                               const char (&derecha)[D]) {
    std::array<char, N + I + D - 1> linea{};
    std::size_t n = 0;
    for (std::size_t i = 0; i + 1 < I; ++i)
        linea[n++] = izquierda[i];
    for (std::size_t i = 0; i < N; ++i)
        linea[n++] = relleno;
    for (std::size_t i = 0; i + 1 < D; ++i)
        linea[n++] = derecha[i];
    return linea;
}

// Report.
inline constexpr auto SUBRAYADO = raya<106>("||", '_', "||");
inline constexpr auto IGUALES = raya<106>("||", '=', "||");
inline constexpr auto BARRAS = raya<104>("|| ", '|', " ||");
inline constexpr auto BLANCO = raya<106>("||", ' ', "||");
inline constexpr auto GUIONES = raya<112>("", '-', "");

// Module.
inline constexpr auto MODULO_BORDE = raya<103>("|| ", '#', "  ||");
inline constexpr auto MODULO_BLANCO = raya<99>("|| ##", ' ', "##  ||");
inline constexpr auto MODULO_CORTO_BORDE = raya<105>("    ", '~', "");
inline constexpr auto MODULO_CORTO_BLANCO = raya<101>("    ~~", ' ', "~~");

// Input.
inline constexpr auto ENTRADA_BORDE = raya<104>("|| ", '-', " ||");
inline constexpr auto ENTRADA_BLANCO = raya<100>("|| --", ' ', "-- ||");
inline constexpr auto ENTRADA_CORTA_BORDE = raya<105>("    ", '-', "");
inline constexpr auto ENTRADA_CORTA_BLANCO = raya<101>("    --", ' ', "--");

// Output.
inline constexpr auto SALIDA_BORDE = raya<104>("|| ", '$', " ||");
inline constexpr auto SALIDA_BLANCO = raya<100>("|| $$", ' ', "$$ ||");
inline constexpr auto SALIDA_CORTA_BORDE = raya<106>("             ", '$', "");
inline constexpr auto SALIDA_CORTA_BLANCO = raya<102>("             $$", ' ', "$$");

// Service. The opening line alone ends with a blank, and the blank line before the PIDs is one wider.
inline constexpr auto SERVICIO_APERTURA = raya<100>("|| ||", ' ', "|| || ");
inline constexpr auto SERVICIO_BLANCO = raya<101>("|| ||", ' ', "|| ||");
inline constexpr auto SERVICIO_CIERRE = raya<100>("|| ||", ' ', "|| ||");

// PIDs.
inline constexpr auto PIDS_BLANCO = raya<91>("|| ||  % %", ' ', "% % || ||");
inline constexpr char PIDS_BORDE[] = "|| ||  % %"
                                     "  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %"
                                     "  %  %  %  %  %  %  %  %  %  %  %  %  %  %  %"
                                     "   || ||";

// Whether debug lines go anywhere. Asked once per operation and record, for the answer costs a lock: a
// controller that masks the debug level does not pay for dumps and searches that nobody will read.
inline bool seRegistra() {
    return (::setlogmask(0) & LOG_MASK(LOG_DEBUG)) != 0;
}

inline void linea(const char* texto) {
    ::syslog(LOG_DEBUG, "%s", texto);
}

template <std::size_t N> void linea(const std::array<char, N>& raya) {
    linea(raya.data());
}

inline void vacia() {
    linea("");
}

} // namespace zarven::marcos

#endif
