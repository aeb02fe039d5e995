// Which parts of a head-end are asked for, kept so that a fill can begin with a copy of flat arrays. Changed
// by one part at a time, at the cost of its stream.

#ifndef RECALCULO_REHEARSAL_ASKED_PARTS_H
#define RECALCULO_REHEARSAL_ASKED_PARTS_H

#include <array>
#include <cstdint>
#include <vector>

#include "Reglas.h"
#include "placement/rehearsal/rehearsed_headend.h"

namespace zarven::tool {

class AskedParts {
public:
    /// At first all are asked for. The head-end must outlive this.
    explicit AskedParts(const RehearsedHeadend& headend);

    bool is_asked(PartIndex part) const { return asked_[part] != 0; }
    void ask(PartIndex part, bool asked);
    /// As many as the headend has parts.
    void assign(const std::vector<std::uint8_t>& asked);

    const std::vector<std::uint8_t>& flags() const { return asked_; }
    std::uint32_t count() const { return count_; }
    std::uint32_t count_of(std::uint32_t stream) const { return counts_[stream]; }

    /// Those asked for of each stream, ascending, from the place of its first part on; what stands behind
    /// them means nothing.
    const std::vector<PartIndex>& lists() const { return lists_; }
    const std::vector<std::uint32_t>& counts() const { return counts_; }

    /// How many of a stream count when a stream is chosen.
    std::uint32_t counting(std::uint32_t stream, const reglas::Criterio& criterion) const {
        return counting_[stream][place_of(criterion)];
    }

    /// Parts asked for whose key is positive, and that are of the kind with transcoding.
    std::uint32_t with_positive_key() const { return with_positive_key_; }
    std::uint32_t with_transcoding() const { return with_transcoding_; }

private:
    /// Every criterion of a fill without transcoding.
    static constexpr std::size_t criteria = 4;
    static constexpr std::size_t place_of(const reglas::Criterio& criterion) {
        return (criterion.soloClavesPositivas ? 2U : 0U) + (criterion.soloDeSuClase ? 1U : 0U);
    }

    void list(std::uint32_t stream);
    void note(PartIndex part, std::uint32_t one);
    void count(PartIndex part, std::uint32_t one);

    const RehearsedHeadend* headend_;
    std::vector<std::uint8_t> asked_;
    std::vector<PartIndex> lists_;
    std::vector<std::uint32_t> counts_;
    /// Of each part whether it counts, and of each stream how many do, by each criterion.
    std::vector<std::array<std::uint8_t, criteria>> counts_by_;
    std::vector<std::array<std::uint32_t, criteria>> counting_;
    std::uint32_t count_ = 0;
    std::uint32_t with_positive_key_ = 0;
    std::uint32_t with_transcoding_ = 0;
};

} // namespace zarven::tool

#endif
