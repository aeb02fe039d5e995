// What one may choose of an import, beside the lists and the modules: the command line and the planner in the
// browser offer the same.

#ifndef RECALCULO_IMPORT_CHOICES_H
#define RECALCULO_IMPORT_CHOICES_H

#include <cstdint>

#include "lineup/channel_import.h"

namespace zarven::tool {

struct EstimateChoice {
    const char* option;
    std::uint32_t BitrateEstimates::*bitrate;
    const char* meaning;
};

inline constexpr EstimateChoice estimate_choices[] = {
    {"--radio-bitrate", &BitrateEstimates::radio, "Bitrate to assume for a radio service, in kbit/s"},
    {"--sd-bitrate", &BitrateEstimates::sd, "Bitrate to assume for an SD service, in kbit/s"},
    {"--hd-bitrate", &BitrateEstimates::hd, "Bitrate to assume for an HD service, in kbit/s"},
    {"--uhd-bitrate", &BitrateEstimates::uhd, "Bitrate to assume for a UHD service, in kbit/s"}};

inline constexpr const char* meaning_of_keep_duplicates =
    "Import a service as often as the list has it; by default once";

} // namespace zarven::tool

#endif
