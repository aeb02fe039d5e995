// The recorded log and clock of a test: syslog and sleep write here, nothing reaches the system and nothing
// waits.

#ifndef ZARVEN_TESTS_REGISTRO_H
#define ZARVEN_TESTS_REGISTRO_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace registro {

// Forgets everything recorded, and the listener.
void vaciar();

// What happened, in order: "7 text of a debug line", "5 text of a notice", "sleep 2".
const std::vector<std::string>& hechos();

// The texts of the log lines alone, without level.
std::vector<std::string> textos();

// The seconds of the pauses, in order.
std::vector<unsigned> pausas();

// How many log lines have exactly this text, or begin with it.
std::size_t cuantas(const std::string& texto);
std::size_t cuantasEmpiezan(const std::string& principio);
inline bool contiene(const std::string& texto) {
    return cuantas(texto) != 0;
}

// Index of the first happening at or after `desde` that is exactly this; npos when there is none.
inline constexpr std::size_t npos = static_cast<std::size_t>(-1);
std::size_t posicion(const std::string& hecho, std::size_t desde = 0);

// The happenings that are not part of a frame: dumps draw boxes, and most tests are about the rest.
std::vector<std::string> sinMarcos();

// Calls the listener after each log line, with its text.
void escuchar(std::function<void(const std::string& texto)> oyente);

// Records nothing until the next vaciar() (for runs of millions of lines); the listener is still called.
void callar();
// Lines logged since the last vaciar(), recorded or not.
std::size_t total();

} // namespace registro

#endif
