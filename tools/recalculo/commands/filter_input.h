// Which services a command line wants: the options --only, --exclude and --select, which every command that
// has them takes in this way.

#ifndef RECALCULO_COMMANDS_FILTER_INPUT_H
#define RECALCULO_COMMANDS_FILTER_INPUT_H

#include <string>
#include <vector>

#include "headend/service_filter.h"
#include "report/wish_text.h"

namespace zarven::tool {

struct FilterInput {
    /// Terms.
    std::vector<std::string> only;
    std::vector<std::string> exclude;
    /// Files of names and LCNs.
    std::vector<std::string> selections;
};

struct ReadFilter {
    ServiceFilter filter;
    /// What of the wish lists none of the services meets.
    std::vector<MissingWish> missing;
};

/// Throws `Failure`.
ReadFilter read_filter(const FilterInput& input, const std::vector<Service>& services);

/// Does not ask for the services of the head-end that are not wanted. Lines of wish lists that name none are
/// told on standard error. `path` is where the head-end came from.
void withhold_unwanted(const FilterInput& input, const std::string& path, Headend& headend);

} // namespace zarven::tool

#endif
