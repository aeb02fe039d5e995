// The commands: what each is told on the command line, and the function that does it. How the options are
// written is told in program.cpp. Each function throws `Failure`.

#ifndef RECALCULO_COMMANDS_COMMANDS_H
#define RECALCULO_COMMANDS_COMMANDS_H

#include <cstdint>
#include <string>
#include <vector>

#include "base/streams.h"
#include "base/workers.h"
#include "commands/engine_limits.h"
#include "commands/filter_input.h"
#include "commands/headend_input.h"
#include "commands/measured_input.h"
#include "commands/report_output.h"
#include "commands/reserve_input.h"
#include "commands/style_input.h"
#include "commands/wish_input.h"
#include "lineup/channel_import.h"
#include "placement/failing/drill.h"
#include "placement/sizing/advising.h"
#include "placement/sizing/sizing.h"

namespace zarven::tool {

struct RunOptions {
    HeadendInput headend;
    WishInput wishes;
    /// What else is not asked for.
    FilterInput filter;
    ReportOutput output;
    /// The planner's page with the head-end inside; empty for none.
    std::string live;
    ReserveInput reserve;
    StyleInput style;
    bool pauses = false;
    bool strategies = false;
    std::uint32_t trials = automatic_trials;
    /// The last line of the text report alone.
    bool summary = false;
    /// Empty for no log.
    std::string log;
    /// Outcomes that are to be a failure.
    std::vector<std::string> fail_on;
    EngineLimits limits;
};

/// A head-end in, its placement out.
void run_command(const RunOptions& options);

struct ExplainOptions {
    HeadendInput headend;
    /// Empty for all that are left out.
    std::vector<std::string> services;
    bool remedy = false;
    std::uint32_t trials = automatic_trials;
    bool json = false;
    ReserveInput reserve;
    bool verbose = false;
    StyleInput style;
    EngineLimits limits;
};

/// Why services are left out, and what each module answers.
void explain_command(const ExplainOptions& options);

struct CompareOptions {
    std::string before;
    /// With the changes to it, where it is a head-end.
    HeadendInput after;
    ReportOutput output;
    /// Outcomes of the second placement that are to be a failure.
    std::vector<std::string> fail_on;
    ReserveInput reserve;
    bool verbose = false;
    StyleInput style;
    EngineLimits limits;
};

/// Two placements side by side.
void compare_command(const CompareOptions& options);

struct SizeOptions {
    HeadendInput headend;
    std::vector<std::string> add;
    std::uint32_t most = SizingOptions().most;
    bool choose = false;
    std::uint32_t jobs = cores();
    bool json = false;
    StyleInput style;
    EngineLimits limits;
};

/// What to change so that everything fits. Progress is told on a terminal.
void size_command(const SizeOptions& options);

struct DrillCommandOptions {
    HeadendInput headend;
    bool streams = false;
    /// The kind of spare module; empty for none.
    std::string spare;
    std::uint32_t most = DrillOptions().most;
    std::uint32_t jobs = cores();
    /// Every failure in the text, and what the worst moves.
    bool all = false;
    ReportOutput output;
    StyleInput style;
    EngineLimits limits;
};

/// What each failure takes off the air, and what a new run makes of it. Progress is told on a terminal.
void drill_command(const DrillCommandOptions& options);

struct ChooseOptions {
    HeadendInput headend;
    WishInput wishes;
    std::vector<std::string> musts;
    std::vector<std::string> values;
    /// 0: `usual_seconds`, or with runs as long as these take.
    std::uint32_t seconds = 0;
    /// 0 for no limit.
    std::uint32_t runs = 0;
    std::uint32_t seed = 1;
    std::uint32_t jobs = cores();
    /// A result, from which as few services as possible are to move; empty for none.
    std::string keep;
    /// Where the head-end goes with the services marked that are not to be asked for; empty for nowhere.
    std::string chosen;
    ReportOutput output;
    ReserveInput reserve;
    StyleInput style;
    EngineLimits limits;

    static constexpr std::uint32_t usual_seconds = 20;
};

/// Which services to ask for, so that the engine places the most that matters. Progress is told on a
/// terminal, and an interruption ends the search, not the command.
void choose_command(const ChooseOptions& options);

struct BoundOptions {
    HeadendInput headend;
    StyleInput style;
    bool json = false;
    EngineLimits limits;
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
    WishInput wishes;
    MeasuredInput measured;
    bool verbose = false;
};

/// Channel lists and modules in, a head-end out. Lines left aside are told on standard error.
void import_command(const ImportOptions& options);

struct MeasureOptions {
    HeadendInput headend;
    MeasuredInput measured;
    std::string output = standard_stream;
    bool verbose = false;
};

/// A head-end and measured rates in, the head-end with these out. What did not match is told on standard
/// error.
void measure_command(const MeasureOptions& options);

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
