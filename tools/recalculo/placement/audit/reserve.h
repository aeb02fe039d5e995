// What an output is to keep free besides its services: tables, programme guide and entitlement messages,
// which the head-end sends with them and the engine does not count. A share of the most that the output
// carries.

#ifndef RECALCULO_RESERVE_H
#define RECALCULO_RESERVE_H

#include <cstdint>
#include <string>

namespace zarven::tool {

struct Result;

struct Reserve {
    /// Of a percent. As a rule 0.7 to 1.1 Mbit/s of a stream of 38 are no services.
    std::uint32_t hundredths = 250;
};

inline constexpr std::uint32_t most_reserve_percent = 50;

inline constexpr const char* meaning_of_reserve =
    "What each output is to keep free for tables, of its maximum; 2.5% by default. The report tells which "
    "cannot; the engine does not know of it";

/// Of a text such as "2.5%"; the sign may be left out. Throws `Failure`.
Reserve read_reserve(const std::string& text);

/// Of an output with this maximum; both in kbit/s. Rounded up, so that a share of nothing alone is 0.
std::uint32_t reserve_of(std::uint32_t bitrate_max, Reserve reserve);

/// Has every output of a result keep so much.
void set_reserve(Result& result, Reserve reserve);

} // namespace zarven::tool

#endif
