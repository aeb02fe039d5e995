// `recalculo import`: a channel list and modules in, a head-end out.

#ifndef RECALCULO_COMMAND_IMPORT_H
#define RECALCULO_COMMAND_IMPORT_H

#include <string>

#include "channel_import.h"
#include "streams.h"

namespace zarven::tool {

struct ImportOptions {
    std::string channels;
    std::string modules;
    std::string output = standard_stream;
    BitrateEstimates estimates;
};

/// Throws `Failure`. Lines left aside are told on standard error.
void import_command(const ImportOptions& options);

} // namespace zarven::tool

#endif
