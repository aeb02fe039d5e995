// The commands: what each is told on the command line, and the function that does it. How the options are
// written is told in program.cpp. Each function throws `Failure`.

#ifndef RECALCULO_COMMANDS_COMMANDS_H
#define RECALCULO_COMMANDS_COMMANDS_H

#include <cstdint>
#include <string>
#include <vector>

#include "base/streams.h"
#include "base/workers.h"
#include "commands/filter_input.h"
#include "commands/headend_input.h"
#include "commands/report_output.h"
#include "commands/style_input.h"
#include "lineup/channel_import.h"
#include "placement/sizing.h"

namespace zarven::tool {

struct RunOptions {
    HeadendInput headend;
    /// What else is not asked for.
    FilterInput filter;
    ReportOutput output;
    StyleInput style;
    bool pauses = false;
    bool strategies = false;
    /// The last line of the text report alone.
    bool summary = false;
    /// Empty for no log.
    std::string log;
};

/// A head-end in, its placement out.
void run_command(const RunOptions& options);

struct ExplainOptions {
    HeadendInput headend;
    /// Empty for all that are left out.
    std::vector<std::string> services;
    bool json = false;
    StyleInput style;
};

/// Why services are left out, and what each module answers.
void explain_command(const ExplainOptions& options);

struct CompareOptions {
    std::string before;
    /// With the changes to it, where it is a head-end.
    HeadendInput after;
    ReportOutput output;
    StyleInput style;
};

/// Two placements side by side.
void compare_command(const CompareOptions& options);

struct SizeOptions {
    HeadendInput headend;
    std::string add;
    std::uint32_t most = SizingOptions().most;
    std::uint32_t jobs = cores();
    bool json = false;
    StyleInput style;
};

/// What to change so that everything fits. Progress is told on a terminal.
void size_command(const SizeOptions& options);

struct BoundOptions {
    HeadendInput headend;
    StyleInput style;
    bool json = false;
};

/// How many services any arrangement could place.
void bound_command(const BoundOptions& options);

struct ImportOptions {
    std::vector<std::string> channels;
    std::string modules;
    std::string output = standard_stream;
    /// Empty for the one that the list shows.
    std::string format;
    BitrateEstimates estimates;
    bool keep_duplicates = false;
    FilterInput filter;
    bool verbose = false;
};

/// Channel lists and modules in, a head-end out. Lines left aside are told on standard error.
void import_command(const ImportOptions& options);

constexpr const char* format_channels_conf = "channels.conf";
constexpr const char* format_csv = "csv";
constexpr const char* format_html = "html";

struct ExportOptions {
    std::string result;
    /// One of these.
    std::string format;
    std::string output = standard_stream;
};

/// The result of a run in, a channel list, a table or a page out. What a channel list cannot hold is told on
/// standard error.
void export_command(const ExportOptions& options);

} // namespace zarven::tool

#endif
