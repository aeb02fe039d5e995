// The streams by how many services of each count: the first of the most, or the first of the fewest, is found
// at once and changed in a few steps. A tree in an array, each node the better of the two below it; up to
// some thousands of streams.

#ifndef RECALCULO_REHEARSAL_STREAM_RANKING_H
#define RECALCULO_REHEARSAL_STREAM_RANKING_H

#include <algorithm>
#include <cstdint>
#include <vector>

#include "placement/rehearsal/rehearsed_headend.h"

namespace zarven::tool {

enum class Preference { most, fewest };

class StreamRanking {
public:
    StreamRanking(Preference preference, std::size_t streams) : preference_(preference) {
        while (leaves_ < streams)
            leaves_ *= 2;
        nodes_.assign(2 * leaves_, 0);
    }

    void set(std::uint32_t stream, std::uint32_t count) {
        std::size_t node = leaves_ + stream;
        nodes_[node] = rank_of(stream, count);
        for (node /= 2; node != 0; node /= 2) {
            const std::uint64_t better = std::max(nodes_[2 * node], nodes_[2 * node + 1]);
            if (nodes_[node] == better)
                break;
            nodes_[node] = better;
        }
    }

    /// All anew; `count` gives that of a stream.
    template <class Count> void assign(std::size_t streams, const Count& count) {
        for (std::uint32_t stream = 0; stream < streams; ++stream)
            nodes_[leaves_ + stream] = rank_of(stream, count(stream));
        for (std::size_t node = leaves_ - 1; node != 0; --node)
            nodes_[node] = std::max(nodes_[2 * node], nodes_[2 * node + 1]);
    }

    /// None if no stream has any.
    std::uint32_t first() const {
        return nodes_[1] == 0 ? no_index : no_index - static_cast<std::uint32_t>(nodes_[1] & 0xFFFFFFFF);
    }

private:
    /// Greater is better, and 0 is none.
    std::uint64_t rank_of(std::uint32_t stream, std::uint32_t count) const {
        if (count == 0)
            return 0;
        const std::uint64_t high = preference_ == Preference::most ? count : ~count;
        return high << 32 | (no_index - stream);
    }

    Preference preference_;
    std::size_t leaves_ = 1;
    std::vector<std::uint64_t> nodes_;
};

} // namespace zarven::tool

#endif
