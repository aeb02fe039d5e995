// What a transponder carries: its net rate from the parameters of its modulation. All formulas count packets
// of 188 bytes; docs/tool.md names their sources.

#ifndef RECALCULO_TRANSPONDER_H
#define RECALCULO_TRANSPONDER_H

#include <cstdint>
#include <optional>

namespace zarven::tool {

enum class Delivery { unknown, dvb_s, dvb_s2, dvb_c, dvb_t };

/// A code rate; 0/0 where it is not known.
struct CodeRate {
    std::uint32_t numerator = 0;
    std::uint32_t denominator = 0;
};

bool operator==(CodeRate one, CodeRate other);

/// 0 in a parameter: the list does not tell it.
struct Transponder {
    Delivery delivery = Delivery::unknown;
    /// In symbols a second; satellite and cable.
    std::uint32_t symbol_rate = 0;
    std::uint32_t bits_per_symbol = 0;
    CodeRate fec;
    /// Without a word on them they are taken to be there: then the rate is the smaller one. DVB-S2.
    bool has_pilots = true;
    /// In Hz; terrestrial.
    std::uint32_t bandwidth = 0;
    /// The guard interval is one in so many of the useful time; terrestrial.
    std::uint32_t guard_interval = 0;
};

/// In kbit/s, rounded down; nothing where a parameter is not known, or is none of that system.
std::optional<std::uint32_t> net_rate(const Transponder& transponder);

/// In symbols a second; 0 where it is not known, or where lists fill a column that means nothing.
std::uint32_t symbol_rate(const Transponder& transponder);

/// As people write it; empty for an unknown one.
const char* to_string(Delivery delivery);

/// Bits per symbol of a constellation of so many points; 0 for a number that is no power of two from 4 to
/// 256.
std::uint32_t bits_of_points(std::uint32_t points);

/// Lists tell symbol rates in symbols or thousands of symbols a second; the number shows which.
std::uint32_t in_symbols(std::uint32_t symbol_rate);

/// Lists tell frequencies in Hz, kHz or MHz; the number shows which, for what is broadcast from 40 MHz to 40
/// GHz.
std::uint32_t in_khz(std::uint32_t frequency);

} // namespace zarven::tool

#endif
