// Where streams are received, looked up by stream: some hundred streams for some thousand services.

#ifndef RECALCULO_RECEPTIONS_H
#define RECALCULO_RECEPTIONS_H

#include <map>
#include <vector>

#include "headend/headend.h"

namespace zarven::tool {

using Receptions = std::map<Stream, Reception>;

/// Of a stream that stands there twice the first counts.
Receptions by_stream(const std::vector<Reception>& streams);

/// One that tells nothing where the stream is not known.
const Reception& reception_of(Stream stream, const Receptions& receptions);

} // namespace zarven::tool

#endif
