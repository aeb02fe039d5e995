// Names are searched as bytes: a byte of a letter beyond ASCII counts as a letter, so that it ends no word.

#include "lineup/channel_kind.h"

#include <algorithm>

namespace zarven::tool {

namespace {

bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

bool is_letter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
           static_cast<unsigned char>(character) >= 0x80;
}

char upper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

bool equal_but_for_case(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char left, char right) { return upper(left) == upper(right); });
}

/// The word, given in capitals, stands in the name: by itself, or as it is at the end of other letters if
/// that is allowed. Digits may stand around a word of letters ("HD1"), but not before one that begins with a
/// digit.
bool has_word(std::string_view name, std::string_view word, bool may_end_others) {
    for (std::size_t at = 0; at + word.size() <= name.size(); ++at) {
        const std::string_view here = name.substr(at, word.size());
        if (!equal_but_for_case(here, word))
            continue;
        if (at + word.size() < name.size() && is_letter(name[at + word.size()]))
            continue;
        if (at == 0)
            return true;
        const char before = name[at - 1];
        const bool stands_alone = !is_letter(before) && (!is_digit(before) || !is_digit(word.front()));
        if (stands_alone || (may_end_others && is_letter(before) && here == word))
            return true;
    }
    return false;
}

} // namespace

std::optional<ChannelKind> kind_by_name(std::string_view name) {
    if (has_word(name, "UHD", true) || has_word(name, "4K", false))
        return ChannelKind::uhd;
    if (has_word(name, "HD", true))
        return ChannelKind::hd;
    if (has_word(name, "RADIO", false))
        return ChannelKind::radio;
    return std::nullopt;
}

KindFinding find_kind(const Channel& channel) {
    const std::optional<ChannelKind> named = kind_by_name(channel.name);
    const auto hd_or_more = named == ChannelKind::uhd ? ChannelKind::uhd : ChannelKind::hd;
    if (channel.kind && *channel.kind != ChannelKind::radio && channel.video_mode == video_hevc)
        return {ChannelKind::uhd, false, false};
    if (channel.kind)
        return {*channel.kind == ChannelKind::hd ? hd_or_more : *channel.kind, false, false};
    if (channel.video_pid == 0 && channel.audio_pids.empty())
        return {named.value_or(ChannelKind::sd), true, false};
    if (channel.video_pid == 0)
        return {ChannelKind::radio, false, false};
    if (channel.video_mode == video_hevc)
        return {ChannelKind::uhd, false, false};
    if (channel.video_mode == video_h264)
        return {hd_or_more, false, false};
    if (channel.video_mode == 0 && named && *named != ChannelKind::radio)
        return {*named, false, true};
    return {ChannelKind::sd, false, false};
}

} // namespace zarven::tool
