// How often a test of random inputs tries. The sanitizers look for faults that each kind of input shows, not
// for the one head-end in a thousand on which two programs differ; and a try is ten times as dear with them.

#ifndef RECALCULO_TESTS_TRIES_H
#define RECALCULO_TESTS_TRIES_H

#include "sanitized.h"

namespace zarven::tool {

#ifdef RECALCULO_SANITIZED
inline constexpr unsigned try_one_of = 8;
#else
inline constexpr unsigned try_one_of = 1;
#endif

constexpr unsigned tries(unsigned without_sanitizers) {
    return (without_sanitizers + try_one_of - 1) / try_one_of;
}

/// How often at the least something has to be met in so many tries; half as often where they are few.
constexpr unsigned met(unsigned without_sanitizers) {
    return try_one_of == 1 ? without_sanitizers : without_sanitizers / (2 * try_one_of);
}

} // namespace zarven::tool

#endif
