// The readers of the tool, each with any text: the first byte names the reader. What cannot be read is a
// `Failure`; a head-end, a result or a channels.conf that was read and written is read again as the same.

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"
#include "fuzz/Exigir.h"
#include "headend/headend_json.h"
#include "headend/override.h"
#include "lineup/channel_import.h"
#include "lineup/channels_conf.h"
#include "lineup/lineup.h"
#include "placement/result_json.h"
#include "report/wishing_text.h"
#include "wishes/wishing.h"

using namespace zarven::tool;
using fuzz::exigir;

namespace {

void read_as_headend(const std::string& text) {
    const std::string written = write_headend(read_headend("fuzz", text));
    exigir(write_headend(read_headend("fuzz", written)) == written,
           "a head-end that was written reads as it was");
}

void read_as_result(const std::string& text) {
    const std::string written = result_json(read_result("fuzz", text));
    exigir(result_json(read_result("fuzz", written)) == written, "a result that was written reads as it was");
}

// No heading can name a higher number.
constexpr std::uint32_t highest_heading = 1'000'000'000;

void read_as_channels(const std::string& text, std::optional<LineupFormat> format) {
    const Lineup lineup = read_lineup("fuzz", text, format);
    import_channels(lineup.list, {});
    std::vector<Channel> channels = lineup.list.channels;
    for (Channel& channel : channels)
        channel.name = channels_conf_name(channel.name);
    const bool can_be_told = std::all_of(channels.begin(), channels.end(), [](const Channel& channel) {
        return channel.number <= highest_heading;
    });
    if (format != LineupFormat::channels_conf || !can_be_told)
        return;
    const std::string written = write_channels_conf(channels);
    exigir(write_channels_conf(read_channels_conf(written).channels) == written,
           "a channels.conf that was written reads as it was");
}

// The settings stand before the head-end, one on each line, up to an empty one.
void read_with_settings(const std::string& text) {
    std::vector<std::string> settings;
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find('\n', begin)) != std::string::npos && end != begin;
         begin = end + 1)
        settings.push_back(text.substr(begin, end - begin));
    read_headend("fuzz", text.substr(begin), settings);
}

// Of a few services, among them one that some wish of any list may mean.
void read_as_wishes(const std::string& text) {
    const std::vector<WishList> lists = {read_wish_list("fuzz", text)};
    Headend headend;
    headend.services.resize(3);
    for (std::size_t index = 0; index < headend.services.size(); ++index)
        headend.services[index].lcn = static_cast<std::uint16_t>(index + 1);
    headend.services[0].name = headend.services[0].output_name = lists.front().wishes.front().name;
    Wishing wishing = find_wishes(lists, headend.services, {});
    exigir(wishing.met.size() + wishing.repeated.size() + wishing.missing.size() ==
               lists.front().wishes.size(),
           "each wish is met, repeated or missing");
    value_wishes(lists, wishing, headend.services);
    number_wishes(lists, wishing, headend);
    wishing_messages(lists, headend.services, wishing, MessageDigest::Extent::all);
    lcn_messages(lists, headend.services, wishing, MessageDigest::Extent::all);
}

void read(unsigned reader, const std::string& text) {
    switch (reader) {
    case '0':
        return read_as_headend(text);
    case '1':
        return read_as_result(text);
    case '2':
        return read_as_channels(text, LineupFormat::channels_conf);
    case '3':
        return read_as_channels(text, LineupFormat::dvbv5);
    case '4':
        return read_as_channels(text, LineupFormat::lamedb);
    case '5':
        return read_with_settings(text);
    case '6':
        read_module("fuzz", text);
        return;
    case 'w':
        return read_as_wishes(text);
    default:
        return read_as_channels(text, std::nullopt);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    try {
        read(data[0], std::string(reinterpret_cast<const char*>(data) + 1, size - 1));
    } catch (const Failure& failure) {
        exigir(!std::string_view(failure.what()).empty(), "a failure tells what it is");
    }
    return 0;
}
