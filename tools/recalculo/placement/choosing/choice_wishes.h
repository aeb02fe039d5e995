// What a command line says of the services of a head-end before a choice: which must be placed, and what they
// are worth. It stands above what the head-end says.

#ifndef RECALCULO_CHOICE_WISHES_H
#define RECALCULO_CHOICE_WISHES_H

#include <string>
#include <vector>

#include "headend/headend.h"

namespace zarven::tool {

/// Marks the services with these keys, each as `parse_service_query` takes it; a key of a clone is for its
/// parent. Throws `Failure`; `file` is for messages.
void demand_services(const std::vector<std::string>& keys, const std::string& file, Headend& headend);

/// Takes each "SELECTION=N", in their order: terms as those of --only, and what each service is worth for
/// which one of them holds. Gives those that no service meets. Throws `Failure`.
std::vector<std::string> value_services(const std::vector<std::string>& values, Headend& headend);

} // namespace zarven::tool

#endif
