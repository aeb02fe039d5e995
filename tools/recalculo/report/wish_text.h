// What is told of a wish list of services: the lines that name none.

#ifndef RECALCULO_WISH_TEXT_H
#define RECALCULO_WISH_TEXT_H

#include <string>

#include "headend/service_filter.h"

namespace zarven::tool {

/// A line of a wish list that names no service.
struct MissingWish {
    std::string file;
    ServiceSelection::Line line;
};

std::string wish_text(const MissingWish& missing);

} // namespace zarven::tool

#endif
