// The debug level masked for as long as this lives, as a controller has it that keeps no debug log.

#ifndef ZARVEN_TESTS_SINDEPURACION_H
#define ZARVEN_TESTS_SINDEPURACION_H

#include <syslog.h>

class SinDepuracion {
public:
    SinDepuracion() : anterior(::setlogmask(LOG_UPTO(LOG_NOTICE))) {}
    ~SinDepuracion() { ::setlogmask(anterior); }
    SinDepuracion(const SinDepuracion&) = delete;
    SinDepuracion& operator=(const SinDepuracion&) = delete;

private:
    int anterior;
};

#endif
