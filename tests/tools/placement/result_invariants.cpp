// No output over its limits; every placed service on an input tuned to its own stream and on one output of
// the same module, and on no other module; placed and left out make loaded, each service once.

#include "placement/result_invariants.h"

#include <cstdint>
#include <map>
#include <set>
#include <tuple>

#include <fmt/format.h>

namespace zarven::tool {

namespace {

using nlohmann::json;

/// Stream and LCN: what tells ordinary services apart.
using Key = std::tuple<unsigned, unsigned, unsigned>;

Key key_of(const json& service) {
    return {service.at("onid"), service.at("tsid"), service.at("lcn")};
}

std::string name_of(const Key& key) {
    return fmt::format("service {}/{} LCN {}", std::get<0>(key), std::get<1>(key), std::get<2>(key));
}

class Inspection {
public:
    Inspection(const json& result, const json& headend) {
        for (const json& module : result.at("modules"))
            inspect_module(module);
        for (const json& stream : result.at("left_out"))
            for (const json& service : stream.at("services"))
                expect(left_out_.insert(key_of(service)).second, "{} is left out twice",
                       name_of(key_of(service)));
        inspect_sums(result.at("summary"));
        inspect_completeness(headend);
    }

    std::vector<std::string> faults() && { return std::move(faults_); }

private:
    template <class... Values>
    void expect(bool holds, fmt::format_string<Values...> fault, Values&&... values) {
        if (!holds)
            faults_.push_back(fmt::format(fault, std::forward<Values>(values)...));
    }

    void inspect_module(const json& module);
    void inspect_output(const std::string& mac, const json& output, std::map<Key, int>& on_outputs);
    void inspect_sums(const json& summary);
    void inspect_completeness(const json& headend);

    std::vector<std::string> faults_;
    std::set<Key> placed_;
    std::set<Key> left_out_;
};

void Inspection::inspect_module(const json& module) {
    const std::string mac = module.at("mac");
    std::map<Key, int> on_outputs;
    for (const json& output : module.at("outputs"))
        inspect_output(mac, output, on_outputs);

    std::set<Key> on_inputs;
    for (const json& input : module.at("inputs"))
        for (const json& service : input.at("services")) {
            const Key key = key_of(service);
            expect(input.at("onid") == service.at("onid") && input.at("tsid") == service.at("tsid"),
                   "{}: {} is on an input that is tuned to another stream", mac, name_of(key));
            if (service.at("clone"))
                continue;
            expect(on_inputs.insert(key).second, "{}: {} is on its inputs twice", mac, name_of(key));
            expect(on_outputs.count(key) != 0, "{}: {} is on an input and on no output", mac, name_of(key));
        }
    for (const auto& [key, times] : on_outputs) {
        expect(times == 1, "{}: {} is on its outputs {} times", mac, name_of(key), times);
        expect(on_inputs.count(key) != 0, "{}: {} is on an output and on no input", mac, name_of(key));
        expect(placed_.insert(key).second, "{}: {} is on another module, too", mac, name_of(key));
    }
}

void Inspection::inspect_output(const std::string& mac, const json& output, std::map<Key, int>& on_outputs) {
    std::uint64_t bitrate = 0;
    std::uint64_t services = 0;
    for (const json& service : output.at("services")) {
        if (service.at("clone"))
            continue;
        ++on_outputs[key_of(service)];
        ++services;
        bitrate += service.at("bitrate").get<std::uint64_t>();
    }
    const unsigned number = output.at("number");
    expect(bitrate <= output.at("bitrate_max"), "{}: output {} carries {} kbit/s", mac, number, bitrate);
    expect(services <= output.at("service_max"), "{}: output {} carries {} services", mac, number, services);
    expect(bitrate == output.at("bitrate"), "{}: output {} carries {} kbit/s and says otherwise", mac, number,
           bitrate);
    expect(services == output.at("service_count"), "{}: output {} carries {} services and says otherwise",
           mac, number, services);
}

void Inspection::inspect_sums(const json& summary) {
    const std::size_t loaded = summary.at("loaded");
    expect(placed_.size() == summary.at("placed"), "{} services are placed and the summary says otherwise",
           placed_.size());
    expect(left_out_.size() == summary.at("left_out"),
           "{} services are left out and the summary says otherwise", left_out_.size());
    expect(placed_.size() + left_out_.size() == loaded, "{} placed and {} left out do not make {} loaded",
           placed_.size(), left_out_.size(), loaded);
}

void Inspection::inspect_completeness(const json& headend) {
    std::set<Key> loaded;
    for (const json& service : headend.at("services"))
        loaded.insert(key_of(service));
    for (const Key& key : loaded)
        expect(placed_.count(key) + left_out_.count(key) == 1, "{} is {}", name_of(key),
               placed_.count(key) == 0 ? "nowhere" : "placed and left out");
    for (const std::set<Key>* keys : {&placed_, &left_out_})
        for (const Key& key : *keys)
            expect(loaded.count(key) != 0, "{} was never loaded", name_of(key));
}

} // namespace

std::vector<std::string> faults_of(const nlohmann::json& result, const nlohmann::json& headend) {
    return Inspection(result, headend).faults();
}

} // namespace zarven::tool
