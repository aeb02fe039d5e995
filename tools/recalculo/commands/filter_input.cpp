// A wish list is read once for all services.

#include "commands/filter_input.h"

#include <utility>

#include "base/streams.h"
#include "commands/standard_input.h"
#include "report/terminal.h"
#include "wishes/wish_list.h"

namespace zarven::tool {

ReadFilter read_filter(const FilterInput& input, const std::vector<Service>& services) {
    ReadFilter read;
    for (const std::string& terms : input.only)
        read.filter.only.emplace_back("--only", terms);
    for (const std::string& terms : input.exclude)
        read.filter.exclude.emplace_back("--exclude", terms);
    for (const std::string& file : input.selections) {
        std::vector<ServiceSelection::Line> lines;
        for (NamedLine& line : named_lines_of(read_text(file)))
            lines.push_back({line.number, std::move(line.text)});
        read.filter.selections.emplace_back(std::move(lines));
        for (ServiceSelection::Line& line : read.filter.selections.back().without_service(services))
            read.missing.push_back({input_name(file), std::move(line)});
    }
    return read;
}

void withhold_unwanted(const FilterInput& input, const std::string& path, Headend& headend) {
    expect_one_standard_input(standard_inputs(path) + standard_inputs(input.selections),
                              path == standard_stream ? "the head-end and for --select" : "two --select");
    const ReadFilter read = read_filter(input, headend.services);
    for (const MissingWish& missing : read.missing)
        write_message(wish_text(missing));
    for (Service& service : headend.services)
        service.ask = service.ask && read.filter.wants(service);
}

} // namespace zarven::tool
