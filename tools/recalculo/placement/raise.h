// One limit of one module raised, and what a run of the engine then places.

#ifndef RECALCULO_RAISE_H
#define RECALCULO_RAISE_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace zarven::tool {

enum class LimitKind { pids, bitrate, inputs, sd_transcoders, hd_transcoders, one_more_output };

struct Raise {
    LimitKind kind = LimitKind::pids;
    std::string mac;
    /// The output, from 1; 0 for a limit of the module.
    std::size_t output = 0;
    std::uint32_t from = 0;
    /// What modules are sold with, if such a value places as many as any that was tried.
    std::uint32_t to = 0;
    /// The smallest found that places as many.
    std::uint32_t enough = 0;
    std::size_t placed = 0;
    std::size_t findings = 0;
    /// Limits and services that are broken.
    std::size_t broken = 0;
    std::string setting;
    /// Of the module; empty where it has none.
    std::string label = {};
};

} // namespace zarven::tool

#endif
