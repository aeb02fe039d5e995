// The numbers stand for what the tables below tell; what a list leaves to the receiver is not known.

#include "lineup/lamedb_transponder.h"

#include <string_view>
#include <vector>

#include "lineup/text_lines.h"

namespace zarven::tool {

namespace {

using Parts = std::vector<std::string_view>;

/// The entry of a list that a field numbers from 0; that of no rate, bits or width where there is none.
template <class Entry> Entry pick(const Parts& texts, std::size_t field, const std::vector<Entry>& entries) {
    std::uint32_t number = 0;
    const bool is_there = field < texts.size() && is_number(texts[field], 99, number);
    return is_there && number < entries.size() ? entries[number] : Entry{};
}

bool says(const Parts& texts, std::size_t field, std::string_view text) {
    return field < texts.size() && texts[field] == text;
}

/// `frequency:symbol rate:polarization:FEC:orbit:inversion`, and `:flags:system:modulation:roll-off:pilots`.
Transponder read_satellite(const Parts& texts) {
    Transponder transponder;
    const bool is_second = says(texts, 7, "1");
    transponder.delivery = is_second ? Delivery::dvb_s2 : Delivery::dvb_s;
    transponder.symbol_rate = texts.size() > 1 ? in_symbols(number_or_0(texts[1])) : 0;
    transponder.fec = pick<CodeRate>(
        texts, 3, {{}, {1, 2}, {2, 3}, {3, 4}, {5, 6}, {7, 8}, {8, 9}, {3, 5}, {4, 5}, {9, 10}, {6, 7}});
    transponder.bits_per_symbol = is_second ? pick<std::uint32_t>(texts, 8, {0, 2, 3, 4}) : 2;
    transponder.has_pilots = !says(texts, 10, "0");
    return transponder;
}

/// `frequency:symbol rate:inversion:modulation:FEC`.
Transponder read_cable(const Parts& texts) {
    Transponder transponder;
    transponder.delivery = Delivery::dvb_c;
    transponder.symbol_rate = texts.size() > 1 ? in_symbols(number_or_0(texts[1])) : 0;
    transponder.bits_per_symbol = pick<std::uint32_t>(texts, 3, {0, 4, 5, 6, 7, 8});
    return transponder;
}

/// `frequency:bandwidth:FEC:FEC:modulation:mode:guard interval:hierarchy:inversion`, and `:flags:system`.
/// Only without hierarchy, and not for the second system.
Transponder read_terrestrial(const Parts& texts) {
    Transponder transponder;
    if (!says(texts, 7, "0") || says(texts, 10, "1"))
        return transponder;
    transponder.delivery = Delivery::dvb_t;
    transponder.bandwidth = pick<std::uint32_t>(texts, 1, {8'000'000, 7'000'000, 6'000'000});
    transponder.fec = pick<CodeRate>(texts, 2, {{1, 2}, {2, 3}, {3, 4}, {5, 6}, {7, 8}});
    transponder.bits_per_symbol = pick<std::uint32_t>(texts, 4, {2, 4, 6});
    transponder.guard_interval = pick<std::uint32_t>(texts, 6, {32, 16, 8, 4});
    return transponder;
}

} // namespace

LamedbTransponder read_lamedb_transponder(char delivery, std::string_view text) {
    const Parts texts = split(text, ":");
    LamedbTransponder received;
    received.frequency = read_frequency("frequency", trimmed(texts[0]));
    std::uint32_t polarization = 0;
    if (delivery == 's' && texts.size() > 2 && is_number(texts[2], 3, polarization))
        received.polarization = "HVLR"[polarization];
    if (delivery == 's')
        received.parameters = read_satellite(texts);
    else if (delivery == 'c')
        received.parameters = read_cable(texts);
    else if (delivery == 't')
        received.parameters = read_terrestrial(texts);
    return received;
}

} // namespace zarven::tool
