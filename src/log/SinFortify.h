// SinFortify: syslog stays syslog. Every source includes this before anything else.
//
// With _FORTIFY_SOURCE the headers of the C library turn a call of syslog into one of __syslog_chk, and a
// host that defines syslog would lose the log without a word. Distributions and firmware trees set the macro
// in many ways, some of which no flag of ours can take back.

#ifndef ZARVEN_LOG_SINFORTIFY_H
#define ZARVEN_LOG_SINFORTIFY_H

#undef _FORTIFY_SOURCE

#if defined(__USE_FORTIFY_LEVEL) && __USE_FORTIFY_LEVEL > 0
#error "A header of the C library came before this one, with _FORTIFY_SOURCE: syslog would pass the host by."
#endif

#endif
