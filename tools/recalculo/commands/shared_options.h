// How an option is described, and the options that several commands have.

#ifndef RECALCULO_COMMANDS_SHARED_OPTIONS_H
#define RECALCULO_COMMANDS_SHARED_OPTIONS_H

#include <cstdint>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "commands/program.h"

namespace zarven::tool {

Option argument(const char* name, Target target, const char* description);
Option flag(const char* name, bool& value, const char* description);
Option with_value(std::vector<std::string> names, const char* value, Target target, std::string description);

Option required(Option option);
Option named_file(Option option);
Option within(int least, int most, Option option);
Option one_of(std::vector<std::string> words, Option option);

/// Tells the value that the target has now.
Option with_fallback(Option option);

Option headend_argument(HeadendInput& input);
Option set_option(HeadendInput& input, const std::string& what = "Change a value for this run");
Option json_flag(bool& json);

/// `what` is the thing that the command reports.
Option html_option(ReportOutput& output, const std::string& what);

/// `which` is the placement that is looked at.
Option fail_on_option(std::vector<std::string>& outcomes, const std::string& which);

/// `what` is done at once.
Option jobs_option(std::uint32_t& jobs, const std::string& what);
Option trials_option(std::uint32_t& trials);
Option max_seconds_option(EngineLimits& limits);
Option color_option(StyleInput& style);
Option output_option(std::string& path, const char* description);
Option only_option(FilterInput& filter);
Option exclude_option(FilterInput& filter);
Option select_option(FilterInput& filter);

/// `effect` is what becomes of the services of the list.
Option wish_option(WishInput& input, const std::string& effect);

Option wish_lcns_flag(WishInput& input);
Option margin_option(MeasuredInput& input, const std::string& which);
Option verbose_flag(bool& verbose);
Option reserve_option(ReserveInput& input);
Option all_cautions_flag(bool& verbose);

} // namespace zarven::tool

#endif
