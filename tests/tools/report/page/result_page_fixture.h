// Pages of results, for the tests of their sections.

#ifndef RECALCULO_RESULT_PAGE_FIXTURE_H
#define RECALCULO_RESULT_PAGE_FIXTURE_H

#include <cstdint>
#include <string>

#include "report/page/page_text.h"
#include "report/page/result_page.h"
#include "report/result_fixture.h"

namespace zarven::tool::result_page_fixture {

inline std::string body_of(const Result& result) {
    return body_of_page(result_page(result));
}

inline std::string everything() {
    return body_of(result_with_everything());
}

/// A result with one module that has one output.
inline Result result_with(const OutputResult& output) {
    Result result;
    result.modules.emplace_back();
    result.modules.back().outputs = {output};
    return result;
}

inline ServiceResult service(Stream stream, std::uint32_t bitrate) {
    ServiceResult one;
    one.stream = stream;
    one.bitrate = bitrate;
    return one;
}

} // namespace zarven::tool::result_page_fixture

#endif
