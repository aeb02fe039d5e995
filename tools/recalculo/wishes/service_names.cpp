#include "wishes/service_names.h"

#include <algorithm>

#include "base/utf8.h"
#include "base/words.h"

namespace zarven::tool {

namespace {

bool is_ascii(char character) {
    return static_cast<unsigned char>(character) < 0x80;
}

bool stands_in_plain_names(char character) {
    return (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9') ||
           character == '+' || !is_ascii(character);
}

void add_once(std::vector<std::size_t>& places, std::size_t place) {
    if (places.empty() || places.back() != place)
        places.push_back(place);
}

} // namespace

/// What has no ASCII letters stays as it is: all Greek names would be the same otherwise.
std::string plain_name(std::string_view name) {
    const std::string written(name);
    const std::string converted = ascii(written);
    const auto marks = [](const std::string& text) { return std::count(text.begin(), text.end(), '?'); };
    std::string plain = in_small_letters(marks(converted) == marks(written) ? converted : written);
    plain.erase(std::remove_if(plain.begin(), plain.end(),
                               [](char character) { return !stands_in_plain_names(character); }),
                plain.end());
    return plain;
}

std::string without_quality(std::string plain) {
    for (const std::string_view quality : {"uhd", "hd", "sd", "4k"})
        if (plain.size() > quality.size() &&
            std::string_view(plain).substr(plain.size() - quality.size()) == quality) {
            plain.resize(plain.size() - quality.size());
            break;
        }
    return plain;
}

ServiceNames::ServiceNames(const std::vector<Service>& services) {
    for (std::size_t service = 0; service < services.size(); ++service) {
        add(service, services[service].name);
        if (services[service].output_name != services[service].name)
            add(service, services[service].output_name);
    }
    for (const auto& [core, places] : by_core_)
        cores_.push_back(core);
}

void ServiceNames::add(std::size_t service, const std::string& name) {
    const std::string plain = plain_name(name);
    add_once(by_name_[in_small_letters(name)], service);
    if (plain.empty())
        return;
    add_once(by_plain_name_[plain], service);
    add_once(by_core_[without_quality(plain)], service);
}

ServiceNames::Found ServiceNames::find(std::string_view name) const {
    if (const auto found = by_name_.find(in_small_letters(name)); found != by_name_.end())
        return {found->second, true};
    const std::string plain = plain_name(name);
    if (const auto found = by_plain_name_.find(plain); found != by_plain_name_.end())
        return {found->second, false};
    if (const auto found = by_core_.find(without_quality(plain)); found != by_core_.end())
        return {found->second, false};
    return {{}, false};
}

std::optional<std::size_t> ServiceNames::nearest(std::string_view name) const {
    const std::string plain = plain_name(name);
    const std::string core = without_quality(plain);
    const std::size_t near = near_word(core, cores_);
    if (near == cores_.size())
        return {};
    const Places& places = by_core_.find(cores_[near])->second;
    const std::string quality = plain.substr(core.size());
    const auto of_quality = by_plain_name_.find(cores_[near] + quality);
    return of_quality == by_plain_name_.end() ? places.front() : of_quality->second.front();
}

} // namespace zarven::tool
