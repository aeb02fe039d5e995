// The log mask set for as long as one of these lives.

#ifndef ZARVEN_TESTS_SINDEPURACION_H
#define ZARVEN_TESTS_SINDEPURACION_H

#include <syslog.h>

class Mascara {
public:
    explicit Mascara(int mascara) : anterior(::setlogmask(mascara)) {}
    ~Mascara() { ::setlogmask(anterior); }
    Mascara(const Mascara&) = delete;
    Mascara& operator=(const Mascara&) = delete;

private:
    int anterior;
};

// The debug level masked, as a controller has it that keeps no debug log.
class SinDepuracion : public Mascara {
public:
    SinDepuracion() : Mascara(LOG_UPTO(LOG_NOTICE)) {}
};

#endif
