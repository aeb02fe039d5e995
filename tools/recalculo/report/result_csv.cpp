// Each line begins with where the service stands and goes on with what it is. Several programs disagree about
// blanks and quotes, so that a field is quoted only where it must be.

#include "report/result_csv.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "base/utf8.h"
#include "headend/receptions.h"

namespace zarven::tool {

namespace {

/// A spreadsheet takes a cell for a formula that begins so, in the wide forms of East Asia, too, and runs it.
bool is_formula(std::string_view text) {
    const std::string_view beginnings[] = {"=", "+", "-", "@", "＝", "＋", "－", "＠"};
    return std::any_of(std::begin(beginnings), std::end(beginnings), [text](std::string_view beginning) {
        return text.substr(0, beginning.size()) == beginning;
    });
}

/// A cell that is shown as the text that it is; behind an apostrophe all is text.
std::string quoted(const std::string& name) {
    std::string text = printable(name);
    if (is_formula(text))
        text.insert(0, "'");
    if (text.find_first_of(",\"") == text.npos)
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
struct PlaceCells {
    std::string module;
    std::string label;
    std::string input;
    std::string output;
};

std::string number_or_nothing(std::uint32_t number) {
    return number == 0 ? "" : std::to_string(number);
}

/// What a receiver is tuned by.
std::string cells_of(const Reception& reception) {
    return fmt::format("{},{},{},{}", quoted(reception.satellite), number_or_nothing(reception.frequency),
                       quoted(reception.polarization), number_or_nothing(reception.symbol_rate));
}

std::string line(const PlaceCells& place, const ServiceResult& service, const Reception& reception) {
    return fmt::format("{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{}\r\n",
                       yes_or_no(!place.output.empty()), quoted(place.module), place.input, place.output,
                       service.lcn, quoted(service.name), quoted(service.output_name), service.stream.onid,
                       service.stream.tsid, service.sid, service.osid, service.bitrate,
                       yes_or_no(service.is_hd && !service.is_radio), yes_or_no(service.is_radio),
                       yes_or_no(service.is_scrambled), service.ca_pids, yes_or_no(service.is_transcoded),
                       yes_or_no(service.is_clone), quoted(service.reason), quoted(place.label),
                       cells_of(reception), yes_or_no(service.is_measured),
                       number_or_nothing(service.mean_bitrate), quoted(service.group));
}

/// The lines of a result.
class Lines {
public:
    explicit Lines(const Result& result) : receptions_(by_stream(result.streams)) {
        for (const ServiceResult& service : result.neither)
            lost_.emplace(key_of(service), &service);
        for (const ModuleResult& module : result.modules)
            write(module);
        for (const StreamResult& stream : result.left_out)
            write(stream.services);
        write(result.clones_waiting);
        for (const auto& [key, service] : lost_)
            text_ += line_of({}, *service);
    }

    std::string text() && { return std::move(text_); }

private:
    void write(const ModuleResult& module);
    void write(const std::vector<ServiceResult>& services) {
        for (const ServiceResult& service : services)
            text_ += line_of({}, service);
    }

    std::string line_of(const PlaceCells& place, const ServiceResult& service) const {
        return line(place, service, reception_of(service.stream, receptions_));
    }

    const Receptions receptions_;
    /// Those neither placed nor left out that have no line yet.
    std::map<ServiceKey, const ServiceResult*> lost_;
    std::string text_;
};

void Lines::write(const ModuleResult& module) {
    std::map<ServiceKey, std::string> input_of;
    for (const InputResult& input : module.inputs)
        for (const ServiceResult& service : input.services) {
            const std::string number = fmt::format("{}", input.number);
            input_of.emplace(key_of(service), number);
            if (!service.outputs.empty())
                continue;
            const auto lost = lost_.find(key_of(service));
            text_ += line_of({module.mac, module.label, number, ""},
                             lost == lost_.end() ? service : *lost->second);
            if (lost != lost_.end())
                lost_.erase(lost);
        }
    for (const OutputResult& output : module.outputs)
        for (const ServiceResult& service : output.services) {
            const auto input = input_of.find(key_of(service));
            text_ += line_of({module.mac, module.label, input == input_of.end() ? "" : input->second,
                              fmt::format("{}", output.number)},
                             service);
        }
}

} // namespace

std::string result_csv(const Result& result) {
    return "placed,module,input,output,lcn,name,output_name,onid,tsid,sid,osid,bitrate,hd,radio,scrambled,ca_pids,"
           "transcoded,clone,reason,label,position,frequency,polarization,symbol_rate,measured,"
           "mean_bitrate,group\r\n" +
           Lines(result).text();
}

} // namespace zarven::tool
