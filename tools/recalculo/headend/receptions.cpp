#include "headend/receptions.h"

namespace zarven::tool {

Receptions by_stream(const std::vector<Reception>& streams) {
    Receptions receptions;
    for (const Reception& reception : streams)
        receptions.emplace(stream_of(reception), reception);
    return receptions;
}

const Reception& reception_of(Stream stream, const Receptions& receptions) {
    static const Reception unknown;
    const auto found = receptions.find(stream);
    return found == receptions.end() ? unknown : found->second;
}

} // namespace zarven::tool
