// What tests have recorded as text files in tests/transcripts: whole runs line by line, and digests of many.
//
// A test program compares with them. It writes them only when it is started with --record, as
// scripts/record.sh does.

#ifndef ZARVEN_TESTS_TRANSCRIPCION_H
#define ZARVEN_TESTS_TRANSCRIPCION_H

#include <string>
#include <vector>

// Compares what the log and clock recorded with tests/transcripts/<nombre>.txt and fails the running test at
// the first difference. When recording, writes the file instead (read what you record).
void compararTranscripcion(const std::string& nombre);

namespace grabado {

// This program was started with --record.
bool grabando();
void grabarDesdeAhora();

// The lines of tests/transcripts/<nombre>.txt; fails the running test when they cannot be had.
std::vector<std::string> leer(const std::string& nombre);
void escribir(const std::string& nombre, const std::vector<std::string>& lineas);

} // namespace grabado

#endif
