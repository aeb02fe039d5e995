// How a reader tells the streams of a page apart at a glance: by a short code of letters, and by a colour and
// a pattern, which come again after some tens of streams while the code never does.

#ifndef RECALCULO_STREAM_MARKS_H
#define RECALCULO_STREAM_MARKS_H

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "placement/result.h"

namespace zarven::tool {

/// What page.css has classes for: c0 to c7, and p1 to p5 besides the plain one.
inline constexpr std::size_t stream_colours = 8;
inline constexpr std::size_t stream_patterns = 6;

struct StreamMark {
    Stream stream;
    /// A to Z, AA, AB, ...
    std::string code;
    std::size_t colour = 0;
    /// 0 is plain.
    std::size_t pattern = 0;
};

/// The mark of the stream that comes at this place, from 0.
StreamMark stream_mark(Stream stream, std::size_t place);

/// Every stream that a result names anywhere. Those on inputs or outputs come first, so that what is seen
/// side by side looks as different as can be; among them, and among the others, in ascending order.
class StreamMarks {
public:
    explicit StreamMarks(const Result& result);

    const StreamMark& of(Stream stream) const { return marks_[place_of_.at(stream)]; }
    const std::vector<StreamMark>& in_order() const { return marks_; }
    /// How many of them are on inputs or outputs.
    std::size_t received() const { return received_; }

private:
    void append(const std::set<Stream>& streams);

    std::vector<StreamMark> marks_;
    std::map<Stream, std::size_t> place_of_;
    std::size_t received_ = 0;
};

} // namespace zarven::tool

#endif
