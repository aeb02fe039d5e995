// Services and wish lists for the tests of wishing.

#ifndef RECALCULO_TESTS_MADE_WISHES_H
#define RECALCULO_TESTS_MADE_WISHES_H

#include <string>

#include "wishes/wishing.h"

namespace zarven::tool {

inline Service made_service(const std::string& name, std::uint16_t lcn, std::uint16_t tsid,
                            std::uint16_t sid) {
    Service service;
    service.name = name;
    service.output_name = name;
    service.lcn = lcn;
    service.onid = 1;
    service.tsid = tsid;
    service.sid = sid;
    service.osid = sid;
    return service;
}

inline std::vector<WishList> made_lists(const std::vector<std::string>& texts) {
    std::vector<WishList> lists;
    for (const std::string& text : texts)
        lists.push_back(read_wish_list("list" + std::to_string(lists.size() + 1), text));
    return lists;
}

} // namespace zarven::tool

#endif
