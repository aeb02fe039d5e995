// Each line begins with where the service stands and goes on with what it is. Several programs disagree about
// blanks and quotes, so that a field is quoted only where it must be.

#include "report/report_csv.h"

#include <map>

#include <fmt/format.h>

namespace zarven::tool {

namespace {

std::string quoted(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == text.npos)
        return text;
    std::string field = "\"";
    for (const char character : text) {
        if (character == '"')
            field += '"';
        field += character;
    }
    return field + '"';
}

const char* yes_or_no(bool truth) {
    return truth ? "yes" : "no";
}

/// Where a service stands; empty fields where it does not.
struct Place {
    std::string module;
    std::string input;
    std::string output;
};

std::string line(const Place& place, const ServiceResult& service) {
    return fmt::format("{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{}\r\n",
                       yes_or_no(!place.output.empty()), quoted(place.module), place.input, place.output,
                       service.lcn, quoted(service.name), quoted(service.output_name), service.stream.onid,
                       service.stream.tsid, service.sid, service.osid, service.bitrate,
                       yes_or_no(service.is_hd), yes_or_no(service.is_radio), yes_or_no(service.is_scrambled),
                       service.ca_pids, yes_or_no(service.is_transcoded), yes_or_no(service.is_clone),
                       quoted(service.reason));
}

std::string lines_of(const ModuleResult& module) {
    std::string lines;
    std::map<ServiceKey, std::string> input_of;
    for (const InputResult& input : module.inputs)
        for (const ServiceResult& service : input.services) {
            const std::string number = fmt::format("{}", input.number);
            input_of.emplace(key_of(service), number);
            if (service.outputs.empty())
                lines += line({module.mac, number, ""}, service);
        }
    for (const OutputResult& output : module.outputs)
        for (const ServiceResult& service : output.services) {
            const auto input = input_of.find(key_of(service));
            lines += line(
                {module.mac, input == input_of.end() ? "" : input->second, fmt::format("{}", output.number)},
                service);
        }
    return lines;
}

} // namespace

std::string csv_report(const Result& result) {
    std::string table = "placed,module,input,output,lcn,name,output_name,onid,tsid,sid,osid,bitrate,hd,radio,"
                        "scrambled,ca_pids,transcoded,clone,reason\r\n";
    for (const ModuleResult& module : result.modules)
        table += lines_of(module);
    for (const StreamResult& stream : result.left_out)
        for (const ServiceResult& service : stream.services)
            table += line({}, service);
    for (const auto* services : {&result.clones_waiting, &result.neither})
        for (const ServiceResult& service : *services)
            table += line({}, service);
    return table;
}

} // namespace zarven::tool
