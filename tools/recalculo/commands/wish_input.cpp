// What a wish means is told before anything is numbered anew, by the LCNs that stand in the head-end.

#include "commands/wish_input.h"

#include "base/failure.h"
#include "base/streams.h"
#include "commands/standard_input.h"
#include "report/terminal.h"
#include "report/wishing_text.h"
#include "wishes/wished_import.h"

namespace zarven::tool {

namespace {

void tell(const std::vector<std::string>& messages) {
    for (const std::string& message : messages)
        write_message(message);
}

/// Tells what the wishes mean, and gives the services what the lists say of them.
void tell_and_value(const WishInput& input, const std::vector<WishList>& lists, const Wishing& wishing,
                    std::vector<Service>& services) {
    tell(wishing_messages(lists, services, wishing, extent_of(input.verbose)));
    if (wishing.met.empty())
        throw Failure(no_wish_is_met, ExitCode::engine_did_not_run);
    value_wishes(lists, wishing, services);
}

} // namespace

std::vector<WishList> read_wishes(const WishInput& input, bool is_taken) {
    expect_one_standard_input((is_taken ? 1 : 0) + standard_inputs(input.files),
                              is_taken ? "--wish and for something else" : "two --wish");
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
    Wishing wishing = find_wishes(lists, headend.services, headend.streams);
    tell_and_value(input, lists, wishing, headend.services);
    ask_for_met(wishing, headend.services);
    take_wished_lcns(input, lists, wishing, headend);
}

Wishing keep_wishes(const WishInput& input, const std::vector<WishList>& lists, const ServiceFilter& filter,
                    ImportedChannels& imported) {
    Wishing wishing = find_wishes(lists, imported);
    tell_and_value(input, lists, wishing, imported.services);
    keep_wished(wishing, filter, imported);
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
