// A line is split at its colons, then each field that is of use is read by a function of its own. The fields
// TPID and RID are not looked at, and what Parameters and Srate tell is taken as far as it can be read: a
// fault in them costs no channel.

#include "lineup/channels_conf.h"

#include <algorithm>
#include <map>
#include <set>

#include <fmt/format.h>

#include "base/counted.h"
#include "base/utf8.h"
#include "lineup/text_lines.h"

namespace zarven::tool {

namespace {

constexpr std::size_t field_count = 13;
constexpr std::uint16_t highest_id = 65535;

/// `long,short;provider`. A long name may have commas; a colon in it is written as a bar.
std::string read_name(std::string_view text) {
    const std::string_view both = text.substr(0, text.find(';'));
    std::string name(both.substr(0, both.rfind(',')));
    std::replace(name.begin(), name.end(), '|', ':');
    return name;
}

std::string read_source(std::string_view text) {
    if (text.empty())
        reject("Source", text, "a source such as S19.2E, T or C");
    return std::string(text);
}

/// Satellites send two streams at one frequency. Other sources use the same letters for other things.
char read_polarization(std::string_view parameters, std::string_view source) {
    if (source.front() != 'S')
        return 0;
    const std::size_t letter = parameters.find_first_of("HVLRhvlr");
    return letter == parameters.npos ? '\0' : static_cast<char>(parameters[letter] & ~0x20);
}

/// Letters with numbers behind them. One that is missing, and 999, which stands for "automatic", are 0.
class Parameters {
public:
    explicit Parameters(std::string_view text) {
        for (std::size_t at = 0; at < text.size();) {
            const char letter = static_cast<char>(text[at] & ~0x20);
            const std::size_t end = std::min(text.find_first_not_of("0123456789", at + 1), text.size());
            values_[letter] = number_or_0(text.substr(at + 1, end - at - 1));
            told_.insert(text.substr(at + 1, end - at - 1).empty() ? '\0' : letter);
            at = end;
        }
    }

    std::uint32_t operator[](char letter) const {
        const auto found = values_.find(letter);
        return found == values_.end() || found->second == automatic ? 0 : found->second;
    }

    /// It is there, and says 0.
    bool says_0(char letter) const { return told_.count(letter) != 0 && values_.at(letter) == 0; }

private:
    static constexpr std::uint32_t automatic = 999;

    std::map<char, std::uint32_t> values_;
    std::set<char> told_;
};

/// 34 is 3/4, 910 is 9/10.
CodeRate code_rate_of(std::uint32_t digits) {
    if (digits == 910)
        return {9, 10};
    return digits < 100 ? CodeRate{digits / 10, digits % 10} : CodeRate{};
}

std::uint32_t bits_of_satellite(std::uint32_t modulation) {
    switch (modulation) {
    case 2: // QPSK
        return 2;
    case 5: // 8PSK
        return 3;
    case 6: // 16APSK
        return 4;
    case 7: // 32APSK
        return 5;
    default:
        return 0;
    }
}

/// Of the second systems that of a satellite alone has a net rate.
Transponder read_transponder(std::string_view text, char source, std::string_view symbol_rate) {
    const Parameters parameters(text);
    const std::uint32_t modulation = parameters['M'];
    const bool is_second = parameters['S'] != 0;
    Transponder transponder;
    transponder.symbol_rate = in_symbols(number_or_0(symbol_rate));
    transponder.fec = code_rate_of(parameters['C']);
    if (source == 'S') {
        transponder.delivery = is_second ? Delivery::dvb_s2 : Delivery::dvb_s;
        transponder.bits_per_symbol = modulation == 0 && !is_second ? 2 : bits_of_satellite(modulation);
        transponder.has_pilots = !parameters.says_0('P');
    } else if (source == 'C' && !is_second) {
        transponder.delivery = Delivery::dvb_c;
        transponder.bits_per_symbol = bits_of_points(modulation);
    } else if (source == 'T' && !is_second && parameters['Y'] == 0) {
        transponder.delivery = Delivery::dvb_t;
        transponder.bits_per_symbol = modulation == 2 ? 2 : bits_of_points(modulation);
        transponder.bandwidth = parameters['B'] > 8 ? 0 : parameters['B'] * 1'000'000;
        transponder.guard_interval = parameters['G'];
    }
    return transponder;
}

/// `pid`, `pid+pcr`, `pid=mode` or `pid+pcr=mode`.
void read_video(std::string_view text, Channel& channel) {
    const std::size_t equals = text.find('=');
    const std::string_view pids = text.substr(0, equals);
    const std::size_t plus = pids.find('+');
    std::uint32_t pid = 0;
    std::uint32_t pcr = 0;
    std::uint32_t mode = 0;
    const bool is_read = is_number(pids.substr(0, plus), highest_pid, pid) &&
                         (plus == pids.npos || is_number(pids.substr(plus + 1), highest_pid, pcr)) &&
                         (equals == text.npos || is_number(text.substr(equals + 1), highest_id, mode));
    if (!is_read)
        reject("VPID", text,
               fmt::format("PID, PID+PCR or either with =mode, each PID from 0 to {}", highest_pid));
    channel.video_pid = static_cast<std::uint16_t>(pid);
    channel.video_mode = static_cast<std::uint16_t>(mode);
}

/// PIDs with commas between them, after `;` the Dolby ones, each `pid`, `pid=lang` or `pid=lang@type`; 0 is
/// none.
std::set<std::uint16_t> read_audio(std::string_view text) {
    std::set<std::uint16_t> pids;
    for (const std::string_view entry : split(text, ",;")) {
        std::uint32_t pid = 0;
        if (!is_number(entry.substr(0, entry.find_first_of("=@")), highest_pid, pid))
            reject("APID", text,
                   fmt::format("a list of PID[=language[@type]], each PID from 0 to {}", highest_pid));
        if (pid != 0)
            pids.insert(static_cast<std::uint16_t>(pid));
    }
    return pids;
}

/// 0 is free to air; anything else, a system or the number of the device that descrambles, is not.
bool read_scrambled(std::string_view text) {
    bool is_scrambled = false;
    for (const std::string_view entry : split(text, ",")) {
        std::uint32_t system = 0;
        if (!is_number(entry, highest_id, system, 16))
            reject("CAID", text, "a list of hexadecimal numbers from 0 to FFFF");
        is_scrambled = is_scrambled || system != 0;
    }
    return is_scrambled;
}

Channel read_channel(std::string_view line) {
    const std::vector<std::string_view> fields = split(line, ":");
    if (fields.size() != field_count)
        throw BadLine(fmt::format("found {}, expected {} with colons between them",
                                  counted(fields.size(), "field"), field_count));
    Channel channel;
    channel.name = read_name(fields[0]);
    channel.frequency = read_frequency("Frequency", fields[1]);
    channel.source = read_source(fields[3]);
    channel.polarization = read_polarization(fields[2], channel.source);
    channel.transponder = read_transponder(fields[2], channel.source.front(), fields[4]);
    read_video(fields[5], channel);
    channel.audio_pids = read_audio(fields[6]);
    channel.scrambled = read_scrambled(fields[8]);
    channel.sid = read_id("SID", fields[9]);
    channel.nid = read_id("NID", fields[10]);
    channel.tid = read_id("TID", fields[11]);
    return channel;
}

/// The name field: a comma at its end keeps those before it in the name.
std::string name_field(std::string name) {
    std::replace(name.begin(), name.end(), ':', '|');
    return name.find(',') == name.npos ? name : name + ',';
}

std::string video_field(const Channel& channel) {
    return channel.video_mode == 0 ? fmt::format("{}", channel.video_pid)
                                   : fmt::format("{}={}", channel.video_pid, channel.video_mode);
}

std::string audio_field(const Channel& channel) {
    return channel.audio_pids.empty() ? "0" : fmt::format("{}", fmt::join(channel.audio_pids, ","));
}

/// A line that begins with a colon, unless it is a channel that has lost its name.
bool is_heading(std::string_view line) {
    return line.front() == ':' && split(line, ":").size() != field_count;
}

/// `:Title`, `:@N` or `:@N Title`; the last two set the number of the next channel.
void read_heading(std::string_view line, std::uint32_t& next_number) {
    const std::string_view heading = line.substr(1);
    if (heading.empty() || heading.front() != '@')
        return;
    const std::string_view digits = heading.substr(1, heading.find_first_of(" \t") - 1);
    std::uint32_t number = 0;
    // Room above, so that counting on from here cannot overflow.
    const std::uint32_t most = 1'000'000'000;
    if (!is_number(digits, most, number) || number == 0)
        reject("heading", line, fmt::format("\":@N\" or \":@N Title\", N a whole number from 1 to {}", most));
    next_number = number;
}

} // namespace

bool is_channels_conf_line(std::string_view line) {
    return line.front() == ':' || split(line, ":").size() == field_count;
}

ChannelList read_channels_conf(std::string_view text) {
    ChannelList list;
    std::uint32_t next_number = 1;
    for (const Line& line : lines_of(text)) {
        if (is_blank(line.text))
            continue;
        try {
            if (is_heading(line.text)) {
                read_heading(line.text, next_number);
                continue;
            }
            const std::uint32_t number = next_number++;
            Channel channel = read_channel(line.text);
            channel.line = line.number;
            channel.number = number;
            list.channels.push_back(std::move(channel));
        } catch (const BadLine& bad) {
            list.unreadable.push_back({line.number, bad.what()});
        }
    }
    return list;
}

std::string channels_conf_name(std::string_view name) {
    std::string held(name);
    for (char& character : held) {
        if (character == '|')
            character = ':'; // what a reader makes of it
        else if (character == ';')
            character = ',';
        else if (character == '\n' || character == '\r')
            character = ' ';
    }
    return printable(held);
}

std::string write_channels_conf(const std::vector<Channel>& channels) {
    std::string text;
    std::uint32_t next_number = 0; // so that a heading comes first
    for (const Channel& channel : channels) {
        if (channel.number != next_number)
            text += fmt::format(":@{}\n", channel.number);
        next_number = channel.number + 1;
        text += fmt::format("{}:{}:M999:{}:6900:{}:{}:0:{}:{}:{}:{}:0\n", name_field(channel.name),
                            channel.frequency, channel.source, video_field(channel), audio_field(channel),
                            channel.scrambled ? "FFFF" : "0", channel.sid, channel.nid, channel.tid);
    }
    return text;
}

} // namespace zarven::tool
