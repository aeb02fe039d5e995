// What is added to rates, because a peak that was measured or estimated need not be the highest there is.

#ifndef RECALCULO_MARGINS_H
#define RECALCULO_MARGINS_H

#include <cstdint>
#include <string>
#include <vector>

namespace zarven::tool {

/// In percent.
struct Margins {
    std::uint32_t measured = 0;
    std::uint32_t estimated = 0;
};

inline constexpr std::uint32_t most_margin = 1000;

/// For people; `which` is what "measured" stands for.
inline std::string meaning_of_margins(const std::string& which) {
    return "Add so much to peak bitrates: measured=N% to " + which +
           ", estimated=N% to estimates, N% to both";
}

/// Of texts such as "10%" for both, "measured=10%" and "estimated=20%"; the last for each counts. Throws
/// `Failure`.
Margins read_margins(const std::vector<std::string>& texts);

/// Rounded up, and no more than 32 bits hold.
std::uint32_t with_margin(std::uint32_t bitrate, std::uint32_t percent);

} // namespace zarven::tool

#endif
