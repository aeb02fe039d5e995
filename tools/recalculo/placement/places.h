// Where the services of a result stand, which service of one result is which of another, and whether it has
// moved: what a comparison goes by, and a choice that leaves services where they are. Some thousands of
// services.

#ifndef RECALCULO_PLACES_H
#define RECALCULO_PLACES_H

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "placement/result.h"

namespace zarven::tool {

/// What the modules that have a label are called, by MAC.
using Labels = std::map<std::string, std::string>;

/// By its MAC, and its label in brackets if it has one.
std::string module_name(const std::string& mac, const Labels& labels);

/// What tells services of several results apart: stream, LCN and SID. Those of one stream and LCN are one and
/// its clones.
using ServiceNumbers = std::tuple<Stream, std::uint16_t, std::uint16_t>;

ServiceNumbers numbers_of(const Service& service);
ServiceNumbers numbers_of(const ServiceResult& service);

struct Place {
    std::string mac;
    /// 0 where none has it.
    std::uint16_t input = 0;
    std::vector<std::uint32_t> outputs;
};

/// What there is to say of a service without a place.
enum class Absence {
    left_out,
    /// Neither placed nor left out.
    neither,
    /// The result does not have the service.
    not_there
};

/// In words.
const char* to_string(Absence absence);

struct PlacedService {
    ServiceResult service;
    /// In ascending order.
    std::vector<Place> places;
    /// Where there are no places.
    Absence absence = Absence::neither;
};

/// All services of a result but its clones, each once, in the order of stream, LCN and SID.
std::vector<PlacedService> placed_services(const Result& result);

/// A service that is placed on both sides stands elsewhere: on another module, input or output.
bool is_moved(const std::vector<Place>& before, const std::vector<Place>& after);

/// Services of two lists, by their place there.
struct Matches {
    std::vector<std::pair<std::size_t, std::size_t>> pairs;
    std::vector<std::size_t> only_before;
    std::vector<std::size_t> only_after;
};

/// A service is the same in both if stream, LCN and SID are; of those then left, if the name is and no other
/// has it.
Matches match(const std::vector<PlacedService>& before, const std::vector<PlacedService>& after);

} // namespace zarven::tool

#endif
