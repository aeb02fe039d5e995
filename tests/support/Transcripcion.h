// Whole runs recorded as text files in tests/transcripts and compared line by line.

#ifndef ZARVEN_TESTS_TRANSCRIPCION_H
#define ZARVEN_TESTS_TRANSCRIPCION_H

#include <string>

// Compares what the log and clock recorded with tests/transcripts/<nombre>.txt and fails the running test at
// the first difference. With the environment variable RECALCULO_RECORD set, writes the file instead (read
// what you record).
void compararTranscripcion(const std::string& nombre);

#endif
