// What a placement that works will be asked about once it is on the air: outputs on which services leave no
// room for tables, and numbers and names that stand twice. None as a rule; a head-end whose numbers clash
// throughout has thousands.
//
// The engine knows nothing of it, and nothing of it is broken: two services with one SID on an output are,
// and the audit tells these.

#ifndef RECALCULO_CAUTION_H
#define RECALCULO_CAUTION_H

#include <cstdint>
#include <vector>

#include "placement/audit/finding.h"

namespace zarven::tool {

struct OutputResult;
struct Result;

/// In the order in which they are told.
enum class CautionKind {
    /// The services on an output and its reserve are more than its maximum.
    no_room_for_tables,
    /// Several services of one output have it.
    lcn_on_output,
    name_on_output,
    /// Services on different outputs have it.
    sid_in_network,
    lcn_in_network,
    name_in_network
};

struct Caution : Finding {
    CautionKind kind = CautionKind::no_room_for_tables;
};

/// By how many kbit/s services and reserve of an output exceed its maximum. 0 for one that carries nothing or
/// is to keep nothing.
std::uint64_t lacking_for_tables(const OutputResult& output);

/// By kind, then by module, output and number or name. Each service counts once, wherever and however often
/// it stands. Clones are not looked at: they share the numbers of their parent on purpose. An LCN of 0 is
/// none, and so is an empty name.
std::vector<Caution> cautions_of(const Result& result);

} // namespace zarven::tool

#endif
