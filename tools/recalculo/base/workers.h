// Work that falls into parts which do not know of each other, on several threads.

#ifndef RECALCULO_WORKERS_H
#define RECALCULO_WORKERS_H

#include <cstddef>
#include <functional>

namespace zarven::tool {

/// How many threads this machine can run at once, at least 1.
unsigned cores();

/// Calls `part` with each number from 0 to `parts` - 1, on at most `jobs` threads. Throws what a part throws,
/// after all threads have ended.
void in_parallel(std::size_t parts, unsigned jobs, const std::function<void(std::size_t)>& part);

} // namespace zarven::tool

#endif
