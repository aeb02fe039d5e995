// Every answer says what it was found by, because the engine may place less where there is more room.

#include "report/sizing_report.h"

#include <algorithm>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "base/utf8.h"
#include "report/service_list.h"

namespace zarven::tool {

namespace {

using nlohmann::ordered_json;

std::string more_modules(std::size_t number) {
    return fmt::format("{} more module{}", number, number == 1 ? "" : "s");
}

std::string describe_kind(const Module& kind) {
    return fmt::format("{} input{}, outputs {} kbit/s, {} PIDs, transcoders SD {} HD {}", kind.inputs,
                       kind.inputs == 1 ? "" : "s",
                       kind.outputs.empty() ? "none" : fmt::format("{}", fmt::join(kind.outputs, " + ")),
                       kind.pids_max, kind.sd_transcoders, kind.hd_transcoders);
}

/// What there is to place at all.
std::string everything(const Addition& addition) {
    return addition.impossible.empty() ? "everything" : "everything that can be placed";
}

std::string answer(const Addition& addition, std::size_t most) {
    if (addition.number == std::size_t{0})
        return fmt::format("None is needed: the engine places {}.", everything(addition));
    if (addition.number)
        return fmt::format("{}: the engine then places {}.", more_modules(*addition.number),
                           everything(addition));
    if (addition.attempts.empty())
        return fmt::format("Up to {} are too few: no arrangement could then place {}; nothing was tried.",
                           more_modules(most), everything(addition));
    return fmt::format("Up to {}: with none of the numbers tried does the engine place {}.",
                       more_modules(most), everything(addition));
}

/// Where the search began, and why there.
std::string beginning(const Addition& addition) {
    if (addition.at_least == 0 || addition.attempts.empty())
        return "";
    if (addition.at_least == 1)
        return "  Without one no arrangement could; from there on each number was tried.\n";
    return fmt::format("  With fewer than {} no arrangement could; from there on each number was tried.\n",
                       addition.at_least);
}

/// One line for a row of numbers with the same outcome.
std::string attempts_text(const std::vector<Attempt>& attempts) {
    std::string text = fmt::format("\n  {:>10}{:>10}{:>10}\n", "more", "placed", "left out");
    for (std::size_t first = 0; first < attempts.size();) {
        const Attempt& attempt = attempts[first];
        std::size_t next = first + 1;
        while (next < attempts.size() && attempts[next].placed == attempt.placed &&
               attempts[next].left_out == attempt.left_out)
            ++next;
        const std::size_t last = attempts[next - 1].number;
        const std::string numbers =
            last == attempt.number ? fmt::format("{}", last) : fmt::format("{} to {}", attempt.number, last);
        text += fmt::format("  {:>10}{:>10}{:>10}\n", numbers, attempt.placed, attempt.left_out);
        first = next;
    }
    return text;
}

std::string addition_text(const Addition& addition, std::size_t most) {
    const std::string text = fmt::format("Further modules ({})\n  {}\n{}", describe_kind(addition.kind),
                                         answer(addition, most), beginning(addition));
    return addition.attempts.empty() ? text : text + attempts_text(addition.attempts);
}

struct KindNames {
    const char* key;
    const char* name;
};

KindNames names_of(LimitKind kind) {
    switch (kind) {
    case LimitKind::pids:
        return {"pids_max", "PID budget"};
    case LimitKind::bitrate:
        return {"output_bitrate", "bitrate of output"};
    case LimitKind::inputs:
        return {"inputs", "number of inputs"};
    case LimitKind::sd_transcoders:
        return {"sd_transcoders", "SD transcoders"};
    case LimitKind::hd_transcoders:
        return {"hd_transcoders", "HD transcoders"};
    case LimitKind::one_more_output:
        break;
    }
    return {"one_more_output", "one more output"};
}

std::string change_of(const Raise& raise) {
    if (raise.kind == LimitKind::one_more_output)
        return fmt::format("one more output of {} kbit/s", raise.to);
    const std::string name = names_of(raise.kind).name;
    return fmt::format("{} from {} to {}",
                       raise.output == 0 ? name : fmt::format("{} {}", name, raise.output), raise.from,
                       raise.to);
}

std::string raises_text(const Sizing& sizing) {
    if (sizing.now.placed >= sizing.now.loaded)
        return "";
    std::string text = "\nOne limit of one module raised, with no further module\n";
    if (sizing.raises.empty())
        return text + "  None that alone lets the engine place more.\n";
    int width = 0;
    for (const Raise& raise : sizing.raises)
        width = std::max(width, display_width(change_of(raise)));
    for (const Raise& raise : sizing.raises)
        text += fmt::format("  {:>4} more  {}  {}  --set '{}'\n", raise.placed - sizing.now.placed,
                            pad_right(change_of(raise), width), printable(raise.mac), raise.setting);
    text += "  Each value was run, and so was one less, which places fewer.\n";
    return text;
}

} // namespace

std::string sizing_text(const Sizing& sizing) {
    std::string text = sizing.name.empty() ? "" : printable(sizing.name) + "\n\n";
    text += fmt::format("{} loaded: {} placed, {} left out\n\n", services_counted(sizing.now.loaded),
                        sizing.now.placed, sizing.now.left_out);
    text += addition_text(sizing.addition, sizing.most);
    if (!sizing.addition.remaining.empty())
        text += "\n" + services_list("Left out by the best of these", sizing.addition.remaining);
    if (!sizing.addition.impossible.empty())
        text += "\n" + services_with_reasons("Placed by no number of modules", sizing.addition.impossible);
    return text + raises_text(sizing);
}

static void to_json(ordered_json& json, const Attempt& attempt) {
    json = {{"number", attempt.number}, {"placed", attempt.placed}, {"left_out", attempt.left_out}};
}

static void to_json(ordered_json& json, const Module& module) {
    json = {{"model", module.model},
            {"inputs", module.inputs},
            {"outputs", module.outputs},
            {"pids_max", module.pids_max},
            {"sd_transcoders", module.sd_transcoders},
            {"hd_transcoders", module.hd_transcoders},
            {"aux_transcoders", module.aux_transcoders}};
}

static void to_json(ordered_json& json, const Addition& addition) {
    json = {{"module", addition.kind}, {"number", nullptr}, {"at_least", addition.at_least}};
    if (addition.number)
        json["number"] = *addition.number;
    json["tried"] = addition.attempts;
    json["impossible"] = services_with_reasons_json(addition.impossible);
    json["remaining"] = ordered_json::array();
    for (const ServiceResult& service : addition.remaining)
        json["remaining"].push_back(identity_json(service));
}

std::string sizing_json(const Sizing& sizing) {
    ordered_json json;
    if (!sizing.name.empty())
        json["name"] = sizing.name;
    json["loaded"] = sizing.now.loaded;
    json["placed"] = sizing.now.placed;
    json["left_out"] = sizing.now.left_out;
    json["most"] = sizing.most;
    json["add"] = sizing.addition;
    json["raise"] = ordered_json::array();
    for (const Raise& raise : sizing.raises) {
        ordered_json one = {{"limit", names_of(raise.kind).key}, {"mac", raise.mac}};
        if (raise.output != 0)
            one["output"] = raise.output;
        one.update(
            {{"from", raise.from}, {"to", raise.to}, {"placed", raise.placed}, {"set", raise.setting}});
        json["raise"].push_back(one);
    }
    return json.dump(2) + "\n";
}

} // namespace zarven::tool
