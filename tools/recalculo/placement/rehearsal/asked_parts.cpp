#include "placement/rehearsal/asked_parts.h"

#include "Reglas.h"

namespace zarven::tool {

AskedParts::AskedParts(const RehearsedHeadend& headend)
    : headend_(&headend), asked_(headend.parts.size()), lists_(headend.parts.size()),
      counts_(headend.streams.size()), counts_by_(headend.parts.size()), counting_(headend.streams.size()) {
    for (PartIndex part = 0; part < asked_.size(); ++part)
        for (const bool positive_only : {false, true})
            for (const bool of_kind_only : {false, true}) {
                const reglas::Criterio criterion{positive_only, of_kind_only, false};
                counts_by_[part][place_of(criterion)] = reglas::cuentaParaElegir(
                    headend.parts[part].key, headend.parts[part].transcoding, criterion);
            }
    assign(std::vector<std::uint8_t>(headend.parts.size(), 1));
}

void AskedParts::assign(const std::vector<std::uint8_t>& asked) {
    for (PartIndex part = 0; part < asked_.size(); ++part)
        if (asked_[part] != asked[part]) {
            asked_[part] = asked[part];
            note(part, asked[part] != 0 ? 1 : ~0U);
        }
    for (std::uint32_t stream = 0; stream < counts_.size(); ++stream) {
        list(stream);
        const RehearsedStream& range = headend_->streams[stream];
        counting_[stream] = {};
        for (PartIndex part = range.first; part < range.last; ++part)
            if (asked_[part] != 0)
                count(part, 1);
    }
}

void AskedParts::ask(PartIndex part, bool asked) {
    if (is_asked(part) == asked)
        return;
    asked_[part] = asked ? 1 : 0;
    note(part, asked ? 1 : ~0U);
    count(part, asked ? 1 : ~0U);
    list(headend_->parts[part].stream);
}

void AskedParts::count(PartIndex part, std::uint32_t one) {
    for (std::size_t criterion = 0; criterion < criteria; ++criterion)
        counting_[headend_->parts[part].stream][criterion] += counts_by_[part][criterion] != 0 ? one : 0;
}

/// `one` is added, and may be the one that takes away.
void AskedParts::note(PartIndex part, std::uint32_t one) {
    count_ += one;
    if (reglas::esClavePositiva(headend_->parts[part].key))
        with_positive_key_ += one;
    if (reglas::necesitaTranscoding(headend_->parts[part].transcoding))
        with_transcoding_ += one;
}

void AskedParts::list(std::uint32_t stream) {
    const RehearsedStream& range = headend_->streams[stream];
    PartIndex end = range.first;
    for (PartIndex part = range.first; part < range.last; ++part) {
        lists_[end] = part;
        end += asked_[part];
    }
    counts_[stream] = end - range.first;
}

} // namespace zarven::tool
