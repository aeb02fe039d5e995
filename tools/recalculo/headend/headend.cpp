#include "headend/headend.h"

#include <vector>

#include <fmt/format.h>

#include "Reglas.h"

namespace zarven::tool {

std::string module_name(const std::string& mac, const std::string& label) {
    return label.empty() ? mac : fmt::format("{} ({})", mac, label);
}

Stream stream_of(const Programme& programme) {
    return {programme.onid, programme.tsid};
}

bool is_radio(const Programme& programme) {
    return programme.type == type_radio;
}

bool is_hd(const Programme& programme) {
    return reglas::esHD(programme.video_format);
}

std::set<Stream> streams_of(const std::vector<Service>& services) {
    std::set<Stream> streams;
    for (const Service& service : services)
        streams.insert(stream_of(service));
    return streams;
}

Stream stream_of(const Reception& reception) {
    return {reception.onid, reception.tsid};
}

std::string to_string(const Reception& reception) {
    std::vector<std::string> parts;
    if (!reception.satellite.empty())
        parts.push_back(reception.satellite);
    if (reception.frequency != 0) // the kHz without zeros at their end
        parts.push_back(fmt::format("{:.10g} MHz", reception.frequency / 1000.0));
    if (!reception.polarization.empty())
        parts.push_back(reception.polarization);
    return fmt::format("{}", fmt::join(parts, " "));
}

std::string tuning_of(const Reception& reception) {
    const std::string place = to_string(reception);
    if (reception.symbol_rate == 0)
        return place;
    return fmt::format("{}{}{:.10g} kS/s", place, place.empty() ? "" : " ", reception.symbol_rate / 1000.0);
}

} // namespace zarven::tool
