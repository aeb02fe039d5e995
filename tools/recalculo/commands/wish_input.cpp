// What a wish means is told before anything is numbered anew, by the LCNs that stand in the head-end.

#include "commands/wish_input.h"

#include <algorithm>

#include "base/failure.h"
#include "base/streams.h"
#include "report/terminal.h"
#include "report/wishing_text.h"

namespace zarven::tool {

namespace {

void tell(const std::vector<std::string>& messages) {
    for (const std::string& message : messages)
        write_message(message);
}

Wishing find_told(const WishInput& input, const std::vector<WishList>& lists, std::vector<Service>& services,
                  const std::vector<Reception>& streams) {
    const Wishing wishing = find_wishes(lists, services, streams);
    tell(wishing_messages(lists, services, wishing, extent_of(input.verbose)));
    if (wishing.met.empty())
        throw Failure(no_wish_is_met, ExitCode::engine_did_not_run);
    value_wishes(lists, wishing, services);
    return wishing;
}

} // namespace

std::vector<WishList> read_wishes(const WishInput& input, bool is_taken) {
    const auto from_standard_input = std::count(input.files.begin(), input.files.end(), standard_stream);
    if (from_standard_input + (is_taken ? 1 : 0) > 1 && from_standard_input != 0)
        throw Failure(is_taken
                          ? "standard input: found \"-\" for --wish and for something else, expected it once"
                          : "standard input: found \"-\" for two --wish, expected it once");
    if (input.lcns && input.files.empty())
        throw Failure("--wish-lcns: found no --wish, expected the list with the LCNs");
    std::vector<WishList> lists;
    for (const std::string& path : input.files)
        lists.push_back(read_wish_list(input_name(path), read_text(path)));
    return lists;
}

void ask_for_wishes(const WishInput& input, const std::string& path, Headend& headend) {
    const std::vector<WishList> lists = read_wishes(input, path == standard_stream);
    if (lists.empty())
        return;
    Wishing wishing = find_told(input, lists, headend.services, headend.streams);
    ask_for_met(wishing, headend.services);
    take_wished_lcns(input, lists, wishing, headend);
}

Wishing keep_wishes(const WishInput& input, const std::vector<WishList>& lists, const ServiceFilter& filter,
                    ImportedChannels& imported) {
    std::vector<Reception> streams;
    for (const auto& [stream, reception] : imported.receptions)
        streams.push_back(reception);
    Wishing wishing = find_told(input, lists, imported.services, streams);
    const auto is_unwanted = [&](const MetWish& met) {
        return !filter.wants(imported.services[met.service]);
    };
    wishing.met.erase(std::remove_if(wishing.met.begin(), wishing.met.end(), is_unwanted), wishing.met.end());
    std::vector<std::size_t> order;
    for (MetWish& met : wishing.met) {
        order.push_back(met.service);
        met.service = order.size() - 1;
    }
    keep_services(imported, order);
    return wishing;
}

void take_wished_lcns(const WishInput& input, const std::vector<WishList>& lists, Wishing& wishing,
                      Headend& headend) {
    if (!input.lcns)
        return;
    number_wishes(lists, wishing, headend);
    tell(lcn_messages(lists, headend.services, wishing, extent_of(input.verbose)));
}

} // namespace zarven::tool
