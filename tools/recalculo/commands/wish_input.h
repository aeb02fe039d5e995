// The wish lists of a command line: the option --wish and what belongs to it. Every command that has them
// takes them this way.

#ifndef RECALCULO_COMMANDS_WISH_INPUT_H
#define RECALCULO_COMMANDS_WISH_INPUT_H

#include <string>
#include <vector>

#include "headend/headend.h"
#include "headend/service_filter.h"
#include "lineup/channel_import.h"
#include "wishes/wish_list.h"
#include "wishes/wishing.h"

namespace zarven::tool {

struct WishInput {
    std::vector<std::string> files;
    /// Their LCNs are taken over.
    bool lcns = false;
    /// Every message is told.
    bool verbose = false;
};

/// Throws `Failure`, also for standard input if it is given twice or `is_taken`.
std::vector<WishList> read_wishes(const WishInput& input, bool is_taken);

/// Asks for the wished services of the head-end alone, and gives them what the lists say. What is to be told
/// goes to standard error. Does nothing without lists. Throws `Failure` if none is found.
void ask_for_wishes(const WishInput& input, const std::string& path, Headend& headend);

/// The same for services that are imported: the others are left away, and so are those that the filter, which
/// may ask for groups of the lists, does not want; these stand in the order of the lists. Gives what to
/// number when the head-end is made.
Wishing keep_wishes(const WishInput& input, const std::vector<WishList>& lists, const ServiceFilter& filter,
                    ImportedChannels& imported);

/// Takes the LCNs over, if that is wished for.
void take_wished_lcns(const WishInput& input, const std::vector<WishList>& lists, Wishing& wishing,
                      Headend& headend);

} // namespace zarven::tool

#endif
