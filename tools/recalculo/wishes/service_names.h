// Names of services as people write them: found whatever their case, blanks and accents, and whether or not
// they say HD. Made once for all wishes; some thousands of services.

#ifndef RECALCULO_SERVICE_NAMES_H
#define RECALCULO_SERVICE_NAMES_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "headend/headend.h"

namespace zarven::tool {

/// In small letters, without accents and without anything but letters, digits and +.
std::string plain_name(std::string_view name);

/// A plain name without the word at its end that tells the quality of the picture: sd, hd, uhd, 4k.
std::string without_quality(std::string plain);

class ServiceNames {
public:
    explicit ServiceNames(const std::vector<Service>& services);

    /// Services by their place in the head-end, ascending.
    using Places = std::vector<std::size_t>;

    struct Found {
        Places services;
        /// The name is theirs but for its case; else it is like theirs.
        bool is_exact = true;
    };

    /// Those with this name, as received or as sent; if none has it, those whose plain name it is, and then
    /// those whose plain name without quality it is.
    Found find(std::string_view name) const;

    /// The one whose name must change least, of the same quality if there are several; nothing where more
    /// than half of it would have to change.
    std::optional<std::size_t> nearest(std::string_view name) const;

private:
    using Index = std::map<std::string, Places, std::less<>>;

    void add(std::size_t service, const std::string& name);

    Index by_name_;
    Index by_plain_name_;
    Index by_core_;
    /// The keys of the last one.
    std::vector<std::string> cores_;
};

} // namespace zarven::tool

#endif
