// The lines of a channel are read one by one into the channel in hand; the next heading or the end of the
// file completes it. Channels without a number of their own are numbered at the end, when all others are
// known.

#include "lineup/dvbv5.h"

#include <algorithm>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "base/utf8.h"
#include "lineup/text_lines.h"

namespace zarven::tool {

namespace {

std::uint16_t read_pid(std::string_view key, std::string_view text) {
    std::uint32_t pid = 0;
    if (!is_number(text, highest_pid, pid))
        reject(key, text, fmt::format("PIDs from 0 to {} with blanks between them", highest_pid));
    return static_cast<std::uint16_t>(pid);
}

/// All PIDs of a value; 0 is none.
std::vector<std::uint16_t> read_pids(std::string_view key, std::string_view value) {
    std::vector<std::uint16_t> pids;
    for (const std::string_view word : split(value, " \t")) {
        const std::uint16_t pid = word.empty() ? std::uint16_t{0} : read_pid(key, word);
        if (pid != 0)
            pids.push_back(pid);
    }
    return pids;
}

void take_picture(const std::vector<std::uint16_t>& pids, std::uint16_t mode, Channel& channel) {
    if (pids.empty())
        return;
    if (channel.video_pid == 0)
        channel.video_pid = pids.front();
    channel.video_mode = std::max(channel.video_mode, mode);
}

/// `PID_xx`, for the streams that have no key of their own: xx is their kind, hexadecimal.
void read_other_pids(std::string_view key, std::string_view value, Channel& channel) {
    const std::set<std::uint32_t> pictures = {1, video_mpeg2, 16, video_h264, video_hevc};
    const std::set<std::uint32_t> sounds = {3, 4, 15, 17, 0x81, 0x87};
    std::uint32_t kind = 0;
    if (!is_number(key.substr(4), 255, kind, 16))
        return;
    if (pictures.count(kind) != 0)
        take_picture(read_pids(key, value), static_cast<std::uint16_t>(kind), channel);
    if (sounds.count(kind) == 0)
        return;
    for (const std::uint16_t pid : read_pids(key, value))
        channel.audio_pids.insert(pid);
}

std::string upper_case(std::string_view text) {
    std::string upper(text);
    for (char& letter : upper)
        if (letter >= 'a' && letter <= 'z')
            letter = static_cast<char>(letter - 'a' + 'A');
    return upper;
}

/// `3/4`; 0/0 for what is none.
CodeRate read_code_rate(std::string_view text) {
    const std::vector<std::string_view> parts = split(text, "/");
    return parts.size() == 2 ? CodeRate{number_or_0(parts[0]), number_or_0(parts[1])} : CodeRate{};
}

/// `QPSK`, `PSK/8`, `APSK/16`, `QAM/64`.
std::uint32_t read_modulation(std::string_view text) {
    return text == "QPSK"
               ? 2
               : bits_of_points(number_or_0(text.substr(std::min(text.find('/'), text.size() - 1) + 1)));
}

Delivery read_delivery(std::string_view text) {
    if (text == "DVBS")
        return Delivery::dvb_s;
    if (text == "DVBS2")
        return Delivery::dvb_s2;
    if (text == "DVBC" || text == "DVBC/ANNEX_A")
        return Delivery::dvb_c;
    return text == "DVBT" ? Delivery::dvb_t : Delivery::unknown;
}

/// What a key tells of the transponder; the value in capitals. A fault in it costs no channel.
void read_transponder(const std::string& key, std::string_view value, Transponder& transponder) {
    if (key == "DELIVERY_SYSTEM")
        transponder.delivery = read_delivery(value);
    else if (key == "SYMBOL_RATE")
        transponder.symbol_rate = in_symbols(number_or_0(value));
    else if (key == "MODULATION")
        transponder.bits_per_symbol = read_modulation(value);
    else if (key == "INNER_FEC" || key == "CODE_RATE_HP")
        transponder.fec = read_code_rate(value);
    else if (key == "PILOT")
        transponder.has_pilots = value != "OFF";
    else if (key == "BANDWIDTH_HZ")
        transponder.bandwidth = number_or_0(value);
    else if (key == "GUARD_INTERVAL")
        transponder.guard_interval = read_code_rate(value).denominator;
}

/// One reading of a file.
class Dvbv5 {
public:
    explicit Dvbv5(std::string_view text) {
        for (const Line& line : lines_of(text)) {
            const std::string_view content = trimmed(line.text);
            if (is_blank_or_remark(content))
                continue;
            try {
                take(line.number, content);
            } catch (const BadLine& bad) {
                list_.unreadable.push_back({line.number, bad.what()});
                is_good_ = false;
            }
        }
        complete();
        number();
    }

    ChannelList list() && { return std::move(list_); }

private:
    void take(std::size_t line, std::string_view content) {
        if (content.front() == '[')
            return begin(line, content);
        if (place_ == 0)
            throw BadLine(
                fmt::format("found \"{}\", expected [Name], which begins a channel", shortened(content)));
        if (!is_good_)
            return; // told already
        const std::size_t equals = content.find('=');
        if (equals == content.npos)
            throw BadLine(fmt::format("found \"{}\", expected KEY = VALUE", shortened(content)));
        read(upper_case(trimmed(content.substr(0, equals))), trimmed(content.substr(equals + 1)));
    }

    void begin(std::size_t line, std::string_view heading) {
        complete();
        ++place_;
        channel_ = Channel();
        channel_.line = line;
        has_sid_ = false;
        is_good_ = true;
        satellite_.clear();
        is_hierarchical_ = false;
        if (heading.back() != ']')
            reject("heading", heading, "[Name]");
        channel_.name = trimmed(heading.substr(1, heading.size() - 2));
    }

    void read(const std::string& key, std::string_view value) {
        if (key == "SERVICE_ID") {
            if (has_sid_)
                throw BadLine("found SERVICE_ID a second time, expected the next [Name] before it");
            channel_.sid = read_id(key, value);
            has_sid_ = true;
        } else if (key == "NETWORK_ID") {
            channel_.nid = read_id(key, value);
        } else if (key == "TRANSPORT_ID") {
            channel_.tid = read_id(key, value);
        } else if (key == "VIDEO_PID") {
            take_picture(read_pids(key, value), 0, channel_);
        } else if (key == "AUDIO_PID") {
            for (const std::uint16_t pid : read_pids(key, value))
                channel_.audio_pids.insert(pid);
        } else if (starts_with(key, "PID_")) {
            read_other_pids(key, value, channel_);
        } else {
            read_reception(key, value);
        }
    }

    void read_reception(const std::string& key, std::string_view value) {
        read_transponder(key, upper_case(value), channel_.transponder);
        if (key == "FREQUENCY")
            channel_.frequency = read_frequency(key, value);
        else if (key == "POLARIZATION")
            channel_.polarization = polarization_of(value);
        else if (key == "DELIVERY_SYSTEM")
            channel_.source = source_of(upper_case(value));
        else if (key == "SAT_NUMBER")
            satellite_ = value;
        else if (key == "HIERARCHY")
            is_hierarchical_ = number_or_0(value) != 0;
        else if (key == "VCHANNEL" && !is_number(value, 1'000'000'000, channel_.number))
            channel_.number = 0; // such as 7.1: no logical channel number
    }

    /// Systems of one kind are received from one place: S, T or C.
    static std::string source_of(const std::string& system) {
        const std::string_view kind = std::string_view(system).substr(0, 4);
        const bool is_known = kind == "DVBS" || kind == "DVBT" || kind == "DVBC";
        return is_known ? std::string(kind.substr(3)) : system;
    }

    static char polarization_of(std::string_view value) {
        const char letter = value.empty() ? '\0' : upper_case(value.substr(0, 1)).front();
        return std::string_view("HVLR").find(letter) == std::string_view::npos ? '\0' : letter;
    }

    /// Puts the channel in hand into the list.
    void complete() {
        if (place_ == 0 || !is_good_)
            return;
        if (!has_sid_)
            return leave_aside("found no SERVICE_ID, expected one: without it this is no channel");
        if (channel_.nid == 0 && channel_.tid == 0 && channel_.frequency == 0)
            return leave_aside("found no NETWORK_ID, TRANSPORT_ID or FREQUENCY, expected one of them: they "
                               "tell in which stream the channel is");
        if (channel_.transponder.delivery == Delivery::dvb_s && channel_.transponder.bits_per_symbol == 0)
            channel_.transponder.bits_per_symbol = 2; // the only one of that system
        if (is_hierarchical_)
            channel_.transponder.delivery = Delivery::unknown;
        if (!satellite_.empty() && channel_.source == "S")
            channel_.source += fmt::format("#{}", satellite_);
        if (channel_.number == 0)
            unnumbered_.emplace_back(list_.channels.size(), place_);
        else
            numbers_.insert(channel_.number);
        list_.channels.push_back(channel_);
    }

    void leave_aside(const std::string& reason) { list_.unreadable.push_back({channel_.line, reason}); }

    /// Gives each channel without VCHANNEL its place in the file, or the next number that is free.
    void number() {
        list_.numbered_by_place = unnumbered_.size();
        std::uint32_t least = 0;
        for (const auto& [index, place] : unnumbered_) {
            least = std::max(least + 1, place);
            while (numbers_.count(least) != 0)
                ++least;
            list_.channels[index].number = least;
        }
    }

    ChannelList list_;
    Channel channel_;
    /// Of the channel in hand, from 1; 0 before the first.
    std::uint32_t place_ = 0;
    bool has_sid_ = false;
    /// SAT_NUMBER of the channel in hand.
    std::string satellite_;
    /// Its HIERARCHY is other than none.
    bool is_hierarchical_ = false;
    /// Nothing in the channel in hand has been complained of.
    bool is_good_ = false;
    /// The numbers that channels have of their own.
    std::set<std::uint32_t> numbers_;
    /// The others: index in the list, and place in the file.
    std::vector<std::pair<std::size_t, std::uint32_t>> unnumbered_;
};

} // namespace

ChannelList read_dvbv5(std::string_view text) {
    return Dvbv5(text).list();
}

} // namespace zarven::tool
