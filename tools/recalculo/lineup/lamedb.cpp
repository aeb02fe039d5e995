// The two versions hold the same records and write them differently: each has a function that finds the parts
// of a record, and both share those that read the parts. In version 4 a record has several lines; where some
// are lost, reading goes on at the next line that looks like the first one of a service.

#include "lineup/lamedb.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "base/utf8.h"
#include "lineup/lamedb_transponder.h"
#include "lineup/text_lines.h"

namespace zarven::tool {

namespace {

using Fields = std::vector<std::string_view>;

struct StreamKey {
    std::uint32_t name_space = 0;
    std::uint16_t tsid = 0;
    std::uint16_t onid = 0;

    bool operator<(const StreamKey& other) const {
        return std::tie(name_space, tsid, onid) < std::tie(other.name_space, other.tsid, other.onid);
    }
};

/// `namespace:tsid:onid`, from the first of the fields on.
StreamKey read_stream(const Fields& fields, std::size_t first) {
    StreamKey key;
    key.name_space = read_namespace("namespace", fields[first]);
    key.tsid = read_id("TSID", fields[first + 1], 16);
    key.onid = read_id("ONID", fields[first + 2], 16);
    return key;
}

/// What a service type says; nothing for the types that are neither television nor radio, and for those that
/// broadcasters make up.
std::optional<ChannelKind> kind_of(std::uint16_t type) {
    switch (type) {
    case 0x01:
    case 0x04:
    case 0x05:
    case 0x16:
    case 0x17:
    case 0x18:
        return ChannelKind::sd;
    case 0x02:
    case 0x07:
    case 0x0A:
        return ChannelKind::radio;
    case 0x11:
    case 0x19:
    case 0x1A:
    case 0x1B:
    case 0x1C:
    case 0x1D:
    case 0x1E:
        return ChannelKind::hd;
    case 0x1F:
    case 0x20:
        return ChannelKind::uhd;
    default:
        return std::nullopt;
    }
}

/// `c:` two decimal digits that say what, and hexadecimal ones, not always with zeros before them: a PID, or
/// the kind of picture.
void read_cached(std::string_view text, Channel& channel) {
    const std::set<std::uint32_t> sounds = {1, 4, 12, 13, 14, 17, 18};
    const std::uint32_t picture = 0;
    const std::uint32_t picture_kind = 5;
    std::uint32_t what = 0;
    std::uint32_t value = 0;
    if (text.size() < 2 || !is_number(text.substr(0, 2), 99, what))
        reject("c", text, "two decimal digits, then hexadecimal ones");
    if (what != picture && what != picture_kind && sounds.count(what) == 0)
        return;
    if (!is_number(text.substr(2), what == picture_kind ? 0xFFFFFFFF : highest_pid, value, 16))
        reject("c", text,
               fmt::format("two decimal digits, then a hexadecimal PID from 0 to {:X}", highest_pid));
    if (what == picture_kind)
        channel.video_mode = value == 1 ? video_h264 : value == 7 ? video_hevc : std::uint16_t{0};
    else if (what == picture)
        channel.video_pid = static_cast<std::uint16_t>(value);
    else if (value != 0)
        channel.audio_pids.insert(static_cast<std::uint16_t>(value));
}

/// `p:Provider,c:...,C:...,f:...` in any order. A comma in the provider leaves pieces without a letter. A
/// piece that cannot be read costs no more than itself; returns why for each. A CA system that cannot be read
/// is one.
std::vector<std::string> read_details(std::string_view text, Channel& channel) {
    std::vector<std::string> complaints;
    for (const std::string_view piece : split(text, ",")) {
        try {
            if (starts_with(piece, "c:")) {
                read_cached(piece.substr(2), channel);
            } else if (starts_with(piece, "C:")) {
                const bool was_scrambled = std::exchange(channel.scrambled, true);
                channel.scrambled = read_id("C", piece.substr(2), 16) != 0 || was_scrambled;
            }
        } catch (const BadLine& bad) {
            complaints.emplace_back(bad.what());
        }
    }
    return complaints;
}

/// The line that ends a section.
bool is_end(const Line& line) {
    return trimmed(line.text) == "end";
}

/// The fields of the first line of a service: `sid:namespace:tsid:onid:type:number`, perhaps more.
bool is_service_head(std::string_view text) {
    const Fields fields = split(text, ":");
    std::uint32_t number = 0;
    return fields.size() >= 5 &&
           std::all_of(fields.begin(), fields.begin() + 4,
                       [&number](const auto& field) { return is_number(field, 0xFFFFFFFF, number, 16); });
}

/// One reading of a file.
class Lamedb {
public:
    explicit Lamedb(std::string_view text) : lines_(lines_of(text)) {
        const bool is_version_4 = read_header() == 4;
        while (at_ < lines_.size()) {
            if (is_version_4)
                read_version_4();
            else
                read_version_5();
        }
        if (is_version_4 && section_ != Section::after_services)
            list_.unreadable.push_back({last_line(), "the file ends before the \"end\" of its services"});
        list_.numbered_by_place = list_.channels.size();
    }

    ChannelList list() && { return std::move(list_); }

private:
    enum class Section { none, transponders, services, after_services };

    /// The number of the last line that has anything on it; the first one has.
    std::size_t last_line() const {
        const auto last = std::find_if(lines_.rbegin(), lines_.rend(),
                                       [](const Line& line) { return !is_blank(line.text); });
        return last->number;
    }

    int read_header();
    void read_version_4();
    void read_version_5();
    void read_transponder_line();
    void read_three_lines();
    void read_one_line(const Line& line);
    void skip_to_service();
    void add(std::size_t line, const Fields& head, std::string_view name, std::string_view details);

    /// Calls `read`, and notes what it rejects at the line.
    template <class Read> void attempt(std::size_t line, Read read) {
        try {
            read();
        } catch (const BadLine& bad) {
            list_.unreadable.push_back({line, bad.what()});
        }
    }

    std::vector<Line> lines_;
    /// The next line.
    std::size_t at_ = 0;
    Section section_ = Section::none;
    /// The transponder in hand, in version 4.
    std::optional<StreamKey> key_;
    std::map<StreamKey, LamedbTransponder> transponders_;
    std::uint32_t place_ = 0;
    ChannelList list_;
};

int Lamedb::read_header() {
    while (at_ < lines_.size() && is_blank(lines_[at_].text))
        ++at_;
    const std::string_view header = at_ < lines_.size() ? trimmed(lines_[at_].text) : std::string_view();
    ++at_;
    for (const int version : {4, 5})
        if (header == fmt::format("{}{}/", lamedb_header, version))
            return version;
    reject("header", header, fmt::format("\"{0}4/\" or \"{0}5/\"", lamedb_header));
}

void Lamedb::add(std::size_t line, const Fields& head, std::string_view name, std::string_view details) {
    Channel channel;
    channel.line = line;
    channel.number = ++place_; // before anything can be wrong
    channel.sid = read_id("SID", head[0], 16);
    const StreamKey key = read_stream(head, 1);
    channel.tid = key.tsid;
    channel.nid = key.onid;
    const std::uint16_t type = read_id("service type", head[4]);
    channel.name = trimmed(name);
    const std::vector<std::string> complaints = read_details(details, channel);
    channel.kind = kind_of(type);
    if (!channel.kind && channel.video_pid == 0 && channel.audio_pids.empty() && complaints.empty())
        throw BadLine(fmt::format("service type {} is neither television nor radio, and no PID of picture or "
                                  "sound is known",
                                  type));
    const auto transponder = transponders_.find(key);
    if (transponder != transponders_.end()) {
        channel.frequency = transponder->second.frequency;
        channel.polarization = transponder->second.polarization;
        channel.transponder = transponder->second.parameters;
    } else if (key.onid == 0 && key.tsid == 0) {
        throw BadLine(fmt::format("found no transponder {:08x}:0000:0000, expected it: the stream has no ids",
                                  key.name_space));
    }
    channel.source = source_of_namespace(key.name_space);
    for (const std::string& complaint : complaints)
        list_.remarks.push_back({line, complaint});
    list_.channels.push_back(std::move(channel));
}

void Lamedb::read_version_4() {
    const std::string_view content = trimmed(lines_[at_].text);
    if (content == "transponders") {
        section_ = Section::transponders;
    } else if (content == "services") {
        section_ = Section::services;
    } else if (is_end(lines_[at_])) {
        section_ = section_ == Section::services ? Section::after_services : Section::none;
    } else if (section_ != Section::services && section_ != Section::after_services &&
               is_service_head(content)) {
        list_.unreadable.push_back(
            {lines_[at_].number, "found a service, expected \"services\" before the first"});
        section_ = Section::services;
        return; // to the service itself
    } else if (section_ == Section::transponders) {
        attempt(lines_[at_].number, [this] { read_transponder_line(); });
    } else if (section_ == Section::services) {
        return read_three_lines();
    }
    ++at_;
}

/// `namespace:tsid:onid`, then the letter of the delivery system and the parameters, then `/`.
void Lamedb::read_transponder_line() {
    const std::string_view content = trimmed(lines_[at_].text);
    if (content.empty() || content == "/")
        return key_.reset();
    if (key_) {
        const StreamKey key = *key_;
        key_.reset();
        transponders_[key] = read_lamedb_transponder(content.front(), content.substr(1));
        return;
    }
    const Fields fields = split(content, ":");
    if (fields.size() != 3)
        reject("transponder", content, "namespace:TSID:ONID");
    key_ = read_stream(fields, 0);
}

void Lamedb::read_three_lines() {
    const Line& first = lines_[at_];
    if (is_blank(first.text)) {
        ++at_;
        return;
    }
    if (!is_service_head(trimmed(first.text))) {
        ++place_;
        list_.unreadable.push_back({first.number, fmt::format("found \"{}\", expected the first line of a "
                                                              "service, SID:namespace:TSID:ONID:type:number",
                                                              shortened(first.text))});
        return skip_to_service();
    }
    // A line that begins the next service is not taken for a part of this one.
    std::vector<std::string_view> parts;
    std::size_t next = at_ + 1;
    for (; parts.size() < 2 && next < lines_.size(); ++next) {
        if (is_service_head(trimmed(lines_[next].text)) || (parts.size() == 1 && is_end(lines_[next])))
            break;
        parts.push_back(lines_[next].text);
    }
    at_ = next;
    attempt(first.number, [&] {
        if (parts.size() < 2) {
            ++place_;
            throw BadLine(
                "found a service cut short, expected a line with its name and one with its details");
        }
        add(first.number, split(trimmed(first.text), ":"), parts[0], parts[1]);
    });
}

void Lamedb::skip_to_service() {
    do
        ++at_;
    while (at_ < lines_.size() && !is_end(lines_[at_]) && !is_service_head(trimmed(lines_[at_].text)));
}

void Lamedb::read_version_5() {
    const Line& line = lines_[at_++];
    const std::string_view content = trimmed(line.text);
    if (is_blank_or_remark(content))
        return;
    attempt(line.number, [&] {
        if (starts_with(content, "s:"))
            return read_one_line(line);
        if (!starts_with(content, "t:"))
            throw BadLine(fmt::format("found \"{}\", expected a line that begins with t:, s: or #",
                                      shortened(content)));
        const Fields halves = split(content.substr(2), ",");
        const Fields fields = split(halves[0], ":");
        if (fields.size() != 3 || halves.size() < 2 || halves[1].size() < 2 || halves[1][1] != ':')
            reject("transponder", content, "t:namespace:TSID:ONID,s:frequency:...");
        transponders_[read_stream(fields, 0)] =
            read_lamedb_transponder(halves[1].front(), halves[1].substr(2));
    });
}

/// `s:sid:...,"Name",p:...`. Quotes in the name are not marked: it ends at the first one that a detail or
/// nothing follows.
void Lamedb::read_one_line(const Line& line) {
    const std::string_view content = trimmed(line.text).substr(2);
    const std::string_view opening = ",\"";
    const std::size_t opened = content.find(opening);
    const Fields head = split(content.substr(0, opened), ":");
    const auto is_closing = [content](std::size_t quote) {
        const std::string_view rest = content.substr(quote + 1);
        return rest.empty() || (rest.size() > 2 && rest[0] == ',' && rest[2] == ':');
    };
    std::size_t closed = opened;
    if (opened != content.npos)
        do
            closed = content.find('"', std::max(closed + 1, opened + opening.size()));
        while (closed != content.npos && !is_closing(closed));
    if (head.size() < 5 || closed == content.npos) {
        ++place_;
        reject("service", line.text, "s:SID:namespace:TSID:ONID:type:number,\"Name\",...");
    }
    const std::size_t begin = opened + opening.size();
    add(line.number, head, content.substr(begin, closed - begin), content.substr(closed + 1));
}

} // namespace

ChannelList read_lamedb(std::string_view text) {
    return Lamedb(text).list();
}

std::uint32_t read_namespace(std::string_view field, std::string_view text) {
    std::uint32_t name_space = 0;
    if (!is_number(text, 0xFFFFFFFF, name_space, 16))
        reject(field, text, "a hexadecimal number from 0 to FFFFFFFF");
    return name_space;
}

std::string source_of_namespace(std::uint32_t name_space) {
    const std::uint32_t place = name_space >> 16;
    if (place == 0xEEEE)
        return "T";
    if (place == 0xFFFF)
        return "C";
    if (place >= 3600)
        return fmt::format("{:08x}", name_space);
    const bool is_east = place <= 1800;
    const std::uint32_t tenths = is_east ? place : 3600 - place;
    return fmt::format("S{}.{}{}", tenths / 10, tenths % 10, is_east ? 'E' : 'W');
}

} // namespace zarven::tool
