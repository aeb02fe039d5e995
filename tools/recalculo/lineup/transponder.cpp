#include "lineup/transponder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace zarven::tool {

namespace {

/// The share of a packet that Reed-Solomon leaves: 188 bytes of 204.
constexpr double reed_solomon = 188.0 / 204;

/// Fewer symbols a second are no broadcast, but a slip in the list.
constexpr std::uint32_t least_symbol_rate = 100'000;

double ratio(CodeRate rate) {
    return static_cast<double>(rate.numerator) / rate.denominator;
}

bool is_one_of(CodeRate rate, std::initializer_list<CodeRate> rates) {
    return std::find(rates.begin(), rates.end(), rate) != rates.end();
}

double rate_of_dvb_s(const Transponder& transponder) {
    if (transponder.bits_per_symbol != 2 ||
        !is_one_of(transponder.fec, {{1, 2}, {2, 3}, {3, 4}, {5, 6}, {6, 7}, {7, 8}}))
        return 0;
    return transponder.symbol_rate * 2.0 * ratio(transponder.fec) * reed_solomon;
}

/// How many errors of a frame the outer code corrects.
double corrected_errors(CodeRate rate) {
    if (is_one_of(rate, {{2, 3}, {5, 6}}))
        return 10;
    return is_one_of(rate, {{8, 9}, {9, 10}}) ? 8 : 12;
}

/// Normal frames: 64800 bits and a header of 90 symbols, with 36 symbols of pilots after each 16 slots.
double rate_of_dvb_s2(const Transponder& transponder) {
    const double bits = transponder.bits_per_symbol;
    if (transponder.bits_per_symbol < 2 || transponder.bits_per_symbol > 5 ||
        !is_one_of(transponder.fec,
                   {{1, 4}, {1, 3}, {2, 5}, {1, 2}, {3, 5}, {2, 3}, {3, 4}, {4, 5}, {5, 6}, {8, 9}, {9, 10}}))
        return 0;
    const double frame = 64800;
    const double pilots = transponder.has_pilots ? 36 * (std::ceil(720 / (16 * bits)) - 1) : 0;
    const double symbols = frame / bits + 90 + pilots;
    const double payload = frame * ratio(transponder.fec) - 16 * corrected_errors(transponder.fec) - 80;
    return transponder.symbol_rate / symbols * payload;
}

double rate_of_dvb_c(const Transponder& transponder) {
    if (transponder.bits_per_symbol < 4 || transponder.bits_per_symbol > 8)
        return 0;
    return transponder.symbol_rate * static_cast<double>(transponder.bits_per_symbol) * reed_solomon;
}

/// Without hierarchy.
double rate_of_dvb_t(const Transponder& transponder) {
    const std::array<std::uint32_t, 3> constellations = {2, 4, 6};
    const std::array<std::uint32_t, 4> guards = {4, 8, 16, 32};
    if (std::count(constellations.begin(), constellations.end(), transponder.bits_per_symbol) == 0 ||
        std::count(guards.begin(), guards.end(), transponder.guard_interval) == 0 ||
        !is_one_of(transponder.fec, {{1, 2}, {2, 3}, {3, 4}, {5, 6}, {7, 8}}))
        return 0;
    return 423.0 / 544 * transponder.bandwidth * transponder.bits_per_symbol * ratio(transponder.fec) /
           (1 + 1.0 / transponder.guard_interval);
}

/// In bit/s; 0 where it is not known.
double rate_of(const Transponder& transponder) {
    if (transponder.delivery == Delivery::dvb_t)
        return rate_of_dvb_t(transponder);
    if (transponder.symbol_rate < least_symbol_rate)
        return 0;
    switch (transponder.delivery) {
    case Delivery::dvb_s:
        return rate_of_dvb_s(transponder);
    case Delivery::dvb_s2:
        return rate_of_dvb_s2(transponder);
    case Delivery::dvb_c:
        return rate_of_dvb_c(transponder);
    case Delivery::dvb_t:
    case Delivery::unknown:
        break;
    }
    return 0;
}

} // namespace

bool operator==(CodeRate one, CodeRate other) {
    return one.numerator == other.numerator && one.denominator == other.denominator;
}

std::optional<std::uint32_t> net_rate(const Transponder& transponder) {
    const double kilobits = std::floor(rate_of(transponder) / 1000);
    if (kilobits < 1 || kilobits > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<std::uint32_t>(kilobits);
}

std::uint32_t symbol_rate(const Transponder& transponder) {
    const bool has_one = transponder.delivery != Delivery::unknown && transponder.delivery != Delivery::dvb_t;
    return has_one && transponder.symbol_rate >= least_symbol_rate ? transponder.symbol_rate : 0;
}

const char* to_string(Delivery delivery) {
    switch (delivery) {
    case Delivery::dvb_s:
        return "DVB-S";
    case Delivery::dvb_s2:
        return "DVB-S2";
    case Delivery::dvb_c:
        return "DVB-C";
    case Delivery::dvb_t:
        return "DVB-T";
    case Delivery::unknown:
        break;
    }
    return "";
}

std::uint32_t bits_of_points(std::uint32_t points) {
    for (std::uint32_t bits = 2; bits <= 8; ++bits)
        if (points == 1U << bits)
            return bits;
    return 0;
}

std::uint32_t in_symbols(std::uint32_t symbol_rate) {
    return symbol_rate < 100'000 ? symbol_rate * 1000 : symbol_rate;
}

std::uint32_t in_khz(std::uint32_t frequency) {
    if (frequency < 40'000)
        return frequency * 1000;
    return frequency < 40'000'000 ? frequency : frequency / 1000;
}

} // namespace zarven::tool
